#pragma once

#include <QString>

#include <concepts>
#include <limits>

namespace tarvessa {

/// Raises RuntimeError (overflow) that tells `what`, a text with the value's place as "%1".
[[noreturn]] void raiseTooLarge(qint64 value, const QString& what);

/// The value in a smaller type. Raises RuntimeError (overflow) with "Estouro: " and `what` when it does not
/// fit; `what` says it with the value's place as "%1", such as "o código de vendedor %1 é grande demais".
template <std::signed_integral T>
T narrow(qint64 value, const QString& what) {
    if (value > std::numeric_limits<T>::max() || value < std::numeric_limits<T>::min())
        raiseTooLarge(value, what);
    return static_cast<T>(value);
}

} // namespace tarvessa
