#pragma once

#include <QObject>

class QWidget;

namespace tarvessa {

class Grid;

/// Lays a control of the form over a grid's cell and keeps it there while the grid scrolls or changes its
/// size. The form commits what the control holds.
class CellEditor : public QObject {
    Q_OBJECT

  public:
    /// `control` is a sibling of `grid`, hidden and in no layout; both outlive this object's use.
    CellEditor(Grid* grid, QWidget* control);

    /// Shows the control over an existing data cell, paints it at once and gives it the focus.
    void open(int row, int column);

    /// Hides the control and gives the focus to the grid, or leaves it in the menu bar until that is left;
    /// `left` is not sent. Does nothing when it is not open.
    void close();

    bool isOpen() const { return m_open; }

    /// The cell of the last open; 0 and 0 before the first.
    int row() const { return m_row; }
    int column() const { return m_column; }

  Q_SIGNALS:
    /// The open control was left for another one of the form, or a cell of the grid is about to be clicked:
    /// the click then acts on that cell, even when the form had disabled the grid and enables it here.
    void left();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void place();

    Grid* m_grid;
    QWidget* m_control;
    int m_row = 0;
    int m_column = 0;
    bool m_open = false;
};

} // namespace tarvessa
