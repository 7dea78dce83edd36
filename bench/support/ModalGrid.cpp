#include "bench/support/ModalGrid.h"

#include "bench/support/Painted.h"
#include "ui/grid/Grid.h"

#include <QApplication>
#include <QDialog>

namespace tarvessa::bench {

ModalGrid::ModalGrid(QString grid) : m_name(std::move(grid)) {
    m_watch.callOnTimeout([this] { look(); });
    m_watch.start(1);
}

void ModalGrid::look() {
    auto* window = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    const Grid* grid = window ? window->findChild<Grid*>(m_name) : nullptr;
    if (!grid || grid->rows() == 1)
        return;
    m_watch.stop();
    waitPainted(grid->viewport());
    m_rows = grid->rows() - 1;
    ++m_windows;
    window->reject();
    m_watch.start(1);
}

} // namespace tarvessa::bench
