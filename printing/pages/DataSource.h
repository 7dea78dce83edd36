#pragma once

#include "odbc/ResultSet.h"
#include "printing/pages/RowStore.h"

#include <QStringList>

namespace tarvessa::report {

/// Runs a report's query on a connection of its own and reads the rows in parts.
class DataSource {
  public:
    /// Connects and runs the query. Raises RuntimeError: InvalidLayout for a query that does more than read
    /// (see queryProblem), before anything is sent; any error of the database.
    DataSource(const QString& connectionString, const QString& sql);

    const QString& query() const { return m_query; }

    const QStringList& columnNames() const { return m_names; }

    /// The place of a column, letter case ignored; -1 when the query has no such column.
    int column(const QString& name) const;

    /// Reads up to this many more rows; closes the connection after the last one. Raises RuntimeError.
    void read(qsizetype rows);

    /// True when every row has been read.
    bool complete() const { return m_complete; }

    const RowStore& rows() const { return m_rows; }

  private:
    QString m_query;
    odbc::Connection m_connection;
    odbc::ResultSet m_result;
    QStringList m_names;
    RowStore m_rows;
    bool m_complete = false;
};

} // namespace tarvessa::report
