#include "base/Dinheiro.h"

#include "base/DecimalText.h"
#include "base/RuntimeError.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

using Wide = __int128;

constexpr int places = 4;

[[noreturn]] void raiseOverflow() {
    throw RuntimeError(ErrorNumber::Overflow, u"Estouro: o valor passa do maior número possível."_s);
}

Dinheiro fitted(Wide v) {
    if (v > std::numeric_limits<qint64>::max() || v < std::numeric_limits<qint64>::min())
        raiseOverflow();
    return Dinheiro::deDecimosMilesimos(static_cast<qint64>(v));
}

// Halves to even, as the four-place type always rounds.
Wide divided(Wide n, Wide d) {
    Wide q = n / d;
    const Wide remainder = n % d;
    const Wide twice = (remainder < 0 ? -remainder : remainder) * 2;
    const Wide divisor = d < 0 ? -d : d;
    if (twice > divisor || (twice == divisor && q % 2 != 0))
        q += (n < 0) == (d < 0) ? 1 : -1;
    return q;
}

void refuseZero(Dinheiro divisor) {
    if (divisor.zero())
        throw RuntimeError(ErrorNumber::DivisionByZero, u"Divisão por zero."_s);
}

} // namespace

void Dinheiro::estoura() {
    raiseOverflow();
}

Dinheiro Dinheiro::dePonto(QStringView texto) {
    QStringView t = texto.trimmed();
    QString expanded;
    if (hasExponentLetter(t)) {
        expanded = withoutExponent(t);
        t = expanded;
    }
    qsizetype i = 0;
    const bool isNegative = !t.isEmpty() && t[0] == u'-';
    if (!t.isEmpty() && (t[0] == u'-' || t[0] == u'+'))
        ++i;
    constexpr Wide limit = static_cast<Wide>(std::numeric_limits<qint64>::max());
    Wide v = 0;
    bool hasDigit = t.isEmpty();
    bool isAfterPoint = false;
    Wide divisor = 1;
    int placesRead = 0;
    for (; i < t.size(); ++i) {
        if (t[i] == u'.' && !isAfterPoint) {
            isAfterPoint = true;
            continue;
        }
        if (t[i] < u'0' || t[i] > u'9')
            throw RuntimeError(ErrorNumber::TypeMismatch,
                               u"Tipos incompatíveis: \"%1\" não é um número."_s.arg(texto));
        hasDigit = true;
        // Beyond these places no digit can change the rounding to four of them except from an exact half.
        if (isAfterPoint && ++placesRead > 2 * places + 1) {
            if (t[i] != u'0')
                v |= 1;
            continue;
        }
        v = v * 10 + (t[i].unicode() - u'0');
        if (isAfterPoint)
            divisor *= 10;
        // Dividing takes long, and only a large number needs it.
        if (v > limit / scale && v / divisor > limit / scale + 1)
            throw RuntimeError(ErrorNumber::Overflow, u"Estouro: o número %1 é grande demais."_s.arg(texto));
    }
    if (!hasDigit)
        throw RuntimeError(ErrorNumber::TypeMismatch,
                           u"Tipos incompatíveis: \"%1\" não é um número."_s.arg(texto));
    const Wide scaled = divided(v * scale, divisor);
    return fitted(isNegative ? -scaled : scaled);
}

QString Dinheiro::ponto() const {
    const quint64 size = m_v < 0 ? 0 - static_cast<quint64>(m_v) : static_cast<quint64>(m_v);
    QString texto = (m_v < 0 ? u"-"_s : u" "_s) + QString::number(size / scale);
    const quint64 fraction = size % scale;
    if (fraction == 0)
        return texto;
    QString decimals = QString::number(fraction).rightJustified(places, u'0');
    while (decimals.endsWith(u'0'))
        decimals.chop(1);
    return texto + u'.' + decimals;
}

Dinheiro Dinheiro::operator-() const {
    return fitted(-static_cast<Wide>(m_v));
}

Dinheiro Dinheiro::operator+(Dinheiro b) const {
    return fitted(static_cast<Wide>(m_v) + b.m_v);
}

Dinheiro Dinheiro::operator-(Dinheiro b) const {
    return fitted(static_cast<Wide>(m_v) - b.m_v);
}

Dinheiro Dinheiro::operator*(Dinheiro b) const {
    return fitted(divided(static_cast<Wide>(m_v) * b.m_v, scale));
}

Dinheiro Dinheiro::operator/(Dinheiro b) const {
    refuseZero(b);
    return fitted(divided(static_cast<Wide>(m_v) * scale, b.m_v));
}

Dinheiro Proporcao(Dinheiro a, Dinheiro b, Dinheiro c, int casas) {
    refuseZero(c);
    qint64 unit = 1;
    for (int i = casas; i < places; ++i)
        unit *= 10;
    const Wide n = static_cast<Wide>(a.decimosMilesimos()) * b.decimosMilesimos();
    const Wide d = static_cast<Wide>(c.decimosMilesimos()) * unit;
    Wide q = n / d;
    const Wide remainder = n % d;
    if ((remainder < 0 ? -remainder : remainder) * 2 >= (d < 0 ? -d : d))
        q += (n < 0) == (d < 0) ? 1 : -1;
    return fitted(q * unit);
}

} // namespace tarvessa
