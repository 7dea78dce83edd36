#pragma once

#include <QString>
#include <QTimer>

namespace tarvessa::bench {

/// While it lives, closes each modal window that has a grid of this object name, as soon as the grid has rows
/// and is painted.
class ModalGrid {
  public:
    explicit ModalGrid(QString grid);

    /// Data rows of the grid closed last; 0 before.
    int rows() const { return m_rows; }

    /// How many windows were closed.
    int windows() const { return m_windows; }

  private:
    void look();

    QString m_name;
    QTimer m_watch;
    int m_rows = 0;
    int m_windows = 0;
};

} // namespace tarvessa::bench
