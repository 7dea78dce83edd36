#include "ui/grid/GridDelegate.h"

#include <QIcon>
#include <QPainter>

namespace tarvessa {

namespace {
constexpr int largestPicture = 20;
constexpr int pictureMargin = 3;
constexpr int wholePercent = 100;
constexpr int narrowestPercent = 60;
constexpr int percentStep = 4;

// Tried step by step, since a narrowed font's advances are rounded.
void narrowWord(QStyleOptionViewItem* option) {
    const int margin =
        option->widget->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, option, option->widget);
    const int room = option->rect.width() - 2 * (margin + 1);
    const auto needed = [option] { return option->fontMetrics.horizontalAdvance(option->text); };
    for (int percent = wholePercent; needed() >= room && percent > narrowestPercent; percent -= percentStep) {
        option->font.setStretch(percent - percentStep);
        option->fontMetrics = QFontMetrics(option->font);
    }
}

} // namespace

void GridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
    const QVariant decoration = index.data(Qt::DecorationRole);
    if (decoration.isNull()) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    QStyleOptionViewItem background = option;
    initStyleOption(&background, index);
    background.features &= ~QStyleOptionViewItem::HasDecoration;
    background.text.clear();
    background.icon = QIcon(); // the style would still draw it, in no room
    option.widget->style()->drawControl(QStyle::CE_ItemViewItem, &background, painter, option.widget);
    const int side = qMin(largestPicture, option.rect.height() - pictureMargin);
    QRect place(0, 0, side, side);
    place.moveCenter(option.rect.center());
    qvariant_cast<QIcon>(decoration).paint(painter, place);
}

// In a row of one line a wrapped text would lose its whole last word instead of its last letters.
void GridDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    if (option->rect.height() < 2 * option->fontMetrics.lineSpacing())
        option->features &= ~QStyleOptionViewItem::WrapText;
    if (!option->text.isEmpty() && !option->text.contains(u' '))
        narrowWord(option);
}

} // namespace tarvessa
