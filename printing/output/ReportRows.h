#pragma once

#include "printing/layout/Layout.h"
#include "sheets/Sheet.h"

namespace tarvessa::report {

class Report;

/// The rows of a report that have been read, for a spreadsheet: every column of the query, with the heading
/// and the format that the layout gives it.
class ReportRows final : public sheet::Source {
  public:
    /// `report` outlives this object.
    explicit ReportRows(const Report& report);

    const QList<sheet::Column>& columns() const override { return m_columns; }
    qsizetype rowCount() const override;
    sheet::Cell cell(qsizetype row, qsizetype column) const override;

  private:
    void addColumn(const QString& name);
    int widthOf(int column) const;

    const Report& m_report;
    QList<sheet::Column> m_columns;
    std::vector<Format> m_formats;
};

} // namespace tarvessa::report
