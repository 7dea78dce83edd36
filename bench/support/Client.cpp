#include "bench/support/Client.h"

#include "support/PrivateServer.h"

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

QStringList argumentsFor(const test::PrivateServer& server, const QString& address) {
    return {u"--no-defaults"_s,
            u"--socket="_s + address,
            u"--user="_s + server.user(),
            u"--default-character-set=utf8mb4"_s,
            u"--init-command="_s + server.initStmt(),
            server.database()};
}

void expectSuccess(const QProcess& process) {
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        throw std::runtime_error("the mariadb client failed");
}

} // namespace

Taken clientRun(const test::PrivateServer& server, const QStringList& statements) {
    const double before = childrenSeconds();
    QProcess process;
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    const double seconds = secondsOf([&] {
        process.start(u"mariadb"_s, argumentsFor(server, server.socket())
                                        << u"--execute="_s + statements.join(u';'));
        process.waitForFinished(-1);
    });
    expectSuccess(process);
    return {seconds, childrenSeconds() - before};
}

ClientSession::ClientSession(const test::PrivateServer& server, const QString& address) {
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(u"mariadb"_s, argumentsFor(server, address)
                                      << u"--batch"_s << u"--skip-column-names"_s << u"--unbuffered"_s);
    m_process.write("SELECT 'ready';\n");
    while (!m_process.canReadLine())
        if (!m_process.waitForReadyRead(-1))
            throw std::runtime_error("the mariadb client did not connect");
    m_process.readLine();
}

ClientSession::~ClientSession() {
    m_process.closeWriteChannel();
    m_process.waitForFinished(-1);
}

void ClientSession::finish(const QByteArrayList& statements) {
    m_process.write(statements.join(";\n") + ";\n");
    m_process.closeWriteChannel();
    m_process.waitForFinished(-1);
    expectSuccess(m_process);
}

} // namespace tarvessa::bench
