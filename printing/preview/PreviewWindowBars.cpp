#include "printing/preview/PreviewWindow.h"

#include "ui/Guard.h"

#include <QAction>
#include <QComboBox>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QStyle>
#include <QToolBar>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace tarvessa::report {

QString PreviewWindow::fitWidthCaption() {
    return u"Largura da página"_s;
}

QString PreviewWindow::fitPageCaption() {
    return u"Página inteira"_s;
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
    makeAction(bar, u"SaveXlsx"_s, u"Salvar dados (XLSX)"_s,
               u"Salvar os dados do relatório como planilha, com números e datas"_s,
               {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_E)}, &PreviewWindow::saveXlsx);
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
    m_pageNumber->installEventFilter(this);
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
    m_zoom->addItem(fitWidthCaption());
    m_zoom->addItem(fitPageCaption());
    for (const int zoom : {25, 50, 75, 100, 125, 150, 200, 300})
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
    m_sought->installEventFilter(this);
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

} // namespace tarvessa::report
