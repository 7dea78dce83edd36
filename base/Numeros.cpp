#include "base/Numeros.h"

#include "base/Narrow.h"

#include <QVarLengthArray>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

constexpr int grupo = 3;
// Longer texts work too, at the price of an allocation.
constexpr qsizetype digitosUsuais = 32;

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

} // namespace

bool EhNumero(QStringView texto) {
    const QStringView t = texto.trimmed();
    const qsizetype tamanho = tamanhoDoNumero(t);
    return tamanho > 0 && tamanho == t.size();
}

Dinheiro ValorNumerico(QStringView texto) {
    const QStringView t = semBrancosNoInicio(texto);
    QVarLengthArray<QChar, digitosUsuais> ponto;
    for (const QChar c : t.first(tamanhoDoNumero(t)))
        if (c != u'.')
            ponto.append(c == u',' ? QChar(u'.') : c);
    return Dinheiro::dePonto(QStringView(ponto));
}

qint32 ValorInteiro(QStringView texto) {
    return narrow<qint32>(ValorNumerico(texto).inteiro(), u"o número %1 é grande demais"_s);
}

QString FormataDinheiro(Dinheiro valor) {
    return Formata(valor, u"###,##0.00");
}

QString FormataQuantidade(Dinheiro valor) {
    return Formata(valor, u"###,##0.000").remove(u",000"_s);
}

} // namespace tarvessa
