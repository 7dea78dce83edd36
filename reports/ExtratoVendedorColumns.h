#pragma once

/// The columns of a seller's statement.
namespace tarvessa::extratovendedor {

enum Column {
    Data,
    Numero,
    Cliente,
    Pao,
    Outros,
    Total,
};

} // namespace tarvessa::extratovendedor
