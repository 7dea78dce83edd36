#include "bench/ClosingBench.h"

#include "bench/BatchRun.h"
#include "bench/support/BareOdbc.h"
#include "bench/support/Measure.h"
#include "bench/support/Session.h"
#include "bench/support/Workload.h"
#include "closing/BatchQuestion.h"
#include "closing/ClosingBatch.h"
#include "closing/ListedPeriod.h"
#include "closing/ServerLock.h"

#include <algorithm>
#include <array>
#include <limits>

using namespace Qt::StringLiterals;

namespace tarvessa::bench {

namespace {

constexpr double loopGoal = 1.05;
constexpr double evenGoal = 1.2;
constexpr double guardGoal = 0.01;
constexpr double hundred = 100;

struct Size {
    int presales;
    int rounds; // a disturbance weighs more on a short batch
};
constexpr std::array<Size, 3> sizes = {{{10, 21}, {100, 21}, {1000, 7}}};
constexpr int guardRounds = 5;

// What keeps two stations apart, and interrupted closings from being begun again.
double guardOnce() {
    const Session session;
    const double seconds = secondsOf([] {
        const ServerLock lock(closingLockName, closingLockSeconds);
        askBeforeBatch(firstListedDay());
    });
    return seconds;
}

} // namespace

QList<Row> closingRows(test::PrivateServer& server, const Workload& workload) {
    std::vector<double> boxTimes;
    QList<Row> rows;
    QStringList each;
    double least = std::numeric_limits<double>::max();
    double most = 0;
    double longest = 0;
    for (const auto [presales, rounds] : sizes) {
        const QByteArrayList statements = batchStatements(server, workload, presales);
        Processor processor;
        const auto panel = [&, presales = presales] {
            workload.closing(presales);
            const BatchRun run = closeAll(presales);
            boxTimes.push_back(run.boxes.elapsed);
            processor.ours.push_back(run.batch.own);
            return run.batch.elapsed;
        };
        const auto loop = [&, presales = presales] {
            workload.closing(presales);
            BareOdbc bare;
            const Taken taken = takenBy([&] { bare.run(statements); });
            processor.other.push_back(taken.own);
            return taken.elapsed;
        };
        const Pair times = paired(rounds, panel, loop);
        rows.append({u"closing of %1 PVs (%2 statements), against a bare loop"_s.arg(
                         countText(presales), countText(statements.size())),
                     timeText(times.ours), timeText(times.other), ratioText(times.ratio),
                     u"at most 1.05 times"_s, times.ratio <= loopGoal, processor.sentence()});
        const double perPresale = times.ours / presales;
        each.append(timeText(perPresale));
        least = std::min(least, perPresale);
        most = std::max(most, perPresale);
        longest = times.ours;
    }
    rows.append({u"time per PV closed, of 10 / of 100 / of 1,000"_s,
                 each.join(u" / "_s),
                 {},
                 ratioText(most / least),
                 u"flat within 20 %"_s,
                 most <= least * evenGoal});
    const double guard = interleaved(guardRounds, {guardOnce})[0];
    const double share = guard / longest;
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
