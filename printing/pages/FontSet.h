#pragma once

#include "printing/layout/Layout.h"

#include <QFontMetricsF>

#include <array>

namespace tarvessa::report {

/// The fonts of a layout and their measures.
class FontSet {
  public:
    explicit FontSet(const std::vector<Font>& fonts);

    const QFont& font(int index) const { return at(index).font; }
    double ascent(int index) const { return at(index).ascent; }
    double lineHeight(int index) const { return at(index).lineHeight; }

    /// The width of the text as drawn, in dots.
    double width(int index, const QString& text) const;

    /// True when the text certainly fits, judged by the widths of its characters; false when width() is
    /// needed to decide.
    bool surelyFits(int index, const QString& text, double width) const;

    /// The text, with its end replaced by "…" when it is too wide.
    QString cut(int index, const QString& text, double width) const;

    /// The text broken into lines of this width: between words, and within a word that is wider than a line.
    /// Line breaks in the text are kept. No line but the first consists of one character: it gets more from
    /// the line before it, or joins that line, which is then a little too wide.
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
    QStringList wrapParagraph(int index, const QString& paragraph, double width) const;
    qsizetype startOfMore(int index, const QString& paragraph, qsizetype before, qsizetype start,
                          qsizetype end, double width) const;

    std::vector<Prepared> m_fonts;
};

} // namespace tarvessa::report
