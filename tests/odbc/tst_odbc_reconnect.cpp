#include "base/Operation.h"
#include "odbc/ResultSet.h"
#include "support/ErrorOf.h"
#include "support/FaultProxy.h"
#include "support/OwnServer.h"
#include "support/PrivateServer.h"
#include "support/Socket.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <memory>
#include <optional>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

/// What a lost connection ends, and how the next operation comes to a new one.
class TstOdbcReconnect : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void lossEndsTheOperation_data();
    void lossEndsTheOperation();
    void nextOperationOpensAgain_data();
    void nextOperationOpensAgain();
    void nothingIsRepeated();
    void queryOpensAgainToo();
    void lossFoundWhileRowsAreRead();
    void eachOperationTriesOnce();
    void outsideAnOperationNothingIsOpened();
    void partOfTheOperationDoesNotOpenAgain();
    void operationOfAnInnerEventLoopOpensAgain();
    void resultsOfBeforeAreClosed();
    void sessionIsNew();
    void refusedStatementIsNoLoss();
    void closedConnectionStaysClosed();
    void charsetOfTheDataSourceIsKept();
    void hangingServerIsALoss();
    void serverThatNeverAnswersEndsTheLogin();

  private:
    /// The error of a statement in an operation of its own.
    std::optional<RuntimeError> errorInOperation(const QString& sql);
    qint64 numberOf(const QString& query);

    std::unique_ptr<PrivateServer> m_server;
    odbc::Connection m_connection;
};

void TstOdbcReconnect::initTestCase() {
    m_server = std::make_unique<PrivateServer>();
}

void TstOdbcReconnect::init() {
    m_server->execute(u"DROP TABLE IF EXISTS prova; CREATE TABLE prova (v INT)"_s);
    m_connection.open(u"dsn=QDX"_s);
}

void TstOdbcReconnect::cleanup() {
    m_connection.close();
    m_server->useSocket(m_server->socket());
    m_server->useCharset({});
}

void TstOdbcReconnect::cleanupTestCase() {
    m_server.reset();
}

std::optional<RuntimeError> TstOdbcReconnect::errorInOperation(const QString& sql) {
    const Operation operation;
    return errorOf([&] { m_connection.execute(sql); });
}

qint64 TstOdbcReconnect::numberOf(const QString& query) {
    odbc::ResultSet result;
    result.open(m_connection, query);
    return result.field(0).integer();
}

void TstOdbcReconnect::lossEndsTheOperation_data() {
    QTest::addColumn<bool>("preferWide");
    QTest::newRow("narrow") << false;
    QTest::newRow("wide") << true;
}

void TstOdbcReconnect::lossEndsTheOperation() {
    QFETCH(bool, preferWide);
    m_connection.open(u"dsn=QDX"_s, preferWide);
    const Operation operation;
    m_connection.execute(u"INSERT INTO prova VALUES (1)"_s);
    m_server->killProgramConnections();
    for (int v = 2; v <= 4; ++v) {
        const QString sql = u"INSERT INTO prova VALUES (%1)"_s.arg(v);
        const auto error = errorOf([&] { m_connection.execute(sql); });
        QVERIFY(error);
        QVERIFY(error->isConnectionLost());
        QCOMPARE(error->statement(), sql);
        QVERIFY(!m_connection.isOpen());
    }
    QCOMPARE(m_server->query(u"SELECT v FROM prova"_s), QList<QStringList>{{u"1"_s}});
}

void TstOdbcReconnect::nextOperationOpensAgain_data() {
    lossEndsTheOperation_data();
}

