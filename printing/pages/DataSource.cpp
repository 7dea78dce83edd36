#include "printing/pages/DataSource.h"

#include "base/RuntimeError.h"
#include "printing/layout/QueryText.h"

using namespace Qt::StringLiterals;

namespace tarvessa::report {

DataSource::DataSource(const QString& connectionString, const QString& sql) : m_query(sql) {
    if (const QString problem = queryProblem(sql); !problem.isEmpty())
        throw RuntimeError(static_cast<int>(ErrorNumber::InvalidLayout),
                           u"A consulta do relatório foi recusada: %1."_s.arg(problem), {}, sql);
    m_connection.open(connectionString);
    m_result.open(m_connection, sql);
    m_names = m_result.columnNames();
}

int DataSource::column(const QString& name) const {
    for (int i = 0; i < m_names.size(); ++i)
        if (m_names[i].compare(name, Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

void DataSource::read(qsizetype rows) {
    if (m_complete)
        return;
    std::vector<std::optional<QByteArray>> cells(static_cast<size_t>(m_names.size()));
    for (; rows > 0 && !m_result.atEnd(); --rows) {
        for (int i = 0; i < m_names.size(); ++i) {
            const odbc::Field field = m_result.field(i);
            auto& cell = cells[static_cast<size_t>(i)];
            if (field.isNull())
                cell.reset();
            else
                cell = field.text().toUtf8();
        }
        m_rows.append(cells);
        m_result.moveNext();
    }
    if (m_result.atEnd()) {
        m_complete = true;
        m_result.close();
        m_connection.close();
    }
}

} // namespace tarvessa::report
