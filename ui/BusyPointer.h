#pragma once

#include <QApplication>

namespace tarvessa {

/// Shows the busy (hourglass) pointer while it lives.
class BusyPointer {
  public:
    BusyPointer() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~BusyPointer() { QApplication::restoreOverrideCursor(); }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;
};

} // namespace tarvessa
