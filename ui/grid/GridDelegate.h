#pragma once

#include <QStyledItemDelegate>

namespace tarvessa {

/// Draws a grid's cell: a picture stands in the middle of its cell, on a light plate where the cell is
/// selected; long texts wrap where the row has room and are elided where it has not.
class GridDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

  protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

} // namespace tarvessa
