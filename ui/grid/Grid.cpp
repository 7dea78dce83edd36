#include "ui/grid/Grid.h"

#include "ui/Shades.h"
#include "ui/Twips.h"
#include "ui/grid/FindLine.h"
#include "ui/grid/GridDelegate.h"
#include "ui/grid/GridHeader.h"
#include "ui/grid/GridOrder.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

constexpr int defaultColumnTwips = 960;
constexpr int defaultRowTwips = 300;
constexpr int emptyTextMargin = 8;

struct ColumnFormat {
    QString caption;
    Qt::Alignment alignment;
};

void applyWidth(Grid* grid, int column, int twips) {
    grid->setColumnHidden(column, twips == 0);
    if (twips > 0)
        grid->setColumnWidth(column, twipsToPixels(grid, twips));
}

ColumnFormat columnFormat(const QString& part) {
    const QChar mark = part.isEmpty() ? QChar() : part[0];
    if (mark == u'<')
        return {part.sliced(1), Qt::AlignLeft | Qt::AlignVCenter};
    if (mark == u'>')
        return {part.sliced(1), Qt::AlignRight | Qt::AlignVCenter};
    if (mark == u'^')
        return {part.sliced(1), Qt::AlignCenter};
    return {part, Qt::AlignLeft | Qt::AlignVCenter};
}

} // namespace

Grid::Grid(QWidget* parent) : QTableView(parent), m_model(new GridModel(this)) {
    setModel(m_model);
    setItemDelegate(new GridDelegate(this));
    setHorizontalHeader(new GridHeader(this));
    m_model->setHeaderFont(font());
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTabKeyNavigation(false);
    setCornerButtonEnabled(false);
    setAlternatingRowColors(true);
    setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setWordWrap(true);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this](int column) {
        m_columnSizes.forget(column);
        Q_EMIT cellsMoved();
    });
    connect(this, &QTableView::clicked, this,
            [this](const QModelIndex& index) { Q_EMIT cellClicked(index.row() + 1, index.column()); });
    connect(this, &QTableView::doubleClicked, this,
            [this](const QModelIndex& index) { Q_EMIT cellDoubleClicked(index.row() + 1, index.column()); });
    connect(selectionModel(), &QItemSelectionModel::currentChanged, this, [this](const QModelIndex& current) {
        if (current.isValid())
            Q_EMIT cellEntered(current.row() + 1, current.column());
    });
    connect(m_model, &GridModel::rowsInserted, this, &Grid::tellEmpty);
    connect(m_model, &GridModel::rowsRemoved, this, &Grid::tellEmpty);
    connect(m_model, &GridModel::modelReset, this, &Grid::tellEmpty);
    connect(m_model, &GridModel::modelReset, this, [this] { m_columnSizes.forget(); });
    connect(m_model, &GridModel::rowsRemoved, this, [this] {
        if (m_model->rowCount() == 0)
            m_columnSizes.forget();
    });
    defineActions();
}

void Grid::setFormat(const QString& format) {
    QStringList captions;
    QList<Qt::Alignment> alignments;
    const QStringList parts = format.split(u'|');
    for (const QString& part : parts) {
        const ColumnFormat column = columnFormat(part);
        captions.append(column.caption);
        alignments.append(column.alignment);
    }
    m_model->setColumns(captions, alignments);
    m_columnTwips.assign(static_cast<size_t>(captions.size()), defaultColumnTwips);
    m_columnKinds.assign(static_cast<size_t>(captions.size()), ColumnKind::Text);
    horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    applyWidths();
}

void Grid::setColumnKinds(std::initializer_list<ColumnKind> kinds) {
    std::copy(kinds.begin(), kinds.end(), m_columnKinds.begin());
}

void Grid::setSortable() {
    QHeaderView* header = horizontalHeader();
    header->setSectionsClickable(true);
    header->setSortIndicatorShown(true);
    header->setSortIndicator(-1, Qt::AscendingOrder);
    m_sort->setVisible(true);
    m_sort->setEnabled(true);
    connect(header, &QHeaderView::sortIndicatorChanged, this, [this](int column, Qt::SortOrder order) {
        if (column >= 0)
            m_model->reorder(orderOfRows(*m_model, column, columnKind(column), order));
    });
}

