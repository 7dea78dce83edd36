#pragma once

#include <QList>

class QWidget;

namespace tarvessa {

class Grid;

/// Gives a form the size at which each of its grids shows all its columns and `rows` rows, header included,
/// without scrolling; see fitToScreen for the limit. `besides` is a width in twips that stays free in the
/// grids, for a scroll bar that no column makes room for. Called once, when the form is laid out.
void fitToGrids(QWidget* form, const QList<Grid*>& grids, int rows, int besides = 0);

} // namespace tarvessa
