#include "reports/Impressao.h"

#include "core/Pastas.h"
#include "core/Relatorio.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

void MostraRelatorio(const QString& layout) {
    constexpr int maximizada = 2;
    constexpr int executa = 1;
    CRW->setWindowState(maximizada);
    CRW->setReportFileName(PastaDoPrograma() + u"\\rpt\\"_s + layout);
    CRW->setAction(executa);
}

} // namespace tarvessa
