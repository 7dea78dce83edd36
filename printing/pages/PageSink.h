#pragma once

#include "printing/layout/Layout.h"

namespace tarvessa::report {

/// A text at its place on a page.
struct PlacedText {
    QString text;
    QPointF baseline;
    QRectF place; // of the element; one line of it for a text of several
    int font = 0;
    QColor colour;
    double squeeze = 1; // horizontal scale
    QString whole;      // on the first line of a text of several: all of it
    int lines = 1;      // and how many there are
};

/// Takes what a page shows, in the order of drawing. Places are in dots from the paper's top left corner.
class PageSink {
  public:
    virtual ~PageSink() = default;

    virtual void text(const PlacedText& text) = 0;
    virtual void line(const Line& line) = 0;
    virtual void box(const Box& box) = 0;
};

} // namespace tarvessa::report
