#pragma once

namespace tarvessa::conferencia {

/// The columns of the list.
enum Column { Pedido, Cliente, Total, Resultado, Detalhe };

/// The columns of the totals.
enum TotalsColumn { TotalsGroup, TotalsCount, TotalsSum };

} // namespace tarvessa::conferencia