void TstOdbcReconnect::nextOperationOpensAgain() {
    QFETCH(bool, preferWide);
    m_connection.open(u"dsn=QDX"_s, preferWide);
    const odbc::Encoding encoding = m_connection.encoding();
    for (int round = 0; round < 3; ++round) {
        m_server->killProgramConnections();
        const auto error = errorInOperation(u"INSERT INTO prova VALUES (1)"_s);
        QVERIFY(error);
        QVERIFY(error->isConnectionLost());
        const Operation operation;
        m_connection.execute(u"INSERT INTO prova VALUES (2)"_s);
        m_connection.execute(u"INSERT INTO prova VALUES (3)"_s);
        QVERIFY(m_connection.isOpen());
    }
    QCOMPARE(static_cast<int>(m_connection.encoding()), static_cast<int>(encoding));
    QCOMPARE(m_server->query(u"SELECT v, COUNT(*) FROM prova GROUP BY v ORDER BY v"_s),
             (QList<QStringList>{{u"2"_s, u"3"_s}, {u"3"_s, u"3"_s}}));
}

void TstOdbcReconnect::nothingIsRepeated() {
    FaultProxy proxy(m_server->socket());
    m_server->useSocket(proxy.socket());
    m_connection.open(u"dsn=QDX"_s);
    proxy.cutBefore(1);
    QVERIFY(errorInOperation(u"INSERT INTO prova VALUES (1)"_s));
    QVERIFY(!errorInOperation(u"INSERT INTO prova VALUES (2)"_s));
    QCOMPARE(proxy.texts().last(), QByteArray("INSERT INTO prova VALUES (2)"));
    QVERIFY(!proxy.texts().contains("INSERT INTO prova VALUES (1)"));
    QCOMPARE(m_server->query(u"SELECT v FROM prova"_s), QList<QStringList>{{u"2"_s}});
}

void TstOdbcReconnect::queryOpensAgainToo() {
    m_server->killProgramConnections();
    odbc::ResultSet result;
    {
        const Operation operation;
        QVERIFY(errorOf([&] { result.open(m_connection, u"SELECT 1"_s); }));
        QVERIFY(!result.isOpen());
    }
    const Operation operation;
    result.open(m_connection, u"SELECT 42 AS n"_s);
    QCOMPARE(result.field(u"n").integer(), Q_INT64_C(42));
}

void TstOdbcReconnect::lossFoundWhileRowsAreRead() {
    m_server->execute(u"INSERT INTO prova SELECT seq FROM seq_1_to_1000"_s);
    odbc::ResultSet result;
    result.open(m_connection, u"SELECT v, REPEAT('x', 3000) AS longo FROM prova"_s);
    m_server->killProgramConnections();
    {
        // The rows are with the driver; only the next statement finds the loss.
        const Operation operation;
        QVERIFY(errorOf([&] { m_connection.execute(u"DELETE FROM prova"_s); }));
    }
    QVERIFY(!errorInOperation(u"DELETE FROM prova WHERE v > 1"_s));
    QCOMPARE(errorNumberOf([&] { result.moveNext(); }), number(ErrorNumber::ConnectionClosed));
    QCOMPARE(m_server->query(u"SELECT COUNT(*) FROM prova"_s)[0][0], u"1"_s);
}

void TstOdbcReconnect::eachOperationTriesOnce() {
    m_server->killProgramConnections();
    QVERIFY(errorInOperation(u"INSERT INTO prova VALUES (1)"_s));
    m_server->useSocket(m_server->socket() + u".nada"_s);
    for (int press = 0; press < 2; ++press) {
        const Operation operation;
        const auto tried = errorOf([&] { m_connection.execute(u"INSERT INTO prova VALUES (2)"_s); });
        QVERIFY(tried);
        QCOMPARE(tried->number(), 2002);
        QVERIFY(tried->isConnectionLost());
        QCOMPARE(tried->statement(), u"INSERT INTO prova VALUES (2)"_s);
        const auto notTried = errorOf([&] { m_connection.execute(u"INSERT INTO prova VALUES (3)"_s); });
        QVERIFY(notTried);
        QCOMPARE(notTried->number(), number(ErrorNumber::ConnectionClosed));
        QVERIFY(!m_connection.isOpen());
    }
    m_server->useSocket(m_server->socket());
    QVERIFY(!errorInOperation(u"INSERT INTO prova VALUES (4)"_s));
    QCOMPARE(m_server->query(u"SELECT v FROM prova"_s), QList<QStringList>{{u"4"_s}});
}

