#pragma once

#include <QApplication>

namespace tarvessa {

/// Shows the busy (hourglass) pointer for as long as it lives. May be nested: only the outermost asks the
/// display for it.
class BusyPointer {
  public:
    BusyPointer() : m_outermost(!isShown()) {
        if (m_outermost)
            QApplication::setOverrideCursor(Qt::WaitCursor);
    }
    ~BusyPointer() {
        if (m_outermost)
            QApplication::restoreOverrideCursor();
    }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;

  private:
    static bool isShown() {
        const QCursor* shown = QApplication::overrideCursor();
        return shown && shown->shape() == Qt::WaitCursor;
    }

    bool m_outermost;
};

} // namespace tarvessa
