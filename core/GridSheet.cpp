#include "core/GridSheet.h"

#include "base/Datas.h"
#include "ui/grid/CellValue.h"
#include "ui/grid/Grid.h"

namespace tarvessa {

namespace {

constexpr int twipsPerPixel = 15;

sheet::Column::Alignment alignmentOf(Qt::Alignment alignment) {
    if (alignment.testFlag(Qt::AlignRight))
        return sheet::Column::Alignment::Right;
    return alignment.testFlag(Qt::AlignHCenter) ? sheet::Column::Alignment::Centre
                                                : sheet::Column::Alignment::Left;
}

void makeNumber(sheet::Cell& cell) {
    const std::optional<Dinheiro> number = cellNumber(cell.text);
    if (!number)
        return;
    constexpr double hundred = 100;
    cell.kind = sheet::Cell::Kind::Number;
    cell.percent = cell.text.endsWith(u'%');
    cell.number = static_cast<double>(number->decimosMilesimos()) / Dinheiro::scale;
    if (cell.percent)
        cell.number /= hundred;
    cell.decimals = decimalsOf(cell.text);
    cell.text.remove(u'.');
}

void makeDate(sheet::Cell& cell) {
    cell.date = DataDaTela(cell.text);
    if (cell.date.isValid())
        cell.kind = sheet::Cell::Kind::Date;
}

} // namespace

GridSheet::GridSheet(const Grid& grid) : m_grid(grid) {
    for (int column = 0; column < grid.columns(); ++column) {
        if (!grid.isOutput(column))
            continue;
        m_gridColumns.push_back(column);
        m_columns.append({grid.text(0, column), grid.columnTwips(column) / twipsPerPixel,
                          alignmentOf(grid.columnAlignment(column))});
    }
}

qsizetype GridSheet::rowCount() const {
    return m_grid.rows() - 1;
}

sheet::Cell GridSheet::cell(qsizetype row, qsizetype column) const {
    const int gridColumn = m_gridColumns[static_cast<size_t>(column)];
    sheet::Cell cell;
    cell.text = m_grid.outputText(static_cast<int>(row) + 1, gridColumn);
    switch (m_grid.columnKind(gridColumn)) {
    case ColumnKind::Number:
    case ColumnKind::Percentage:
        makeNumber(cell);
        break;
    case ColumnKind::Date:
        makeDate(cell);
        break;
    case ColumnKind::Text:
    case ColumnKind::Button:
        break;
    }
    return cell;
}

} // namespace tarvessa
