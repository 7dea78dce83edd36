// One workstation of several: converts the DAVs of one seller through the real panel, at a time given to it.
// Says how many are selected, then waits for a line on its input, so that several can begin together.

#include "base/Clock.h"
#include "closing/PainelFechamento.h"
#include "closing/PainelFechamentoColumns.h"
#include "core/AcessoDados.h"
#include "ui/grid/Grid.h"

#include <QApplication>
#include <QPushButton>

#include <iostream>
#include <string>

using namespace Qt::StringLiterals;
using namespace tarvessa;

int main(int argc, char* argv[]) {
    QApplication aplicacao(argc, argv);
    const QString vendedor = QApplication::arguments().value(1);
    clock::fix(QDateTime::fromString(QApplication::arguments().value(2), Qt::ISODate));
    bool converted = false;
    {
        PainelFechamento painel;
        if (!painel.Form_Load())
            return 2;
        painel.show();
        auto* grid = painel.findChild<Grid*>(u"Grid1"_s);
        int selected = 0;
        for (int row = 1; row < grid->rows(); ++row) {
            if (grid->text(row, painelfechamento::Vendedor) != vendedor)
                Q_EMIT grid->cellClicked(row, painelfechamento::Selecao);
            selected += grid->isTicked(row) ? 1 : 0;
        }
        std::cout << selected << std::endl;
        std::string row;
        std::getline(std::cin, row);
        painel.findChild<QPushButton*>(u"Command2"_s)->click();
        converted = grid->rows() == 1;
    }
    EncerraBanco();
    return converted ? 0 : 1;
}
