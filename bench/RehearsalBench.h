#pragma once

#include "bench/support/Table.h"

namespace tarvessa::test {
class PrivateServer;
}

namespace tarvessa::bench {

class Workload;

/// The window "Conferência" over 2,000 pre-sales, from the key to the painted list, against a bare loop
/// sending the same questions.
QList<Row> rehearsalRows(test::PrivateServer& server, const Workload& workload);

} // namespace tarvessa::bench
