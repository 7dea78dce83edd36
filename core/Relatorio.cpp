#include "core/Relatorio.h"

namespace tarvessa {

ReportControl* CRW = nullptr;

} // namespace tarvessa
