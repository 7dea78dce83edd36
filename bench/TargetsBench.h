#pragma once

#include "bench/support/Table.h"

namespace tarvessa::test {
class PrivateServer;
}

namespace tarvessa::bench {

class Workload;

/// The progress of five thousand targets: over a million fiscal lines from the press on the button to the
/// painted board, against the server's command-line client running the same statements; and without any
/// fiscal line, what filling and colouring the board takes beyond bare ODBC calls.
QList<Row> targetRows(test::PrivateServer& server, const Workload& workload);

} // namespace tarvessa::bench
