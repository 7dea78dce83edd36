#include "support/AdminConnection.h"

#include "support/Socket.h"
#include "support/TestError.h"

#include <QFile>
#include <QList>
#include <array>
#include <cstdint>

#define SQL_NOUNICODEMAP // a call without W is the narrow one
#include <windows.h>

#include <sql.h>
#include <sqlext.h>

namespace tarvessa::test {

namespace {

QString firstDiagnostic(SQLSMALLINT kind, SQLHANDLE handle) {
    std::array<SQLCHAR, 6> state{};
    std::array<SQLCHAR, 1024> text{};
    SQLINTEGER number = 0;
    SQLSMALLINT size = 0;
    SQLGetDiagRec(kind, handle, 1, state.data(), &number, text.data(), text.size(), &size);
    return QStringLiteral("%1 %2").arg(number).arg(QString::fromUtf8(reinterpret_cast<char*>(text.data())));
}

/// The end of the quoted text or comment that begins at `start`; `start` itself where none begins.
qsizetype endOfQuoted(const QString& sql, qsizetype start) {
    const QChar c = sql[start];
    const auto until = [&](const QString& mark) {
        const qsizetype found = sql.indexOf(mark, start + 1);
        return found < 0 ? sql.size() : found + mark.size();
    };
    if (c == u'#' || QStringView(sql).mid(start).startsWith(u"-- ") ||
        QStringView(sql).mid(start).startsWith(u"--\n")) {
        return until(QStringLiteral("\n"));
    }
    if (c != u'\'' && c != u'"' && c != u'`') {
        return start;
    }
    for (qsizetype i = start + 1; i < sql.size(); ++i) {
        if (sql[i] == u'\\' && c != u'`') {
            ++i;
        } else if (sql[i] == c) {
            return i + 1;
        }
    }
    return sql.size();
}

/// The statements of `sql`, which are separated by ";", without comments. The driver would take the text
/// apart its own way. A trigger has such separators inside and stands alone.
QList<QByteArray> statementsOf(const QString& sql) {
    if (sql.startsWith(QStringLiteral("CREATE TRIGGER"))) {
        return {sql.toUtf8()};
    }
    QList<QByteArray> statements;
    QString current;
    for (qsizetype i = 0; i < sql.size();) {
        const qsizetype end = endOfQuoted(sql, i);
        if (end > i) {
            if (sql[i] != u'#' && sql[i] != u'-') {
                current += QStringView(sql).mid(i, end - i);
            }
            i = end;
            continue;
        }
        if (sql[i] == u';') {
            statements += current.trimmed().toUtf8();
            current.clear();
        } else {
            current += sql[i];
        }
        ++i;
    }
    statements += current.trimmed().toUtf8();
    statements.removeAll(QByteArray());
    return statements;
}

/// The driver that the server's own data source names.
QByteArray driver() {
    QFile file(qEnvironmentVariable("TARVESSA_TEST_SERVER") + QStringLiteral("/odbc.ini"));
    if (file.open(QIODevice::ReadOnly)) {
        for (const QByteArray& row : file.readAll().split('\n')) {
            if (row.startsWith("Driver")) {
                return row.mid(row.indexOf('=') + 1).trimmed();
            }
        }
    }
    throw TestError(QStringLiteral("no driver in %1").arg(file.fileName()));
}

} // namespace

class AdminConnection::Session {
  public:
    explicit Session(const QString& address) {
        SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &m_environment);
        SQLSetEnvAttr(m_environment, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
        SQLAllocHandle(SQL_HANDLE_DBC, m_environment, &m_connection);
        QByteArray source =
            "DRIVER=" + driver() + ";UID=root;PWD=" + qgetenv("TARVESSA_TEST_PASSWORD") + ";CHARSET=utf8mb4;";
        source += sockets::dataSourceLines(address).join(QLatin1Char(';')).remove(QLatin1Char(' ')).toUtf8();
        if (!SQL_SUCCEEDED(SQLDriverConnect(m_connection, nullptr, reinterpret_cast<SQLCHAR*>(source.data()),
                                            SQL_NTS, nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT))) {
            const QString text = firstDiagnostic(SQL_HANDLE_DBC, m_connection);
            release();
            throw TestError(QStringLiteral("%1: %2").arg(address, text));
        }
        SQLAllocHandle(SQL_HANDLE_STMT, m_connection, &m_statement);
        SQLSetStmtAttr(m_statement, SQL_ATTR_NOSCAN, reinterpret_cast<SQLPOINTER>(SQL_NOSCAN_ON), 0);
    }
    ~Session() {
        SQLFreeHandle(SQL_HANDLE_STMT, m_statement);
        SQLDisconnect(m_connection);
        release();
    }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// Sends one statement.
    void send(QByteArray sql) {
        const SQLRETURN result = SQLExecDirect(m_statement, reinterpret_cast<SQLCHAR*>(sql.data()),
                                               static_cast<SQLINTEGER>(sql.size()));
        if (!SQL_SUCCEEDED(result) && result != SQL_NO_DATA) {
            const QString text = firstDiagnostic(SQL_HANDLE_STMT, m_statement);
            closeCursor();
            throw TestError(QStringLiteral("%1: %2").arg(text, QString::fromUtf8(sql.left(400))));
        }
    }

