#include "ui/grid/GridDelegate.h"

#include <QIcon>
#include <QPainter>

namespace tarvessa {

namespace {
constexpr int largestPicture = 20;
constexpr int pictureMargin = 3;
constexpr int plateMargin = 2;
constexpr double plateRadius = 3.0;

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
    background.icon = QIcon(); // without the feature the style would still draw it
    option.widget->style()->drawControl(QStyle::CE_ItemViewItem, &background, painter, option.widget);
    const int side = qMin(largestPicture, option.rect.height() - pictureMargin);
    QRect place(0, 0, side, side);
    place.moveCenter(option.rect.center());
    // The pictures are made for a light ground; the selection's colour may be as dark as they are.
    if (option.state.testFlag(QStyle::State_Selected)) {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(Qt::NoPen);
        painter->setBrush(Qt::white);
        painter->drawRoundedRect(place.adjusted(-plateMargin, -plateMargin, plateMargin, plateMargin),
                                 plateRadius, plateRadius);
        painter->restore();
    }
    qvariant_cast<QIcon>(decoration).paint(painter, place);
}

// In a row of one line a wrapped text would lose its whole second line; elided it loses only its last
// letters.
void GridDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    if (option->rect.height() < 2 * option->fontMetrics.lineSpacing())
        option->features &= ~QStyleOptionViewItem::WrapText;
}

} // namespace tarvessa
