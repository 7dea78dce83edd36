#include "platform/Formata.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

constexpr int grupo = 3;

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

} // namespace tarvessa
