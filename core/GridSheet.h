#pragma once

#include "sheets/Sheet.h"

#include <vector>

namespace tarvessa {

class Grid;

/// A grid as a sheet for a file: the columns that are output, as wide as on the screen, and all data rows.
class GridSheet : public sheet::Source {
  public:
    /// The grid outlives this object and keeps its rows and columns meanwhile.
    explicit GridSheet(const Grid& grid);

    const QList<sheet::Column>& columns() const override { return m_columns; }
    qsizetype rowCount() const override;
    sheet::Cell cell(qsizetype row, qsizetype column) const override;

  private:
    const Grid& m_grid;
    QList<sheet::Column> m_columns;
    std::vector<int> m_gridColumns; // of each column of the sheet
};

} // namespace tarvessa
