#include "bench/StartedPanel.h"

#include "bench/support/Painted.h"
#include "closing/PainelFechamento.h"
#include "ui/grid/Grid.h"

#include <stdexcept>

namespace tarvessa::bench {

void startPanel(PainelFechamento& panel, int documents) {
    if (!panel.Form_Load())
        throw std::runtime_error("the panel did not start");
    panel.show();
    const auto* grid = panel.findChild<Grid*>(QStringLiteral("Grid1"));
    waitPainted(grid->viewport());
    if (grid->rows() != documents + 1)
        throw std::runtime_error("the panel did not list what it should");
}

} // namespace tarvessa::bench
