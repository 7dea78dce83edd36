#include "printing/preview/PageView.h"

#include "printing/output/PagePainter.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

using namespace Qt::StringLiterals;

namespace tarvessa::report {

namespace {

constexpr int gap = 12; // pixels around the paper
constexpr double wheelZoomStep = 1.1;
constexpr double screenOverlap = 0.9;

} // namespace

PageView::PageView(const Report& report, QWidget* parent) : QAbstractScrollArea(parent), m_report(report) {
    setObjectName(u"PageView"_s);
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setBackgroundRole(QPalette::Dark);
}

void PageView::setPage(int page, bool fromBottom) {
    QStringList texts;
    for (const PlacedText& text : m_report.texts(page))
        texts.append(text.text);
    m_page = page;
    m_marked = {};
    // For screen readers.
    setAccessibleName(u"Página %1"_s.arg(page + 1));
    setAccessibleDescription(texts.join(u' '));
    verticalScrollBar()->setValue(fromBottom ? verticalScrollBar()->maximum() : 0);
    viewport()->update();
}

void PageView::setZoom(double percent) {
    m_fit = Fit::None;
    m_zoom = qBound(smallestZoom, percent, largestZoom);
    updateScrollBars();
    Q_EMIT zoomChanged();
}

void PageView::setFit(Fit fit) {
    m_fit = fit;
    fitZoom();
    Q_EMIT zoomChanged();
}

void PageView::mark(const QRectF& place) {
    m_marked = place;
    if (!place.isEmpty()) {
        const double scale = dotsToPixels();
        const auto show = [](QScrollBar* bar, double from, double to, int visible) {
            if (from < bar->value() || to > bar->value() + visible)
                bar->setValue(qRound((from + to - visible) / 2));
        };
        show(verticalScrollBar(), gap + place.top() * scale, gap + place.bottom() * scale,
             viewport()->height());
        show(horizontalScrollBar(), gap + place.left() * scale, gap + place.right() * scale,
             viewport()->width());
    }
    viewport()->update();
}

double PageView::dotsToPixels() const {
    return m_zoom / 100 * logicalDpiX() / dotsPerInch;
}

QRectF PageView::paperOnViewport() const {
    const QSizeF size = m_report.layout().paper() * dotsToPixels();
    const double x = qMax<double>(gap, (viewport()->width() - size.width()) / 2);
    const double y = qMax<double>(gap, (viewport()->height() - size.height()) / 2);
    return {QPointF(x - horizontalScrollBar()->value(), y - verticalScrollBar()->value()), size};
}

void PageView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.setClipRect(event->rect());
    const QRectF paper = paperOnViewport();
    painter.fillRect(paper.translated(3, 3), palette().shadow());
    painter.fillRect(paper, Qt::white);
    if (m_page >= m_report.pageCount())
        return;
    painter.translate(paper.topLeft());
    painter.scale(dotsToPixels(), dotsToPixels());
    paintPage(m_report, painter, m_page);
    if (!m_marked.isEmpty()) {
        // Multiplied like a marker pen, so that the mark also shows on a shaded row.
        constexpr double margin = dotsPerMillimetre / 2;
        painter.setCompositionMode(QPainter::CompositionMode_Multiply);
        painter.fillRect(m_marked.adjusted(-margin, -margin, margin, margin), QColor(255, 221, 87));
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    }
    if (hasFocus()) {
        painter.resetTransform();
        painter.setBrush(Qt::NoBrush);
        painter.setPen(palette().highlight().color());
        painter.drawRect(paper.adjusted(-1, -1, 0, 0));
    }
    Q_EMIT painted();
}

void PageView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    fitZoom();
    Q_EMIT zoomChanged();
}

void PageView::wheelEvent(QWheelEvent* event) {
    const int delta = event->angleDelta().y();
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        setZoom(delta > 0 ? m_zoom * wheelZoomStep : m_zoom / wheelZoomStep);
        event->accept();
        return;
    }
    const QScrollBar* bar = verticalScrollBar();
    if (delta < 0 && bar->value() == bar->maximum())
        Q_EMIT turned(1);
    else if (delta > 0 && bar->value() == 0)
        Q_EMIT turned(-1);
    else
        QAbstractScrollArea::wheelEvent(event);
    event->accept();
}

void PageView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_PageDown || event->key() == Qt::Key_Space)
        scrollOrTurn(1);
    else if (event->key() == Qt::Key_PageUp)
        scrollOrTurn(-1);
    else
        QAbstractScrollArea::keyPressEvent(event);
}

// The paper is drawn at the position of the bars; moving the pixels already on the screen would scroll twice.
void PageView::scrollContentsBy(int /*dx*/, int /*dy*/) {
    viewport()->update();
}

void PageView::scrollOrTurn(int screens) {
    QScrollBar* bar = verticalScrollBar();
    if (bar->value() == (screens > 0 ? bar->maximum() : 0))
        Q_EMIT turned(screens);
    else
        bar->setValue(bar->value() + screens * qRound(viewport()->height() * screenOverlap));
}

void PageView::fitZoom() {
    const QSizeF natural = m_report.layout().paper() * logicalDpiX() / dotsPerInch;
    // Measured without scroll bars; the bar that a page at this zoom needs is subtracted below.
    const QSizeF room = maximumViewportSize() - QSize(2 * gap, 2 * gap);
    if (m_fit == Fit::Page) {
        m_zoom = 100 * qMin(room.width() / natural.width(), room.height() / natural.height());
    } else if (m_fit == Fit::Width) {
        m_zoom = 100 * room.width() / natural.width();
        if (natural.height() * m_zoom / 100 > room.height())
            m_zoom = 100 * (room.width() - verticalScrollBar()->sizeHint().width()) / natural.width();
    }
    m_zoom = qBound(smallestZoom, m_zoom, largestZoom);
    updateScrollBars();
}

void PageView::updateScrollBars() {
    const QSize size = (m_report.layout().paper() * dotsToPixels()).toSize() + QSize(2 * gap, 2 * gap);
    const QSize visible = viewport()->size();
    const auto set = [](QScrollBar* bar, int length, int page) {
        bar->setRange(0, qMax(0, length - page));
        bar->setPageStep(page);
        bar->setSingleStep(qMax(1, page / 20));
    };
    set(verticalScrollBar(), size.height(), visible.height());
    set(horizontalScrollBar(), size.width(), visible.width());
    viewport()->update();
}

} // namespace tarvessa::report
