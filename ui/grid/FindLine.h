#pragma once

#include "ui/grid/GridSearch.h"

#include <QWidget>

class QBoxLayout;
class QLabel;
class QLineEdit;
class QToolButton;

namespace tarvessa {

/// The line below a grid in which the operator types what to find. The first hit from the current row on
/// becomes the current cell as the text is typed; Enter goes on to the next one and Shift+Enter back, both
/// past the ends; Escape closes.
class FindLine : public QWidget {
    Q_OBJECT

  public:
    /// Hidden at first. The grid lies in a vertical box layout, where the line takes the place below it.
    explicit FindLine(Grid* grid);

    /// Shows the line and gives the focus to its box.
    void begin();

    /// Hides the line and gives the focus to the grid.
    void end();

    /// Makes the next hit, or the one before, the current cell.
    void step(bool forward);

    /// Whether a cell of the grid, from row 1 on, is a hit.
    bool isHit(int row, int column) const;

  private:
    void place();
    QToolButton* addButton(const QString& name, const QString& caption, const QString& keys);
    void searchTyped();
    void searchAgainSoon();
    void goTo(std::optional<size_t> hit);
    void tellHits();

    Grid* m_grid;
    QLineEdit* m_box;
    QLabel* m_count;
    GridSearch m_search;
    GridSearch::Hit m_start; // where a text that is typed is sought from
    bool m_waiting = false;
};

} // namespace tarvessa
