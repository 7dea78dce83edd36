#include "platform/report/Fraction.h"

#include "platform/RuntimeError.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace tarvessa::report {

namespace {

using Wide = __int128;

[[noreturn]] void overflow() {
    throw RuntimeError(ErrorNumber::Overflow, u"Estouro: o cálculo passa do maior número possível."_s);
}

Wide product(Wide a, Wide b) {
    Wide result = 0;
    if (__builtin_mul_overflow(a, b, &result))
        overflow();
    return result;
}

Wide sum(Wide a, Wide b) {
    Wide result = 0;
    if (__builtin_add_overflow(a, b, &result))
        overflow();
    return result;
}

} // namespace

Fraction::Fraction(Wide above, Wide below) {
    const Wide divisor = below < 0 ? -common(above, below) : common(above, below);
    m_above = above / divisor;
    m_below = below / divisor;
}

// Never negative; one of the two is not zero.
Fraction::Wide Fraction::common(Wide a, Wide b) {
    while (b != 0) {
        const Wide rest = a % b;
        a = b;
        b = rest;
    }
    return a < 0 ? -a : a;
}

Fraction Fraction::operator+(const Fraction& other) const {
    const Wide shared = common(m_below, other.m_below);
    const Wide left = product(m_above, other.m_below / shared);
    const Wide right = product(other.m_above, m_below / shared);
    return {sum(left, right), product(m_below / shared, other.m_below)};
}

Fraction Fraction::operator-(const Fraction& other) const {
    return *this + Fraction(product(other.m_above, -1), other.m_below);
}

// Shortened crosswise before, so that only what is really too large overflows.
Fraction Fraction::operator*(const Fraction& other) const {
    const Wide left = common(m_above, other.m_below);
    const Wide right = common(other.m_above, m_below);
    return {product(m_above / left, other.m_above / right), product(m_below / right, other.m_below / left)};
}

Fraction Fraction::operator/(const Fraction& other) const {
    return *this * Fraction(other.m_below, other.m_above);
}

Dinheiro Fraction::rounded(int decimals) const {
    constexpr int places = 4;
    constexpr Wide ten = 10;
    Wide scale = 1;
    Wide unit = 1; // in ten-thousandths
    for (int i = 0; i < places; ++i)
        (i < decimals ? scale : unit) *= ten;
    const Wide rest = product(m_above % m_below, scale);
    Wide result = sum(product(m_above / m_below, scale), rest / m_below);
    const Wide left = rest % m_below;
    // Twice the rest may be too large a number; what is missing to the next one is not.
    if ((left < 0 ? -left : left) >= m_below - (left < 0 ? -left : left))
        result = sum(result, m_above < 0 ? -1 : 1);
    result = product(result, unit);
    if (result > std::numeric_limits<qint64>::max() || result < std::numeric_limits<qint64>::min())
        overflow();
    return Dinheiro::deDecimosMilesimos(static_cast<qint64>(result));
}

} // namespace tarvessa::report
