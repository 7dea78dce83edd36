#include "printing/output/CsvFile.h"

#include "printing/output/ReportRows.h"
#include "printing/pages/Report.h"
#include "sheets/CsvFile.h"

namespace tarvessa::report {

void saveCsv(Report& report, const QString& path) {
    report.readAll();
    sheet::saveCsv(ReportRows(report), path);
}

} // namespace tarvessa::report
