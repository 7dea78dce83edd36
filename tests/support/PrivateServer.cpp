#include "support/PrivateServer.h"

#include "support/AdminConnection.h"
#include "support/Socket.h"
#include "support/TestError.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QThread>

#ifndef _WIN32
#include <odbcinst.h>
#endif

namespace tarvessa::test {

namespace {

constexpr auto Script = TARVESSA_SOURCE_DIR "/tools/private-server";
constexpr auto Schema = TARVESSA_SOURCE_DIR "/demo/schema.sql";
constexpr int ScriptTimeoutMs = 180000;
constexpr int ConnectionsTimeoutMs = 10000;
#ifdef _WIN32
const auto Host = QStringLiteral("127.0.0.1"); // as the server sees the program
#else
const auto Host = QStringLiteral("localhost");
#endif

QString runScript(const QStringList& arguments) {
    QProcess process;
    process.start(QString::fromUtf8(Script), arguments, QIODevice::ReadOnly);
    if (!process.waitForFinished(ScriptTimeoutMs) || process.exitStatus() != QProcess::NormalExit ||
        process.exitCode() != 0) {
        throw TestError(QStringLiteral("private-server %1: %2 %3")
                            .arg(arguments.join(QLatin1Char(' ')), process.errorString(),
                                 QString::fromLocal8Bit(process.readAllStandardError())));
    }
    return QString::fromLocal8Bit(process.readAllStandardOutput()).trimmed();
}

QByteArray readFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw TestError(QStringLiteral("%1: %2").arg(path, file.errorString()));
    }
    return file.readAll();
}

/// The driver's path as the server's own data source has it.
QString driverOf(const QString& odbcIni) {
    for (const QByteArray& row : readFile(odbcIni).split('\n')) {
        const qsizetype equals = row.indexOf('=');
        if (equals > 0 && row.left(equals).trimmed() == "Driver") {
            return QString::fromLocal8Bit(row.mid(equals + 1).trimmed());
        }
    }
    throw TestError(QStringLiteral("no driver in %1").arg(odbcIni));
}

#ifdef _WIN32

// The driver manager is the one below Wine, which reads the file that this variable named when the program
// started; packaging/windows/test gives each program a file of its own.
QString dataSourceFile(const QTemporaryDir& /*folder*/) {
    return qEnvironmentVariable("ODBCINI");
}

void publish(const QString& /*odbcIni*/) {
}

QString addressOf(const QString& /*server*/) {
    return qEnvironmentVariable("TARVESSA_TEST_ADDRESS");
}

#else

QString dataSourceFile(const QTemporaryDir& folder) {
    return folder.filePath(QStringLiteral("odbc.ini"));
}

// The driver manager keeps what it has read for some seconds; only a write through its own library makes it
// forget.
void publish(const QString& odbcIni) {
    qputenv("ODBCINI", QFile::encodeName(odbcIni));
    if (SQLWritePrivateProfileString("QDX", "Description", "Test", "odbc.ini") == 0) {
        throw TestError(QStringLiteral("%1 was not taken by the driver manager").arg(odbcIni));
    }
}

QString addressOf(const QString& server) {
    return runScript({QStringLiteral("socket"), server});
}

#endif

/// Letters and digits only: the name stands in a grant, where "_" would match any character. At most 16,
/// which is what older servers allow a user.
QString uniqueName() {
    return QStringLiteral("t%1%2")
        .arg(QCoreApplication::applicationPid())
        .arg(QRandomGenerator::system()->generate(), 8, 16, QLatin1Char('0'));
}

} // namespace

/// A server that lives as long as this object.
class PrivateServer::OwnServer {
  public:
    explicit OwnServer(const QString& folder) : m_folder(folder) {
        // Watched first, so that a test program which crashes does not leave its server behind.
        runScript({QStringLiteral("watch"), m_folder, QString::number(QCoreApplication::applicationPid())});
        runScript({QStringLiteral("start"), m_folder, QStringLiteral("--"),
                   QStringLiteral("--innodb-flush-log-at-trx-commit=0")});
    }
    ~OwnServer() {
        try {
            runScript({QStringLiteral("stop"), m_folder});
        } catch (const TestError& error) {
            qWarning("%s", error.what());
        }
    }
    OwnServer(const OwnServer&) = delete;
    OwnServer& operator=(const OwnServer&) = delete;

  private:
    QString m_folder;
};

