#include "printing/preview/PreviewWindow.h"

#include "printing/preview/PageList.h"
#include "ui/BusyPointer.h"
#include "ui/FitToScreen.h"
#include "ui/Guard.h"
#include "ui/Manual.h"
#include "ui/NameParts.h"

#include <QAction>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QSplitter>
#include <QStatusBar>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace tarvessa::report {

namespace {

constexpr int readingSliceMilliseconds = 20;
constexpr double zoomStep = 1.25;
constexpr int pagesWorthAList = 5;
constexpr QSize normalSize(1000, 720);

} // namespace

PreviewWindow::PreviewWindow(std::shared_ptr<Report> report, QWidget* parent,
                             std::shared_ptr<PreviewChoices> choices, const QString& fileName)
    : QMainWindow(parent, Qt::Window), m_report(std::move(report)), m_choices(std::move(choices)),
      m_fileName(fileName.isEmpty() ? m_report->title() : fileName), m_view(new PageView(*m_report, this)),
      m_list(new PageList(*m_report, this)), m_search(*m_report) {
    setObjectName(u"PreviewWindow"_s);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(m_report->title() + u" - visualização"_s);
    fitToScreen(this, normalSize);
    setContextMenuPolicy(Qt::NoContextMenu); // the tool bars cannot be hidden
    auto* splitter = new QSplitter(this);
    splitter->setObjectName(u"Splitter"_s);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(m_list);
    splitter->addWidget(m_view);
    splitter->setStretchFactor(1, 1);
    setCentralWidget(splitter);
    makeFileBar();
    addToolBarBreak();
    makePageBar();
    statusBar();
    nameParts(this);
    manual::opensAt(this, u"relatorios"_s);
    // Buttons of a tool bar take no focus by default, but every control must be reachable by Tab.
    for (QToolButton* button : findChildren<QToolButton*>())
        button->setFocusPolicy(Qt::TabFocus);

    onSignal(m_view, &PageView::turned, this, [this](int pages) { turn(pages); });
    onSignal(m_view, &PageView::zoomChanged, this, [this] { updateZoom(); });
    onSignal(m_list, &PageList::chosen, this, [this](int page) { showPage(page); });
    m_reading.setSingleShot(true);
    connect(&m_reading, &QTimer::timeout, this, [this] { guarded(this, [this] { readOn(); }); });

    showPage(0);
    m_view->setFocus();
    // The remaining rows are read only after the first page has been drawn.
    connect(m_view, &PageView::painted, &m_reading, qOverload<>(&QTimer::start), Qt::SingleShotConnection);
}

void PreviewWindow::leave() {
    close();
}

void PreviewWindow::readOn() {
    m_report->readFor(readingSliceMilliseconds);
    updateControls();
    if (m_report->complete())
        m_view->viewport()->update(); // the number of pages is printed on them
    else
        m_reading.start();
}

void PreviewWindow::readAll() {
    // The background reading stops, so that an error of these rows is reported once and not again over its
    // box.
    m_reading.stop();
    disconnect(m_view, &PageView::painted, &m_reading, nullptr);
    const BusyPointer busy;
    m_report->readAll();
    m_view->viewport()->update(); // the number of pages is printed on them
    updateControls();
}

void PreviewWindow::showPage(int page, bool fromBottom) {
    if (page >= m_report->pageCount())
        readAll();
    displayPage(qBound(0, page, m_report->pageCount() - 1), fromBottom);
    m_search.startAgain();
}

void PreviewWindow::displayPage(int page, bool fromBottom) {
    m_view->setPage(page, fromBottom);
    updateControls();
}

void PreviewWindow::turn(int pages) {
    const int page = m_view->page() + pages;
    if (page >= m_report->pageCount())
        readAll();
    if (page >= 0 && page < m_report->pageCount())
        showPage(page, pages < 0);
}

void PreviewWindow::updateControls() {
    const int page = m_view->page();
    const bool isLast = m_report->complete() && page + 1 >= m_report->pageCount();
    m_first->setEnabled(page > 0);
    m_previous->setEnabled(page > 0);
    m_next->setEnabled(!isLast);
    m_last->setEnabled(!isLast);
    if (!m_pageNumber->isModified() || !m_pageNumber->hasFocus())
        m_pageNumber->setText(QString::number(page + 1));
    m_pageCount->setText(
        u" de %1%2 "_s.arg(m_report->pageCount()).arg(m_report->complete() ? u""_s : u"…"_s));
    m_list->showPages(page);
    m_list->setVisible(m_report->pageCount() >= pagesWorthAList);
}

