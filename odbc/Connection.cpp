#include "odbc/Connection.h"

#include "base/RuntimeError.h"

#include <array>
#include <cstdint>

using namespace Qt::StringLiterals;

namespace tarvessa::odbc {

namespace {

#ifdef _WIN32
constexpr bool narrowCallsCarryAllTexts = false;
#else
constexpr bool narrowCallsCarryAllTexts = true;
#endif

// Of each of the two shared results, of a routine's own one and of a command.
constexpr size_t enoughIdle = 4;

SQLPOINTER asPointer(std::uintptr_t value) {
    return reinterpret_cast<SQLPOINTER>(value); // NOLINT(performance-no-int-to-ptr): the form ODBC asks for
}

} // namespace

Connection& Connection::operator=(Connection&& other) noexcept {
    close();
    m_environment = std::move(other.m_environment);
    m_connection = std::move(other.m_connection);
    m_idle = std::move(other.m_idle);
    m_encoding = other.m_encoding;
    return *this;
}

Connection::~Connection() {
    close();
}

void Connection::open(const QString& connectionString, bool preferWide) {
    close();
    bool useWideCalls = preferWide || !narrowCallsCarryAllTexts;
    try {
        connectWith(connectionString, useWideCalls);
        // In a character set of its own the driver drops error texts with accents, and some characters have
        // no code in it. A driver that does not know the word is taken as it is.
        if (!speaksUtf8mb4())
            try {
                connectWith(connectionString + u";CHARSET=utf8mb4"_s, useWideCalls);
            } catch (const RuntimeError&) {
                connectWith(connectionString, useWideCalls);
            }
        if (!useWideCalls && !speaksUtf8mb4()) {
            useWideCalls = true;
            connectWith(connectionString, useWideCalls);
        }
        m_encoding = useWideCalls ? Encoding::Wide : Encoding::Utf8;
    } catch (const RuntimeError&) {
        close();
        throw;
    }
}

void Connection::connectWith(const QString& connectionString, bool useWideCalls) {
    close();
    m_environment = EnvironmentHandle(SQL_NULL_HANDLE);
    check(SQLSetEnvAttr(m_environment.get(), SQL_ATTR_ODBC_VERSION, asPointer(SQL_OV_ODBC3), 0),
          SQL_HANDLE_ENV, m_environment.get());
    m_connection = ConnectionHandle(m_environment.get());
    SQLSMALLINT length = 0;
    SQLRETURN code = SQL_ERROR;
    if (useWideCalls) {
        std::array<SQLWCHAR, 1024> full{};
        code = SQLDriverConnectW(m_connection.get(), nullptr, wide(connectionString), SQL_NTS, full.data(),
                                 full.size(), &length, SQL_DRIVER_NOPROMPT);
    } else {
        QByteArray text = connectionString.toUtf8();
        std::array<SQLCHAR, 1024> full{};
        code = SQLDriverConnect(m_connection.get(), nullptr, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS,
                                full.data(), full.size(), &length, SQL_DRIVER_NOPROMPT);
    }
    check(code, SQL_HANDLE_DBC, m_connection.get());
    m_idle = std::make_shared<IdleStatements>();
    m_idle->reserve(enoughIdle);
}

// The driver tells the connection's collation without asking the server, so no statement of ours precedes the
// first one of a screen.
bool Connection::speaksUtf8mb4() const {
    std::array<char, 128> collation{};
    SQLSMALLINT length = 0;
    return SQL_SUCCEEDED(SQLGetInfo(m_connection.get(), SQL_COLLATION_SEQ, collation.data(), collation.size(),
                                    &length)) &&
           QLatin1StringView(collation.data()).startsWith("utf8mb4"_L1);
}

void Connection::close() {
    m_idle.reset();
    if (m_connection)
        SQLDisconnect(m_connection.get());
    m_connection = ConnectionHandle();
    m_environment = EnvironmentHandle();
}

Statement Connection::takeStatement(const QString& sql) const {
    if (!m_connection)
        throw RuntimeError(static_cast<int>(ErrorNumber::ConnectionClosed),
                           u"A conexão com o banco de dados não está aberta."_s, {}, sql);
    if (!m_idle->empty()) {
        Statement statement(std::move(m_idle->back()), m_idle);
        m_idle->pop_back();
        return statement;
    }
    StatementAndRoom body;
    body.rowsFetched = std::make_unique<SQLULEN>(0);
    body.handle = StatementHandle(m_connection.get(), sql);
    Statement statement(std::move(body), m_idle);
    // Without it every result would seem to be empty.
    statement.check(SQLSetStmtAttr(statement.get(), SQL_ATTR_ROWS_FETCHED_PTR, &statement.rowsFetched(), 0),
                    sql);
    // Braces in a text are data, never an escape sequence of the driver.
    SQLSetStmtAttr(statement.get(), SQL_ATTR_NOSCAN, asPointer(SQL_NOSCAN_ON), 0);
    // A driver that grants less than asked (read-only instead of optimistic) says so with a warning only.
    SQLSetStmtAttr(statement.get(), SQL_ATTR_CURSOR_TYPE, asPointer(SQL_CURSOR_STATIC), 0);
    SQLSetStmtAttr(statement.get(), SQL_ATTR_CONCURRENCY, asPointer(SQL_CONCUR_ROWVER), 0);
    return statement;
}

void Connection::execute(const QString& sql) {
    executeOn(takeStatement(sql), sql);
}

void Connection::executeOn(const Statement& statement, const QString& sql) const {
    SQLRETURN code = SQL_ERROR;
    if (m_encoding == Encoding::Wide) {
        code = SQLExecDirectW(statement.get(), wide(sql), static_cast<SQLINTEGER>(sql.size()));
    } else {
        QByteArray bytes = sql.toUtf8();
        code = SQLExecDirect(statement.get(), reinterpret_cast<SQLCHAR*>(bytes.data()),
                             static_cast<SQLINTEGER>(bytes.size()));
    }
    statement.check(code, sql);
}

} // namespace tarvessa::odbc
