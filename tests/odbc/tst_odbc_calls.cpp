#include "odbc/ResultSet.h"
#include "support/ErrorOf.h"
#include "support/PrivateServer.h"

#include <QTest>

#include <dlfcn.h>

#include <functional>
#include <map>
#include <memory>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

// What the program hands to the driver manager; these stand before its own functions and pass everything on.
struct Calls {
    std::map<SQLINTEGER, std::uintptr_t> statementAttributes;
    std::map<SQLINTEGER, std::uintptr_t> connectionAttributes;
    QList<QByteArray> narrowTexts;
    QStringList wideTexts;
    QList<SQLINTEGER> lengths;
    int freedStatements = 0;
};

Calls& calls() {
    static Calls all;
    return all;
}

template <typename Function>
Function* original(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

} // namespace

extern "C" {

SQLRETURN SQL_API SQLSetStmtAttr(SQLHSTMT statement, SQLINTEGER attribute, SQLPOINTER value,
                                 SQLINTEGER length) {
    calls().statementAttributes[attribute] = reinterpret_cast<std::uintptr_t>(value);
    return original<decltype(SQLSetStmtAttr)>("SQLSetStmtAttr")(statement, attribute, value, length);
}

SQLRETURN SQL_API SQLSetConnectAttr(SQLHDBC connection, SQLINTEGER attribute, SQLPOINTER value,
                                    SQLINTEGER length) {
    calls().connectionAttributes[attribute] = reinterpret_cast<std::uintptr_t>(value);
    return original<decltype(SQLSetConnectAttr)>("SQLSetConnectAttr")(connection, attribute, value, length);
}

SQLRETURN SQL_API SQLFreeHandle(SQLSMALLINT kind, SQLHANDLE handle) {
    calls().freedStatements += kind == SQL_HANDLE_STMT ? 1 : 0;
    return original<decltype(SQLFreeHandle)>("SQLFreeHandle")(kind, handle);
}

SQLRETURN SQL_API SQLExecDirect(SQLHSTMT statement, SQLCHAR* text, SQLINTEGER length) {
    calls().narrowTexts.append(QByteArray(reinterpret_cast<const char*>(text)));
    calls().lengths.append(length);
    return original<decltype(SQLExecDirect)>("SQLExecDirect")(statement, text, length);
}

SQLRETURN SQL_API SQLExecDirectW(SQLHSTMT statement, SQLWCHAR* text, SQLINTEGER length) {
    calls().wideTexts.append(QString::fromUtf16(reinterpret_cast<const char16_t*>(text)));
    calls().lengths.append(length);
    return original<decltype(SQLExecDirectW)>("SQLExecDirectW")(statement, text, length);
}
}

/// What is asked of the driver, whatever it grants.
class TstOdbcCalls : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanupTestCase();

    void resultIsAskedForStaticAndOptimistic_data();
    void resultIsAskedForStaticAndOptimistic();
    void loginHasATimeLimit();
    void statementsGoNullTerminatedWithTheirBlanks_data();
    void statementsGoNullTerminatedWithTheirBlanks();
    void statementWithANullCharacterIsNotSent_data();
    void statementWithANullCharacterIsNotSent();
    void failedStatementIsNotUsedAgain();

  private:
    std::unique_ptr<PrivateServer> m_server;
    odbc::Connection m_connection;
};

void TstOdbcCalls::initTestCase() {
    m_server = std::make_unique<PrivateServer>();
}

void TstOdbcCalls::init() {
    calls() = {};
}

void TstOdbcCalls::cleanupTestCase() {
    m_connection.close();
    m_server.reset();
}

void TstOdbcCalls::resultIsAskedForStaticAndOptimistic_data() {
    QTest::addColumn<bool>("preferWide");
    QTest::newRow("narrow") << false;
    QTest::newRow("wide") << true;
}

void TstOdbcCalls::resultIsAskedForStaticAndOptimistic() {
    QFETCH(bool, preferWide);
    m_connection.open(u"dsn=QDX"_s, preferWide);
    calls() = {};
    odbc::ResultSet result;
    result.open(m_connection, u"SELECT 1"_s);
    const auto& asked = calls().statementAttributes;
    QCOMPARE(asked.at(SQL_ATTR_CURSOR_TYPE), std::uintptr_t(SQL_CURSOR_STATIC));
    QCOMPARE(asked.at(SQL_ATTR_CONCURRENCY), std::uintptr_t(SQL_CONCUR_ROWVER));
    QCOMPARE(asked.at(SQL_ATTR_NOSCAN), std::uintptr_t(SQL_NOSCAN_ON));
}

void TstOdbcCalls::loginHasATimeLimit() {
    m_connection.open(u"dsn=QDX"_s);
    QCOMPARE(calls().connectionAttributes.at(SQL_ATTR_LOGIN_TIMEOUT), std::uintptr_t(15));
}

void TstOdbcCalls::statementsGoNullTerminatedWithTheirBlanks_data() {
    resultIsAskedForStaticAndOptimistic_data();
}

void TstOdbcCalls::statementsGoNullTerminatedWithTheirBlanks() {
    QFETCH(bool, preferWide);
    m_connection.open(u"dsn=QDX"_s, preferWide);
    calls() = {};
    const QString command = u" SET @a = 'ÇÃÉ €'  "_s;
    const QString query = u" SELECT 'ÁÊÕ' AS v  "_s;
    m_connection.execute(command);
    odbc::ResultSet result;
    result.open(m_connection, query);
    QCOMPARE(result.field(u"v").text(), u"ÁÊÕ"_s);
    QCOMPARE(calls().lengths, (QList<SQLINTEGER>{SQL_NTS, SQL_NTS}));
    if (preferWide)
        QCOMPARE(calls().wideTexts, (QStringList{command, query}));
    else
        QCOMPARE(calls().narrowTexts, (QList<QByteArray>{command.toUtf8(), query.toUtf8()}));
}

void TstOdbcCalls::statementWithANullCharacterIsNotSent_data() {
    resultIsAskedForStaticAndOptimistic_data();
}

// The driver would take the text before it for the whole statement.
void TstOdbcCalls::statementWithANullCharacterIsNotSent() {
    QFETCH(bool, preferWide);
    m_connection.open(u"dsn=QDX"_s, preferWide);
    calls() = {};
    const QString sql = u"SELECT 1"_s + QChar(u'\0') + u" WHERE 1=0"_s;
    odbc::ResultSet result;
    const auto refused = [&](const std::function<void()>& send) {
        const auto error = errorOf(send);
        QVERIFY(error);
        QCOMPARE(error->number(), number(ErrorNumber::TypeMismatch));
        QCOMPARE(error->text(),
                 u"Tipos incompatíveis: o comando contém um caractere nulo e não foi enviado."_s);
        QCOMPARE(error->statement(), sql);
    };
    refused([&] { m_connection.execute(sql); });
    refused([&] { result.open(m_connection, sql); });
    QCOMPARE(calls().lengths, QList<SQLINTEGER>());
    m_connection.execute(u"SET @a = 1"_s);
}

void TstOdbcCalls::failedStatementIsNotUsedAgain() {
    m_connection.open(u"dsn=QDX"_s);
    m_connection.execute(u"SET @a = 1"_s);
    calls() = {};
    m_connection.execute(u"SET @a = 2"_s);
    QCOMPARE(calls().freedStatements, 0);
    QVERIFY(errorOf([this] { m_connection.execute(u"SET @a = "_s); }));
    QCOMPARE(calls().freedStatements, 1);
}

QTEST_GUILESS_MAIN(TstOdbcCalls)
#include "tst_odbc_calls.moc"
