#include "bench/RehearsalBench.h"

#include "bench/StartedPanel.h"
#include "bench/support/BareOdbc.h"
#include "bench/support/Measure.h"
#include "bench/support/Painted.h"
#include "bench/support/Recorded.h"
#include "bench/support/Workload.h"
#include "closing/PainelFechamento.h"
#include "core/AcessoDados.h"
#include "support/PrivateServer.h"
#include "ui/grid/Grid.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QTimer>

#include <algorithm>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace tarvessa::bench {

namespace {

constexpr int presales = 2000;
constexpr int linesPerPv = 3;
constexpr double goalSeconds = 3;
constexpr double msPerSecond = 1000;
constexpr int rounds = 5;

/// Opens the window, waits for its painted list and closes it; the seconds from the key on.
double rehearse(PainelFechamento& panel) {
    QElapsedTimer elapsed;
    double seconds = 0;
    int listed = 0;
    QTimer watch;
    watch.callOnTimeout([&] {
        auto* window = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        const Grid* grid = window ? window->findChild<Grid*>(u"Grid1"_s) : nullptr;
        if (!grid || grid->rows() == 1)
            return;
        watch.stop();
        waitPainted(grid->viewport());
        seconds = static_cast<double>(elapsed.elapsed()) / msPerSecond;
        listed = grid->rows() - 1;
        window->reject();
    });
    watch.start(1);
    elapsed.start();
    panel.findChild<QAction*>(u"MnConferencia"_s)->trigger();
    if (listed != presales)
        throw std::runtime_error("the window did not list all pre-sales");
    return seconds;
}

double throughPanel() {
    double seconds = 0;
    {
        PainelFechamento panel;
        startPanel(panel, presales);
        seconds = rehearse(panel);
    }
    EncerraBanco();
    return seconds;
}

} // namespace

QList<Row> rehearsalRows(test::PrivateServer& server, const Workload& workload) {
    workload.listing(presales, linesPerPv);
    // The start-up asks a question that begins as the batch's does.
    const QByteArrayList sent =
        recordedStatements(server, u"Select 'ESTOQUE' As tipo, Convert("_s, [] { throughPanel(); });
    const QByteArrayList statements = sent.last(std::min<qsizetype>(sent.size(), presales + 1));
    if (statements.isEmpty() || !statements[0].contains("Select 'FICHA'"))
        throw std::runtime_error("the questions are not in the log");
    const auto loop = [&statements] {
        BareOdbc bare;
        return secondsOf([&] { bare.run(statements); });
    };
    const std::vector<double> times = interleaved(rounds, {throughPanel, loop});
    return {{u"Conferência of 2,000 PVs of 3 lines (%1 questions), against a bare loop"_s.arg(
                 countText(statements.size())),
             timeText(times[0]), timeText(times[1]), ratioText(times[0] / times[1]), u"under 3 s"_s,
             times[0] < goalSeconds}};
}

} // namespace tarvessa::bench
