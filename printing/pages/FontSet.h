#pragma once

#include "printing/layout/Layout.h"

#include <QFontMetricsF>

#include <array>

namespace tarvessa::report {

/// The fonts of a layout with their measures, prepared once.
class FontSet {
  public:
    explicit FontSet(const std::vector<Font>& fonts);

    const QFont& font(int index) const { return at(index).font; }
    double ascent(int index) const { return at(index).ascent; }
    double lineHeight(int index) const { return at(index).lineHeight; }

    /// The width of a text as it is drawn.
    double width(int index, const QString& text) const;

    /// True when the text is sure to fit, told from the widths of its single characters; false when only
    /// width() can tell.
    bool surelyFits(int index, const QString& text, double width) const;

    /// The text, with its end replaced by "…" when it is too wide.
    QString cut(int index, const QString& text, double width) const;

    /// The text broken between words, and within one that is too wide by itself, into lines of this width.
    /// Line breaks in the text stay.
    QStringList wrap(int index, const QString& text, double width) const;

  private:
    struct Prepared {
        QFont font;
        QFontMetricsF metrics;
        double ascent = 0;
        double lineHeight = 0;
        std::array<float, 256> advances{}; // Latin-1
    };
    const Prepared& at(int index) const { return m_fonts[static_cast<size_t>(index)]; }

    std::vector<Prepared> m_fonts;
};

} // namespace tarvessa::report
