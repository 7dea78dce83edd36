#include "bench/support/BareOdbc.h"

#include <array>

namespace tarvessa::bench {

using odbc::check;

BareOdbc::BareOdbc() : m_environment(SQL_NULL_HANDLE) {
    check(SQLSetEnvAttr(m_environment.get(), SQL_ATTR_ODBC_VERSION,
                        reinterpret_cast<SQLPOINTER>(static_cast<SQLULEN>(SQL_OV_ODBC3)), 0),
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

void BareOdbc::run(const QByteArrayList& statements) {
    SQLHANDLE statement = m_statement.get();
    std::array<char, 1024> cell{};
    for (const QByteArray& sql : statements) {
        check(SQLExecDirect(statement, reinterpret_cast<SQLCHAR*>(const_cast<char*>(sql.constData())),
                            static_cast<SQLINTEGER>(sql.size())),
              SQL_HANDLE_STMT, statement);
        SQLSMALLINT columns = 0;
        check(SQLNumResultCols(statement, &columns), SQL_HANDLE_STMT, statement);
        while (columns > 0 && check(SQLFetch(statement), SQL_HANDLE_STMT, statement) != SQL_NO_DATA) {
            SQLLEN length = 0;
            for (SQLUSMALLINT i = 1; i <= columns; ++i)
                check(SQLGetData(statement, i, SQL_C_CHAR, cell.data(), cell.size(), &length),
                      SQL_HANDLE_STMT, statement);
        }
        SQLFreeStmt(statement, SQL_CLOSE);
    }
}

} // namespace tarvessa::bench
