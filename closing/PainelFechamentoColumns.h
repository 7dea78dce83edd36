#pragma once

/// The columns of the panel's listing grid.
namespace tarvessa::colunas {

enum Coluna {
    Pedido,
    Tipo,
    Cliente,
    Vendedor,
    Cidade,
    Total,
    DiasVenc,
    FormaPagto,
    Tabela,
    Selecao,
    CodigoCli,
};

} // namespace tarvessa::colunas
