#pragma once

#include "ui/grid/ColumnKind.h"

#include <Qt>

#include <vector>

namespace tarvessa {

class GridModel;

/// The model's rows in the order of a column: numbers and dates by value, texts without regard to accents and
/// letter case; cells without a value come first, equal ones stay in their order. For each place the row that
/// belongs there, both from 0.
std::vector<int> orderOfRows(const GridModel& model, int column, ColumnKind kind, Qt::SortOrder order);

} // namespace tarvessa
