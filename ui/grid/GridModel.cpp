#include "ui/grid/GridModel.h"

#include "ui/PlainText.h"

#include <QFont>

using namespace Qt::StringLiterals;

namespace tarvessa {

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
            return isTicked(row) ? u"Selecionado"_s : u"Não selecionado"_s;
        // A picture alone says nothing to a screen reader.
        return look(row, column).picture.isNull() || !text(row, column).isEmpty() ? QVariant()
                                                                                  : caption(column);
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(alignment(column));
    default:
        break;
    }
    if (role == Qt::DecorationRole && column == m_tickColumn)
        return isTicked(row) ? QVariant(m_tick) : QVariant();
    if (!looksOf(row))
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
    m_texts.clear(static_cast<int>(captions.size()));
    m_looks.clear();
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
        m_texts.cut(rows);
        if (m_looks.size() > static_cast<size_t>(rows))
            m_looks.resize(static_cast<size_t>(rows));
        m_shownRows = rows;
        endRemoveRows();
    } else if (rows < size()) {
        m_texts.cut(rows);
    }
    while (size() < rows)
        append({});
}

void GridModel::remove(int row) {
    beginRemoveRows({}, row, row);
    m_texts.remove(row);
    if (m_looks.size() > static_cast<size_t>(row))
        m_looks.erase(m_looks.begin() + row);
    --m_shownRows;
    endRemoveRows();
}

void GridModel::append(std::span<const QAnyStringView> cells) {
    if (!m_filling)
        beginInsertRows({}, m_shownRows, m_shownRows);
    m_texts.append(cells);
    if (!m_filling) {
        ++m_shownRows;
        endInsertRows();
    }
}

void GridModel::reorder(const std::vector<int>& order) {
    Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
    m_texts.reorder(order);
    m_looks.resize(order.size());
    std::vector<std::unique_ptr<Looks>> looks(order.size());
    std::vector<int> places(order.size());
    for (size_t place = 0; place < order.size(); ++place) {
        const auto from = static_cast<size_t>(order[place]);
        looks[place] = std::move(m_looks[from]);
        places[from] = static_cast<int>(place);
    }
    m_looks = std::move(looks);
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

QStringView GridModel::textView(int row, int column, QString& room) const {
    const QUtf8StringView text = m_texts.at(row, column);
    room.resize(text.size());
    QChar* end = room.data();
    for (const char byte : text) {
        constexpr unsigned char firstBeyondAscii = 0x80;
        if (static_cast<unsigned char>(byte) >= firstBeyondAscii) {
            room = text.toString();
            break;
        }
        *end++ = QLatin1Char(byte);
    }
    return room;
}

bool GridModel::isTicked(int row) const {
    return QByteArrayView(m_texts.at(row, m_tickColumn)) == " ";
}

void GridModel::setText(int row, int column, const QString& text) {
    m_texts.set(row, column, text);
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

const GridModel::Looks* GridModel::looksOf(int row) const {
    const auto place = static_cast<size_t>(row);
    return place < m_looks.size() ? m_looks[place].get() : nullptr;
}

GridModel::Look GridModel::look(int row, int column) const {
    const Looks* looks = looksOf(row);
    const auto found = looks ? looks->find(column) : Looks::const_iterator();
    return !looks || found == looks->end() ? Look() : found->second;
}

void GridModel::setLook(int row, int column, const Look& look) {
    const auto place = static_cast<size_t>(row);
    if (m_looks.size() <= place)
        m_looks.resize(place + 1);
    if (!m_looks[place])
        m_looks[place] = std::make_unique<Looks>();
    (*m_looks[place])[column] = look;
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
