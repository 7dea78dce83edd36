#pragma once

#include "base/RuntimeError.h"

#include <optional>
#include <utility>

namespace tarvessa::teste {

/// The run-time error that `acao` ends with; nothing when it ends well.
template <typename Acao>
std::optional<RuntimeError> erroDe(Acao&& acao) {
    try {
        std::forward<Acao>(acao)();
    } catch (const RuntimeError& erro) {
        return erro;
    }
    return std::nullopt;
}

/// The number of the run-time error that `acao` ends with; 0 when it ends well.
template <typename Acao>
int numeroDoErroDe(Acao&& acao) {
    const auto erro = erroDe(std::forward<Acao>(acao));
    return erro ? erro->number() : 0;
}

/// The number as a test compares it.
constexpr int numero(ErrorNumber erro) {
    return static_cast<int>(erro);
}

} // namespace tarvessa::teste
