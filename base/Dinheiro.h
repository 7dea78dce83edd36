#pragma once

#include <QString>

#include <compare>
#include <limits>

namespace tarvessa {

/// A decimal amount (money, quantity, percentage) with exactly four places, kept in ten-thousandths.
/// Arithmetic raises RuntimeError (overflow, division by zero); what falls behind the fourth place is
/// rounded, halves to even.
class Dinheiro {
  public:
    constexpr Dinheiro() = default;

    /// From a whole amount. Raises RuntimeError (overflow) beyond the four-place range.
    constexpr explicit Dinheiro(qint64 inteiro) : m_v(emDecimosMilesimos(inteiro)) {}

    /// From ten-thousandths.
    static constexpr Dinheiro deDecimosMilesimos(qint64 v) {
        Dinheiro d;
        d.m_v = v;
        return d;
    }

    /// From a database decimal in point form ("1234.50", "-0.05"), with an exponent where the column is a
    /// double ("5.55e-17"); an empty text is 0. Raises RuntimeError (type mismatch) for any other text.
    static Dinheiro dePonto(QStringView texto);

    constexpr qint64 decimosMilesimos() const { return m_v; }

    /// The whole part, cut.
    constexpr qint64 inteiro() const { return m_v / scale; }
    constexpr bool negativo() const { return m_v < 0; }
    constexpr bool zero() const { return m_v == 0; }

    /// Point form for SQL: a leading blank when not negative, no thousands separator, no trailing zeros
    /// (" 12.5", "-12.5", " 0").
    QString ponto() const;

    constexpr auto operator<=>(const Dinheiro&) const = default;
    Dinheiro operator-() const;
    Dinheiro operator+(Dinheiro b) const;
    Dinheiro operator-(Dinheiro b) const;
    Dinheiro operator*(Dinheiro b) const;
    Dinheiro operator/(Dinheiro b) const;
    Dinheiro& operator+=(Dinheiro b) { return *this = *this + b; }

    /// How many of its units make one.
    static constexpr qint64 scale = 10000;

  private:
    static constexpr qint64 emDecimosMilesimos(qint64 inteiro) {
        constexpr qint64 maior = std::numeric_limits<qint64>::max() / scale;
        if (inteiro > maior || inteiro < -maior)
            estoura();
        return inteiro * scale;
    }
    [[noreturn]] static void estoura();

    qint64 m_v = 0;
};

/// a × b ÷ c rounded once, to `casas` decimal places (0 to 4), halves away from zero: what a percentage is on
/// the screen. Raises RuntimeError (overflow, division by zero).
Dinheiro Proporcao(Dinheiro a, Dinheiro b, Dinheiro c, int casas);

} // namespace tarvessa
