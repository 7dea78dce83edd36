#pragma once

#include "bench/support/Table.h"

namespace tarvessa::test {
class PrivateServer;
}

namespace tarvessa::bench {

class Workload;

/// What the program itself adds to the work of server and driver, in processor time of its process: per
/// statement, per query, per listed row; in the boxes and the bar of a batch and in a long search; and its
/// memory with a long listing. Replaces the products there are.
QList<Row> ownShareRows(test::PrivateServer& server, const Workload& workload);

} // namespace tarvessa::bench
