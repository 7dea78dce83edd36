#pragma once

#include "bench/support/Screen.h"

namespace tarvessa::test {
class PrivateServer;
}

namespace tarvessa::bench {

class Workload;

/// The operations of the panel and of the windows that it opens over its list.
QList<Screen> panelScreens(const Workload& workload);

/// Product search and promotional price.
QList<Screen> productScreens(test::PrivateServer& server, const Workload& workload);

/// Reports, targets, and a paper in the preview.
QList<Screen> reportScreens(const Workload& workload);

/// All of them.
QList<Screen> allScreens(test::PrivateServer& server, const Workload& workload);

} // namespace tarvessa::bench
