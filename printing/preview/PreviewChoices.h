#pragma once

#include <QPrinter>
#include <QString>

namespace tarvessa::report {

/// What the operator chose last in a preview; the next preview proposes it again.
struct PreviewChoices {
    QString folder; // of saved files; empty before the first
    QString printer;
    QPrinter::PrintRange range = QPrinter::AllPages;
    int firstPage = 0; // of a page range, from 1
    int lastPage = 0;
};

} // namespace tarvessa::report
