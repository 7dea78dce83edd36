#pragma once

#include <QString>

namespace tarvessa::test {

class PrivateServer;

/// Whether the books of a shop fit together: what left the stock is what its log says and what the closed
/// lines hold; each closed pre-sale has one receivable and one cash row; receivables, cash book and closed
/// lines have one total; no pre-sale is closed in part. Stock was `initialStock` of each product. Empty, or
/// what does not fit. Raises TestError.
QString imbalanceOf(PrivateServer& server, int initialStock);

} // namespace tarvessa::test
