#include "app/Application.h"
#include "closing/PainelFechamento.h"
#include "core/AcessoDados.h"

int main(int argc, char* argv[]) {
    tarvessa::Application application(argc, argv);
    int result = 0;
    {
        tarvessa::PainelFechamento panel;
        if (panel.Form_Load()) {
            panel.show();
            result = tarvessa::Application::exec();
        }
    }
    tarvessa::EncerraBanco();
    return result;
}
