#pragma once

#include "bench/support/Table.h"

namespace tarvessa::test {
class PrivateServer;
}

namespace tarvessa::bench {

class Workload;

/// How often each operation of a screen waits for a round trip to the server, per statement, over links of
/// 0.2, 1 and 20 ms, against a bare loop and the client sending the same statements over the same link.
/// Leaves the loads of its last operations behind.
QList<Row> networkRows(test::PrivateServer& server, const Workload& workload);

} // namespace tarvessa::bench
