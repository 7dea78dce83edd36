#pragma once

#include <QStringList>

namespace tarvessa::test {
class PrivateServer;
}

namespace tarvessa::bench {

/// Runs the server's command-line client on these statements, its output thrown away, and gives the seconds
/// that the whole process took. Raises std::runtime_error when it fails.
double clientSeconds(const test::PrivateServer& server, const QStringList& statements);

} // namespace tarvessa::bench
