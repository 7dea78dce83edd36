#include "ui/grid/ColumnSizes.h"

#include "ui/grid/Grid.h"
#include "ui/grid/TextSizes.h"

#include <QStyle>

#include <algorithm>

namespace tarvessa {

namespace {

// A word that is cut short is still known; a number that is cut short is another number.
bool isFigure(QStringView text, ColumnKind kind) {
    if (kind == ColumnKind::Number || kind == ColumnKind::Percentage || kind == ColumnKind::Date)
        return true;
    const auto isDigit = [](QChar character) { return character.isDigit(); };
    const auto isBlank = [](QChar character) { return character.isSpace(); };
    return std::any_of(text.begin(), text.end(), isDigit) && std::none_of(text.begin(), text.end(), isBlank);
}

// What the style leaves of a cell for its text.
int roomInCell(const Grid* grid, int column) {
    const int margin = grid->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, grid) + 1;
    const int line = grid->showGrid() ? 1 : 0;
    return grid->columnWidth(column) - line - 2 * margin;
}

} // namespace

bool ColumnSizes::fit(int firstRow, int lastRow, int firstColumn, int lastColumn) {
    bool smaller = false;
    for (int column = firstColumn; column <= lastColumn; ++column) {
        if (m_grid->isColumnHidden(column))
            continue;
        const int room = roomInCell(m_grid, column);
        int& reduction = m_reductions[static_cast<size_t>(column)];
        const int before = reduction;
        for (int row = firstRow; row <= lastRow; ++row)
            reduction = neededReduction(column, row, room);
        smaller = smaller || reduction > before;
    }
    return smaller;
}

int ColumnSizes::neededReduction(int column, int row, int room) {
    const int present = reduction(column);
    const QString text = m_grid->text(row, column);
    // Nearly all texts are far from filling their column, which is told without measuring them.
    if (static_cast<double>(text.size()) * m_widest <= room || !isFigure(text, m_grid->columnKind(column)))
        return present;
    const bool bold = m_grid->isBold(row, column);
    const int most = mostReduction(m_grid->font());
    for (int pixels = present; pixels <= most; ++pixels)
        if (metrics(bold, pixels).horizontalAdvance(text) <= room)
            return pixels;
    return present;
}

const QFontMetricsF& ColumnSizes::metrics(bool bold, int reduction) {
    const size_t place = 2 * static_cast<size_t>(reduction) + (bold ? 1 : 0);
    if (m_metrics.size() <= place)
        m_metrics.resize(place + 1);
    if (!m_metrics[place]) {
        QFont font = reduced(m_grid->font(), reduction);
        font.setBold(font.bold() || bold);
        m_metrics[place].emplace(font);
    }
    return *m_metrics[place];
}

int ColumnSizes::reduction(int column) const {
    return m_reductions[static_cast<size_t>(column)];
}

void ColumnSizes::forget(int column) {
    // The header tells of the columns of another format before the grid does.
    if (static_cast<size_t>(column) < m_reductions.size())
        m_reductions[static_cast<size_t>(column)] = 0;
}

void ColumnSizes::forget() {
    m_reductions.assign(static_cast<size_t>(m_grid->columns()), 0);
    m_metrics.clear();
    m_widest = metrics(true, 0).horizontalAdvance(u'W');
}

} // namespace tarvessa
