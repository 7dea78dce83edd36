#include "printing/preview/PreviewWindow.h"

#include "printing/preview/TextSearch.h"
#include "ui/BusyPointer.h"
#include "ui/FitToScreen.h"
#include "ui/Guard.h"

#include <QAction>
#include <QComboBox>
#include <QFileDialog>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QStandardPaths>
#include <QStatusBar>
#include <QStyle>
#include <QToolBar>
#include <QToolButton>

#include <array>

using namespace Qt::StringLiterals;

namespace tarvessa::report {

namespace {

constexpr int readingSliceMilliseconds = 20;
constexpr double zoomStep = 1.25;
constexpr std::array<int, 8> zooms = {25, 50, 75, 100, 125, 150, 200, 300};
constexpr int messageMilliseconds = 8000;
constexpr QSize normalSize(1000, 720);
const QString widthCaption = u"Largura da página"_s;
const QString pageCaption = u"Página inteira"_s;

} // namespace

PreviewWindow::PreviewWindow(std::shared_ptr<Report> report, QWidget* parent)
    : QMainWindow(parent, Qt::Window), m_report(std::move(report)), m_view(new PageView(*m_report, this)) {
    setObjectName(u"PreviewWindow"_s);
    setAttribute(Qt::WA_DeleteOnClose);
    if (parent)
        setWindowModality(Qt::WindowModal);
    setWindowTitle(m_report->title() + u" - visualização"_s);
    fitToScreen(this, normalSize);
    setContextMenuPolicy(Qt::NoContextMenu); // the tool bars cannot be hidden
    setCentralWidget(m_view);
    makeFileBar();
    addToolBarBreak();
    makePageBar();
    statusBar();
    // In a tool bar a button takes no focus of its own, but every control is to be reached by Tab.
    for (QToolButton* button : findChildren<QToolButton*>())
        button->setFocusPolicy(Qt::TabFocus);

    onSignal(m_view, &PageView::turned, this, [this](int pages) { turn(pages); });
    onSignal(m_view, &PageView::zoomChanged, this, [this] { updateZoom(); });
    m_reading.setSingleShot(true);
    connect(&m_reading, &QTimer::timeout, this, [this] { guarded(this, [this] { readOn(); }); });

    showPage(0);
    m_view->setFocus();
    // The rest of the rows waits until the operator has the first page before him.
    connect(m_view, &PageView::painted, &m_reading, qOverload<>(&QTimer::start), Qt::SingleShotConnection);
}

void PreviewWindow::makeFileBar() {
    QToolBar* bar = addToolBar(u"Arquivo"_s);
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    makeAction(bar, u"Print"_s, u"Imprimir"_s, u"Imprimir o relatório"_s, {QKeySequence::Print},
               &PreviewWindow::print);
    makeAction(bar, u"SavePdf"_s, u"Salvar como PDF"_s, u"Salvar o relatório como documento PDF"_s,
               {QKeySequence::Save}, &PreviewWindow::savePdf);
    makeAction(bar, u"SaveCsv"_s, u"Salvar dados (CSV)"_s,
               u"Salvar os dados do relatório para uma planilha"_s, {QKeySequence(Qt::CTRL | Qt::Key_E)},
               &PreviewWindow::saveCsv);
    bar->addSeparator();
    makeAction(bar, u"Close"_s, u"Fechar"_s, u"Fechar a visualização"_s, {QKeySequence(Qt::Key_Escape)},
               &PreviewWindow::leave);
}

void PreviewWindow::makePageBar() {
    QToolBar* bar = addToolBar(u"Páginas"_s);
    bar->setMovable(false);
    const auto icon = [this](QStyle::StandardPixmap picture) { return style()->standardIcon(picture); };
    m_first = makeAction(bar, u"FirstPage"_s, u"Primeira página"_s, u"Primeira página"_s,
                         {QKeySequence(Qt::CTRL | Qt::Key_Home)}, &PreviewWindow::firstPage);
    m_first->setIcon(icon(QStyle::SP_MediaSkipBackward));
    m_previous = makeAction(bar, u"PreviousPage"_s, u"Página anterior"_s, u"Página anterior"_s,
                            {QKeySequence(Qt::CTRL | Qt::Key_PageUp)}, &PreviewWindow::previousPage);
    m_previous->setIcon(icon(QStyle::SP_MediaSeekBackward));

    m_pageNumber = new QLineEdit(bar);
    m_pageNumber->setObjectName(u"PageNumber"_s);
    m_pageNumber->setAccessibleName(u"Página"_s);
    m_pageNumber->setToolTip(u"Ir para a página (Ctrl+G)"_s);
    m_pageNumber->setValidator(new QIntValidator(1, 999999, m_pageNumber));
    m_pageNumber->setAlignment(Qt::AlignRight);
    m_pageNumber->setFixedWidth(fontMetrics().horizontalAdvance(u"0"_s) * 9);
    m_pageCount = new QLabel(bar);
    m_pageCount->setObjectName(u"PageCount"_s);
    m_pageCount->setMinimumWidth(fontMetrics().horizontalAdvance(u" de 00000… "_s));
    bar->addWidget(m_pageNumber);
    bar->addWidget(m_pageCount);
    onSignal(m_pageNumber, &QLineEdit::returnPressed, this, [this] { goToPage(); });

    m_next = makeAction(bar, u"NextPage"_s, u"Próxima página"_s, u"Próxima página"_s,
                        {QKeySequence(Qt::CTRL | Qt::Key_PageDown)}, &PreviewWindow::nextPage);
    m_next->setIcon(icon(QStyle::SP_MediaSeekForward));
    m_last = makeAction(bar, u"LastPage"_s, u"Última página"_s, u"Última página"_s,
                        {QKeySequence(Qt::CTRL | Qt::Key_End)}, &PreviewWindow::lastPage);
    m_last->setIcon(icon(QStyle::SP_MediaSkipForward));
    makeAction(nullptr, u"GoToPage"_s, {}, {}, {QKeySequence(Qt::CTRL | Qt::Key_G)},
               &PreviewWindow::editPageNumber);
    bar->addSeparator();
    makeZoom(bar);
    bar->addSeparator();
    makeSearch(bar);
}

void PreviewWindow::makeZoom(QToolBar* bar) {
    makeAction(bar, u"ZoomOut"_s, u"−"_s, u"Diminuir"_s, {QKeySequence::ZoomOut}, &PreviewWindow::zoomOut);
    m_zoom = new QComboBox(bar);
    m_zoom->setObjectName(u"Zoom"_s);
    m_zoom->setAccessibleName(u"Zoom"_s);
    m_zoom->setToolTip(u"Zoom (largura da página: Ctrl+1; página inteira: Ctrl+2)"_s);
    m_zoom->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    m_zoom->addItem(widthCaption);
    m_zoom->addItem(pageCaption);
    for (const int zoom : zooms)
        m_zoom->addItem(QString::number(zoom) + u'%', zoom);
    bar->addWidget(m_zoom);
    onSignal(m_zoom, &QComboBox::activated, this, [this](int index) { chooseZoom(index); });
    makeAction(bar, u"ZoomIn"_s, u"+"_s, u"Aumentar"_s,
               {QKeySequence::ZoomIn, QKeySequence(Qt::CTRL | Qt::Key_Equal)}, &PreviewWindow::zoomIn);
    makeAction(nullptr, u"FitWidth"_s, {}, {}, {QKeySequence(Qt::CTRL | Qt::Key_1)},
               &PreviewWindow::fitWidth);
    makeAction(nullptr, u"FitPage"_s, {}, {}, {QKeySequence(Qt::CTRL | Qt::Key_2)}, &PreviewWindow::fitPage);
}

void PreviewWindow::makeSearch(QToolBar* bar) {
    m_sought = new QLineEdit(bar);
    m_sought->setObjectName(u"Sought"_s);
    m_sought->setAccessibleName(u"Localizar"_s);
    m_sought->setPlaceholderText(u"Localizar"_s);
    m_sought->setToolTip(u"Localizar um texto (Ctrl+F)"_s);
    m_sought->setClearButtonEnabled(true);
    m_sought->setFixedWidth(fontMetrics().horizontalAdvance(u"0"_s) * 24);
    bar->addWidget(m_sought);
    onSignal(m_sought, &QLineEdit::returnPressed, this, [this] { findNext(); });
    QAction* previous = makeAction(bar, u"FindPrevious"_s, u"Localizar anterior"_s, u"Localizar anterior"_s,
                                   {QKeySequence(Qt::SHIFT | Qt::Key_F3)}, &PreviewWindow::findPrevious);
    QAction* next = makeAction(bar, u"FindNext"_s, u"Localizar próximo"_s, u"Localizar próximo"_s,
                               {QKeySequence(Qt::Key_F3)}, &PreviewWindow::findNext);
    static_cast<QToolButton*>(bar->widgetForAction(previous))->setArrowType(Qt::UpArrow);
    static_cast<QToolButton*>(bar->widgetForAction(next))->setArrowType(Qt::DownArrow);
    makeAction(nullptr, u"EditSearch"_s, {}, {}, {QKeySequence::Find}, &PreviewWindow::editSearch);
}

QAction* PreviewWindow::makeAction(QToolBar* bar, const QString& name, const QString& caption,
                                   const QString& help, const QList<QKeySequence>& keys,
                                   void (PreviewWindow::*handler)()) {
    auto* action = new QAction(caption, this);
    action->setObjectName(name);
    action->setShortcuts(keys);
    if (!help.isEmpty())
        action->setToolTip(u"%1 (%2)"_s.arg(help, action->shortcut().toString(QKeySequence::NativeText)));
    onSignal(action, &QAction::triggered, this, [this, handler](bool) { (this->*handler)(); });
    if (bar) {
        bar->addAction(action);
        QWidget* button = bar->widgetForAction(action);
        button->setObjectName(name);
        button->setAccessibleName(help);
    } else {
        addAction(action);
    }
    return action;
}

void PreviewWindow::leave() {
    close();
}

void PreviewWindow::readOn() {
    m_report->readFor(readingSliceMilliseconds);
    updateControls();
    if (m_report->complete())
        m_view->viewport()->update(); // the pages now say how many there are
    else
        m_reading.start();
}

void PreviewWindow::readAll() {
    // An error of these rows is reported once: the reading that is due next would tell it again, over the
    // box.
    m_reading.stop();
    disconnect(m_view, &PageView::painted, &m_reading, nullptr);
    const BusyPointer busy;
    m_report->readAll();
    m_view->viewport()->update(); // the pages now say how many there are
    updateControls();
}

void PreviewWindow::showPage(int page, bool fromBottom) {
    if (page >= m_report->pageCount())
        readAll();
    m_view->setPage(qBound(0, page, m_report->pageCount() - 1), fromBottom);
    m_hitIndex = -1;
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
}

void PreviewWindow::updateZoom() {
    const QString percent = QString::number(qRound(m_view->zoom())) + u'%';
    m_zoom->setItemText(0,
                        widthCaption + (m_view->fit() == PageView::Fit::Width ? u" - "_s + percent : u""_s));
    m_zoom->setItemText(1, pageCaption + (m_view->fit() == PageView::Fit::Page ? u" - "_s + percent : u""_s));
    if (m_view->fit() != PageView::Fit::None) {
        m_zoom->setCurrentIndex(m_view->fit() == PageView::Fit::Width ? 0 : 1);
        return;
    }
    // A zoom that is none of the list is shown all the same.
    m_zoom->setCurrentIndex(m_zoom->findText(percent));
    m_zoom->setPlaceholderText(percent);
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
    // Should the page not be had, the one that stays is numbered.
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
    find(true);
}

void PreviewWindow::findPrevious() {
    find(false);
}

void PreviewWindow::find(bool forward) {
    if (m_sought->text().trimmed().isEmpty()) {
        editSearch();
        return;
    }
    readAll();
    const BusyPointer busy;
    const std::optional<Hit> hit =
        TextSearch::find(*m_report, m_sought->text(), m_view->page(), m_hitIndex,
                         forward ? TextSearch::Direction::Forward : TextSearch::Direction::Backward);
    if (!hit) {
        m_view->mark({});
        statusBar()->showMessage(u"Texto não encontrado: %1"_s.arg(m_sought->text()), messageMilliseconds);
        return;
    }
    if (hit->page != m_view->page())
        showPage(hit->page);
    m_hitIndex = hit->index;
    m_view->mark(hit->place);
    statusBar()->showMessage(u"Encontrado na página %1."_s.arg(hit->page + 1), messageMilliseconds);
}

void PreviewWindow::print() {
    readAll();
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(m_report->title());
    QPageLayout page(m_report->layout().page);
    page.setMargins({});
    printer.setPageLayout(page);
    printer.setFullPage(true);
    QPrintDialog dialog(&printer, this);
    dialog.setMinMax(1, m_report->pageCount());
    dialog.setOptions(QAbstractPrintDialog::PrintToFile | QAbstractPrintDialog::PrintPageRange |
                      QAbstractPrintDialog::PrintCurrentPage | QAbstractPrintDialog::PrintCollateCopies);
    if (dialog.exec() != QDialog::Accepted)
        return;
    int first = 0;
    int last = m_report->pageCount() - 1;
    if (printer.printRange() == QPrinter::CurrentPage) {
        first = last = m_view->page();
    } else if (printer.printRange() == QPrinter::PageRange && printer.fromPage() > 0) {
        first = qMin(printer.fromPage() - 1, last);
        last = qBound(first, printer.toPage() - 1, last);
    }
    const BusyPointer busy;
    m_report->print(printer, first, last);
    statusBar()->showMessage(u"Relatório enviado para a impressora."_s, messageMilliseconds);
}

void PreviewWindow::savePdf() {
    const QString path = askFileName(u"Salvar como PDF"_s, u"pdf"_s, u"Documento PDF (*.pdf)"_s);
    if (path.isEmpty())
        return;
    readAll();
    const BusyPointer busy;
    m_report->savePdf(path);
    statusBar()->showMessage(u"Gravado: %1"_s.arg(path), messageMilliseconds);
}

void PreviewWindow::saveCsv() {
    const QString path =
        askFileName(u"Salvar dados (CSV)"_s, u"csv"_s, u"Dados separados por \";\" (*.csv)"_s);
    if (path.isEmpty())
        return;
    readAll();
    const BusyPointer busy;
    m_report->saveCsv(path);
    statusBar()->showMessage(u"Gravado: %1"_s.arg(path), messageMilliseconds);
}

QString PreviewWindow::askFileName(const QString& title, const QString& suffix, const QString& kind) {
    QFileDialog dialog(this, title, QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation),
                       kind);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(suffix);
    dialog.selectFile(m_report->title() + u'.' + suffix);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().constFirst() : QString();
}

} // namespace tarvessa::report
