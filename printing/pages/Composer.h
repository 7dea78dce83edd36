#pragma once

#include "printing/pages/PageSink.h"
#include "printing/pages/Paginator.h"

namespace tarvessa::report {

/// Composes a page when it is shown, printed or searched.
class Composer {
  public:
    Composer(const Layout& layout, const Values& values, const FontSet& fonts, const Paginator& paginator)
        : m_layout(layout), m_values(values), m_fonts(fonts), m_paginator(paginator) {}

    /// Hands what a page (from 0) shows to the sink. Raises RuntimeError when a value cannot be calculated.
    void compose(int page, PageSink& sink) const;

  private:
    void composeBand(const Item& item, const Context& context, PageSink& sink) const;
    void composeText(const Text& text, QPointF origin, const Context& context, PageSink& sink) const;
    PlacedText placeLine(const Text& text, const QString& content, const QRectF& place) const;

    const Layout& m_layout;
    const Values& m_values;
    const FontSet& m_fonts;
    const Paginator& m_paginator;
};

} // namespace tarvessa::report
