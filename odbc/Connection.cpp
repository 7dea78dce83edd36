#include "odbc/Connection.h"

#include "base/Operation.h"
#include "base/RuntimeError.h"

#include <odbcinst.h>

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

// A server that does not answer must not hold the operator for longer. Some drivers know the limit as an
// attribute only, others only as a word of theirs, which the data source may have set already.
constexpr std::uintptr_t loginSeconds = 15;

bool hasShorterLimit(const QString& connectionString) {
    const QString name = connectionString.section(u';', 0, 0).section(u'=', 1);
#ifdef _WIN32
    std::array<wchar_t, 16> seconds{};
    SQLGetPrivateProfileStringW(name.toStdWString().c_str(), L"CONN_TIMEOUT", L"", seconds.data(),
                                static_cast<int>(seconds.size()), L"odbc.ini");
    const unsigned limit = QString::fromWCharArray(seconds.data()).toUInt();
#else
    std::array<char, 16> seconds{};
    SQLGetPrivateProfileString(name.toUtf8().constData(), "CONN_TIMEOUT", "", seconds.data(),
                               static_cast<int>(seconds.size()), "odbc.ini");
    const unsigned limit = QByteArray(seconds.data()).toUInt();
#endif
    return limit > 0 && limit <= loginSeconds;
}

SQLPOINTER asPointer(std::uintptr_t value) {
    return reinterpret_cast<SQLPOINTER>(value); // NOLINT(performance-no-int-to-ptr): the form ODBC asks for
}

} // namespace

Connection& Connection::operator=(Connection&& other) noexcept {
    close();
    m_environment = std::move(other.m_environment);
    m_connection = std::move(other.m_connection);
    m_session = std::move(other.m_session);
    m_connectionString = std::move(other.m_connectionString);
    m_server = std::move(other.m_server);
    m_database = std::move(other.m_database);
    m_watcher = std::move(other.m_watcher);
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
        opened();
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
    SQLSetConnectAttr(m_connection.get(), SQL_ATTR_LOGIN_TIMEOUT, asPointer(loginSeconds), 0);
    const QString limited = hasShorterLimit(connectionString)
                                ? connectionString
                                : connectionString + u";CONN_TIMEOUT=%1"_s.arg(loginSeconds);
    SQLSMALLINT length = 0;
    SQLRETURN code = SQL_ERROR;
    if (useWideCalls) {
        std::array<SQLWCHAR, 1024> full{};
        code = SQLDriverConnectW(m_connection.get(), nullptr, wide(limited), SQL_NTS, full.data(),
                                 full.size(), &length, SQL_DRIVER_NOPROMPT);
    } else {
        QByteArray text = limited.toUtf8();
        std::array<SQLCHAR, 1024> full{};
        code = SQLDriverConnect(m_connection.get(), nullptr, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS,
                                full.data(), full.size(), &length, SQL_DRIVER_NOPROMPT);
    }
    check(code, SQL_HANDLE_DBC, m_connection.get());
    m_session = std::make_shared<Session>();
    m_session->idle.reserve(enoughIdle);
    m_session->watcher = m_watcher;
    m_connectionString = connectionString;
}

// The way that led to a connection before needs no trying out. When it fails, the connection stays lost, and
// the running operation does not try again.
void Connection::reopen(const QString& sql) {
    const QString connectionString = m_connectionString;
    try {
        connectWith(connectionString, m_encoding == Encoding::Wide);
        opened();
    } catch (const RuntimeError& error) {
        close();
        m_connectionString = connectionString;
        m_session = std::make_shared<Session>();
        m_session->lose();
        throw RuntimeError(error.number(), error.text(), error.sqlState(), sql);
    }
}

// Asked once: a driver may go to the server for what it does not keep itself.
void Connection::opened() {
    m_server = information(SQL_SERVER_NAME);
    m_database = information(SQL_DATABASE_NAME);
    if (m_watcher)
        m_watcher();
}

QString Connection::information(SQLUSMALLINT kind) const {
    constexpr size_t longest = 256;
    SQLSMALLINT length = 0;
    if (m_encoding == Encoding::Wide) {
        std::array<SQLWCHAR, longest> text{};
        if (!SQL_SUCCEEDED(SQLGetInfoW(m_connection.get(), kind, text.data(), sizeof(text), &length)))
            return {};
        return QString::fromUtf16(reinterpret_cast<const char16_t*>(text.data()));
    }
    std::array<char, longest> text{};
    if (!SQL_SUCCEEDED(SQLGetInfo(m_connection.get(), kind, text.data(), text.size(), &length)))
        return {};
    return QString::fromUtf8(text.data());
}

void Connection::watch(std::function<void()> watcher) {
    m_watcher = std::move(watcher);
    if (m_session)
        m_session->watcher = m_watcher;
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
    m_session.reset();
    if (m_connection)
        SQLDisconnect(m_connection.get());
    m_connection = ConnectionHandle();
    m_environment = EnvironmentHandle();
}

Statement Connection::takeStatement(const QString& sql) {
    if (!m_session)
        throw RuntimeError(static_cast<int>(ErrorNumber::ConnectionClosed),
                           u"A conexão com o banco de dados não está aberta."_s, {}, sql);
    if (m_session->lostDuring) {
        if (Operation::current() <= *m_session->lostDuring)
            throw RuntimeError(static_cast<int>(ErrorNumber::ConnectionClosed),
                               u"A conexão com o banco de dados foi perdida."_s, u"08003"_s, sql);
        reopen(sql);
    }
    if (!m_session->idle.empty()) {
        Statement statement(std::move(m_session->idle.back()), m_session);
        m_session->idle.pop_back();
        return statement;
    }
    StatementAndRoom body;
    body.rowsFetched = std::make_unique<SQLULEN>(0);
    try {
        body.handle = StatementHandle(m_connection.get(), sql);
    } catch (const RuntimeError& error) {
        if (error.isConnectionLost())
            m_session->lose();
        throw;
    }
    Statement statement(std::move(body), m_session);
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

qint64 Connection::execute(const QString& sql) {
    const Statement statement = takeStatement(sql);
    executeOn(statement, sql);
    SQLLEN changed = -1;
    return SQL_SUCCEEDED(SQLRowCount(statement.get(), &changed)) ? changed : -1;
}

// Null-terminated: drivers count the length of a text in different units, and some cut accents off its end.
void Connection::executeOn(const Statement& statement, const QString& sql) const {
    if (sql.contains(QChar(u'\0')))
        throw RuntimeError(static_cast<int>(ErrorNumber::TypeMismatch),
                           u"Tipos incompatíveis: o comando contém um caractere nulo e não foi enviado."_s,
                           {}, sql);
    SQLRETURN code = SQL_ERROR;
    if (m_encoding == Encoding::Wide) {
        code = SQLExecDirectW(statement.get(), wide(sql), SQL_NTS);
    } else {
        QByteArray bytes = sql.toUtf8();
        code = SQLExecDirect(statement.get(), reinterpret_cast<SQLCHAR*>(bytes.data()), SQL_NTS);
    }
    statement.check(code, sql);
}

} // namespace tarvessa::odbc
