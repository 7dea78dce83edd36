#pragma once

#include "bench/support/Table.h"

namespace tarvessa::test {
class PrivateServer;
}

namespace tarvessa::bench {

class Workload;

/// Memory of the program itself with 100,000 rows listed.
QList<Row> memoryRows(test::PrivateServer& server, const Workload& workload);

/// Start of the program to its listing of 50 documents on the screen, against the server's command-line
/// client running the statements of the start-up.
QList<Row> startRows(test::PrivateServer& server, const Workload& workload);

} // namespace tarvessa::bench
