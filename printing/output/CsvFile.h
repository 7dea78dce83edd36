#pragma once

#include "printing/layout/Layout.h"
#include "printing/pages/DataSource.h"

namespace tarvessa::report {

/// The data of a report as a spreadsheet takes it: every column of the query, headed as the layout says.
/// Columns with a format stand as they are printed with it, only without points between the thousands; all
/// others as in the database.
class CsvFile {
  public:
    /// All rows must have been read.
    CsvFile(const Layout& layout, const DataSource& data);

    /// Raises RuntimeError when the file cannot be written.
    void save(const QString& path) const;

  private:
    struct CsvColumn {
        QString heading;
        Format format;
    };

    QByteArray line(qsizetype row) const;

    const DataSource& m_data;
    std::vector<CsvColumn> m_columns;
};

} // namespace tarvessa::report