    void closeCursor() { SQLFreeStmt(m_statement, SQL_CLOSE); }

    SQLSMALLINT columns() const {
        SQLSMALLINT count = 0;
        SQLNumResultCols(m_statement, &count);
        return count;
    }

    bool next() { return SQL_SUCCEEDED(SQLFetch(m_statement)); }

    QString cell(SQLSMALLINT column) const {
        char nothing = 0;
        SQLLEN bytes = 0;
        SQLGetData(m_statement, static_cast<SQLUSMALLINT>(column), SQL_C_CHAR, &nothing, 0, &bytes);
        if (bytes == SQL_NULL_DATA) {
            return {};
        }
        QByteArray text(static_cast<qsizetype>(bytes) + 1, '\0');
        SQLGetData(m_statement, static_cast<SQLUSMALLINT>(column), SQL_C_CHAR, text.data(), text.size(),
                   &bytes);
        text.chop(1);
        // An empty text is no NULL.
        return text.isEmpty() ? QStringLiteral("") : QString::fromUtf8(text);
    }

  private:
    void release() {
        SQLFreeHandle(SQL_HANDLE_DBC, m_connection);
        SQLFreeHandle(SQL_HANDLE_ENV, m_environment);
    }

    SQLHENV m_environment = SQL_NULL_HENV;
    SQLHDBC m_connection = SQL_NULL_HDBC;
    SQLHSTMT m_statement = SQL_NULL_HSTMT;
};

AdminConnection::AdminConnection(const QString& address) : m_session(std::make_unique<Session>(address)) {
}

AdminConnection::~AdminConnection() = default;

void AdminConnection::select(const QString& database) {
    execute(QStringLiteral("USE `%1`").arg(database));
}

void AdminConnection::execute(const QString& sql) {
    for (const QByteArray& command : statementsOf(sql)) {
        // The driver allows no change of character set, and the connection has the right one.
        if (command == "SET NAMES utf8mb4") {
            continue;
        }
        m_session->send(command);
        m_session->closeCursor();
    }
}

QList<QStringList> AdminConnection::query(const QString& sql) {
    const QList<QByteArray> statements = statementsOf(sql);
    if (statements.size() != 1) {
        throw TestError(QStringLiteral("not one statement: %1").arg(sql));
    }
    m_session->send(statements.first());
    const SQLSMALLINT columns = m_session->columns();
    if (columns == 0) {
        m_session->closeCursor();
        throw TestError(QStringLiteral("not a query with rows: %1").arg(sql));
    }
    QList<QStringList> rows;
    while (m_session->next()) {
        QStringList cells;
        for (SQLSMALLINT i = 1; i <= columns; ++i) {
            cells += m_session->cell(i);
        }
        rows += cells;
    }
    m_session->closeCursor();
    return rows;
}

} // namespace tarvessa::test
