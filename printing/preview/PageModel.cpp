#include "printing/preview/PageModel.h"

#include "base/RuntimeError.h"
#include "printing/output/PagePainter.h"
#include "printing/pages/Report.h"

#include <QPainter>

using namespace Qt::StringLiterals;

namespace tarvessa::report {

namespace {

constexpr int longestSide = 120; // pixels of a picture
constexpr int keptPictures = 100;

} // namespace

PageModel::PageModel(const Report& report, qreal devicePixelRatio, QObject* parent)
    : QAbstractListModel(parent), m_report(report), m_devicePixelRatio(devicePixelRatio),
      m_pictures(keptPictures) {
}

void PageModel::update() {
    const int count = m_report.pageCount();
    if (count > m_count) {
        beginInsertRows({}, m_count, count - 1);
        m_count = count;
        endInsertRows();
    }
    if (m_report.complete() && !m_wasComplete) {
        m_wasComplete = true;
        m_pictures.clear();
        if (m_count > 0)
            Q_EMIT dataChanged(index(0), index(m_count - 1), {Qt::DecorationRole});
    }
}

int PageModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_count;
}

QVariant PageModel::data(const QModelIndex& index, int role) const {
    if (role == Qt::DisplayRole)
        return QString::number(index.row() + 1);
    if (role == Qt::AccessibleTextRole)
        return u"Página %1"_s.arg(index.row() + 1);
    if (role == Qt::DecorationRole)
        return picture(index.row());
    if (role == Qt::TextAlignmentRole)
        return static_cast<int>(Qt::AlignCenter);
    return {};
}

QPixmap PageModel::picture(int page) const {
    if (const QPixmap* drawn = m_pictures.object(page))
        return *drawn;
    const QSizeF paper = m_report.layout().paper();
    const double scale = longestSide / qMax(paper.width(), paper.height());
    QPixmap pixmap((paper * scale * m_devicePixelRatio).toSize());
    pixmap.setDevicePixelRatio(m_devicePixelRatio);
    pixmap.fill(Qt::white);
    try {
        QPainter painter(&pixmap);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
        painter.scale(scale, scale);
        paintPage(m_report, painter, page);
    } catch (const RuntimeError&) {
        pixmap.fill(Qt::white);
    }
    m_pictures.insert(page, new QPixmap(pixmap));
    return pixmap;
}

} // namespace tarvessa::report