void TstOdbcReconnect::outsideAnOperationNothingIsOpened() {
    m_server->killProgramConnections();
    for (int v = 1; v <= 3; ++v)
        QVERIFY(errorOf([&] { m_connection.execute(u"INSERT INTO prova VALUES (%1)"_s.arg(v)); }));
    QVERIFY(!m_connection.isOpen());
    QCOMPARE(m_server->query(u"SELECT COUNT(*) FROM prova"_s)[0][0], u"0"_s);
}

void TstOdbcReconnect::partOfTheOperationDoesNotOpenAgain() {
    m_server->killProgramConnections();
    const Operation operation;
    QVERIFY(errorInOperation(u"INSERT INTO prova VALUES (1)"_s));
    QVERIFY(errorInOperation(u"INSERT INTO prova VALUES (2)"_s));
    QCOMPARE(m_server->query(u"SELECT COUNT(*) FROM prova"_s)[0][0], u"0"_s);
}

// A screen that was opened by an operation, which still runs, serves operations of its own.
void TstOdbcReconnect::operationOfAnInnerEventLoopOpensAgain() {
    m_server->killProgramConnections();
    const Operation outer;
    bool isFirstLost = false;
    bool isSecondFine = false;
    QEventLoop loop;
    QTimer::singleShot(0, &loop, [&] {
        isFirstLost = errorInOperation(u"INSERT INTO prova VALUES (1)"_s).has_value();
        isSecondFine = !errorInOperation(u"INSERT INTO prova VALUES (2)"_s);
        loop.quit();
    });
    loop.exec();
    QVERIFY(isFirstLost);
    QVERIFY(isSecondFine);
    QCOMPARE(m_server->query(u"SELECT v FROM prova"_s), QList<QStringList>{{u"2"_s}});
}

void TstOdbcReconnect::resultsOfBeforeAreClosed() {
    odbc::ResultSet result;
    result.open(m_connection, u"SELECT 1 AS n UNION SELECT 2"_s);
    m_server->killProgramConnections();
    QVERIFY(errorInOperation(u"SET @a = 1"_s));
    QVERIFY(!errorInOperation(u"SET @a = 1"_s));
    QVERIFY(!result.isOpen());
    QCOMPARE(errorNumberOf([&] { result.field(u"n"); }), number(ErrorNumber::ConnectionClosed));
    QCOMPARE(errorNumberOf([&] { result.moveNext(); }), number(ErrorNumber::ConnectionClosed));
    result.open(m_connection, u"SELECT 3 AS n"_s);
    QCOMPARE(result.field(u"n").integer(), Q_INT64_C(3));
}

void TstOdbcReconnect::sessionIsNew() {
    m_connection.execute(u"SET SESSION sql_mode = 'ANSI', @variavel = 1"_s);
    QCOMPARE(numberOf(u"SELECT GET_LOCK('%1', 0)"_s.arg(m_server->database())), Q_INT64_C(1));
    m_server->killProgramConnections();
    QVERIFY(errorInOperation(u"SET @a = 1"_s));
    const Operation operation;
    odbc::ResultSet result;
    result.open(m_connection, u"SELECT @@sql_mode AS modo, @variavel AS v, IS_FREE_LOCK('%1') AS livre"_s.arg(
                                  m_server->database()));
    QCOMPARE(result.field(u"modo").text(), u"NO_ENGINE_SUBSTITUTION"_s);
    QVERIFY(result.field(u"v").isNull());
    QCOMPARE(result.field(u"livre").integer(), Q_INT64_C(1));
}

