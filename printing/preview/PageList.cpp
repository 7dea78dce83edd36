#include "printing/preview/PageList.h"

#include "printing/pages/Report.h"
#include "printing/preview/PageModel.h"

#include <QScopedValueRollback>

using namespace Qt::StringLiterals;

namespace tarvessa::report {

namespace {

constexpr int listWidth = 170; // pixels; room for a picture, its frame and the scroll bar

} // namespace

PageList::PageList(const Report& report, QWidget* parent)
    : QListView(parent), m_pages(new PageModel(report, devicePixelRatioF(), this)) {
    setObjectName(u"PageList"_s);
    setAccessibleName(u"Lista de páginas"_s);
    setModel(m_pages);
    setViewMode(QListView::IconMode);
    setFlow(QListView::TopToBottom);
    setWrapping(false);
    setMovement(QListView::Static);
    setUniformItemSizes(true);
    setLayoutMode(QListView::Batched);
    setSpacing(4);
    setIconSize({120, 120});
    setMinimumWidth(listWidth);
    setMaximumWidth(2 * listWidth);
}

void PageList::showPages(int page) {
    const QScopedValueRollback updating(m_isUpdating, true);
    m_pages->update();
    setCurrentIndex(m_pages->index(page));
}

void PageList::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QListView::currentChanged(current, previous);
    if (!m_isUpdating && current.isValid())
        Q_EMIT chosen(current.row());
}

} // namespace tarvessa::report
