#include "ui/grid/CellEditor.h"

#include "ui/FieldLeave.h"
#include "ui/grid/Grid.h"

#include <QApplication>
#include <QEvent>
#include <QMenuBar>

namespace tarvessa {

CellEditor::CellEditor(Grid* grid, QWidget* control) : QObject(grid), m_grid(grid), m_control(control) {
    m_control->hide();
    grid->viewport()->installEventFilter(this);
    connect(grid, &Grid::cellsMoved, this, &CellEditor::place);
    connect(new FieldLeave(control), &FieldLeave::left, this, [this] {
        if (m_open)
            Q_EMIT left();
    });
}

void CellEditor::open(int row, int column) {
    m_row = row;
    m_column = column;
    m_open = true;
    m_control->setFocusProxy(nullptr);
    place();
    m_control->show();
    m_control->raise();
    m_control->repaint();
    m_control->setFocus();
}

void CellEditor::close() {
    if (!m_open)
        return;
    m_open = false;
    // A menu bar gives the focus back when it is left, to the control that had it: that is hidden by then,
    // and the grid stands in for it.
    if (!qobject_cast<QMenuBar*>(QApplication::focusWidget()))
        m_grid->setFocus();
    m_control->hide();
    m_control->setFocusProxy(m_grid);
}

// A disabled grid takes no focus, so a press in it would not make the control lose it.
bool CellEditor::eventFilter(QObject* watched, QEvent* event) {
    if (m_open && !m_grid->isEnabled() && event->type() == QEvent::MouseButtonPress)
        Q_EMIT left();
    return QObject::eventFilter(watched, event);
}

// The control is clipped to the visible cells. Scrolled out of sight it has no size, but it keeps the focus.
void CellEditor::place() {
    if (!m_open)
        return;
    const QRect cells(m_grid->viewport()->mapTo(m_grid, QPoint()), m_grid->viewport()->size());
    QRect cell = m_grid->cellRect(m_row, m_column) & cells;
    cell.moveTopLeft(m_grid->mapTo(m_control->parentWidget(), cell.topLeft()));
    m_control->setGeometry(cell);
}

} // namespace tarvessa
