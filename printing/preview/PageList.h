#pragma once

#include <QListView>

namespace tarvessa::report {

class PageModel;
class Report;

/// The pages of a report as small pictures, which are drawn when they come into view.
class PageList : public QListView {
    Q_OBJECT

  public:
    PageList(const Report& report, QWidget* parent);

    /// Takes in the pages that have been added and makes `page` (from 0) the current one.
    void showPages(int page);

  Q_SIGNALS:
    /// The operator has chosen another page (from 0).
    void chosen(int page);

  protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

  private:
    PageModel* m_pages;
    bool m_isUpdating = false;
};

} // namespace tarvessa::report
