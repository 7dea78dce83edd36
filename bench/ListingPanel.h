#pragma once

#include "closing/PainelFechamento.h"

class QPushButton;

namespace tarvessa {
class Grid;
}

namespace tarvessa::test {
class PrivateServer;
}

namespace tarvessa::bench {

/// The panel as it stands after start-up, on the screen, ready to list. Opens the database, and closes it
/// when it goes.
class ListingPanel {
  public:
    /// Raises std::runtime_error when the panel does not start.
    ListingPanel();
    ~ListingPanel();
    ListingPanel(const ListingPanel&) = delete;
    ListingPanel& operator=(const ListingPanel&) = delete;

    /// Presses "Carregar as Pré-Vendas" and waits until the grid is painted.
    void list();

    /// Raises std::runtime_error when there are not so many in the grid.
    void expectRows(int documents) const;

    /// Back to the panel without rows, from where the button can be pressed again.
    void empty();

    /// The listing as the panel sends it, taken from the server's own log. Raises std::runtime_error.
    QString statement(test::PrivateServer& server);

    PainelFechamento& panel() { return m_panel; }

  private:
    PainelFechamento m_panel;
    Grid* m_grid = nullptr;
    QPushButton* m_button = nullptr;
};

} // namespace tarvessa::bench
