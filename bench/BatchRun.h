#pragma once

#include "bench/support/Measure.h"

#include <QByteArrayList>

namespace tarvessa::test {
class PrivateServer;
}

namespace tarvessa::bench {

class Workload;

/// What a closing took.
struct BatchRun {
    Taken batch; ///< without the operator's boxes around it
    Taken boxes; ///< the notice taken apart, the last one made and shown
};

/// Closes what is listed in a panel of its own, so many pre-sales. Raises std::runtime_error when it does not
/// end well.
BatchRun closeAll(int presales);

/// What the panel sends between its two boxes: everything after start-up but the listing at the very end. The
/// pre-sales are closed afterwards. Raises std::runtime_error.
QByteArrayList batchStatements(test::PrivateServer& server, const Workload& workload, int presales);

} // namespace tarvessa::bench
