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
    // Some pairs of letters stand further apart than their widths say.
    constexpr double kerningReserve = 1.02;
    return sum * kerningReserve <= width;
}

QString FontSet::cut(int index, const QString& text, double width) const {
    return at(index).metrics.elidedText(text, Qt::ElideRight, width);
}

QStringList FontSet::wrap(int index, const QString& text, double width) const {
    QStringList lines;
    for (const QString& paragraph : text.split(u'\n')) {
        QTextLayout layout(paragraph, at(index).font);
        QTextOption option;
        option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        layout.setTextOption(option);
        layout.beginLayout();
        for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
            line.setLineWidth(width);
            lines.append(paragraph.mid(line.textStart(), line.textLength()).trimmed());
        }
        layout.endLayout();
        if (paragraph.isEmpty())
            lines.append(QString());
    }
    return lines;
}

} // namespace tarvessa::report
