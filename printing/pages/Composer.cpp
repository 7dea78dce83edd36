#include "printing/pages/Composer.h"

#include <limits>

namespace tarvessa::report {

void Composer::compose(int page, PageSink& sink) const {
    Context context{m_paginator.firstRow(page), nullptr, page + 1,
                    m_paginator.complete() ? m_paginator.pageCount() : 0};
    const auto fixedBand = [&](const std::optional<Band>& band, double top) {
        if (band)
            composeBand({&*band, 0, -1, static_cast<float>(top), static_cast<float>(band->height), false},
                        context, sink);
    };
    if (page == 0)
        fixedBand(m_layout.reportHead, m_layout.printable().top());
    fixedBand(m_layout.pageHead,
              m_paginator.bodyTop(page) - (m_layout.pageHead ? m_layout.pageHead->height : 0));
    for (const Item& item : m_paginator.items(page)) {
        context.row = item.row;
        context.totals = m_paginator.totals(item);
        composeBand(item, context, sink);
    }
    context.row = m_paginator.lastRow(page);
    context.totals = nullptr;
    fixedBand(m_layout.pageFoot, m_paginator.footTop());
}

void Composer::composeBand(const Item& item, const Context& context, PageSink& sink) const {
    const Band& band = *item.band;
    const QPointF origin(m_layout.printable().left(), static_cast<double>(item.top));
    const QColor& fill = item.striped ? band.stripe : band.fill;
    if (fill.isValid())
        sink.box({QRectF(origin, QSizeF(m_layout.printable().width(), static_cast<double>(item.height))),
                  0,
                  {},
                  fill,
                  0});
    // Elements below a text that has grown move down by the growth.
    const double growth = static_cast<double>(item.height) - band.height;
    double grownFrom = std::numeric_limits<double>::max();
    if (growth > 1)
        for (const Text& text : band.texts)
            if (text.wraps)
                grownFrom = qMin(grownFrom, text.place.bottom());
    const auto originAt = [&](double top) { return top < grownFrom ? origin : origin + QPointF(0, growth); };
    for (const Box& box : band.boxes) {
        Box placed = box;
        placed.place.translate(originAt(box.place.top()));
        if (box.place.top() < grownFrom && box.place.bottom() >= grownFrom)
            placed.place.setBottom(placed.place.bottom() + growth);
        sink.box(placed);
    }
    for (const Line& line : band.lines) {
        Line placed = line;
        placed.line.setP1(line.line.p1() + originAt(line.line.y1()));
        placed.line.setP2(line.line.p2() + originAt(line.line.y2()));
        sink.line(placed);
    }
    for (const Text& text : band.texts)
        composeText(text, originAt(text.place.top()), context, sink);
}

void Composer::composeText(const Text& text, QPointF origin, const Context& context, PageSink& sink) const {
    const QString content = m_values.text(text, context);
    if (content.isEmpty())
        return;
    const QRectF place = text.place.translated(origin);
    if (!text.wraps) {
        sink.text(placeLine(text, content, place));
        return;
    }
    QRectF linePlace = place;
    const QStringList lines = m_fonts.wrap(text.font, content, place.width());
    for (qsizetype i = 0; i < lines.size(); ++i) {
        PlacedText placed = placeLine(text, lines[i], linePlace);
        if (i == 0 && lines.size() > 1) {
            placed.whole = content;
            placed.lines = static_cast<int>(lines.size());
        }
        sink.text(placed);
        linePlace.translate(0, m_fonts.lineHeight(text.font));
    }
}

PlacedText Composer::placeLine(const Text& text, const QString& content, const QRectF& place) const {
    PlacedText placed{content, {}, place, text.font, text.colour, 1, {}, 1};
    double width = 0; // measured only where it is needed
    if (text.alignment != Qt::AlignLeft || !m_fonts.surelyFits(text.font, content, place.width())) {
        width = m_fonts.width(text.font, content);
        if (width > place.width() && (text.shrinks || text.wraps)) {
            placed.squeeze = place.width() / width;
            width = place.width();
        } else if (width > place.width()) {
            placed.text = m_fonts.cut(text.font, content, place.width());
            width = m_fonts.width(text.font, placed.text);
        }
    }
    const double x = text.alignment == Qt::AlignRight     ? place.right() - width
                     : text.alignment == Qt::AlignHCenter ? place.center().x() - width / 2
                                                          : place.left();
    const double y =
        place.top() + (place.height() - m_fonts.lineHeight(text.font)) / 2 + m_fonts.ascent(text.font);
    placed.baseline = QPointF(x, y);
    return placed;
}

} // namespace tarvessa::report
