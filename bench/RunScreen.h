#pragma once

#include "bench/support/Painted.h"
#include "bench/support/Session.h"
#include "ui/DateBox.h"
#include "ui/grid/Grid.h"

#include <QPushButton>

#include <stdexcept>

namespace tarvessa::bench {

inline const QString firstOfYear = QStringLiteral("01/01/2024");
inline const QString lastOfYear = QStringLiteral("31/12/2024");

/// A report screen with its run button and a grid, on the screen, set to the year of the workload. It needs a
/// Session.
template <typename Screen>
class RunScreen {
  public:
    /// `prepare` makes the screen ready for its dates.
    explicit RunScreen(const QString& grid, void (*prepare)(Screen&) = nullptr)
        : m_grid(m_screen.template findChild<Grid*>(grid)) {
        if (prepare)
            prepare(m_screen);
        m_screen.template findChild<DateBox*>(QStringLiteral("DataIni"))->setText(firstOfYear);
        m_screen.template findChild<DateBox*>(QStringLiteral("DataFin"))->setText(lastOfYear);
        m_screen.show();
        waitPainted(m_grid->viewport());
    }

    /// From the press to the painted grid. Raises std::runtime_error when that shows nothing.
    void run() {
        m_screen.template findChild<QPushButton*>(QStringLiteral("Command4"))->click();
        waitPainted(m_grid->viewport());
        if (m_grid->rows() < 2)
            throw std::runtime_error("the report shows nothing");
    }

  private:
    Screen m_screen;
    Grid* m_grid;
};

} // namespace tarvessa::bench
