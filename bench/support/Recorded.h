#pragma once

#include <QByteArrayList>
#include <QString>

#include <functional>

namespace tarvessa::test {
class PrivateServer;
}

namespace tarvessa::bench {

/// The statements that the server receives while `run` runs, in order, from the first one that begins with
/// `first`; empty when none does.
QByteArrayList recordedStatements(test::PrivateServer& server, const QString& first,
                                  const std::function<void()>& run);

} // namespace tarvessa::bench
