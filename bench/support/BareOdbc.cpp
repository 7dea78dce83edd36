#include "bench/support/BareOdbc.h"

#include <algorithm>
#include <array>

namespace tarvessa::bench {

using odbc::check;

namespace {

constexpr SQLULEN rowsPerBlock = 256;
constexpr SQLLEN cellBytes = 256;

SQLPOINTER asPointer(SQLULEN value) {
    return reinterpret_cast<SQLPOINTER>(value); // NOLINT(performance-no-int-to-ptr): the form ODBC asks for
}

void setAttribute(SQLHANDLE statement, SQLINTEGER attribute, SQLULEN value) {
    check(SQLSetStmtAttr(statement, attribute, asPointer(value), 0), SQL_HANDLE_STMT, statement);
}

} // namespace

BareOdbc::BareOdbc() : m_environment(SQL_NULL_HANDLE) {
    check(SQLSetEnvAttr(m_environment.get(), SQL_ATTR_ODBC_VERSION, asPointer(SQL_OV_ODBC3), 0),
          SQL_HANDLE_ENV, m_environment.get());
    m_connection = odbc::ConnectionHandle(m_environment.get());
    std::array<SQLCHAR, 8> source{"dsn=QDX"};
    check(SQLDriverConnect(m_connection.get(), nullptr, source.data(), SQL_NTS, nullptr, 0, nullptr,
                           SQL_DRIVER_NOPROMPT),
          SQL_HANDLE_DBC, m_connection.get());
    m_statement = odbc::StatementHandle(m_connection.get());
}

BareOdbc::~BareOdbc() {
    m_statement = odbc::StatementHandle();
    SQLDisconnect(m_connection.get());
}

QString BareOdbc::driver() const {
    return information(SQL_DRIVER_NAME) + QLatin1Char(' ') + information(SQL_DRIVER_VER);
}

QString BareOdbc::information(SQLUSMALLINT kind) const {
    std::array<char, 256> text{};
    SQLSMALLINT length = 0;
    check(SQLGetInfo(m_connection.get(), kind, text.data(), text.size(), &length), SQL_HANDLE_DBC,
          m_connection.get());
    return QString::fromUtf8(text.data());
}

void BareOdbc::run(const QByteArrayList& statements) {
    SQLHANDLE statement = m_statement.get();
    std::array<char, 1024> cell{};
    for (const QByteArray& sql : statements) {
        send(sql);
        const SQLSMALLINT columns = this->columns();
        while (columns > 0 && check(SQLFetch(statement), SQL_HANDLE_STMT, statement) != SQL_NO_DATA) {
            SQLLEN length = 0;
            for (SQLUSMALLINT i = 1; i <= columns; ++i)
                check(SQLGetData(statement, i, SQL_C_CHAR, cell.data(), cell.size(), &length),
                      SQL_HANDLE_STMT, statement);
        }
        SQLFreeStmt(statement, SQL_CLOSE);
    }
}

void BareOdbc::readInBlocks(const QByteArray& sql) {
    SQLHANDLE statement = m_statement.get();
    setAttribute(statement, SQL_ATTR_CURSOR_TYPE, SQL_CURSOR_STATIC);
    send(sql);
    const auto columns = static_cast<size_t>(this->columns());
    if (columns == 0) {
        SQLFreeStmt(statement, SQL_CLOSE);
        return;
    }
    m_cells.resize(std::max(m_cells.size(), columns * rowsPerBlock * cellBytes));
    m_lengths.resize(std::max(m_lengths.size(), columns * rowsPerBlock));
    setAttribute(statement, SQL_ATTR_ROW_ARRAY_SIZE, rowsPerBlock);
    for (size_t i = 0; i < columns; ++i)
        check(SQLBindCol(statement, static_cast<SQLUSMALLINT>(i + 1), SQL_C_CHAR,
                         m_cells.data() + i * rowsPerBlock * cellBytes, cellBytes,
                         m_lengths.data() + i * rowsPerBlock),
              SQL_HANDLE_STMT, statement);
    while (check(SQLFetchScroll(statement, SQL_FETCH_NEXT, 0), SQL_HANDLE_STMT, statement) != SQL_NO_DATA) {
    }
    SQLFreeStmt(statement, SQL_CLOSE);
    SQLFreeStmt(statement, SQL_UNBIND);
    setAttribute(statement, SQL_ATTR_ROW_ARRAY_SIZE, 1);
}

void BareOdbc::send(const QByteArray& sql) {
    check(SQLExecDirect(m_statement.get(), reinterpret_cast<SQLCHAR*>(const_cast<char*>(sql.constData())),
                        static_cast<SQLINTEGER>(sql.size())),
          SQL_HANDLE_STMT, m_statement.get());
}

SQLSMALLINT BareOdbc::columns() {
    SQLSMALLINT columns = 0;
    check(SQLNumResultCols(m_statement.get(), &columns), SQL_HANDLE_STMT, m_statement.get());
    return columns;
}

} // namespace tarvessa::bench
