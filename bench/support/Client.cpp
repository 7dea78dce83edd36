#include "bench/support/Client.h"

#include "bench/support/Measure.h"
#include "support/PrivateServer.h"

#include <QProcess>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace tarvessa::bench {

double clientSeconds(const test::PrivateServer& server, const QStringList& statements) {
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
    return seconds;
}

} // namespace tarvessa::bench
