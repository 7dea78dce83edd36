#include "bench/ReportsBench.h"

#include "bench/RunScreen.h"
#include "bench/support/Client.h"
#include "bench/support/FormerSchema.h"
#include "bench/support/Measure.h"
#include "bench/support/Painted.h"
#include "bench/support/Recorded.h"
#include "bench/support/Workload.h"
#include "reports/Comissao.h"
#include "reports/ExtratoVendedor.h"
#include "reports/ResumoVendas.h"
#include "support/PrivateServer.h"
#include "ui/grid/Grid.h"

#include <QTimer>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace tarvessa::bench {

namespace {

constexpr int lines = 1000000;
constexpr double clientGoal = 1.05;
constexpr int rounds = 3;
// Against the former tables.
constexpr double summaryGoal = 2;
constexpr double commissionGoal = 3;

// From the call to the painted grid of the modal screen, which is then closed.
double statementSeconds() {
    constexpr int seller = 5;
    using Clock = std::chrono::steady_clock;
    ExtratoVendedor screen;
    auto* grid = screen.findChild<Grid*>(u"Grid1"_s);
    Clock::time_point painted;
    QTimer::singleShot(0, &screen, [&] {
        waitPainted(grid->viewport());
        painted = Clock::now();
        screen.close();
    });
    const Clock::time_point called = Clock::now();
    screen.Carrega(seller, u"MARIA LÚCIA"_s, firstOfYear, lastOfYear, u"3,0"_s, u"1,5"_s, u"0,00"_s);
    if (grid->rows() < 2)
        throw std::runtime_error("the statement shows nothing");
    return std::chrono::duration<double>(painted - called).count();
}

Row compared(test::PrivateServer& server, const QString& what, const Contestant& ours,
             const QStringList& statements) {
    const auto client = [&] { return clientSeconds(server, statements); };
    const std::vector<double> times = interleaved(rounds, {ours, client});
    const double ratio = times[0] / times[1];
    return {what + u" over "_s + countText(lines) + u" fiscal lines, against the client"_s,
            timeText(times[0]),
            timeText(times[1]),
            ratioText(ratio),
            u"at most 1.05 times"_s,
            ratio <= clientGoal};
}

} // namespace

QList<Row> reportRows(test::PrivateServer& server, const Workload& workload) {
    workload.fiscalYear(lines);
    const Session session;
    RunScreen<ResumoVendas> summary(u"TabelaPreco(1)"_s);
    RunScreen<Comissao> commission(u"Grid1"_s);
    struct Report {
        QString name;
        Contestant run;
        double schemaGoal; // 0 for none
    };
    QList<Row> rows;
    for (const Report& report :
         {Report{u"sales summary"_s, [&] { return secondsOf([&] { summary.run(); }); }, summaryGoal},
          Report{u"commission"_s, [&] { return secondsOf([&] { commission.run(); }); }, commissionGoal},
          Report{u"seller's statement"_s, statementSeconds, 0}}) {
        const QStringList statements = recordedTexts(server, report.run);
        rows.append(compared(server, report.name, report.run, statements));
        rows.append(schemaRow(server, report.name, statements, report.schemaGoal));
    }
    return rows;
}

} // namespace tarvessa::bench
