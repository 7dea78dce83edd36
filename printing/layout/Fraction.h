#pragma once

#include "base/Dinheiro.h"

#include <optional>

namespace tarvessa::report {

/// A ratio of two whole numbers: what a calculation is worth before it is rounded. It is exact as long as 127
/// bits above and below the line hold it; a result that they do not hold is rounded to four decimal places,
/// halves away from zero. Every operation raises RuntimeError (overflow) for one too large even so.
class Fraction {
  public:
    explicit Fraction(Dinheiro value) : Fraction(value.decimosMilesimos(), Dinheiro::casas) {}

    Fraction operator+(const Fraction& other) const;
    Fraction operator-(const Fraction& other) const;
    Fraction operator*(const Fraction& other) const;

    /// The divisor must not be zero.
    Fraction operator/(const Fraction& other) const;

    bool isZero() const { return m_above == 0; }

    /// Rounded to so many decimal places (0 to 4), halves away from zero.
    Dinheiro rounded(int decimals) const;

  private:
    using Wide = __int128;

    Fraction(Wide above, Wide below);
    static Wide common(Wide a, Wide b);
    static std::optional<Wide> product(Wide a, Wide b);
    static std::optional<Wide> sum(std::optional<Wide> a, std::optional<Wide> b);

    // Without common divisors; the sign is above the line. Neither is the least number of 128 bits, which has
    // no opposite.
    Wide m_above = 0;
    Wide m_below = 1;
};

} // namespace tarvessa::report
