#pragma once

#include <QStyledItemDelegate>

namespace tarvessa {

/// Draws a grid's cell: a picture stands in the middle of its cell, long texts wrap where the row has room,
/// and a single word (a code, a number) is drawn narrower rather than cut.
class GridDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

  protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

} // namespace tarvessa
