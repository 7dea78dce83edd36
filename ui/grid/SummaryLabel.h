#pragma once

class QLabel;

namespace tarvessa {

class Grid;

/// A label that shows what the marked rows of a grid come to (see Grid::selectionSummary), for a form with
/// room beside its other controls. It takes no room of its own and cuts what has none; its name is "Soma".
QLabel* summaryLabel(Grid* grid);

} // namespace tarvessa
