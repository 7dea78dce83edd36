#include "printing/output/XlsxFile.h"

#include "printing/output/ReportRows.h"
#include "printing/pages/Report.h"
#include "sheets/XlsxFile.h"

namespace tarvessa::report {

void saveXlsx(Report& report, const QString& path) {
    report.readAll();
    sheet::saveXlsx(ReportRows(report), path);
}

} // namespace tarvessa::report
