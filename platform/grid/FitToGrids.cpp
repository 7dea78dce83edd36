#include "platform/grid/FitToGrids.h"

#include "platform/Twips.h"
#include "platform/grid/Grid.h"

#include <QHeaderView>
#include <QLayout>
#include <QScreen>
#include <QStyle>

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

} // namespace

void fitToGrids(QWidget* form, const QList<Grid*>& grids, int rows, int besides) {
    for (Grid* grid : grids)
        grid->setMinimumSize(wholeSize(grid, rows, besides));
    form->layout()->activate();
    const QSize whole = form->sizeHint();
    for (Grid* grid : grids)
        grid->setMinimumSize(0, 0);
    form->layout()->activate();
    const int titleBar = form->style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, form);
    form->resize(whole.boundedTo(form->screen()->availableSize() - QSize(0, titleBar)));
}

} // namespace tarvessa
