#pragma once

#include "bench/support/Table.h"

namespace tarvessa::test {
class PrivateServer;
}

namespace tarvessa::bench {

class Workload;

/// Turning 500 DAVs of 20 lines into pre-sales, and checking the prices of 500 pre-sales of 20 lines of which
/// two are wrong, through the panel, against a bare loop sending the statements that the panel sent.
/// Leaves the documents of the last one behind.
QList<Row> operationRows(test::PrivateServer& server, const Workload& workload);

} // namespace tarvessa::bench
