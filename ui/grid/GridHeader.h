#pragma once

#include <QHeaderView>

namespace tarvessa {

/// A grid's header row. A caption wider than its column wraps between words; what still has no room is
/// elided.
class GridHeader : public QHeaderView {
    Q_OBJECT

  public:
    explicit GridHeader(QWidget* parent);

    /// High enough for every visible caption, and for the minimum height that was set.
    QSize sizeHint() const override;

  protected:
    void initStyleOptionForIndex(QStyleOptionHeader* option, int column) const override;

  private:
    QFont captionFont(int column) const;
    int captionRoom(int column) const;
    QStringList captionLines(int column) const;
};

} // namespace tarvessa
