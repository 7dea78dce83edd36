// A station of its own: concludes what it finds interrupted and closes everything that is listed.
//
//   closer TIME FOLDER yes|no|ask-not
//
// TIME stands on its clock, FOLDER holds its logs and notes, and the last word answers the question whether
// the stock of the last logged movement has left; ask-not concludes nothing. It says how many pre-sales are
// listed and waits for a line on its input, so that several can begin together; it ends when nothing is
// listed any more.

#include "base/Clock.h"
#include "base/ProgramFolder.h"
#include "closing/Attendant.h"
#include "closing/PainelFechamento.h"
#include "closing/Recovery.h"
#include "core/AcessoDados.h"
#include "support/Hands.h"
#include "ui/grid/Grid.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>

#include <iostream>
#include <string>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

/// Presses until nothing is listed; an attempt ends without progress while another station closes.
bool closeEverything(const Hands& hands, const Attendant& attendant) {
    constexpr int mostPresses = 60;
    for (int press = 0; press < mostPresses && hands.grid()->rows() > 1; ++press)
        hands.press(u"Command4"_s);
    if (hands.grid()->rows() > 1)
        std::cerr << qPrintable(attendant.texts().join(u'\n')) << std::endl;
    return hands.grid()->rows() == 1;
}

} // namespace

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    clock::fix(QDateTime::fromString(arguments.value(1), Qt::ISODate));
    setProgramFolder(arguments.value(2));
    const QString answer = arguments.value(3);
    // No program to show a log with.
    const QTemporaryDir empty;
    qputenv("PATH", empty.path().toLocal8Bit());

    Attendant attendant;
    attendant.operate(u"FechamentosInterrompidos"_s, [&answer](QWidget* window) {
        if (answer != u"ask-not")
            concludeAll(window, answer == u"yes");
    });
    bool isDone = false;
    {
        PainelFechamento panel;
        if (!panel.Form_Load())
            return 2;
        showActive(&panel);
        const Hands hands(&panel);
        std::cout << hands.grid()->rows() - 1 << std::endl;
        std::string line;
        std::getline(std::cin, line);
        const auto* interrupted = hands.control<QLabel>(u"Interrompidos"_s);
        if (interrupted->isVisible())
            hands.key(Qt::Key_F7);
        isDone = closeEverything(hands, attendant) && (answer == u"ask-not" || !interrupted->isVisible());
    }
    EncerraBanco();
    return isDone ? 0 : 1;
}
