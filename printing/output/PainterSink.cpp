#include "printing/output/PainterSink.h"

#include <QPainter>

namespace tarvessa::report {

// Font and pen stay set from text to text: changing them costs more than drawing a short text.
void PainterSink::text(const PlacedText& text) {
    if (text.font != m_font) {
        m_painter.setFont(m_fonts.font(text.font));
        m_font = text.font;
    }
    if (text.colour != m_colour) {
        m_painter.setPen(text.colour);
        m_colour = text.colour;
    }
    if (text.squeeze >= 1) {
        m_painter.drawText(text.baseline, text.text);
        return;
    }
    m_painter.save();
    m_painter.translate(text.baseline);
    m_painter.scale(text.squeeze, 1);
    m_painter.drawText(QPointF(), text.text);
    m_painter.restore();
}

void PainterSink::line(const Line& line) {
    m_painter.setPen(QPen(line.colour, line.thickness, Qt::SolidLine, Qt::FlatCap));
    m_painter.drawLine(line.line);
    m_colour = QColor();
}

void PainterSink::box(const Box& box) {
    m_painter.setBrush(box.fill.isValid() ? QBrush(box.fill) : QBrush(Qt::NoBrush));
    m_painter.setPen(box.thickness > 0 ? QPen(box.colour, box.thickness) : QPen(Qt::NoPen));
    if (box.radius > 0)
        m_painter.drawRoundedRect(box.place, box.radius, box.radius);
    else
        m_painter.drawRect(box.place);
    m_colour = QColor();
}

} // namespace tarvessa::report
