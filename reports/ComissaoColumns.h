#pragma once

/// The columns of the commission grid.
namespace tarvessa::comissao {

enum Column {
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

/// Rows below the last seller: an empty one and the totals.
inline constexpr int footerRows = 2;

} // namespace tarvessa::comissao
