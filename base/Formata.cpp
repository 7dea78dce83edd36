#include "base/Formata.h"

#include <QVarLengthArray>

#include <algorithm>

namespace tarvessa {

namespace {

constexpr int grupo = 3;
// Longer texts work too, at the price of an allocation.
constexpr qsizetype digitosUsuais = 32;

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

// Takes the last digit off a number.
QChar ultimoDigito(quint64& numero) {
    const auto digito = static_cast<char16_t>(u'0' + numero % 10);
    numero /= 10;
    return digito;
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

    quint64 decimais = modulo % Dinheiro::scale;
    quint64 inteiros = modulo / Dinheiro::scale;
    int casas = m.casasMaximas;
    for (int i = casas; i < casasDoValor; ++i)
        decimais /= 10;
    for (int i = casasDoValor; i < casas; ++i)
        decimais *= 10;
    for (; casas > m.casasMinimas && decimais % 10 == 0; --casas)
        decimais /= 10;

    // From the last digit to the first; a listing formats one amount per row, so no text per digit.
    QVarLengthArray<QChar, digitosUsuais> invertido;
    for (int i = 0; i < casas; ++i)
        invertido.append(ultimoDigito(decimais));
    if (casas > 0)
        invertido.append(u',');
    for (int i = 0; i < qMax(m.inteirosMinimos, 1) || inteiros != 0; ++i) {
        if (m.milhares && i > 0 && i % grupo == 0)
            invertido.append(u'.');
        invertido.append(ultimoDigito(inteiros));
    }
    if (v < 0 && modulo != 0)
        invertido.append(u'-');
    std::reverse(invertido.begin(), invertido.end());
    return QString(invertido.constData(), invertido.size());
}

} // namespace tarvessa
