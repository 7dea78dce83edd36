#include "core/Relatorio.h"

#include "base/RuntimeError.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

ReportControl* CRW = nullptr;

ReportControl& ControleDeRelatorio() {
    if (!CRW)
        throw RuntimeError(ErrorNumber::ObjectRequired,
                           u"O objeto é obrigatório: não há controle de relatório."_s);
    return *CRW;
}

} // namespace tarvessa
