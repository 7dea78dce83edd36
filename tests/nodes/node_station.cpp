// One workstation of several: the real panel, operated by the lines on its input, one command each. The
// answer to each is one line with what the operator saw. The argument is the program's folder.

#include "base/ProgramFolder.h"
#include "closing/PainelFechamento.h"
#include "core/AcessoDados.h"
#include "nodes/Operator.h"

#include <QApplication>
#include <QJsonDocument>

#include <iostream>
#include <string>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    setProgramFolder(QApplication::arguments().value(1));
    {
        PainelFechamento panel;
        Operator person(panel);
        if (!panel.Form_Load())
            return 2;
        panel.activateWindow();
        std::cout << "ready" << std::endl;
        for (std::string line; std::getline(std::cin, line);)
            std::cout << QJsonDocument(person.run(QString::fromStdString(line).split(u' ')))
                             .toJson(QJsonDocument::Compact)
                             .constData()
                      << std::endl;
    }
    EncerraBanco();
    return 0;
}
