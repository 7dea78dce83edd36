#include "printing/output/PagePainter.h"

#include "printing/output/PainterSink.h"
#include "printing/pages/Report.h"

namespace tarvessa::report {

void paintPage(const Report& report, QPainter& painter, int page) {
    PainterSink sink(painter, report.fonts());
    report.compose(page, sink);
}

} // namespace tarvessa::report
