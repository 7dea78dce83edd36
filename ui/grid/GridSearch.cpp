#include "ui/grid/GridSearch.h"

#include "base/SearchText.h"
#include "ui/grid/Grid.h"

#include <algorithm>

namespace tarvessa {

bool GridSearch::contains(QStringView cell, QString& buffer) const {
    buffer.resize(0);
    appendSearchForm(cell, buffer);
    return buffer.contains(m_sought);
}

void GridSearch::search(const Grid& grid, const QString& text) {
    m_sought = searchForm(text);
    m_hits.clear();
    if (m_sought.isEmpty())
        return;
    std::vector<int> columns;
    for (int column = 0; column < grid.columns(); ++column)
        if (grid.isOutput(column) && !grid.isTickColumn(column))
            columns.push_back(column);
    QString buffer;
    for (int row = 1; row < grid.rows(); ++row)
        for (const int column : columns)
            if (contains(grid.textView(row, column), buffer))
                m_hits.push_back({row, column});
}

bool GridSearch::matches(QStringView cell) const {
    QString buffer;
    return !m_sought.isEmpty() && contains(cell, buffer);
}

std::optional<size_t> GridSearch::after(Hit cell) const {
    if (m_hits.empty())
        return {};
    const auto next = std::upper_bound(m_hits.begin(), m_hits.end(), cell);
    return next == m_hits.end() ? 0 : static_cast<size_t>(next - m_hits.begin());
}

std::optional<size_t> GridSearch::before(Hit cell) const {
    if (m_hits.empty())
        return {};
    const auto end = std::lower_bound(m_hits.begin(), m_hits.end(), cell);
    return end == m_hits.begin() ? m_hits.size() - 1 : static_cast<size_t>(end - m_hits.begin()) - 1;
}

std::optional<size_t> GridSearch::from(Hit cell) const {
    if (m_hits.empty())
        return {};
    const auto next = std::lower_bound(m_hits.begin(), m_hits.end(), cell);
    return next == m_hits.end() ? 0 : static_cast<size_t>(next - m_hits.begin());
}

} // namespace tarvessa
