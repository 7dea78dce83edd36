#include "bench/support/Client.h"

#include "support/PrivateServer.h"

#include <QProcess>

#include <stdexcept>
#include <sys/resource.h>

using namespace Qt::StringLiterals;

namespace tarvessa::bench {

namespace {

double secondsIn(timeval time) {
    constexpr double microsecondsPerSecond = 1e6;
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / microsecondsPerSecond;
}

// The processor's time in all processes that this one has started and seen end.
double childrenSeconds() {
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    return secondsIn(usage.ru_utime) + secondsIn(usage.ru_stime);
}

} // namespace

Taken clientRun(const test::PrivateServer& server, const QStringList& statements) {
    const double before = childrenSeconds();
    QProcess process;
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    const double seconds = secondsOf([&] {
        process.start(u"mariadb"_s,
                      {u"--no-defaults"_s, u"--socket="_s + server.socket(), u"--user="_s + server.user(),
                       u"--default-character-set=utf8mb4"_s, u"--init-command="_s + server.initStmt(),
                       u"--execute="_s + statements.join(u';'), server.database()});
        process.waitForFinished(-1);
    });
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        throw std::runtime_error("the mariadb client failed");
    return {seconds, childrenSeconds() - before};
}

} // namespace tarvessa::bench
