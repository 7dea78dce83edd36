#pragma once

#include "ui/grid/Grid.h"

class QMimeData;

namespace tarvessa {

/// Rows of a grid for the clipboard, without the columns that are not output: as text, cells separated by
/// tabs and rows by line ends, and as an HTML table that tells a spreadsheet which cells are texts. A cell
/// that holds a tab, a line end or a quotation mark at its beginning stands in quotation marks in the text,
/// as spreadsheets read it. The caller owns what it gets.
QMimeData* copyOf(const Grid& grid, const QList<Grid::RowRange>& ranges, bool withHeader);

} // namespace tarvessa