void TstOdbcReconnect::refusedStatementIsNoLoss() {
    const qint64 before = numberOf(u"SELECT CONNECTION_ID()"_s);
    QVERIFY(errorInOperation(u"INSERT INTO nenhuma VALUES (1)"_s));
    const Operation operation;
    QCOMPARE(numberOf(u"SELECT CONNECTION_ID()"_s), before);
}

void TstOdbcReconnect::closedConnectionStaysClosed() {
    m_server->killProgramConnections();
    QVERIFY(errorInOperation(u"SET @a = 1"_s));
    m_connection.close();
    const auto error = errorInOperation(u"SET @a = 1"_s);
    QVERIFY(error);
    QCOMPARE(error->number(), number(ErrorNumber::ConnectionClosed));
}

void TstOdbcReconnect::charsetOfTheDataSourceIsKept() {
    m_server->useCharset(u"latin1"_s);
    m_connection.open(u"dsn=QDX"_s);
    m_server->killProgramConnections();
    QVERIFY(errorInOperation(u"SET @a = 1"_s));
    const Operation operation;
    odbc::ResultSet result;
    result.open(m_connection, u"SELECT 'PÃO € \U0001F950' AS v, @@character_set_client AS c"_s);
    QCOMPARE(result.field(u"v").text(), u"PÃO € \U0001F950"_s);
    QCOMPARE(result.field(u"c").text(), u"utf8mb4"_s);
}

void TstOdbcReconnect::hangingServerIsALoss() {
#ifdef _WIN32
    QSKIP("the server runs outside the emulation");
#else
    // A server of its own: holding the common one would hold up the other test programs.
    m_server.reset();
    std::optional<OwnServer> own(std::in_place);
    m_server = std::make_unique<PrivateServer>();
    m_server->execute(u"CREATE TABLE prova (v INT)"_s);
    m_connection.open(u"dsn=QDX;READ_TIMEOUT=1;WRITE_TIMEOUT=1"_s);
    {
        const Operation operation;
        own->hold();
        QElapsedTimer clock;
        clock.start();
        const auto error = errorOf([&] { m_connection.execute(u"INSERT INTO prova VALUES (1)"_s); });
        const auto later = errorOf([&] { m_connection.execute(u"INSERT INTO prova VALUES (2)"_s); });
        const qint64 elapsed = clock.elapsed();
        own->release();
        QVERIFY(error);
        QVERIFY2(error->isConnectionLost(),
                 qPrintable(u"%1 %2 %3"_s.arg(error->number()).arg(error->sqlState(), error->text())));
        QVERIFY(later);
        QVERIFY2(elapsed < 10000, qPrintable(QString::number(elapsed)));
    }
    QVERIFY(!errorInOperation(u"INSERT INTO prova VALUES (3)"_s));
    QCOMPARE(m_server->query(u"SELECT COUNT(*) FROM prova WHERE v > 1"_s)[0][0], u"1"_s);
    m_connection.close();
    m_server.reset();
    own.reset();
    m_server = std::make_unique<PrivateServer>();
#endif
}

void TstOdbcReconnect::serverThatNeverAnswersEndsTheLogin() {
#ifdef _WIN32
    QSKIP("needs a unix socket that is never read");
#else
    // Nobody accepts, so what the driver sends is taken by the system and never answered.
    QTemporaryDir folder(u"/tmp/tarvessa-XXXXXX"_s);
    const auto [listener, address] = sockets::listen(folder.path());
    const auto ending = qScopeGuard([handle = listener] { sockets::close(handle); });
    m_server->useSocket(address);
    QElapsedTimer clock;
    clock.start();
    const auto error = errorOf([&] { m_connection.open(u"dsn=QDX"_s); });
    QVERIFY(error);
    QVERIFY2(clock.elapsed() > 5000 && clock.elapsed() < 17000, qPrintable(QString::number(clock.elapsed())));
    QVERIFY(!m_connection.isOpen());
#endif
}

QTEST_GUILESS_MAIN(TstOdbcReconnect)
#include "tst_odbc_reconnect.moc"
