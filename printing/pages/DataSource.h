#pragma once

#include "odbc/ResultSet.h"
#include "printing/pages/RowStore.h"

#include <QStringList>

namespace tarvessa::report {

/// Runs a report's query on a connection of its own and reads the rows on, part by part.
class DataSource {
  public:
    /// Connects and runs the query. Raises RuntimeError.
    DataSource(const QString& connectionString, const QString& sql);

    const QStringList& columnNames() const { return m_names; }

    /// The place of a column, letter case ignored; -1 when the query has no such column.
    int column(const QString& name) const;

    /// Reads up to so many rows more; closes the connection after the last one. Raises RuntimeError.
    void read(qsizetype rows);

    /// True when every row has been read.
    bool complete() const { return m_complete; }

    const RowStore& rows() const { return m_rows; }

  private:
    odbc::Connection m_connection;
    odbc::ResultSet m_result;
    QStringList m_names;
    RowStore m_rows;
    bool m_complete = false;
};

} // namespace tarvessa::report
