#include "ui/grid/GridHeader.h"

#include <QStyle>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarvessa {

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
            const int lines = static_cast<int>(captionLines(column).size());
            height = std::max(height, lines * QFontMetrics(captionFont(column)).lineSpacing() + margins);
        }
    return {usual.width(), height};
}

void GridHeader::initStyleOptionForIndex(QStyleOptionHeader* option, int column) const {
    QHeaderView::initStyleOptionForIndex(option, column);
    const QFontMetrics metrics(captionFont(column));
    QStringList lines = captionLines(column);
    for (QString& line : lines)
        line = metrics.elidedText(line, Qt::ElideRight, captionRoom(column));
    option->text = lines.join(u'\n');
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

// As few lines as there have to be, broken at blanks.
QStringList GridHeader::captionLines(int column) const {
    const QString caption = model()->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    const QFontMetrics metrics(captionFont(column));
    const int room = captionRoom(column);
    QStringList lines;
    const QStringList words = caption.split(u' ');
    for (const QString& word : words)
        if (!lines.isEmpty() && metrics.horizontalAdvance(lines.last() + u' ' + word) <= room)
            lines.last() += u' ' + word;
        else
            lines.append(word);
    return lines;
}

} // namespace tarvessa
