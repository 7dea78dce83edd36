#pragma once

/// The columns of the panel's listing grid.
namespace tarvessa::painelfechamento {

enum Column {
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

} // namespace tarvessa::painelfechamento
