#pragma once

class QWidget;

namespace tarvessa::bench {

/// Lets the event loop run until `widget` has been painted, counted from the call, with everything that was
/// waiting to be painted together with it.
void waitPainted(QWidget* widget);

} // namespace tarvessa::bench
