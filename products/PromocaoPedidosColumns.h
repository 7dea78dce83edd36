#pragma once

/// Columns of the promotional price screen's grid.
namespace tarvessa::promocaopedidos {

enum Column {
    Id,
    Cliente,
    Fantasia,
    Cidade,
    Quantidade,
    Unitario,
    Selecao,
};

} // namespace tarvessa::promocaopedidos
