#include "ui/grid/GridModel.h"

#include "ui/PlainText.h"

#include <QFont>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

// A noncharacter, which neither the database nor the keyboard can supply.
constexpr QChar cellEnd = QChar(0xFFFF);

QString packed(std::span<const QString> cells, size_t columns) {
    const std::span<const QString> kept = cells.first(std::min(cells.size(), columns));
    const auto ends = static_cast<qsizetype>(columns > 0 ? columns - 1 : 0);
    qsizetype length = ends;
    for (const QString& cell : kept)
        length += cell.size();
    QString text(length, cellEnd);
    QChar* place = text.data();
    for (const QString& cell : kept)
        place = std::copy(cell.cbegin(), cell.cend(), place) + 1;
    return text;
}

} // namespace

int GridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_shownRows;
}

int GridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_captions.size());
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
    const int row = index.row();
    const int column = index.column();
    switch (role) {
    case Qt::DisplayRole:
        return text(row, column);
    case Qt::ToolTipRole:
        return column == m_tickColumn ? QString() : plain::toolTip(text(row, column));
    case Qt::AccessibleTextRole:
        if (column == m_tickColumn)
            return text(row, column) == u" " ? u"Selecionado"_s : u"Não selecionado"_s;
        // A picture alone says nothing to a screen reader.
        return look(row, column).picture.isNull() || !text(row, column).isEmpty() ? QVariant()
                                                                                  : caption(column);
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(alignment(column));
    default:
        break;
    }
    if (role == Qt::DecorationRole && column == m_tickColumn)
        return text(row, column) == u" " ? QVariant(m_tick) : QVariant();
    if (m_rows[static_cast<size_t>(row)].looks.empty())
        return {};
    const Look cell = look(row, column);
    if (role == Qt::DecorationRole && !cell.picture.isNull())
        return cell.picture;
    if (role == Qt::BackgroundRole && cell.background.isValid())
        return cell.background;
    if (role == Qt::ForegroundRole && cell.foreground.isValid())
        return cell.foreground;
    if (role == Qt::FontRole && cell.bold) {
        QFont font;
        font.setBold(true);
        return font;
    }
    return {};
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::DisplayRole)
        return caption(section);
    if (role == Qt::ToolTipRole)
        return plain::toolTip(caption(section));
    if (role == Qt::AccessibleTextRole) {
        const auto spoken = m_spokenCaptions.find(section);
        return spoken == m_spokenCaptions.end() ? caption(section) : spoken->second;
    }
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(alignment(section));
    if (role == Qt::FontRole) {
        QFont font = m_headerFont;
        font.setBold(isHeaderBold(section));
        return font;
    }
    return {};
}

void GridModel::setColumns(const QStringList& captions, const QList<Qt::Alignment>& alignments) {
    beginResetModel();
    m_rows.clear();
    m_shownRows = 0;
    m_captions = captions;
    m_spokenCaptions.clear();
    m_alignments = alignments;
    m_headerBold.assign(static_cast<size_t>(captions.size()), false);
    endResetModel();
}

void GridModel::resize(int rows) {
    if (rows < m_shownRows) {
        beginRemoveRows({}, rows, m_shownRows - 1);
        m_rows.resize(static_cast<size_t>(rows));
        m_shownRows = rows;
        endRemoveRows();
        if (rows == 0)
            m_rows.shrink_to_fit();
    } else if (rows < size()) {
        m_rows.resize(static_cast<size_t>(rows));
    }
    while (size() < rows)
        append({});
}

void GridModel::remove(int row) {
    beginRemoveRows({}, row, row);
    m_rows.erase(m_rows.begin() + row);
    --m_shownRows;
    endRemoveRows();
}

void GridModel::append(std::span<const QString> cells) {
    if (!m_filling)
        beginInsertRows({}, m_shownRows, m_shownRows);
    m_rows.push_back({packed(cells, static_cast<size_t>(m_captions.size())), {}});
    if (!m_filling) {
        ++m_shownRows;
        endInsertRows();
    }
}

void GridModel::reorder(const std::vector<int>& order) {
    Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
    std::vector<Row> rows(m_rows.size());
    std::vector<int> places(m_rows.size());
    for (size_t place = 0; place < order.size(); ++place) {
        const auto from = static_cast<size_t>(order[place]);
        rows[place] = std::move(m_rows[from]);
        places[from] = static_cast<int>(place);
    }
    m_rows = std::move(rows);
    const QModelIndexList kept = persistentIndexList();
    for (const QModelIndex& old : kept)
        changePersistentIndex(old, index(places[static_cast<size_t>(old.row())], old.column()));
    Q_EMIT layoutChanged({}, VerticalSortHint);
}

void GridModel::beginFill() {
    m_filling = true;
}

void GridModel::endFill() {
    m_filling = false;
    if (size() == m_shownRows)
        return;
    beginInsertRows({}, m_shownRows, size() - 1);
    m_shownRows = size();
    endInsertRows();
}

QStringView GridModel::textView(int row, int column) const {
    const QStringView cells = m_rows[static_cast<size_t>(row)].packed;
    qsizetype start = 0;
    for (int i = 0; i < column; ++i)
        start = cells.indexOf(cellEnd, start) + 1;
    const qsizetype end = cells.indexOf(cellEnd, start);
    return cells.sliced(start, (end < 0 ? cells.size() : end) - start);
}

void GridModel::setText(int row, int column, const QString& text) {
    QStringList cells = m_rows[static_cast<size_t>(row)].packed.split(cellEnd);
    cells[column] = text;
    m_rows[static_cast<size_t>(row)].packed = packed(cells, static_cast<size_t>(m_captions.size()));
    cellChanged(row, column);
}

void GridModel::setCaption(int column, const QString& text) {
    m_captions[column] = text;
    Q_EMIT headerDataChanged(Qt::Horizontal, column, column);
}

void GridModel::setHeaderBold(int column, bool bold) {
    m_headerBold[static_cast<size_t>(column)] = bold;
    Q_EMIT headerDataChanged(Qt::Horizontal, column, column);
}

void GridModel::setHeaderFont(const QFont& font) {
    m_headerFont = font;
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
}

GridModel::Look GridModel::look(int row, int column) const {
    const auto& looks = m_rows[static_cast<size_t>(row)].looks;
    const auto found = looks.find(column);
    return found == looks.end() ? Look() : found->second;
}

void GridModel::setLook(int row, int column, const Look& look) {
    m_rows[static_cast<size_t>(row)].looks[column] = look;
    cellChanged(row, column);
}

void GridModel::setTickColumn(int column, const QIcon& picture) {
    m_tickColumn = column;
    m_tick = picture;
}

void GridModel::cellChanged(int row, int column) {
    if (row < m_shownRows)
        Q_EMIT dataChanged(index(row, column), index(row, column));
}

} // namespace tarvessa
