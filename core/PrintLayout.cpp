#include "core/PrintLayout.h"

#include "base/ProgramFolder.h"
#include "base/RuntimeError.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

ReportControl* CRW = nullptr;

ReportControl& reportControl() {
    if (!CRW)
        throw RuntimeError(ErrorNumber::ObjectRequired,
                           u"O objeto é obrigatório: não há controle de relatório."_s);
    return *CRW;
}

void setFormulas(const QStringList& formulas, int firstSlot) {
    ReportControl& control = reportControl();
    int slot = firstSlot;
    for (const QString& formula : formulas)
        control.setFormula(slot++, formula);
}

void clearFormulas(int count) {
    setFormulas(QStringList(count));
}

void printLayout(const QString& layout, const QString& documentName, const QStringList& formulas,
                 const QString& query) {
    constexpr int maximised = 2;
    constexpr int run = 1;
    ReportControl& control = reportControl();
    setFormulas(formulas);
    if (!query.isEmpty())
        control.setSQLQuery(query);
    control.setWindowState(maximised);
    control.setReportFileName(programFolder() + u"\\rpt\\"_s + layout);
    control.setDocumentName(documentName);
    control.setAction(run);
}

} // namespace tarvessa