PrivateServer::PrivateServer()
    : m_server(qEnvironmentVariable("TARVESSA_TEST_SERVER")), m_name(uniqueName()),
      m_schema(readFile(QString::fromUtf8(Schema))),
      m_initStmt(QStringLiteral("SET sql_mode='NO_ENGINE_SUBSTITUTION'")),
      m_hadOdbcIni(qEnvironmentVariableIsSet("ODBCINI")), m_previousOdbcIni(qgetenv("ODBCINI")) {
    if (!m_folder.isValid()) {
        throw TestError(m_folder.errorString());
    }
    if (m_server.isEmpty()) {
        m_server = m_folder.filePath(QStringLiteral("server"));
        m_own = std::make_unique<OwnServer>(m_server);
    }
    m_socket = addressOf(m_server);
    m_dataSourceSocket = m_socket;
    m_driver = driverOf(m_server + QStringLiteral("/odbc.ini"));
    m_connection = std::make_unique<AdminConnection>(m_socket);
    // The same leniency as the program's own connection, so that odd rows can be prepared.
    m_connection->execute(m_initStmt);
    m_hasSequences = !m_connection
                          ->query(QStringLiteral("SELECT 1 FROM information_schema.engines WHERE engine = "
                                                 "'SEQUENCE' AND support <> 'NO'"))
                          .isEmpty();
    m_connection->execute(
        QStringLiteral("CREATE USER '%1'@'%2'; GRANT ALL ON `%1`.* TO '%1'@'%2'").arg(m_name, Host));
    recreate();
    writeDataSource();
}

PrivateServer::~PrivateServer() {
    restoreEnvironment();
    try {
        m_connection->execute(QStringLiteral("DROP DATABASE `%1`; DROP USER '%1'@'%2'").arg(m_name, Host));
    } catch (const TestError& error) {
        qWarning("%s", error.what());
    }
}

void PrivateServer::useCharset(const QString& charset) {
    m_charset = charset;
    writeDataSource();
}

void PrivateServer::useSocket(const QString& socket) {
    m_dataSourceSocket = socket;
    writeDataSource();
}

void PrivateServer::useInitStmt(const QString& sql) {
    m_initStmt = sql;
    writeDataSource();
}

void PrivateServer::execute(const QString& sql) {
    provideSequences(sql);
    m_connection->execute(sql);
}

QList<QStringList> PrivateServer::query(const QString& sql) {
    provideSequences(sql);
    return m_connection->query(sql);
}

void PrivateServer::provideSequences(const QString& sql) {
    static const QRegularExpression Sequence(QStringLiteral("\\bseq_1_to_(\\d+)\\b"));
    if (m_hasSequences) {
        return;
    }
    for (auto match = Sequence.globalMatch(sql); match.hasNext();) {
        const QRegularExpressionMatch one = match.next();
        const qlonglong count = one.captured(1).toLongLong();
        QStringList numbers;
        for (qlonglong number = 1; number <= count; ++number) {
            numbers += QStringLiteral("(%1)").arg(number);
        }
        m_connection->execute(QStringLiteral("CREATE TABLE IF NOT EXISTS %1 (seq BIGINT PRIMARY KEY); "
                                             "INSERT IGNORE INTO %1 VALUES %2")
                                  .arg(one.captured(0), numbers.join(QLatin1Char(','))));
    }
}

void PrivateServer::recreate() {
    m_connection->execute(
        QStringLiteral("DROP DATABASE IF EXISTS `%1`; CREATE DATABASE `%1` CHARACTER SET utf8mb4")
            .arg(m_name));
    m_connection->select(m_name);
    m_connection->execute(QString::fromUtf8(m_schema));
}

void PrivateServer::killProgramConnections() {
    const QString remaining =
        QStringLiteral("SELECT id FROM information_schema.processlist WHERE user = '%1'").arg(m_name);
    QElapsedTimer timer;
    timer.start();
    for (QList<QStringList> rows; !(rows = m_connection->query(remaining)).isEmpty(); QThread::msleep(5)) {
        if (timer.elapsed() > ConnectionsTimeoutMs) {
            throw TestError(QStringLiteral("the program's connections do not end"));
        }
        for (const QStringList& row : rows) {
            try {
                m_connection->execute(QStringLiteral("KILL ") + row[0]);
            } catch (const TestError&) { // NOLINT(bugprone-empty-catch): it has ended by itself meanwhile
            }
        }
    }
}

void PrivateServer::writeDataSource() {
    const QString path = dataSourceFile(m_folder);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        throw TestError(QStringLiteral("%1: %2").arg(path, file.errorString()));
    }
    QStringList rows{QStringLiteral("[QDX]"), QStringLiteral("Driver = ") + m_driver,
                     QStringLiteral("DATABASE = ") + m_name, QStringLiteral("UID = ") + m_name,
                     QStringLiteral("USER = ") + m_name};
    rows += sockets::dataSourceLines(m_dataSourceSocket);
    if (!m_charset.isEmpty()) {
        rows += QStringLiteral("CHARSET = ") + m_charset;
    }
    if (!m_initStmt.isEmpty()) {
        rows += QStringLiteral("INITSTMT = ") + m_initStmt;
    }
    file.write(rows.join(QLatin1Char('\n')).toLocal8Bit() + '\n');
    file.close();
    publish(path);
}

void PrivateServer::restoreEnvironment() {
    if (m_hadOdbcIni) {
        qputenv("ODBCINI", m_previousOdbcIni);
    } else {
        qunsetenv("ODBCINI");
    }
}

} // namespace tarvessa::test
