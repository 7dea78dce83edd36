#pragma once

#include "printing/pages/Report.h"

#include <QAbstractScrollArea>

namespace tarvessa::report {

/// Shows one page of a report as it is printed, at any zoom.
class PageView : public QAbstractScrollArea {
    Q_OBJECT

  public:
    enum class Fit { None, Width, Page };

    PageView(const Report& report, QWidget* parent);

    /// Shows another page (from 0), its top or its bottom first. Raises RuntimeError when a value cannot be
    /// calculated.
    void setPage(int page, bool fromBottom = false);
    int page() const { return m_page; }

    /// Per cent of the real size.
    double zoom() const { return m_zoom; }
    void setZoom(double percent);
    void setFit(Fit fit);
    Fit fit() const { return m_fit; }

    /// Marks a place on the page (dots) and scrolls to it; an empty one unmarks.
    void mark(const QRectF& place);
    QRectF marked() const { return m_marked; }

    static constexpr double smallestZoom = 20;
    static constexpr double largestZoom = 400;

  Q_SIGNALS:
    /// Scrolling goes beyond the page: `pages` is 1 or -1.
    void turned(int pages);
    void zoomChanged();
    /// The page has been drawn.
    void painted();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

  private:
    double dotsToPixels() const;
    QRectF paperOnViewport() const;
    void fitZoom();
    void updateScrollBars();
    void scrollOrTurn(int screens);

    const Report& m_report;
    int m_page = 0;
    double m_zoom = 100;
    Fit m_fit = Fit::Width;
    QRectF m_marked;
};

} // namespace tarvessa::report
