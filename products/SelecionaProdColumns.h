#pragma once

/// Columns of the selection screen's grid.
namespace tarvessa::selecionaprod {

enum Column {
    CodFabr,
    Descricao,
    Estoque,
    Preco1,
    Preco2,
    Preco3,
    Preco4,
    UltimaAlteracao,
    Aplicacao,
    Deposito,
    Observacao,
    Unidade,
    ColumnCount,
};

} // namespace tarvessa::selecionaprod
