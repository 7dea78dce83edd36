#pragma once

#include "printing/layout/Layout.h"

namespace tarvessa::report {

/// A text at its place on a page.
struct PlacedText {
    QString text;
    QPointF baseline;
    QRectF place; // of the element, or of this line of it
    int font = 0;
    QColor colour;
    double squeeze = 1; // horizontal scale
    QString whole;      // the whole text, on the first of several lines
    int lines = 1;      // of the whole text, on its first line
};

/// Receives what a page shows, in the order of drawing. Places are in dots from the paper's top left corner.
class PageSink {
  public:
    virtual ~PageSink() = default;

    virtual void text(const PlacedText& text) = 0;
    virtual void line(const Line& line) = 0;
    virtual void box(const Box& box) = 0;
};

} // namespace tarvessa::report
