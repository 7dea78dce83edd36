#pragma once

#include "base/Dinheiro.h"

#include <optional>

namespace tarvessa::report {

/// A ratio of two whole numbers: the value of a calculation before it is rounded. It is exact while numerator
/// and denominator fit into 123 bits; a result that does not fit is rounded to four decimal places, halves
/// away from zero. Every operation raises RuntimeError (overflow) when that rounded value is beyond the range
/// of Dinheiro.
class Fraction {
  public:
    explicit Fraction(Dinheiro value) : Fraction(value.decimosMilesimos(), Dinheiro::scale) {}

    Fraction operator+(const Fraction& other) const;
    Fraction operator-(const Fraction& other) const;
    Fraction operator*(const Fraction& other) const;

    /// The divisor must not be zero.
    Fraction operator/(const Fraction& other) const;

    bool isZero() const { return m_above == 0; }

    /// Rounded to this many decimal places (0 to 4), halves away from zero. Raises RuntimeError (overflow).
    Dinheiro rounded(int decimals) const;

  private:
    using Wide = __int128;

    Fraction(Wide above, Wide below);
    Fraction shortened() const;
    static Wide common(Wide a, Wide b);
    static std::optional<Wide> product(Wide a, Wide b);
    static std::optional<Wide> sum(std::optional<Wide> a, std::optional<Wide> b);

    // Without common divisors; the sign is in the numerator.
    Wide m_above = 0;
    Wide m_below = 1;
};

} // namespace tarvessa::report
