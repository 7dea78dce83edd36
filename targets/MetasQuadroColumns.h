#pragma once

/// Columns of the two grids of the targets screen.
namespace tarvessa::metasquadro {

/// `Grid1`, the targets of a seller.
namespace grid1 {
enum Column {
    Codigo,
    Produto,
    Quantidade,
    Excluir,
    Id,
};
} // namespace grid1

/// `Grid2`, the progress.
namespace grid2 {
enum Column {
    Codigo,
    Descricao,
    Meta,
    Vendido,
    PercMeta,
    TotalVenda,
    Devolucao,
    PercDevolucao,
};
} // namespace grid2

} // namespace tarvessa::metasquadro
