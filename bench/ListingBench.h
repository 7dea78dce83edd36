#pragma once

#include "bench/support/Table.h"

namespace tarvessa::test {
class PrivateServer;
}

namespace tarvessa::bench {

class Workload;

/// Listing 1,000, 10,000 and 100,000 pre-sales, from the press on the button to the painted grid, against the
/// server's command-line client and against Qt's own ODBC plugin with a table widget.
QList<Row> listingRows(test::PrivateServer& server, const Workload& workload);

} // namespace tarvessa::bench
