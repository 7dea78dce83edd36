#include "app/Run.h"

#include "closing/PainelFechamento.h"
#include "core/AcessoDados.h"

#include <QApplication>

namespace tarvessa {

int run() {
    int result = 0;
    {
        PainelFechamento panel;
        if (panel.Form_Load())
            result = QApplication::exec();
    }
    EncerraBanco();
    return result;
}

} // namespace tarvessa
