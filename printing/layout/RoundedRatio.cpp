#include "printing/layout/RoundedRatio.h"

#include <bit>
#include <limits>

namespace tarvessa::report {

namespace {

using Half = unsigned __int128;

constexpr int limbBits = 64;
constexpr int halfBits = 128;

// 256 bits, never negative.
struct Whole {
    Half high = 0;
    Half low = 0;

    auto operator<=>(const Whole&) const = default;
};

Half sizeOf(__int128 value) {
    return value < 0 ? -static_cast<Half>(value) : static_cast<Half>(value);
}

Whole sizeOf(const WideProduct& product) {
    constexpr Half limb = std::numeric_limits<unsigned long long>::max();
    const Half a = sizeOf(product.left);
    const Half b = sizeOf(product.right);
    const Half low = (a & limb) * (b & limb);
    const Half crossed = (a >> limbBits) * (b & limb);
    const Half crossedBack = (a & limb) * (b >> limbBits);
    const Half middle = (low >> limbBits) + (crossed & limb) + (crossedBack & limb);
    return {(a >> limbBits) * (b >> limbBits) + (crossed >> limbBits) + (crossedBack >> limbBits) +
                (middle >> limbBits),
            (middle << limbBits) | (low & limb)};
}

bool isNegative(const WideProduct& product) {
    return (product.left < 0) != (product.right < 0) && product.left != 0 && product.right != 0;
}

Whole operator+(const Whole& a, const Whole& b) {
    const Half low = a.low + b.low;
    return {a.high + b.high + (low < a.low ? 1 : 0), low};
}

// `b` is not the greater one.
Whole operator-(const Whole& a, const Whole& b) {
    return {a.high - b.high - (a.low < b.low ? 1 : 0), a.low - b.low};
}

// A long division in binary: takes in one digit after the other.
class Division {
  public:
    explicit Division(const Whole& divisor) : m_divisor(divisor) {}

    /// Doubles what has been divided so far, and adds `digit`, which is less than the divisor or 1.
    void take(const Whole& digit) {
        m_isTooLarge |= m_quotient > std::numeric_limits<long long>::max();
        m_quotient *= 2;
        m_rest = m_rest + m_rest;
        settle();
        m_rest = m_rest + digit;
        settle();
    }

    const Whole& rest() const { return m_rest; }
    Half quotient() const { return m_quotient; }
    bool isTooLarge() const { return m_isTooLarge; }

  private:
    void settle() {
        if (m_rest < m_divisor)
            return;
        m_rest = m_rest - m_divisor;
        ++m_quotient;
    }

    Whole m_divisor;
    Whole m_rest;
    Half m_quotient = 0;
    bool m_isTooLarge = false;
};

} // namespace

std::optional<long long> roundedRatio(WideProduct a, WideProduct b, WideProduct divisor, unsigned scale) {
    const bool parted = isNegative(a) != isNegative(b);
    const Whole first = sizeOf(a);
    const Whole second = sizeOf(b);
    const bool firstRules = first >= second;
    const Whole sum = !parted ? first + second : firstRules ? first - second : second - first;
    const bool negative = isNegative(firstRules ? a : b);
    const Whole below = sizeOf(divisor);

    Division whole(below);
    for (const Half half : {sum.high, sum.low})
        for (int bit = halfBits - 1; bit >= 0; --bit)
            whole.take({0, (half >> bit) & 1});
    // What is left is scaled apart: all of it times the scale would not fit.
    Division scaled(below);
    for (int bit = std::bit_width(scale) - 1; bit >= 0; --bit)
        scaled.take((scale >> bit & 1) != 0 ? whole.rest() : Whole());

    constexpr Half greatest = std::numeric_limits<long long>::max();
    if (whole.isTooLarge() || whole.quotient() > greatest)
        return {};
    const bool roundsUp = scaled.rest() + scaled.rest() >= below;
    const Half result = whole.quotient() * scale + scaled.quotient() + (roundsUp ? 1 : 0);
    if (result > greatest)
        return {};
    return negative ? -static_cast<long long>(result) : static_cast<long long>(result);
}

} // namespace tarvessa::report
