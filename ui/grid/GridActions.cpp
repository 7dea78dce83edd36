// What the operator may do with a grid by key and from its menu.

#include "ui/grid/FindLine.h"
#include "ui/grid/Grid.h"
#include "ui/grid/GridCopy.h"

#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QMenu>
#include <QMetaMethod>
#include <QMimeData>

using namespace Qt::StringLiterals;

namespace tarvessa {

void Grid::defineActions() {
    // Space is no shortcut: the grid takes it where it has the focus.
    m_click = defineAction(u"AcionarCelula"_s, u"Acionar a célula\tEspaço"_s, {}, Qt::WidgetShortcut,
                           [this] { clickCurrentCell(); });
    defineSeparator();
    defineAction(u"CopiarLinhas"_s, u"Copiar"_s, QKeySequence::keyBindings(QKeySequence::Copy),
                 Qt::WidgetShortcut, [this] { copyRows(false); });
    defineAction(u"CopiarComCabecalho"_s, u"Copiar com cabeçalho"_s, {Qt::CTRL | Qt::SHIFT | Qt::Key_C},
                 Qt::WidgetShortcut, [this] { copyRows(true); });
    defineAction(u"MarcarTodas"_s, u"Marcar todas as linhas"_s,
                 QKeySequence::keyBindings(QKeySequence::SelectAll), Qt::WidgetShortcut,
                 [this] { selectAll(); });
    defineAction(u"MarcarAcima"_s, u"Marcar para cima"_s, {Qt::SHIFT | Qt::Key_Up}, Qt::WidgetShortcut,
                 [this] { markStep(-1); });
    defineAction(u"MarcarAbaixo"_s, u"Marcar para baixo"_s, {Qt::SHIFT | Qt::Key_Down}, Qt::WidgetShortcut,
                 [this] { markStep(1); });
    defineSeparator();
    defineAction(u"LocalizarNaGrade"_s, u"Localizar..."_s, {Qt::CTRL | Qt::Key_F}, Qt::WindowShortcut,
                 [this] { openFindLine(); });
    m_next = defineAction(u"LocalizarProxima"_s, u"Localizar a próxima"_s, {Qt::Key_F3}, Qt::WindowShortcut,
                          [this] { step(true); });
    m_previous = defineAction(u"LocalizarAnterior"_s, u"Localizar a anterior"_s, {Qt::SHIFT | Qt::Key_F3},
                              Qt::WindowShortcut, [this] { step(false); });
    defineSeparator();
    m_save = defineAction(u"SalvarGrade"_s, u"Salvar grade..."_s, {Qt::CTRL | Qt::Key_S}, Qt::WindowShortcut,
                          [this] { Q_EMIT saveRequested(); });
    m_sort = defineAction(u"OrdenarPelaColuna"_s, u"Ordenar pela coluna"_s, {Qt::CTRL | Qt::Key_O},
                          Qt::WidgetShortcut, [this] { sortByCurrentColumn(); });
    // Other screens give F3 a meaning of its own, which it has while nothing is being sought.
    const auto enableSteps = [this](bool shown) {
        m_next->setEnabled(shown);
        m_previous->setEnabled(shown);
    };
    enableSteps(false);
    connect(this, &Grid::findLineShown, this, enableSteps);
    m_sort->setVisible(false);
    m_sort->setEnabled(false);
}

QAction* Grid::defineAction(const QString& name, const QString& caption, const QList<QKeySequence>& keys,
                            Qt::ShortcutContext context, const std::function<void()>& run) {
    auto* action = new QAction(caption, this);
    action->setObjectName(name);
    action->setShortcuts(keys);
    action->setShortcutContext(context);
    action->setShortcutVisibleInContextMenu(true);
    connect(action, &QAction::triggered, this, run);
    addAction(action);
    return action;
}

void Grid::defineSeparator() {
    auto* separator = new QAction(this);
    separator->setSeparator(true);
    addAction(separator);
}

void Grid::clickCurrentCell() {
    if (currentIndex().isValid())
        Q_EMIT cellClicked(currentRow(), currentColumn());
}

bool Grid::isOutput(int column) const {
    return !isColumnHidden(column) && columnKind(column) != ColumnKind::Button;
}

QString Grid::outputText(int row, int column) const {
    if (row > 0 && isTickColumn(column))
        return isTicked(row) ? u"X"_s : QString();
    return text(row, column);
}

void Grid::copyRows(bool withHeader) const {
    QList<RowRange> ranges = markedRows();
    if (ranges.isEmpty() && currentRow() > 0)
        ranges.append({currentRow(), currentRow()});
    if (!ranges.isEmpty())
        QGuiApplication::clipboard()->setMimeData(copyOf(*this, ranges, withHeader));
}

bool Grid::isFinding() const {
    return m_findLine && m_findLine->isVisible();
}

bool Grid::isHit(int row, int column) const {
    return isFinding() && m_findLine->isHit(row, column);
}

void Grid::openFindLine() {
    if (!m_findLine)
        m_findLine = new FindLine(this);
    m_findLine->begin();
}

void Grid::closeFindLine() {
    if (isFinding())
        m_findLine->end();
}

void Grid::step(bool forward) {
    if (isFinding())
        m_findLine->step(forward);
}

void Grid::sortByCurrentColumn() {
    if (!currentIndex().isValid())
        return;
    QHeaderView* header = horizontalHeader();
    const bool again = header->sortIndicatorSection() == currentColumn();
    const bool turned = again && header->sortIndicatorOrder() == Qt::AscendingOrder;
    header->setSortIndicator(currentColumn(), turned ? Qt::DescendingOrder : Qt::AscendingOrder);
}

void Grid::contextMenuEvent(QContextMenuEvent* event) {
    openMenu(event->reason() == QContextMenuEvent::Mouse ? event->globalPos() : menuPlaceAtCurrentCell());
}

QPoint Grid::menuPlaceAtCurrentCell() const {
    const QRect cell = visualRect(currentIndex()) & viewport()->rect();
    return viewport()->mapToGlobal(cell.isEmpty() ? viewport()->rect().topLeft() : cell.bottomLeft());
}

// A desktop may report the menu key both as a key and as the wish for a menu.
void Grid::openMenu(const QPoint& place) {
    if (m_menu && m_menu->isVisible())
        return;
    const bool rows = m_model->rowCount() > 0;
    m_click->setVisible(rows && isSignalConnected(QMetaMethod::fromSignal(&Grid::cellClicked)));
    m_save->setVisible(isSignalConnected(QMetaMethod::fromSignal(&Grid::saveRequested)));
    m_menu = new QMenu(this);
    m_menu->setObjectName(u"MenuDaGrade"_s);
    m_menu->setAccessibleName(u"Menu da grade"_s);
    m_menu->setAttribute(Qt::WA_DeleteOnClose);
    m_menu->addActions(actions());
    m_menu->popup(place);
}

} // namespace tarvessa
