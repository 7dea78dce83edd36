#pragma once

#include "core/AcessoDados.h"

#include <stdexcept>

namespace tarvessa::bench {

/// The connection of the program, open while it lives.
struct Session {
    Session() {
        if (!IniciaBanco())
            throw std::runtime_error("the database cannot be reached");
    }
    ~Session() { EncerraBanco(); }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
};

} // namespace tarvessa::bench
