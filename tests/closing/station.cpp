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
    bool converteu = false;
    {
        PainelFechamento painel;
        if (!painel.Form_Load())
            return 2;
        painel.show();
        auto* grade = painel.findChild<Grid*>(u"Grid1"_s);
        int selecionados = 0;
        for (int linha = 1; linha < grade->rows(); ++linha) {
            if (grade->text(linha, colunas::Vendedor) != vendedor)
                Q_EMIT grade->cellClicked(linha, colunas::Selecao);
            selecionados += grade->isTicked(linha) ? 1 : 0;
        }
        std::cout << selecionados << std::endl;
        std::string linha;
        std::getline(std::cin, linha);
        painel.findChild<QPushButton*>(u"Command2"_s)->click();
        converteu = grade->rows() == 1;
    }
    EncerraBanco();
    return converteu ? 0 : 1;
}
