#include "printing/pages/FontSet.h"

#include <QTextLayout>

namespace tarvessa::report {

FontSet::FontSet(const std::vector<Font>& fonts) {
    for (const Font& font : fonts) {
        Prepared prepared{font.font, QFontMetricsF(font.font), 0, 0, {}};
        prepared.ascent = prepared.metrics.ascent();
        prepared.lineHeight = prepared.metrics.height();
        for (size_t i = 0; i < prepared.advances.size(); ++i)
            prepared.advances[i] =
                static_cast<float>(prepared.metrics.horizontalAdvance(QChar(static_cast<char16_t>(i))));
        m_fonts.push_back(std::move(prepared));
    }
}

double FontSet::width(int index, const QString& text) const {
    return at(index).metrics.horizontalAdvance(text);
}

bool FontSet::surelyFits(int index, const QString& text, double width) const {
    const auto& advances = at(index).advances;
    double sum = 0;
    for (const QChar c : text) {
        if (c.unicode() >= advances.size())
            return false;
        sum += advances[c.unicode()];
    }
    // Kerning moves some pairs of letters further apart.
    constexpr double kerningReserve = 1.02;
    return sum * kerningReserve <= width;
}

QString FontSet::cut(int index, const QString& text, double width) const {
    return at(index).metrics.elidedText(text, Qt::ElideRight, width);
}

QStringList FontSet::wrap(int index, const QString& text, double width) const {
    QStringList lines;
    for (const QString& paragraph : text.split(u'\n'))
        lines += wrapParagraph(index, paragraph, width);
    return lines;
}

QStringList FontSet::wrapParagraph(int index, const QString& paragraph, double width) const {
    if (paragraph.isEmpty())
        return {QString()};
    QTextLayout layout(paragraph, at(index).font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    QList<qsizetype> starts;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        starts.append(line.textStart());
    }
    layout.endLayout();
    starts.append(paragraph.size());

    const auto lineAt = [&](qsizetype line) {
        return QStringView(paragraph).sliced(starts[line], starts[line + 1] - starts[line]).trimmed();
    };
    for (qsizetype line = starts.size() - 2; line > 0; --line)
        if (lineAt(line).size() == 1)
            starts[line] =
                startOfMore(index, paragraph, starts[line - 1], starts[line], starts[line + 1], width);
    QStringList lines;
    for (qsizetype line = 0; line + 1 < starts.size(); ++line)
        if (line == 0 || starts[line + 1] > starts[line])
            lines.append(lineAt(line).toString());
    return lines;
}

// Where a line of a single character (from `start` to `end`) begins instead. Gives `end` when the line before
// it (from `before`) has nothing to spare: the character then joins that line.
qsizetype FontSet::startOfMore(int index, const QString& paragraph, qsizetype before, qsizetype start,
                               qsizetype end, double width) const {
    if (!paragraph[start - 1].isSpace())
        return start - before > 2 ? start - 1 : end; // inside a word: one letter more
    qsizetype word = start;
    while (word > before && paragraph[word - 1].isSpace())
        --word;
    while (word > before && !paragraph[word - 1].isSpace())
        --word;
    const bool fits = this->width(index, paragraph.sliced(word, end - word).trimmed()) <= width;
    constexpr qsizetype letterAndBlank = 2;
    return word - before > letterAndBlank && fits ? word : end;
}

} // namespace tarvessa::report
