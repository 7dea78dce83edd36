#pragma once

#include "bench/support/Table.h"

namespace tarvessa::test {
class PrivateServer;
}

namespace tarvessa::bench {

class Workload;

/// What `growth` finds.
struct Growth {
    QList<Row> rows;
    QString chart; ///< all screens in one chart, as the text of an SVG file
};

/// How the processor time of each screen's operation, beyond that of a bare loop with the same statements,
/// grows with its work: the exponent of a power law fitted to some sizes. Leaves the loads of its last
/// operations behind.
Growth growth(test::PrivateServer& server, const Workload& workload);

} // namespace tarvessa::bench
