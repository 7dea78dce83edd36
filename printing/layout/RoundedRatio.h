#pragma once

#include <optional>

namespace tarvessa::report {

/// A product of two whole numbers of up to 127 bits each, their signs included.
struct WideProduct {
    __int128 left = 0;
    __int128 right = 0;
};

/// (a + b) × scale ÷ divisor, rounded once to a whole number, halves away from zero, however large the
/// numbers on the way. The divisor is greater than zero, the scale from 1 to 10,000. Nothing when the result
/// has more than 63 bits.
std::optional<long long> roundedRatio(WideProduct a, WideProduct b, WideProduct divisor, unsigned scale);

} // namespace tarvessa::report
