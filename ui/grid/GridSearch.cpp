#include "ui/grid/GridSearch.h"

#include "base/SearchText.h"
#include "ui/grid/Grid.h"

#include <algorithm>

namespace tarvessa {

bool GridSearch::contains(QStringView cell, QString& form) const {
    form.resize(0);
    appendSearchForm(cell, form);
    return form.contains(m_sought);
}

void GridSearch::search(const Grid& grid, const QString& sought) {
    m_sought = searchForm(sought);
    m_hits.clear();
    if (m_sought.isEmpty())
        return;
    std::vector<int> columns;
    for (int column = 0; column < grid.columns(); ++column)
        if (grid.isOutput(column) && !grid.isTickColumn(column))
            columns.push_back(column);
    QString text;
    QString form;
    for (int row = 1; row < grid.rows(); ++row)
        for (const int column : columns)
            if (contains(grid.textView(row, column, text), form))
                m_hits.push_back({row, column});
}

bool GridSearch::matches(QStringView cell) const {
    QString form;
    return !m_sought.isEmpty() && contains(cell, form);
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