void Grid::setEmptyText(const QString& text) {
    m_emptyText = text;
    tellEmpty();
    viewport()->update();
}

void Grid::tellEmpty() {
    const QString told = m_model->rowCount() == 0 ? m_emptyText : QString();
    if (told != accessibleDescription())
        setAccessibleDescription(told);
}

void Grid::setColumnTwips(int column, int twips) {
    m_columnTwips[static_cast<size_t>(column)] = twips;
    applyWidth(this, column, twips);
    stretchColumn();
    // A narrower caption may need another line.
    updateGeometries();
}

void Grid::setStretchedColumn(int column) {
    m_stretchedColumn = column;
    stretchColumn();
}

void Grid::setPreferredRows(int rows) {
    m_preferredRows = rows;
    updateGeometry();
}

QSize Grid::sizeHint() const {
    if (m_preferredRows == 0)
        return QTableView::sizeHint();
    const int scrollBar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
    return {horizontalHeader()->length() + scrollBar + 2 * frameWidth(),
            horizontalHeader()->sizeHint().height() + (m_preferredRows - 1) * minimumRowPixels() +
                2 * frameWidth()};
}

void Grid::setMinimumRowTwips(int twips) {
    m_minimumRowTwips = twips;
    verticalHeader()->setMinimumSectionSize(minimumRowPixels());
    verticalHeader()->setDefaultSectionSize(minimumRowPixels());
    horizontalHeader()->setMinimumHeight(twips > 0 ? minimumRowPixels() : 0);
    updateGeometries();
}

void Grid::setRowHeights(const std::vector<RowHeight>& heights) {
    // The view learns of a fill's rows at its end; until then they have no height of their own.
    m_model->endFill();
    // Otherwise the hidden header finds the places of all rows anew after each height.
    verticalHeader()->setUpdatesEnabled(false);
    for (const RowHeight& height : heights)
        setRowHeight(height.row - 1, qMax(twipsToPixels(this, height.twips), minimumRowPixels()));
    verticalHeader()->setUpdatesEnabled(true);
    Q_EMIT cellsMoved();
}

int Grid::rowTwips(int row) const {
    return pixelsToTwips(this, rowHeight(row - 1));
}

void Grid::setRows(int rows) {
    m_model->resize(rows - 1);
    if (rows == 1)
        horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
}

void Grid::removeRow(int row) {
    m_model->remove(row - 1);
}

void Grid::addItem(const QString& tabbed) {
    const QList<QStringView> cells = QStringView(tabbed).split(u'\t');
    addRow(std::vector<QAnyStringView>(cells.begin(), cells.end()));
}

QStringView Grid::textView(int row, int column, QString& room) const {
    return row == 0 ? QStringView(m_model->caption(column)) : m_model->textView(row - 1, column, room);
}

void Grid::setText(int row, int column, const QString& text) {
    if (row == 0)
        m_model->setCaption(column, text);
    else
        m_model->setText(row - 1, column, text);
}

void Grid::setBold(int row, int column, bool bold) {
    if (row == 0)
        m_model->setHeaderBold(column, bold);
    else
        changeLook(row, column, [bold](GridModel::Look& look) { look.bold = bold; });
}

bool Grid::isBold(int row, int column) const {
    return row == 0 ? m_model->isHeaderBold(column) : m_model->look(row - 1, column).bold;
}

void Grid::setHeaderBold() {
    for (int column = 0; column < columns(); ++column)
        setBold(0, column, true);
}

void Grid::setBackColor(int row, int column, const QColor& color) {
    changeLook(row, column, [&color](GridModel::Look& look) { look.background = color; });
}

void Grid::setForeColor(int row, int column, const QColor& color) {
    changeLook(row, column, [&color](GridModel::Look& look) { look.foreground = color; });
}

void Grid::setPicture(int row, int column, const QIcon& picture) {
    changeLook(row, column, [&picture](GridModel::Look& look) { look.picture = picture; });
}

bool Grid::hasPicture(int row, int column) const {
    return !m_model->index(row - 1, column).data(Qt::DecorationRole).isNull();
}

void Grid::setTicked(int row, bool ticked) {
    setText(row, m_model->tickColumn(), ticked ? u" "_s : QString());
}

void Grid::setCurrentCell(int row, int column) {
    setCurrentIndex(m_model->index(row - 1, column));
}

