#pragma once

#include <QString>

namespace tarvessa::report {

/// A report that has been run: its data, its pages, and the ways to write them.
class Report {
  public:
    /// Writes all pages as a PDF file. Raises RuntimeError when the file cannot be written.
    void savePdf(const QString& path);

    /// Writes the report's data as a CSV file. Raises RuntimeError when the file cannot be written.
    void saveCsv(const QString& path);
};

} // namespace tarvessa::report
