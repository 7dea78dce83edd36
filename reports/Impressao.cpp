#include "reports/Impressao.h"

#include "core/Pastas.h"
#include "core/Relatorio.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

void MostraRelatorio(const QString& layout) {
    constexpr int maximizada = 2;
    constexpr int executa = 1;
    ReportControl& crw = ControleDeRelatorio();
    crw.setWindowState(maximizada);
    crw.setReportFileName(PastaDoPrograma() + u"\\rpt\\"_s + layout);
    crw.setAction(executa);
}

} // namespace tarvessa
