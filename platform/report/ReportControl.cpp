#include "platform/report/ReportControl.h"

#include "platform/RuntimeError.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace tarvessa {

ReportControl::ReportControl(QWidget* owner, QString connectionString)
    : m_owner(owner), m_connectionString(std::move(connectionString)),
      m_clock([] { return QDateTime::currentDateTime(); }) {
}

ReportControl::~ReportControl() = default;

void ReportControl::setFormula(int slot, const QString& text) {
    if (text.isEmpty())
        m_formulas.remove(slot);
    else
        m_formulas.insert(slot, text);
}

QString ReportControl::formula(int slot) const {
    return m_formulas.value(slot);
}

void ReportControl::setSQLQuery(const QString& query) {
    m_query = query;
    m_queryLayout.clear();
}

QString ReportControl::queryFor(const QString& layoutPath) {
    if (m_query.isEmpty())
        return {};
    if (m_queryLayout.isEmpty())
        m_queryLayout = layoutPath;
    return m_queryLayout == layoutPath ? m_query : QString();
}

void ReportControl::setAction(int action) {
    if (action != 1)
        return;
    const QString path = QString(m_fileName).replace(u'\\', u'/');
    if (!QFileInfo::exists(path))
        throw RuntimeError(ErrorNumber::FileNotFound,
                           u"O arquivo de layout do relatório não foi encontrado: %1"_s.arg(path));
    queryFor(path);
}

} // namespace tarvessa
