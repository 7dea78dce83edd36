#include "core/Numeros.h"

#include "platform/RuntimeError.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

constexpr int grupo = 3;

bool digito(QStringView t, qsizetype i) {
    return i < t.size() && t[i] >= u'0' && t[i] <= u'9';
}

qsizetype fimDosDigitos(QStringView t, qsizetype i) {
    while (digito(t, i))
        ++i;
    return i;
}

// Where the digits and their thousands points end; a point counts only before exactly three digits.
qsizetype fimDoInteiro(QStringView t, qsizetype inicio) {
    qsizetype fim = fimDosDigitos(t, inicio);
    if (fim == inicio || fim - inicio > grupo)
        return fim;
    while (fim < t.size() && t[fim] == u'.' && fimDosDigitos(t, fim + 1) - (fim + 1) == grupo)
        fim += 1 + grupo;
    return fim;
}

// Length of the number that a text without leading blanks begins with; 0 for none.
qsizetype tamanhoDoNumero(QStringView t) {
    qsizetype i = !t.isEmpty() && (t[0] == u'-' || t[0] == u'+') ? 1 : 0;
    const qsizetype inicio = i;
    i = fimDoInteiro(t, i);
    const bool temInteiro = i > inicio;
    if (i < t.size() && t[i] == u',' && (temInteiro || digito(t, i + 1)))
        i = fimDosDigitos(t, i + 1);
    return i > inicio ? i : 0;
}

QStringView semBrancosNoInicio(QStringView t) {
    while (!t.isEmpty() && t[0].isSpace())
        t = t.sliced(1);
    return t;
}

struct Mascara {
    int inteirosMinimos = 0;
    bool milhares = false;
    int casasMinimas = 0;
    int casasMaximas = 0;
};

Mascara lida(QStringView texto) {
    Mascara m;
    bool depois = false;
    for (const QChar c : texto) {
        if (c == u'.')
            depois = true;
        else if (c == u',')
            m.milhares = true;
        else if (depois) {
            ++m.casasMaximas;
            if (c == u'0')
                m.casasMinimas = m.casasMaximas;
        } else if (c == u'0') {
            ++m.inteirosMinimos;
        }
    }
    return m;
}

QString comMilhares(const QString& digitos) {
    QString texto = digitos;
    for (qsizetype i = texto.size() - grupo; i > 0; i -= grupo)
        texto.insert(i, u'.');
    return texto;
}

} // namespace

bool EhNumero(QStringView texto) {
    const QStringView t = texto.trimmed();
    const qsizetype tamanho = tamanhoDoNumero(t);
    return tamanho > 0 && tamanho == t.size();
}

Dinheiro ValorNumerico(QStringView texto) {
    const QStringView t = semBrancosNoInicio(texto);
    QString ponto = t.first(tamanhoDoNumero(t)).toString();
    ponto.remove(u'.');
    ponto.replace(u',', u'.');
    return Dinheiro::dePonto(ponto);
}

qint32 ValorInteiro(QStringView texto) {
    const qint64 valor = ValorNumerico(texto).inteiro();
    if (valor > std::numeric_limits<qint32>::max() || valor < std::numeric_limits<qint32>::min())
        throw RuntimeError(ErrorNumber::Overflow, u"Estouro: o número %1 é grande demais."_s.arg(texto));
    return static_cast<qint32>(valor);
}

QString Formata(Dinheiro valor, QStringView mascara) {
    constexpr int casasDoValor = 4;
    const Mascara m = lida(mascara);
    const qint64 v = valor.decimosMilesimos();
    quint64 modulo = v < 0 ? 0 - static_cast<quint64>(v) : static_cast<quint64>(v);
    quint64 unidade = 1;
    for (int i = qMin(m.casasMaximas, casasDoValor); i < casasDoValor; ++i)
        unidade *= 10;
    modulo = (modulo + unidade / 2) / unidade * unidade;

    QString decimais = QString::number(modulo % Dinheiro::casas).rightJustified(casasDoValor, u'0');
    decimais = decimais.leftJustified(m.casasMaximas, u'0', true);
    while (decimais.size() > m.casasMinimas && decimais.endsWith(u'0'))
        decimais.chop(1);
    QString inteiros = QString::number(modulo / Dinheiro::casas).rightJustified(m.inteirosMinimos, u'0');
    if (m.milhares)
        inteiros = comMilhares(inteiros);
    const QString sinal = v < 0 && modulo != 0 ? u"-"_s : QString();
    return sinal + inteiros + (decimais.isEmpty() ? QString() : u","_s + decimais);
}

QString FormataDinheiro(Dinheiro valor) {
    return Formata(valor, u"###,##0.00");
}

QString FormataQuantidade(Dinheiro valor) {
    return Formata(valor, u"###,##0.000").remove(u",000"_s);
}

} // namespace tarvessa
