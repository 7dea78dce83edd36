#pragma once

#include <QFontMetricsF>

#include <optional>
#include <vector>

namespace tarvessa {

class Grid;

/// How small the columns of a grid are written. A figure without room makes its whole column smaller, down to
/// three quarters of the usual size; one that has no room even so, and words, are left to be elided. Figures
/// are the cells of columns of numbers and dates, and elsewhere codes: texts with a digit and without a
/// blank.
class ColumnSizes {
  public:
    explicit ColumnSizes(const Grid* grid) : m_grid(grid) {}

    /// Looks at the figures of these rows (from 1) and columns. True when a column has become smaller, which
    /// it then stays.
    bool fit(int firstRow, int lastRow, int firstColumn, int lastColumn);

    /// By how many pixels the column is smaller than usual.
    int reduction(int column) const;

    /// Gives one column its usual size again, or all of them; to be called when widths, font or style change.
    void forget(int column);
    void forget();

  private:
    int neededReduction(int column, int row, int room);
    const QFontMetricsF& metrics(bool bold, int reduction);

    const Grid* m_grid;
    std::vector<int> m_reductions;
    std::vector<std::optional<QFontMetricsF>> m_metrics;
    double m_widest = 0; // no character of a figure is wider
};

} // namespace tarvessa
