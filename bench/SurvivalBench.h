#pragma once

#include "bench/support/Table.h"

namespace tarvessa::test {
class PrivateServer;
}

namespace tarvessa::bench {

/// What it costs that a cut closing can be concluded: connecting again to a living server, and the questions
/// about interrupted closings where the stock log has a million rows and no index.
QList<Row> survivalRows(test::PrivateServer& server);

} // namespace tarvessa::bench
