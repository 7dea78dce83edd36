#pragma once

#include <QAbstractListModel>
#include <QCache>
#include <QPixmap>

namespace tarvessa::report {

class Report;

/// The pages of a report as rows of a list: a small picture of each and its number.
class PageModel : public QAbstractListModel {
    Q_OBJECT

  public:
    PageModel(const Report& report, qreal devicePixelRatio, QObject* parent);

    /// Takes in the pages that have been added since the last call. When the report is complete, pictures
    /// drawn before are drawn again, because the number of pages is printed on them.
    void update();

    int rowCount(const QModelIndex& parent = {}) const override;

    /// The number as text and accessible text, the picture as decoration. A page that cannot be composed has
    /// an empty picture: the view reports the error when the page is shown.
    QVariant data(const QModelIndex& index, int role) const override;

  private:
    QPixmap picture(int page) const;

    const Report& m_report;
    qreal m_devicePixelRatio;
    int m_count = 0;
    bool m_wasComplete = false;
    mutable QCache<int, QPixmap> m_pictures;
};

} // namespace tarvessa::report
