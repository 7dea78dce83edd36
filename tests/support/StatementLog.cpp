#include "support/StatementLog.h"

#include "support/PrivateServer.h"
#include "support/TestError.h"

#include <QSet>
#include <algorithm>
#include <array>

#ifdef _WIN32
#define SQL_NOUNICODEMAP // a call without W is the narrow one
#include <windows.h>
#endif
#include <sql.h>
#include <sqlext.h>

namespace tarvessa::test {

namespace {

bool isBlank(QChar c) {
    return c == QLatin1Char(' ') || (c >= QLatin1Char('\t') && c <= QLatin1Char('\r'));
}

QString asServerWrites(const QString& sql) {
    qsizetype start = 0;
    qsizetype end = sql.size();
    while (start < end && isBlank(sql[start])) {
        ++start;
    }
    while (end > start && (isBlank(sql[end - 1]) || sql[end - 1] == QLatin1Char(';'))) {
        --end;
    }
    return sql.mid(start, end - start);
}

/// A connection through the data source and its end, without a statement in between. As the program does, it
/// asks for the database's name, for which a driver may have to ask the server.
void connectAndDisconnect(QByteArray connectionString) {
    SQLHANDLE environment = SQL_NULL_HANDLE;
    SQLHANDLE connection = SQL_NULL_HANDLE;
    SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &environment);
    SQLSetEnvAttr(environment, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    SQLAllocHandle(SQL_HANDLE_DBC, environment, &connection);
    if (SQL_SUCCEEDED(SQLDriverConnect(connection, nullptr,
                                       reinterpret_cast<SQLCHAR*>(connectionString.data()), SQL_NTS, nullptr,
                                       0, nullptr, SQL_DRIVER_NOPROMPT))) {
        std::array<char, 128> database{};
        SQLSMALLINT length = 0;
        SQLGetInfo(connection, SQL_DATABASE_NAME, database.data(), database.size(), &length);
        SQLDisconnect(connection);
    }
    SQLFreeHandle(SQL_HANDLE_DBC, connection);
    SQLFreeHandle(SQL_HANDLE_ENV, environment);
}

/// True when the log's rows are numbered. MySQL writes nothing into a log table whose columns were changed;
/// there the rows are taken as they lie, which is the order of writing as long as none is deleted.
bool isNumbered(AdminConnection& connection) {
    return !connection
                .query(QStringLiteral("SELECT 1 FROM information_schema.columns WHERE table_schema = "
                                      "'mysql' AND table_name = 'general_log' AND column_name = 'ordem'"))
                .isEmpty();
}

bool isMyIsam(AdminConnection& connection) {
    return !connection
                .query(
                    QStringLiteral("SELECT 1 FROM information_schema.tables WHERE table_schema = 'mysql' AND "
                                   "table_name = 'general_log' AND engine = 'MyISAM'"))
                .isEmpty();
}

bool isMariaDb(AdminConnection& connection) {
    return connection.query(QStringLiteral("SELECT VERSION()"))[0][0].contains(QLatin1String("MariaDB"));
}

} // namespace

StatementLog::StatementLog(PrivateServer& server) : m_server(server), m_connection(server.socket()) {
    connect();
    mark();
}

// As it comes, the log table has no order of its own, no index, and loses characters of four bytes.
// MariaDB allows its columns to be changed while logging is off, MySQL its engine. Test programs that share a
// server may come here together, hence the lock.
void StatementLog::connect() {
    if (m_connection.query(QStringLiteral("SELECT GET_LOCK('tarvessa_general_log', 60)")) !=
        QList<QStringList>{{QStringLiteral("1")}}) {
        throw TestError(QStringLiteral("the general log is being prepared by another program for too long"));
    }
    const bool mayChange = isMariaDb(m_connection);
    if (mayChange ? !isNumbered(m_connection) : !isMyIsam(m_connection)) {
        m_connection.execute(
            QStringLiteral("SET GLOBAL general_log = 0; ALTER TABLE mysql.general_log ENGINE = MyISAM") +
            (mayChange ? QStringLiteral(", MODIFY argument MEDIUMTEXT CHARACTER SET utf8mb4 NOT NULL, ADD "
                                        "COLUMN ordem BIGINT UNSIGNED NOT NULL AUTO_INCREMENT PRIMARY KEY")
                       : QString()));
    }
    m_connection.execute(QStringLiteral("SET GLOBAL log_output = 'TABLE'; SET GLOBAL general_log = 1; "
                                        "DO RELEASE_LOCK('tarvessa_general_log')"));
}

QString StatementLog::lastEntry() {
    return m_connection.query(isNumbered(m_connection)
                                  ? QStringLiteral("SELECT COALESCE(MAX(ordem), 0) FROM mysql.general_log")
                                  : QStringLiteral("SELECT COUNT(*) FROM mysql.general_log"))[0][0];
}

void StatementLog::mark() {
    m_mark = lastEntry();
}

/// Connection, kind and text of what the log has of the program's user.
QList<QStringList> StatementLog::rowsSince(const QString& mark) {
    const bool numbered = isNumbered(m_connection);
    const QString entries =
        numbered ? QStringLiteral("(SELECT * FROM mysql.general_log WHERE ordem > %1) AS entries")
                 : QStringLiteral("(SELECT * FROM mysql.general_log LIMIT %1, 1000000000) AS entries");
    return m_connection.query(
        QStringLiteral("SELECT thread_id, command_type, argument FROM ") + entries.arg(mark) +
        QStringLiteral(" WHERE command_type IN ('Connect', 'Query', 'Execute') AND "
                       "(SUBSTRING_INDEX(user_host, '[', 1) = '%1' OR argument LIKE '%1@%')")
            .arg(m_server.user()) +
        (numbered ? QStringLiteral(" ORDER BY ordem") : QString()));
}

QStringList StatementLog::sentByDriver() {
    const QString before = lastEntry();
    for (const char* way : {"dsn=QDX", "dsn=QDX;CHARSET=utf8mb4"}) {
        connectAndDisconnect(way);
    }
    QStringList texts;
    for (const QStringList& row : rowsSince(before)) {
        if (row[1] != QLatin1String("Connect")) {
            texts += row[2];
        }
    }
    return texts;
}

QStringList StatementLog::texts() {
    const QList<QStringList> rows = rowsSince(m_mark);
    const bool hasConnected = std::any_of(
        rows.begin(), rows.end(), [](const QStringList& row) { return row[1] == QLatin1String("Connect"); });
    const QStringList fromDriver = hasConnected ? sentByDriver() : QStringList();
    QSet<QString> connecting;
    QStringList texts;
    for (const QStringList& row : rows) {
        if (row[1] == QLatin1String("Connect")) {
            connecting.insert(row[0]);
        } else if (!connecting.contains(row[0]) || !fromDriver.contains(row[2])) {
            connecting.remove(row[0]);
            texts += row[2];
        }
    }
    return texts;
}

QStringList StatementLog::expected(const QStringList& sqls) {
    QStringList texts;
    for (const QString& sql : sqls) {
        texts += asServerWrites(sql);
    }
    return texts;
}

} // namespace tarvessa::test
