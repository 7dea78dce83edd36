#pragma once

#include "printing/pages/FontSet.h"
#include "printing/pages/PageSink.h"

class QPainter;

namespace tarvessa::report {

/// Draws a page with a painter whose unit is the dot.
class PainterSink : public PageSink {
  public:
    PainterSink(QPainter& painter, const FontSet& fonts) : m_painter(painter), m_fonts(fonts) {}

    void text(const PlacedText& text) override;
    void line(const Line& line) override;
    void box(const Box& box) override;

  private:
    QPainter& m_painter;
    const FontSet& m_fonts;
    int m_font = -1;
    QColor m_colour; // of the pen; invalid when it is no text's
};

} // namespace tarvessa::report
