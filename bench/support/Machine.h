#pragma once

#include <QString>

namespace tarvessa::teste {
class PrivateServer;
}

namespace tarvessa::bench {

/// What the figures depend on, as a Markdown list: processor, memory, system, server and its settings, Qt,
/// compiler, load before the run, day of the run. Raises TestError when the server does not answer.
QString machineText(teste::PrivateServer& server);

} // namespace tarvessa::bench
