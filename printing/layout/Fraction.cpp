#include "printing/layout/Fraction.h"

#include "base/RuntimeError.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace tarvessa::report {

namespace {

// A long division multiplies a remainder by ten, which must still fit into 127 bits.
constexpr __int128 largest = static_cast<__int128>(1) << 123;

// The product of two numbers of so many digits fits into `largest`, and so does the sum of two such products.
constexpr __int128 largestShort = 1'000'000'000'000'000'000;

[[noreturn]] void overflow() {
    throw RuntimeError(ErrorNumber::Overflow, u"Estouro: o cálculo passa do maior número possível."_s);
}

__int128 sizeOf(__int128 value) {
    return value < 0 ? -value : value;
}

} // namespace

Fraction::Fraction(Wide above, Wide below) {
    Q_ASSERT(below != 0);
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
    return sizeOf(a);
}

std::optional<Fraction::Wide> Fraction::product(Wide a, Wide b) {
    Wide result = 0;
    if (__builtin_mul_overflow(a, b, &result) || result > largest || result < -largest)
        return {};
    return result;
}

std::optional<Fraction::Wide> Fraction::sum(std::optional<Wide> a, std::optional<Wide> b) {
    if (!a || !b)
        return {};
    const Wide result = *a + *b; // 124 bits at most
    if (sizeOf(result) > largest)
        return {};
    return result;
}

// Cut to a decimal number of at most 18 digits, which is far more than the rounding that follows needs.
Fraction Fraction::shortened() const {
    if (sizeOf(m_above) < largestShort && m_below < largestShort)
        return *this;
    Wide digits = m_above / m_below;
    if (sizeOf(digits) >= largestShort)
        overflow();
    Wide rest = m_above % m_below;
    Wide scale = 1;
    while (scale < largestShort / 10 && sizeOf(digits) < largestShort / 10) {
        digits = digits * 10 + rest * 10 / m_below;
        rest = rest * 10 % m_below;
        scale *= 10;
    }
    return {digits, scale};
}

Fraction Fraction::operator+(const Fraction& other) const {
    const Wide shared = common(m_below, other.m_below);
    const auto above =
        sum(product(m_above, other.m_below / shared), product(other.m_above, m_below / shared));
    const auto below = product(m_below / shared, other.m_below);
    if (above && below)
        return {*above, *below};
    return Fraction((shortened() + other.shortened()).rounded(4));
}

Fraction Fraction::operator-(const Fraction& other) const {
    return *this + Fraction(-other.m_above, other.m_below);
}

// Common divisors go first, so that only a product that is really too large is rounded.
Fraction Fraction::operator*(const Fraction& other) const {
    const Wide left = common(m_above, other.m_below);
    const Wide right = common(other.m_above, m_below);
    const auto above = product(m_above / left, other.m_above / right);
    const auto below = product(m_below / right, other.m_below / left);
    if (above && below)
        return {*above, *below};
    return Fraction((shortened() * other.shortened()).rounded(4));
}

Fraction Fraction::operator/(const Fraction& other) const {
    return *this * Fraction(other.m_below, other.m_above);
}

Dinheiro Fraction::rounded(int decimals) const {
    constexpr int places = 4;
    constexpr Wide greatest = std::numeric_limits<qint64>::max();
    Wide digits = m_above / m_below;
    Wide rest = m_above % m_below;
    for (int place = 0; place < decimals; ++place) {
        if (sizeOf(digits) > greatest)
            overflow();
        digits = digits * 10 + rest * 10 / m_below;
        rest = rest * 10 % m_below;
    }
    if (2 * sizeOf(rest) >= m_below)
        digits += m_above < 0 ? -1 : 1;
    for (int place = decimals; place < places; ++place) {
        if (sizeOf(digits) > greatest)
            overflow();
        digits *= 10;
    }
    if (sizeOf(digits) > greatest)
        overflow();
    return Dinheiro::deDecimosMilesimos(static_cast<qint64>(digits));
}

} // namespace tarvessa::report
