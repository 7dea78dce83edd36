#pragma once

#include "bench/support/Table.h"

namespace tarvessa::test {
class PrivateServer;
}

namespace tarvessa::bench {

class Workload;

/// Closing 10, 100 and 1,000 pre-sales through the panel, from the notice answered to the final message on
/// the screen, against a bare loop sending the statements that the panel sent; and how even the time per
/// pre-sale stays.
QList<Row> closingRows(test::PrivateServer& server, const Workload& workload);

} // namespace tarvessa::bench
