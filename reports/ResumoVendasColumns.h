#pragma once

/// The columns of the sales summary's grids.
namespace tarvessa::resumovendas {

enum Column {
    Cnpj,
    RazaoSocial,
    Fantasia,
    Vendas,
    Devolucoes,
    PorcDevolvido,
};

} // namespace tarvessa::resumovendas
