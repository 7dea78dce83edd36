#pragma once

#include <array>

/// The columns of the commission grid.
namespace tarvessa::comissao {

enum Coluna {
    Codigo,
    Nome,
    Pao,
    PorcPao,
    ComissaoPao,
    Outros,
    PorcOutros,
    ComissaoOutros,
    TotalVendas,
    TotalComissao,
    Devolucoes,
    PorcDevolucoes,
    Imprime,
};

/// Below the last seller stand an empty row and the row of totals.
inline constexpr int linhasDeTotais = 2;

} // namespace tarvessa::comissao
