#include "ui/grid/GridDelegate.h"

#include "ui/Shades.h"
#include "ui/grid/Grid.h"
#include "ui/grid/TextSizes.h"

#include <QIcon>
#include <QPainter>

namespace tarvessa {

namespace {
constexpr int largestPicture = 20;
constexpr int pictureMargin = 3;
constexpr int plateMargin = 2;
constexpr double plateRadius = 3.0;

bool isInCurrentRow(const QStyleOptionViewItem& option, const QModelIndex& index) {
    const auto* grid = static_cast<const Grid*>(option.widget);
    return grid->currentRow() == index.row() + 1;
}

} // namespace

void GridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
    paintCell(painter, option, index);
    if (!isInCurrentRow(option, index))
        return;
    const QRect& cell = option.rect;
    painter->save();
    painter->setPen(option.palette.color(QPalette::Highlight));
    painter->drawLine(cell.topLeft(), cell.topRight());
    painter->drawLine(cell.bottomLeft(), cell.bottomRight());
    painter->restore();
}

void GridDelegate::paintCell(QPainter* painter, const QStyleOptionViewItem& option,
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
    const auto* grid = static_cast<const Grid*>(option->widget);
    if (const int pixels = grid->textReduction(index.column()); pixels > 0) {
        option->font = reduced(option->font, pixels);
        option->fontMetrics = QFontMetrics(option->font);
    }
    if (option->rect.height() < 2 * option->fontMetrics.lineSpacing())
        option->features &= ~QStyleOptionViewItem::WrapText;
    if (grid->isHit(index.row() + 1, index.column())) {
        option->backgroundBrush = shades::foundGround;
        option->palette.setColor(QPalette::Text, shades::foundText);
    } else if (isInCurrentRow(*option, index) && option->backgroundBrush.style() == Qt::NoBrush) {
        option->backgroundBrush = shades::currentRow(option->palette);
    }
}

} // namespace tarvessa
