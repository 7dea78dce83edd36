#pragma once

/// The columns of the two grids of the targets screen.
namespace tarvessa {

namespace colunasMeta {
enum Coluna {
    Codigo,
    Produto,
    Quantidade,
    Excluir,
    Id,
};
} // namespace colunasMeta

namespace colunasQuadro {
enum Coluna {
    Codigo,
    Descricao,
    Meta,
    Vendido,
    PercMeta,
    TotalVenda,
    Devolucao,
    PercDevolucao,
};
} // namespace colunasQuadro

} // namespace tarvessa
