#include "printing/output/PdfFile.h"

#include "base/WholeFile.h"
#include "printing/output/PagePainter.h"
#include "printing/pages/Report.h"

#include <QPainter>
#include <QPdfWriter>

namespace tarvessa::report {

void savePdf(Report& report, const QString& path) {
    report.readAll();
    writeWholeFile(path, [&report](QIODevice& file) {
        QPdfWriter writer(&file);
        writer.setTitle(report.title());
        writer.setResolution(dotsPerInch);
        QPageLayout paper(report.layout().page);
        paper.setMargins({});
        writer.setPageLayout(paper);
        QPainter painter(&writer);
        for (int page = 0; page < report.pageCount(); ++page) {
            if (page > 0)
                writer.newPage();
            paintPage(report, painter, page);
        }
    });
}

} // namespace tarvessa::report