void Grid::setTopRow(int row) {
    // Rows just added are not laid out yet, and the bar does not reach them before.
    executeDelayedItemsLayout();
    verticalScrollBar()->setValue(row - 1);
}

QRect Grid::cellRect(int row, int column) const {
    const QRect inViewport = visualRect(m_model->index(row - 1, column));
    return {viewport()->mapTo(this, inViewport.topLeft()), inViewport.size()};
}

// A key accepted here becomes no shortcut of the form and is not taken by the keyboard convention.
bool Grid::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride && isFinding() &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        event->accept();
        return true;
    }
    return QTableView::event(event);
}

void Grid::keyPressEvent(QKeyEvent* event) {
    const bool menuKey = event->key() == Qt::Key_Menu ||
                         (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier);
    if (event->key() == Qt::Key_Space && event->modifiers() == Qt::NoModifier && currentIndex().isValid())
        clickCurrentCell();
    else if (event->key() == Qt::Key_Escape && isFinding())
        closeFindLine();
    else if (menuKey)
        openMenu(menuPlaceAtCurrentCell());
    else if (!markByKey(event))
        QTableView::keyPressEvent(event);
}

void Grid::paintEvent(QPaintEvent* event) {
    fitTexts(event->rect());
    QTableView::paintEvent(event);
    if (m_model->rowCount() == 0 && !m_emptyText.isEmpty())
        paintEmptyText();
}

// A column that becomes smaller with the rows about to be painted does so in those painted before as well.
void Grid::fitTexts(const QRect& painted) {
    const int firstRow = rowAt(painted.top());
    const int firstColumn = columnAt(painted.left());
    if (firstRow < 0 || firstColumn < 0)
        return;
    const int lastRow = rowAt(painted.bottom());
    const int lastColumn = columnAt(painted.right());
    if (m_columnSizes.fit(firstRow + 1, lastRow < 0 ? m_model->rowCount() : lastRow + 1, firstColumn,
                          lastColumn < 0 ? columns() - 1 : lastColumn))
        viewport()->update();
}

void Grid::paintEmptyText() {
    QPainter painter(viewport());
    painter.setPen(shades::quietText(palette()));
    const QRect room = viewport()->rect().marginsRemoved(
        {emptyTextMargin, emptyTextMargin, emptyTextMargin, emptyTextMargin});
    painter.drawText(room, Qt::AlignCenter | Qt::TextWordWrap, m_emptyText);
}

void Grid::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    updateRow(previous);
    updateRow(current);
    if (!m_marking)
        m_markedFrom = QPersistentModelIndex();
    tellSummary();
}

void Grid::updateRow(const QModelIndex& index) {
    if (index.isValid())
        viewport()->update(0, rowViewportPosition(index.row()), viewport()->width(), rowHeight(index.row()));
}

void Grid::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    stretchColumn();
    Q_EMIT cellsMoved();
}

void Grid::scrollContentsBy(int dx, int dy) {
    QTableView::scrollContentsBy(dx, dy);
    Q_EMIT cellsMoved();
}

void Grid::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        m_model->setHeaderFont(font());
        m_columnSizes.forget();
        applyWidths();
        setMinimumRowTwips(m_minimumRowTwips);
    }
}

void Grid::applyWidths() {
    for (int column = 0; column < columns(); ++column)
        applyWidth(this, column, columnTwips(column));
    stretchColumn();
    updateGeometries();
}

// Takes up what the other columns leave of the viewport's width.
void Grid::stretchColumn() {
    if (m_stretchedColumn < 0 || m_stretchedColumn >= columns() || isColumnHidden(m_stretchedColumn))
        return;
    const int own = twipsToPixels(this, columnTwips(m_stretchedColumn));
    const int others = horizontalHeader()->length() - columnWidth(m_stretchedColumn);
    setColumnWidth(m_stretchedColumn, qMax(own, viewport()->width() - others));
}

int Grid::minimumRowPixels() const {
    return twipsToPixels(this, m_minimumRowTwips > 0 ? m_minimumRowTwips : defaultRowTwips);
}

void Grid::changeLook(int row, int column, const std::function<void(GridModel::Look&)>& change) {
    GridModel::Look look = m_model->look(row - 1, column);
    change(look);
    m_model->setLook(row - 1, column, look);
}

} // namespace tarvessa
