#pragma once

#include <QString>

namespace tarvessa::test {
class PrivateServer;
}

namespace tarvessa::bench {

/// What the figures depend on, as a Markdown list: processor, memory, system, server and its settings, Qt,
/// compiler, load before the run, day of the run. Raises TestError when the server does not answer.
QString machineText(test::PrivateServer& server);

} // namespace tarvessa::bench
