#include "printing/layout/Fraction.h"

#include "base/RuntimeError.h"
#include "printing/layout/RoundedRatio.h"

using namespace Qt::StringLiterals;

namespace tarvessa::report {

namespace {

constexpr __int128 leastNumber = static_cast<__int128>(1) << 127;

// In ten-thousandths, from a number in units of which `unit` ten-thousandths make one.
Dinheiro amount(std::optional<long long> value, long long unit) {
    long long result = 0;
    if (!value || __builtin_mul_overflow(*value, unit, &result))
        throw RuntimeError(ErrorNumber::Overflow, u"Estouro: o cálculo passa do maior número possível."_s);
    return Dinheiro::deDecimosMilesimos(result);
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

std::optional<Fraction::Wide> Fraction::product(Wide a, Wide b) {
    Wide result = 0;
    if (__builtin_mul_overflow(a, b, &result) || result == leastNumber)
        return {};
    return result;
}

std::optional<Fraction::Wide> Fraction::sum(std::optional<Wide> a, std::optional<Wide> b) {
    Wide result = 0;
    if (!a || !b || __builtin_add_overflow(*a, *b, &result) || result == leastNumber)
        return {};
    return result;
}

Fraction Fraction::operator+(const Fraction& other) const {
    const Wide shared = common(m_below, other.m_below);
    const WideProduct left{m_above, other.m_below / shared};
    const WideProduct right{other.m_above, m_below / shared};
    const WideProduct divisor{m_below / shared, other.m_below};
    const auto above = sum(product(left.left, left.right), product(right.left, right.right));
    const auto below = product(divisor.left, divisor.right);
    if (above && below)
        return {*above, *below};
    return Fraction(amount(roundedRatio(left, right, divisor, Dinheiro::casas), 1));
}

Fraction Fraction::operator-(const Fraction& other) const {
    return *this + Fraction(-other.m_above, other.m_below);
}

// Shortened crosswise before, so that only what is really too large is rounded.
Fraction Fraction::operator*(const Fraction& other) const {
    const Wide left = common(m_above, other.m_below);
    const Wide right = common(other.m_above, m_below);
    const WideProduct dividend{m_above / left, other.m_above / right};
    const WideProduct divisor{m_below / right, other.m_below / left};
    const auto above = product(dividend.left, dividend.right);
    const auto below = product(divisor.left, divisor.right);
    if (above && below)
        return {*above, *below};
    return Fraction(amount(roundedRatio(dividend, {}, divisor, Dinheiro::casas), 1));
}

Fraction Fraction::operator/(const Fraction& other) const {
    return *this * Fraction(other.m_below, other.m_above);
}

Dinheiro Fraction::rounded(int decimals) const {
    constexpr int places = 4;
    unsigned scale = 1;
    long long unit = 1; // in ten-thousandths
    for (int i = 0; i < places; ++i)
        if (i < decimals)
            scale *= 10;
        else
            unit *= 10;
    return amount(roundedRatio({m_above, 1}, {}, {m_below, 1}, scale), unit);
}

} // namespace tarvessa::report
