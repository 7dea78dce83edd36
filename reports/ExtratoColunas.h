#pragma once

/// The columns of a seller's statement.
namespace tarvessa::extrato {

enum Coluna {
    Data,
    Numero,
    Cliente,
    Pao,
    Outros,
    Total,
};

} // namespace tarvessa::extrato
