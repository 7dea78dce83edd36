#pragma once

namespace tarvessa {
class PainelFechamento;
}

namespace tarvessa::bench {

/// Starts the panel and shows it with its list painted. Raises std::runtime_error when it does not start or
/// does not list so many documents.
void startPanel(PainelFechamento& panel, int documents);

} // namespace tarvessa::bench
