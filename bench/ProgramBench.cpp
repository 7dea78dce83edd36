#include "bench/ProgramBench.h"

#include "bench/support/Client.h"
#include "bench/support/Measure.h"
#include "bench/support/ProgramRun.h"
#include "bench/support/Workload.h"
#include "support/PrivateServer.h"
#include "support/StatementLog.h"

#include <chrono>
#include <thread>

using namespace Qt::StringLiterals;

namespace tarvessa::bench {

namespace {

constexpr double memoryGoal = 60;
constexpr int memoryRounds = 3;
constexpr int memoryDocuments = 100000;
constexpr double startGoal = 0.5;
constexpr int startRounds = 9;
constexpr int startDocuments = 50;

QString megabytes(double value) {
    return QString::number(value, 'f', 0) + u" MB"_s;
}

// The window does not change either while the server sorts a long listing.
void waitIdle(test::PrivateServer& server) {
    constexpr int idleSeconds = 2;
    constexpr auto pause = std::chrono::milliseconds(100);
    const QString idle =
        u"SELECT COUNT(*) FROM information_schema.PROCESSLIST WHERE USER = '%1' AND COMMAND = 'Sleep' "
        "AND TIME_MS >= 1000 * %2"_s.arg(server.user())
            .arg(idleSeconds);
    while (server.query(idle)[0][0] == u"0")
        std::this_thread::sleep_for(pause);
}

} // namespace

QList<Row> memoryRows(test::PrivateServer& server, const Workload& workload) {
    workload.listing(memoryDocuments);
    std::vector<double> resident;
    std::vector<double> highest;
    for (int round = 0; round < memoryRounds; ++round) {
        const ProgramRun program;
        waitIdle(server);
        resident.push_back(program.memory("VmRSS"));
        highest.push_back(program.memory("VmHWM"));
    }
    const double now = median(resident);
    return {
        {u"resident memory, 100,000 rows listed (highest on the way: %1)"_s.arg(megabytes(median(highest))),
         megabytes(now),
         {},
         {},
         u"under 60 MB"_s,
         now < memoryGoal}};
}

QList<Row> startRows(test::PrivateServer& server, const Workload& workload) {
    workload.listing(startDocuments);
    QStringList statements;
    {
        test::StatementLog log(server);
        const ProgramRun program;
        statements = log.texts();
        server.execute(u"SET GLOBAL general_log = 0"_s);
    }
    const std::vector<double> times =
        interleaved(startRounds, {[] { return ProgramRun().secondsToListing(); },
                                  [&] { return clientSeconds(server, statements); }});
    const double more = times[0] - times[1];
    return {{u"start to listing on the screen, 50 documents, against the client (%1 statements)"_s.arg(
                 statements.size()),
             timeText(times[0]), timeText(times[1]), timeText(more) + u" more"_s, u"under 0.5 s more"_s,
             more < startGoal}};
}

} // namespace tarvessa::bench
