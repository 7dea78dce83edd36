#pragma once

#include "bench/support/Table.h"

namespace tarvessa::test {
class PrivateServer;
}

namespace tarvessa::bench {

class Workload;

/// The runs of the sales summary, the commission and a seller's statement over a million fiscal lines, from
/// the press on the button to the painted grid, against the server's command-line client running the
/// statements that the screen sent.
QList<Row> reportRows(test::PrivateServer& server, const Workload& workload);

} // namespace tarvessa::bench
