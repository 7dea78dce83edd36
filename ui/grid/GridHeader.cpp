#include "ui/grid/GridHeader.h"

#include "ui/grid/TextSizes.h"

#include <QPainter>
#include <QStyle>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

// As few lines as there have to be, broken at blanks.
QStringList brokenLines(const QString& text, const QFontMetrics& metrics, int room) {
    QStringList lines;
    const QStringList words = text.split(u' ');
    for (const QString& word : words)
        if (!lines.isEmpty() && metrics.horizontalAdvance(lines.last() + u' ' + word) <= room)
            lines.last() += u' ' + word;
        else
            lines.append(word);
    return lines;
}

} // namespace

GridHeader::GridHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
    setSectionsClickable(false);
    setHighlightSections(false);
    setMinimumSectionSize(0);
}

QSize GridHeader::sizeHint() const {
    const QSize usual = QHeaderView::sizeHint();
    int height = std::max(usual.height(), minimumHeight());
    const int margins = 2 * style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, this);
    for (int column = 0; column < count(); ++column)
        if (!isSectionHidden(column)) {
            const Caption shown = caption(column);
            const int lines = static_cast<int>(shown.lines.size());
            height = std::max(height, lines * QFontMetrics(shown.font).lineSpacing() + margins);
        }
    return {usual.width(), height};
}

void GridHeader::paintSection(QPainter* painter, const QRect& rect, int column) const {
    painter->save();
    painter->setFont(caption(column).font);
    QHeaderView::paintSection(painter, rect, column);
    painter->restore();
}

void GridHeader::initStyleOptionForIndex(QStyleOptionHeader* option, int column) const {
    QHeaderView::initStyleOptionForIndex(option, column);
    Caption shown = caption(column);
    const QFontMetrics metrics(shown.font);
    for (QString& line : shown.lines)
        line = metrics.elidedText(line, Qt::ElideRight, captionRoom(column));
    option->text = shown.lines.join(u'\n');
}

QFont GridHeader::captionFont(int column) const {
    const QVariant own = model()->headerData(column, Qt::Horizontal, Qt::FontRole);
    return own.isValid() ? own.value<QFont>().resolve(font()) : font();
}

int GridHeader::captionRoom(int column) const {
    const int margin = style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, this);
    const bool sorted = isSortIndicatorShown() && sortIndicatorSection() == column;
    const int arrow = sorted ? style()->pixelMetric(QStyle::PM_HeaderMarkSize, nullptr, this) + margin : 0;
    return sectionSize(column) - 2 * margin - arrow;
}

GridHeader::Caption GridHeader::caption(int column) const {
    const QString text = model()->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    const QFont usual = captionFont(column);
    const int room = captionRoom(column);
    const int most = mostReduction(usual);
    for (int pixels = 0; pixels <= most; ++pixels) {
        const QFont font = reduced(usual, pixels);
        const QFontMetrics metrics(font);
        const QStringList lines = brokenLines(text, metrics, room);
        if (std::all_of(lines.cbegin(), lines.cend(),
                        [&](const QString& line) { return metrics.horizontalAdvance(line) <= room; }))
            return {font, lines};
    }
    return {usual, brokenLines(text, QFontMetrics(usual), room)};
}

} // namespace tarvessa
