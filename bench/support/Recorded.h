#pragma once

#include <QByteArrayList>
#include <QStringList>

#include <functional>

namespace tarvessa::test {
class PrivateServer;
}

namespace tarvessa::bench {

/// The statements that the server receives while `run` runs, in order.
QStringList recordedTexts(test::PrivateServer& server, const std::function<void()>& run);

/// The same as the driver sends them, from the first one that begins with `first`; empty when none does.
QByteArrayList recordedStatements(test::PrivateServer& server, const QString& first,
                                  const std::function<void()>& run);

} // namespace tarvessa::bench
