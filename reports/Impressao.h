#pragma once

#include <QString>

namespace tarvessa {

/// Shows the preview of a layout of the program's folder `rpt`, such as "COMISSAO.RPT", maximised, with the
/// formulas and the query that CRW holds. Raises RuntimeError.
void MostraRelatorio(const QString& layout);

} // namespace tarvessa
