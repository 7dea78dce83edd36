#pragma once

#include "bench/support/Table.h"

namespace tarvessa::test {
class PrivateServer;
}

namespace tarvessa::bench {

/// Searching 200,000 products for a word that 1, 100 and 5,000 descriptions hold, from the typed text to the
/// painted selection screen (to the code, where one product matches), against the server's command-line
/// client printing the same query. Replaces the products there are.
QList<Row> productRows(test::PrivateServer& server);

} // namespace tarvessa::bench
