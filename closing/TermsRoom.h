#pragma once

#include "odbc/ColumnRoom.h"

namespace tarvessa {

/// What the columns of `clientes` that are edited in the list can store.
struct TermsRoom {
    odbc::ColumnRoom prazo;
    odbc::ColumnRoom forma;
    odbc::ColumnRoom tabela;
};

} // namespace tarvessa
