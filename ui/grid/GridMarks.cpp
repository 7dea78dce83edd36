// Marking rows, and what the marked ones come to.

#include "base/Formata.h"
#include "ui/grid/CellValue.h"
#include "ui/grid/Grid.h"

#include <QKeyEvent>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

struct ColumnSum {
    int values = 0;
    int decimals = 0;
    Dinheiro sum;
};

QString countText(int count) {
    return Formata(Dinheiro(count), u"###,##0");
}

QString sumText(const ColumnSum& column) {
    constexpr int cents = 2;
    const QStringView mask = column.decimals == 0       ? u"###,##0"
                             : column.decimals <= cents ? u"###,##0.00"
                                                        : u"###,##0.000";
    return Formata(column.sum, mask);
}

// Nothing for a column that has another text among its numbers, and when the sum is out of range.
std::optional<ColumnSum> sumOf(const Grid& grid, const QList<Grid::RowRange>& ranges, int column) {
    ColumnSum result;
    qint64 units = 0;
    QString room;
    for (const auto& [first, last] : ranges)
        for (int row = first; row <= last; ++row) {
            const QStringView text = grid.textView(row, column, room);
            if (text.isEmpty())
                continue;
            const std::optional<Dinheiro> number = cellNumber(text);
            if (!number || __builtin_add_overflow(units, number->decimosMilesimos(), &units))
                return {};
            ++result.values;
            result.decimals = std::max(result.decimals, decimalsOf(text));
        }
    result.sum = Dinheiro::deDecimosMilesimos(units);
    return result;
}

bool movesCursor(int key) {
    return (key >= Qt::Key_Home && key <= Qt::Key_PageDown);
}

} // namespace

QList<Grid::RowRange> Grid::markedRows() const {
    QList<RowRange> ranges;
    const QItemSelection selection = selectionModel()->selection();
    for (const QItemSelectionRange& range : selection)
        if (range.width() == columns())
            ranges.append({range.top() + 1, range.bottom() + 1});
    std::sort(ranges.begin(), ranges.end(),
              [](const RowRange& one, const RowRange& other) { return one.first < other.first; });
    // A row that is taken out leaves two ranges side by side.
    QList<RowRange> joined;
    for (const RowRange& range : ranges)
        if (!joined.isEmpty() && joined.last().last + 1 >= range.first)
            joined.last().last = std::max(joined.last().last, range.last);
        else
            joined.append(range);
    return joined;
}

bool Grid::isMarked(int row) const {
    const QList<RowRange> ranges = markedRows();
    return std::any_of(ranges.begin(), ranges.end(),
                       [row](const RowRange& range) { return row >= range.first && row <= range.last; });
}

void Grid::selectAll() {
    if (m_model->rowCount() == 0)
        return;
    m_markedFrom = m_model->index(0, 0);
    selectionModel()->select({m_model->index(0, 0), m_model->index(m_model->rowCount() - 1, columns() - 1)},
                             QItemSelectionModel::ClearAndSelect);
}

// True when the key has marked rows, or has moved to another column of the marked ones.
bool Grid::markByKey(const QKeyEvent* event) {
    if (!event->modifiers().testFlag(Qt::ShiftModifier) || !movesCursor(event->key()))
        return false;
    const auto action = [event] {
        switch (event->key()) {
        case Qt::Key_Home:
            return MoveHome;
        case Qt::Key_End:
            return MoveEnd;
        case Qt::Key_Left:
            return MoveLeft;
        case Qt::Key_Right:
            return MoveRight;
        case Qt::Key_Up:
            return MoveUp;
        case Qt::Key_Down:
            return MoveDown;
        case Qt::Key_PageUp:
            return MovePageUp;
        default:
            return MovePageDown;
        }
    };
    if (!currentIndex().isValid())
        return false;
    const QModelIndex to = moveCursor(action(), event->modifiers());
    if (!to.isValid())
        return false;
    if (to.row() != currentIndex().row())
        markUpTo(to);
    else if (m_markedFrom.isValid())
        moveAlongMarked(to);
    else
        return false;
    return true;
}

void Grid::moveAlongMarked(const QModelIndex& to) {
    m_marking = true;
    selectionModel()->setCurrentIndex(to, QItemSelectionModel::NoUpdate);
    m_marking = false;
    tellSummary();
}

void Grid::markUpTo(const QModelIndex& to) {
    if (!m_markedFrom.isValid())
        m_markedFrom = currentIndex();
    const int first = std::min(m_markedFrom.row(), to.row());
    const int last = std::max(m_markedFrom.row(), to.row());
    m_marking = true;
    selectionModel()->select({m_model->index(first, 0), m_model->index(last, columns() - 1)},
                             QItemSelectionModel::ClearAndSelect);
    moveAlongMarked(to);
}

void Grid::markStep(int rows) {
    const QModelIndex to = m_model->index(currentIndex().row() + rows, currentIndex().column());
    if (currentIndex().isValid() && to.isValid())
        markUpTo(to);
}

// A press on a selected cell would leave the other marked rows marked; one of the right button is about all
// of them.
QItemSelectionModel::SelectionFlags Grid::selectionCommand(const QModelIndex& index,
                                                           const QEvent* event) const {
    const bool mouse =
        event && (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonRelease);
    if (mouse && index.isValid() && !markedRows().isEmpty()) {
        const bool right = static_cast<const QMouseEvent*>(event)->button() == Qt::RightButton;
        if (right && isMarked(index.row() + 1))
            return QItemSelectionModel::NoUpdate;
        const bool wholeRows = selectionBehavior() == SelectRows;
        return QItemSelectionModel::ClearAndSelect |
               (wholeRows ? QItemSelectionModel::Rows : QItemSelectionModel::NoUpdate);
    }
    return QTableView::selectionCommand(index, event);
}

void Grid::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QTableView::selectionChanged(selected, deselected);
    tellSummary();
}

void Grid::tellSummary() {
    if (m_marking)
        return;
    const QList<RowRange> ranges = markedRows();
    int rows = 0;
    for (const RowRange& range : ranges)
        rows += range.last - range.first + 1;
    QString summary;
    if (rows > 1) {
        summary = u"%1 linhas marcadas"_s.arg(countText(rows));
        const bool numbers = currentIndex().isValid() && columnKind(currentColumn()) == ColumnKind::Number;
        const std::optional<ColumnSum> sum =
            numbers ? sumOf(*this, ranges, currentColumn()) : std::optional<ColumnSum>();
        if (sum)
            summary +=
                u" · %1: %2 %3, soma %4"_s.arg(text(0, currentColumn()), countText(sum->values),
                                               sum->values == 1 ? u"valor"_s : u"valores"_s, sumText(*sum));
    }
    if (summary != m_summary) {
        m_summary = summary;
        Q_EMIT selectionSummary(summary);
    }
}

} // namespace tarvessa
