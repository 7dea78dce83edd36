#pragma once

#include <QApplication>

namespace tarvessa {

/// Shows the busy (hourglass) pointer for as long as it lives. May be nested.
class BusyPointer {
  public:
    BusyPointer() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~BusyPointer() { QApplication::restoreOverrideCursor(); }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;
};

} // namespace tarvessa
