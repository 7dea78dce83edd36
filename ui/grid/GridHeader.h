#pragma once

#include <QHeaderView>

namespace tarvessa {

/// A grid's header row. A caption wider than its column wraps between words; where a word has no room, the
/// caption is written smaller, down to three quarters; one that has no room even so is elided.
class GridHeader : public QHeaderView {
    Q_OBJECT

  public:
    explicit GridHeader(QWidget* parent);

    /// High enough for every visible caption, and for the minimum height that was set.
    QSize sizeHint() const override;

  protected:
    void paintSection(QPainter* painter, const QRect& rect, int column) const override;
    void initStyleOptionForIndex(QStyleOptionHeader* option, int column) const override;

  private:
    struct Caption {
        QFont font;
        QStringList lines;
    };

    QFont captionFont(int column) const;
    int captionRoom(int column) const;
    Caption caption(int column) const;
};

} // namespace tarvessa
