#include "printing/output/Printing.h"

#include "base/RuntimeError.h"
#include "printing/output/PagePainter.h"
#include "printing/pages/Report.h"

#include <QPainter>
#include <QPrinter>

using namespace Qt::StringLiterals;

namespace tarvessa::report {

void print(Report& report, QPrinter& printer, int first, int last) {
    report.readAll();
    // A page that failed would leave those before it on the printer, so all are composed beforehand.
    for (int page = first; page <= last; ++page)
        report.texts(page);
    printer.setDocName(report.title());
    printer.setFullPage(true);
    QPainter painter;
    if (!painter.begin(&printer))
        throw RuntimeError(ErrorNumber::FileNotWritable,
                           u"A impressora %1 não aceitou a impressão."_s.arg(printer.printerName()));
    const QSizeF paper = printer.pageLayout().fullRectPixels(printer.resolution()).size();
    const QSizeF page = report.layout().paper();
    const double scale = qMin(paper.width() / page.width(), paper.height() / page.height());
    painter.scale(scale, scale);
    const bool backwards = printer.pageOrder() == QPrinter::LastPageFirst;
    const int copies = printer.supportsMultipleCopies() ? 1 : qMax(1, printer.copyCount());
    const int pages = last - first + 1;
    for (int i = 0; i < pages * copies; ++i) {
        if (i > 0 && !printer.newPage())
            throw RuntimeError(ErrorNumber::FileNotWritable, u"A impressora interrompeu a impressão."_s);
        const int step = printer.collateCopies() ? i % pages : i / copies;
        paintPage(report, painter, backwards ? last - step : first + step);
    }
}

} // namespace tarvessa::report
