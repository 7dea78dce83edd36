#include "support/OwnServer.h"

#include "support/TestError.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <QThread>

#include <csignal>

namespace tarvessa::test {

namespace {

constexpr auto Script = TARVESSA_SOURCE_DIR "/tools/private-server";
constexpr int ScriptTimeoutMs = 180000;
constexpr auto Variable = "TARVESSA_TEST_SERVER";

/// False also for one that has ended and was not collected by its parent.
bool isRunning(qint64 pid) {
    QFile arguments(QStringLiteral("/proc/%1/cmdline").arg(pid));
    return arguments.open(QIODevice::ReadOnly) && !arguments.readAll().isEmpty();
}

/// A signal sent to a busy machine arrives late: until then a thread may still answer.
bool isHeld(qint64 pid) {
    QDirIterator threads(QStringLiteral("/proc/%1/task").arg(pid), QDir::Dirs | QDir::NoDotAndDotDot);
    while (threads.hasNext()) {
        QFile status(threads.next() + QStringLiteral("/stat"));
        if (!status.open(QIODevice::ReadOnly))
            return false;
        // The state follows the name, which is in brackets and may itself hold some.
        const QByteArray line = status.readAll();
        if (line.mid(line.lastIndexOf(')') + 2, 1) != "T")
            return false;
    }
    return true;
}

} // namespace

OwnServer::OwnServer(const QStringList& options, const QString& folder)
    : m_environment(QProcessEnvironment::systemEnvironment()),
      m_folder(folder.isEmpty() ? m_temporary.filePath(QStringLiteral("server")) : folder),
      m_options(options), m_previousServer(qgetenv(Variable)) {
    // Watched first, so that a test program which crashes does not leave its server behind.
    run({QStringLiteral("watch"), m_folder, QString::number(QCoreApplication::applicationPid())});
    start();
    qputenv(Variable, QFile::encodeName(m_folder));
}

OwnServer::~OwnServer() {
    if (m_previousServer.isNull())
        qunsetenv(Variable);
    else
        qputenv(Variable, m_previousServer);
    try {
        run({QStringLiteral("stop"), m_folder});
    } catch (const TestError& error) {
        qWarning("%s", error.what());
    }
}

void OwnServer::kill() const {
    const qint64 process = pid();
    ::kill(static_cast<pid_t>(process), SIGKILL);
    while (isRunning(process))
        QThread::msleep(1);
}

void OwnServer::start() const {
    QStringList arguments{QStringLiteral("start"), m_folder};
    if (!m_options.isEmpty())
        arguments << QStringLiteral("--") << m_options;
    run(arguments);
}

void OwnServer::hold() const {
    const qint64 process = pid();
    ::kill(static_cast<pid_t>(process), SIGSTOP);
    while (isRunning(process) && !isHeld(process))
        QThread::msleep(1);
}

void OwnServer::release() const {
    ::kill(static_cast<pid_t>(pid()), SIGCONT);
}

qint64 OwnServer::pid() const {
    QFile file(m_folder + QStringLiteral("/server.pid"));
    const qint64 process = file.open(QIODevice::ReadOnly) ? file.readAll().trimmed().toLongLong() : 0;
    if (process <= 0)
        throw TestError(QStringLiteral("the server in %1 does not run").arg(m_folder));
    return process;
}

void OwnServer::run(const QStringList& arguments) const {
    QProcess process;
    process.setProcessEnvironment(m_environment);
    process.start(QString::fromUtf8(Script), arguments, QIODevice::ReadOnly);
    if (!process.waitForFinished(ScriptTimeoutMs) || process.exitStatus() != QProcess::NormalExit ||
        process.exitCode() != 0)
        throw TestError(QStringLiteral("private-server %1: %2")
                            .arg(arguments.join(QLatin1Char(' ')),
                                 QString::fromLocal8Bit(process.readAllStandardError())));
}

} // namespace tarvessa::test
