#include "printing/output/PdfFile.h"

#include "base/RuntimeError.h"
#include "printing/output/PagePainter.h"
#include "printing/pages/Report.h"

#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

using namespace Qt::StringLiterals;

namespace tarvessa::report {

void savePdf(Report& report, const QString& path) {
    report.readAll();
    QSaveFile file(path);
    const auto fail = [&] {
        throw RuntimeError(ErrorNumber::FileNotWritable,
                           u"Não foi possível gravar %1: %2"_s.arg(path, file.errorString()));
    };
    if (!file.open(QIODevice::WriteOnly))
        fail();
    {
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
    }
    if (!file.commit())
        fail();
}

} // namespace tarvessa::report