void PreviewWindow::updateZoom() {
    const QString percent = QString::number(qRound(m_view->zoom())) + u'%';
    m_zoom->setItemText(0, fitWidthCaption() +
                               (m_view->fit() == PageView::Fit::Width ? u" - "_s + percent : u""_s));
    m_zoom->setItemText(1, fitPageCaption() +
                               (m_view->fit() == PageView::Fit::Page ? u" - "_s + percent : u""_s));
    if (m_view->fit() != PageView::Fit::None) {
        m_zoom->setCurrentIndex(m_view->fit() == PageView::Fit::Width ? 0 : 1);
        return;
    }
    // A zoom that is not in the list is shown as placeholder.
    m_zoom->setCurrentIndex(m_zoom->findText(percent));
    m_zoom->setPlaceholderText(percent);
}

void PreviewWindow::tell(const QString& message) {
    constexpr int milliseconds = 8000;
    statusBar()->showMessage(message, milliseconds);
}

void PreviewWindow::firstPage() {
    showPage(0);
}

void PreviewWindow::previousPage() {
    turn(-1);
}

void PreviewWindow::nextPage() {
    const int page = m_view->page() + 1;
    if (page >= m_report->pageCount())
        readAll();
    if (page < m_report->pageCount())
        showPage(page);
}

void PreviewWindow::lastPage() {
    readAll();
    showPage(m_report->pageCount() - 1);
}

void PreviewWindow::editPageNumber() {
    m_pageNumber->setFocus();
    m_pageNumber->selectAll();
}

void PreviewWindow::goToPage() {
    const int page = m_pageNumber->text().toInt() - 1;
    // If the page cannot be shown, the box has the number of the one that remains.
    m_pageNumber->setModified(false);
    updateControls();
    m_view->setFocus();
    showPage(page);
}

void PreviewWindow::zoomIn() {
    m_view->setZoom(m_view->zoom() * zoomStep);
}

void PreviewWindow::zoomOut() {
    m_view->setZoom(m_view->zoom() / zoomStep);
}

void PreviewWindow::fitWidth() {
    m_view->setFit(PageView::Fit::Width);
}

void PreviewWindow::fitPage() {
    m_view->setFit(PageView::Fit::Page);
}

void PreviewWindow::chooseZoom(int index) {
    if (index == 0)
        fitWidth();
    else if (index == 1)
        fitPage();
    else
        m_view->setZoom(m_zoom->itemData(index).toInt());
}

void PreviewWindow::editSearch() {
    m_sought->setFocus();
    m_sought->selectAll();
}

void PreviewWindow::findNext() {
    find(TextSearch::Direction::Forward);
}

void PreviewWindow::findPrevious() {
    find(TextSearch::Direction::Backward);
}

void PreviewWindow::find(TextSearch::Direction direction) {
    if (m_sought->text().trimmed().isEmpty()) {
        editSearch();
        return;
    }
    readAll();
    const BusyPointer busy;
    const auto found = m_search.find(m_sought->text(), m_view->page(), direction);
    if (!found) {
        m_view->mark({});
        tell(u"Texto não encontrado: %1"_s.arg(m_sought->text()));
        return;
    }
    if (found->page != m_view->page())
        displayPage(found->page, false);
    m_view->mark(found->place);
    const QString wrapped = direction == TextSearch::Direction::Forward
                                ? u" - a busca recomeçou do início do relatório"_s
                                : u" - a busca recomeçou do fim do relatório"_s;
    tell(u"%1 de %2, na página %3%4"_s.arg(found->number)
             .arg(found->count)
             .arg(found->page + 1)
             .arg(found->wrapped ? wrapped : QString()));
}

// On some desktops a text box uses Ctrl+E itself, to go to the end of its text.
bool PreviewWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->modifiers() == Qt::ControlModifier && key->key() == Qt::Key_E) {
            event->ignore();
            return true;
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

} // namespace tarvessa::report
