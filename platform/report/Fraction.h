#pragma once

#include "platform/Dinheiro.h"

namespace tarvessa::report {

/// An exact ratio of two whole numbers: what a calculation is worth before it is rounded, once. Every
/// operation raises RuntimeError (overflow) for a result that 127 bits above or below the line cannot hold.
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

    // Without common divisors; the sign is above the line.
    Wide m_above = 0;
    Wide m_below = 1;
};

} // namespace tarvessa::report
