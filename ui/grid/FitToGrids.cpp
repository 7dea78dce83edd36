#include "ui/grid/FitToGrids.h"

#include "ui/FitToScreen.h"
#include "ui/Twips.h"
#include "ui/grid/Grid.h"

#include <QHeaderView>
#include <QLayout>

namespace tarvessa {

namespace {

QSize wholeSize(const Grid* grid, int rows, int besides) {
    int width = twipsToPixels(grid, besides);
    for (int column = 0; column < grid->columns(); ++column)
        width += grid->columnWidth(column);
    const int height = grid->horizontalHeader()->sizeHint().height() +
                       (rows - 1) * grid->verticalHeader()->defaultSectionSize();
    return QSize(width, height) + 2 * QSize(grid->frameWidth(), grid->frameWidth());
}

// A tab's page tells its parents of a new minimum size by events, which are delivered too late here.
void activateLayouts(QWidget* form, QWidget* grid) {
    for (QWidget* widget = grid->parentWidget(); widget != form; widget = widget->parentWidget()) {
        if (widget->layout())
            widget->layout()->activate();
        widget->updateGeometry();
    }
    form->layout()->activate();
}

} // namespace

void fitToGrids(QWidget* form, const QList<Grid*>& grids, int rows, int besides) {
    for (Grid* grid : grids)
        grid->setMinimumSize(wholeSize(grid, rows, besides));
    for (Grid* grid : grids)
        activateLayouts(form, grid);
    const QSize whole = form->sizeHint();
    for (Grid* grid : grids)
        grid->setMinimumSize(0, 0);
    for (Grid* grid : grids)
        activateLayouts(form, grid);
    fitToScreen(form, whole);
}

} // namespace tarvessa
