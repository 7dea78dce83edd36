#pragma once

#include <QStyledItemDelegate>

namespace tarvessa {

/// Draws a grid's cell: the current row is tinted where its cells have no colour of their own and edged by
/// two lines; what the find line has found is coloured; a picture stands in the middle of its cell, on a
/// light plate where the cell is selected; texts are written in their column's size; long ones wrap where the
/// row has room and are elided where it has not.
class GridDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

  protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

  private:
    void paintCell(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;
};

} // namespace tarvessa
