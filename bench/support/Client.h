#pragma once

#include "bench/support/Measure.h"

#include <QStringList>

namespace tarvessa::test {
class PrivateServer;
}

namespace tarvessa::bench {

/// Runs the server's command-line client on these statements, its output thrown away, and gives what the
/// whole process took: by the clock, and of the processor (its own, not the server's). Raises
/// std::runtime_error when it fails.
Taken clientRun(const test::PrivateServer& server, const QStringList& statements);

/// The same, by the clock only.
inline double clientSeconds(const test::PrivateServer& server, const QStringList& statements) {
    return clientRun(server, statements).elapsed;
}

} // namespace tarvessa::bench
