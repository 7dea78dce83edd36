#pragma once

#include "base/RuntimeError.h"

#include <optional>
#include <utility>

namespace tarvessa::test {

/// The run-time error that `action` ends with; nothing when it ends well.
template <typename Action>
std::optional<RuntimeError> errorOf(Action&& action) {
    try {
        std::forward<Action>(action)();
    } catch (const RuntimeError& error) {
        return error;
    }
    return std::nullopt;
}

/// The number of the run-time error that `action` ends with; 0 when it ends well.
template <typename Action>
int errorNumberOf(Action&& action) {
    const auto error = errorOf(std::forward<Action>(action));
    return error ? error->number() : 0;
}

/// The number as a test compares it.
constexpr int number(ErrorNumber error) {
    return static_cast<int>(error);
}

} // namespace tarvessa::test
