#include "bench/ClosingBench.h"

#include "bench/support/BareOdbc.h"
#include "bench/support/BoxAnswerer.h"
#include "bench/support/Measure.h"
#include "bench/support/Painted.h"
#include "bench/support/Recorded.h"
#include "bench/support/Workload.h"
#include "closing/BatchQuestion.h"
#include "closing/ClosingBatch.h"
#include "closing/ListedPeriod.h"
#include "closing/PainelFechamento.h"
#include "closing/ServerLock.h"
#include "core/AcessoDados.h"
#include "support/PrivateServer.h"
#include "ui/grid/Grid.h"

#include <QPushButton>

#include <algorithm>
#include <array>
#include <limits>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace tarvessa::bench {

namespace {

constexpr double loopGoal = 1.05;
constexpr double evenGoal = 1.2;
constexpr double guardGoal = 0.01;
constexpr double hundred = 100;

constexpr int rounds = 5;

struct Size {
    int presales;
    int repeats; // within a round, of which the median counts: a disturbance weighs more on a short batch
};
constexpr std::array<Size, 3> sizes = {{{10, 5}, {100, 3}, {1000, 1}}};

double repeated(int times, const Contestant& once) {
    std::vector<double> seconds;
    for (int i = 0; i < times; ++i)
        seconds.push_back(once());
    return median(seconds);
}

/// Closes what is listed in a panel of its own and gives the seconds of the batch, without the operator's
/// boxes around it; adds those that the boxes take to `boxTimes`.
double closeAll(int presales, std::vector<double>& boxTimes) {
    PainelFechamento panel;
    if (!panel.Form_Load())
        throw std::runtime_error("the panel did not start");
    panel.show();
    auto* grid = panel.findChild<Grid*>(u"Grid1"_s);
    waitPainted(grid->viewport());
    if (grid->rows() != presales + 1)
        throw std::runtime_error("the panel did not list what there is to close");

    const BoxAnswerer answerer;
    panel.findChild<QPushButton*>(u"Command4"_s)->click();
    const std::vector<BoxAnswerer::Box>& boxes = answerer.boxes();
    if (boxes.size() != 2 || boxes[1].text != u"Processamento efetuado com sucesso.")
        throw std::runtime_error("the closing did not end well");
    EncerraBanco();
    boxTimes.push_back(BoxAnswerer::around(boxes[0], boxes[1]));
    return BoxAnswerer::between(boxes[0], boxes[1]);
}

// What keeps two stations apart, and interrupted closings from being begun again.
double guardOnce() {
    if (!IniciaBanco())
        throw std::runtime_error("the database cannot be reached");
    const double seconds = secondsOf([] {
        const ServerLock lock(closingLockName, closingLockSeconds);
        askBeforeBatch(firstListedDay());
    });
    EncerraBanco();
    return seconds;
}

// What the panel sends between its two boxes: everything after start-up but the listing at the very end.
QByteArrayList statementsOf(test::PrivateServer& server, const Workload& workload, int presales) {
    workload.closing(presales);
    std::vector<double> boxTimes;
    QByteArrayList statements =
        recordedStatements(server, u"Select CNPJ_CPF"_s, [&] { closeAll(presales, boxTimes); });
    if (statements.isEmpty() || !statements.takeLast().startsWith("SELECT o.codigocli"))
        throw std::runtime_error("the closing's statements are not in the log");
    return statements;
}

} // namespace

QList<Row> closingRows(test::PrivateServer& server, const Workload& workload) {
    std::array<QByteArrayList, sizes.size()> statements;
    std::vector<Contestant> contestants;
    std::vector<double> boxTimes;
    for (size_t i = 0; i < sizes.size(); ++i) {
        const auto [presales, repeats] = sizes[i];
        statements[i] = statementsOf(server, workload, presales);
        const auto panel = [&workload, &boxTimes, presales = presales] {
            workload.closing(presales);
            return closeAll(presales, boxTimes);
        };
        const auto loop = [&workload, presales = presales, &sent = statements[i]] {
            workload.closing(presales);
            BareOdbc bare;
            return secondsOf([&] { bare.run(sent); });
        };
        contestants.push_back([panel, repeats = repeats] { return repeated(repeats, panel); });
        contestants.push_back([loop, repeats = repeats] { return repeated(repeats, loop); });
    }
    contestants.push_back(guardOnce);
    const std::vector<double> times = interleaved(rounds, contestants);

    QList<Row> rows;
    QStringList each;
    double least = std::numeric_limits<double>::max();
    double most = 0;
    for (size_t i = 0; i < sizes.size(); ++i) {
        const double ours = times[2 * i];
        const double loop = times[2 * i + 1];
        rows.append({u"closing of %1 PVs (%2 statements), against a bare loop"_s.arg(
                         countText(sizes[i].presales), countText(statements[i].size())),
                     timeText(ours), timeText(loop), ratioText(ours / loop), u"at most 1.05 times"_s,
                     ours / loop <= loopGoal});
        const double perPresale = ours / sizes[i].presales;
        each.append(timeText(perPresale));
        least = std::min(least, perPresale);
        most = std::max(most, perPresale);
    }
    rows.append({u"time per PV closed, of 10 / of 100 / of 1,000"_s,
                 each.join(u" / "_s),
                 {},
                 ratioText(most / least),
                 u"flat within 20 %"_s,
                 most <= least * evenGoal});
    const double guard = times[2 * sizes.size()];
    const double share = guard / times[2 * (sizes.size() - 1)];
    rows.append({u"- lock, question and release around a batch, against 1,000 PVs"_s,
                 timeText(guard),
                 {},
                 u"%1 %"_s.arg(share * hundred, 0, 'f', 2),
                 u"under 1 %"_s,
                 share < guardGoal});
    rows.append({u"- its boxes: the notice taken apart, the last one made and shown"_s,
                 timeText(median(boxTimes)),
                 {},
                 {},
                 {},
                 {}});
    return rows;
}

} // namespace tarvessa::bench
