#pragma once

#include "bench/support/Measure.h"

#include <QProcess>
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

/// The server's command-line client, connected and waiting for statements.
class ClientSession {
  public:
    /// Connects to the server at `address`, or to what stands in front of it. Raises std::runtime_error when
    /// it cannot.
    ClientSession(const test::PrivateServer& server, const QString& address);
    ~ClientSession();
    ClientSession(const ClientSession&) = delete;
    ClientSession& operator=(const ClientSession&) = delete;

    /// Sends the statements one after the other and ends the client, when all their rows have come. To be
    /// called once. Raises std::runtime_error when one fails.
    void finish(const QByteArrayList& statements);

  private:
    QProcess m_process;
};

} // namespace tarvessa::bench
