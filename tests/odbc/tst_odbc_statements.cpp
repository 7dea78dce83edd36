#include "odbc/ResultSet.h"
#include "support/ErrorOf.h"
#include "support/FaultProxy.h"
#include "support/PrivateServer.h"
#include "support/StatementLog.h"

#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

/// Statements on their way to the server, and what comes back when they fail.
class TstOdbcStatements : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void statementArrivesLetterByLetter_data();
    void statementArrivesLetterByLetter();
    void queryArrivesLetterByLetter();
    void connectingSendsNoStatementOfItsOwn();
    void statementsAreCommittedAsTheyRun();
    void failedStatementTellsWhatAndWhy_data();
    void failedStatementTellsWhatAndWhy();
    void failedStatementLeavesTheConnectionUsable();
    void serverThatIsDownCannotBeOpened();
    void unknownDataSourceCannotBeOpened();
    void killedConnectionIsLost_data();
    void killedConnectionIsLost();
    void queryOnAKilledConnectionIsLost();
    void cutConnectionIsLostAndTheStatementNotSent();
    void closedConnectionIsAnError();
    void connectionOpensAgainAfterALoss();
    void onlyAConnectionErrorMeansConnectionLost_data();
    void onlyAConnectionErrorMeansConnectionLost();

  private:
    bool logKeepsEveryLetter();

    std::unique_ptr<PrivateServer> m_server;
    odbc::Connection m_connection;
};

/// MySQL writes characters of four bytes into its log as hexadecimal digits.
bool TstOdbcStatements::logKeepsEveryLetter() {
    return m_server->query(u"SELECT VERSION()"_s)[0][0].contains(u"MariaDB"_s);
}

void TstOdbcStatements::initTestCase() {
    m_server = std::make_unique<PrivateServer>();
}

void TstOdbcStatements::init() {
    m_server->execute(u"DROP TABLE IF EXISTS prova; CREATE TABLE prova (id INT PRIMARY KEY, v VARCHAR(100)); "
                      "INSERT INTO prova VALUES (1, 'um')"_s);
    m_connection.open(u"dsn=QDX"_s);
}

void TstOdbcStatements::cleanup() {
    m_connection.close();
    m_server->useSocket(m_server->socket());
}

void TstOdbcStatements::cleanupTestCase() {
    m_server.reset();
}

void TstOdbcStatements::statementArrivesLetterByLetter_data() {
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("stored");
    const auto addCase = [](const char* name, const QString& value, const QString& stored = {}) {
        QTest::newRow(name) << value << (stored.isNull() ? value : stored);
    };
    addCase("plain", u"PAO"_s);
    addCase("accents", u"PÃO DE AÇÚCAR Nº ÁÉÍÓÚ´"_s);
    addCase("characters of three bytes", u"preço em € — “caro”"_s);
    addCase("characters of four bytes", u"\U0001F950 e \U0001F35E"_s);
    addCase("braces of an escape", u"{d '' 2024-01-01}"_s, u"{d ' 2024-01-01}"_s);
    addCase("function escape", u"{fn NOW()} {ts} {oj x} {?=call y}"_s);
    addCase("lone braces", u"} { }} {{"_s);
    addCase("percent and underscore", u"100% %s _ %d %%"_s);
    addCase("parameter marks", u"? ?? :nome @x"_s);
    addCase("double quotes and backquotes", u"\"a\" `b`"_s);
    addCase("comment marks", u"-- a /* b */ # c"_s);
    addCase("semicolons", u"a; b;"_s);
    addCase("backslash", u"a\\\\b"_s, u"a\\b"_s);
    addCase("tab and line breaks", u"a\tb\nc\r\nd"_s);
    addCase("blanks in a row", u"  a   b  "_s);
}

void TstOdbcStatements::statementArrivesLetterByLetter() {
    QFETCH(QString, value);
    QFETCH(QString, stored);
    if (value.contains(u"\U0001F950"_s) && !logKeepsEveryLetter())
        QSKIP("this server's log keeps no characters of four bytes");
    FaultProxy proxy(m_server->socket());
    m_server->useSocket(proxy.socket());
    const QString sql = u"UPDATE  prova Set v='"_s + value + u"' , id = 1 Where  ID=1"_s;
    for (const bool preferWide : {false, true}) {
        m_connection.open(u"dsn=QDX"_s, preferWide);
        StatementLog log(*m_server);
        proxy.mark();
        m_connection.execute(sql);
        QCOMPARE(log.texts(), QStringList{sql});
        QCOMPARE(proxy.texts(), QList<QByteArray>{sql.toUtf8()});
        QCOMPARE(m_server->query(u"SELECT v FROM prova"_s)[0][0], stored);
        m_server->execute(u"UPDATE prova SET v = 'outro'"_s);
    }
}

void TstOdbcStatements::queryArrivesLetterByLetter() {
    if (!logKeepsEveryLetter())
        QSKIP("this server's log keeps no characters of four bytes");
    const QString sql = u"Select  v,'{fn x} 100% ? \U0001F950 Nº'  as  y From prova  where Id=1 limit 1"_s;
    for (const bool preferWide : {false, true}) {
        m_connection.open(u"dsn=QDX"_s, preferWide);
        StatementLog log(*m_server);
        odbc::ResultSet rs;
        rs.open(m_connection, sql);
        QCOMPARE(rs.field(u"y").text(), u"{fn x} 100% ? \U0001F950 Nº"_s);
        rs.close();
        QCOMPARE(log.texts(), QStringList{sql});
    }
}

void TstOdbcStatements::connectingSendsNoStatementOfItsOwn() {
    for (const QString& charset : {QString(), u"utf8mb4"_s, u"latin1"_s, u"cp850"_s}) {
        m_server->useCharset(charset);
        StatementLog log(*m_server);
        m_connection.open(u"dsn=QDX"_s);
        m_connection.close();
        QCOMPARE(log.texts(), QStringList());
    }
    m_server->useCharset(QString());
}

void TstOdbcStatements::statementsAreCommittedAsTheyRun() {
    m_connection.execute(u"INSERT INTO prova VALUES (2, 'dois')"_s);
    QCOMPARE(m_server->query(u"SELECT v FROM prova WHERE id = 2"_s)[0][0], u"dois"_s);
    m_connection.close();
    QCOMPARE(m_server->query(u"SELECT COUNT(*) FROM prova"_s)[0][0], u"2"_s);
}

void TstOdbcStatements::failedStatementTellsWhatAndWhy_data() {
    QTest::addColumn<QString>("sql");
    QTest::addColumn<int>("expectedNumber");
    QTest::addColumn<QString>("state");
    QTest::addColumn<QString>("part");
    QTest::newRow("no such table") << u"SELECT * FROM nenhuma"_s << 1146 << u"42S02"_s
                                   << u"nenhuma' doesn't exist"_s;
    QTest::newRow("no such column, with accents")
        << u"SELECT `descrição` FROM prova"_s << 1054 << u"42S22"_s << u"'descrição'"_s;
    QTest::newRow("syntax") << u"SELEC 'São José'"_s << 1064 << u"42000"_s << u"'SELEC 'São José''"_s;
    QTest::newRow("syntax in a prepared query") << u"SELECT FROM"_s << 1064 << u"42000"_s << u"syntax"_s;
    QTest::newRow("key twice") << u"INSERT INTO prova VALUES (1, 'x')"_s << 1062 << u"23000"_s
                               << u"Duplicate entry '1'"_s;
}

void TstOdbcStatements::failedStatementTellsWhatAndWhy() {
    QFETCH(QString, sql);
    QFETCH(int, expectedNumber);
    QFETCH(QString, state);
    QFETCH(QString, part);
    for (const QString& charset : {QString(), u"latin1"_s, u"cp850"_s}) {
        m_server->useCharset(charset);
        m_connection.open(u"dsn=QDX"_s);
        const auto error = errorOf([&] { m_connection.execute(sql); });
        QVERIFY(error);
        QCOMPARE(error->number(), expectedNumber);
        QCOMPARE(error->sqlState(), state);
        QCOMPARE(error->statement(), sql);
        QVERIFY2(error->text().contains(part), qPrintable(charset + u": "_s + error->text()));
        QCOMPARE(QString::fromUtf8(error->what()), error->text());
        QVERIFY(!error->isConnectionLost());
    }
    m_server->useCharset(QString());
}

void TstOdbcStatements::failedStatementLeavesTheConnectionUsable() {
    QVERIFY(errorOf([&] { m_connection.execute(u"UPDATE nenhuma SET a = 1"_s); }));
    QVERIFY(m_connection.isOpen());
    m_connection.execute(u"UPDATE prova SET v = 'ainda'"_s);
    QCOMPARE(m_server->query(u"SELECT v FROM prova"_s)[0][0], u"ainda"_s);
}

void TstOdbcStatements::serverThatIsDownCannotBeOpened() {
    m_server->useSocket(m_server->socket() + u".nada"_s);
    for (const bool preferWide : {false, true}) {
        const auto error = errorOf([&] { m_connection.open(u"dsn=QDX"_s, preferWide); });
        QVERIFY(error);
        QCOMPARE(error->number(), 2002);
        QVERIFY(error->text().contains(m_server->socket() + u".nada"_s));
        QVERIFY(!m_connection.isOpen());
    }
}

void TstOdbcStatements::unknownDataSourceCannotBeOpened() {
    const auto error = errorOf([&] { m_connection.open(u"dsn=NENHUMA"_s); });
    QVERIFY(error);
    QCOMPARE(error->sqlState(), u"IM002"_s);
    QVERIFY(!m_connection.isOpen());
}

void TstOdbcStatements::killedConnectionIsLost_data() {
    QTest::addColumn<bool>("preferWide");
    QTest::newRow("narrow") << false;
    QTest::newRow("wide") << true;
}

void TstOdbcStatements::queryOnAKilledConnectionIsLost() {
    for (const bool preferWide : {false, true}) {
        m_connection.open(u"dsn=QDX"_s, preferWide);
        m_server->killProgramConnections();
        for (int attempt = 0; attempt < 3; ++attempt) {
            odbc::ResultSet rs;
            const auto error = errorOf([&] { rs.open(m_connection, u"SELECT v FROM prova"_s); });
            QVERIFY(error);
            QVERIFY2(error->isConnectionLost(),
                     qPrintable(u"%1 %2 %3"_s.arg(error->number()).arg(error->sqlState(), error->text())));
            QCOMPARE(error->statement(), u"SELECT v FROM prova"_s);
        }
    }
}

void TstOdbcStatements::killedConnectionIsLost() {
    QFETCH(bool, preferWide);
    m_connection.open(u"dsn=QDX"_s, preferWide);
    m_connection.execute(u"SET @a = 1"_s);
    m_server->killProgramConnections();
    const QString sql = u"UPDATE prova SET v = 'depois'"_s;
    // The first statement finds the loss, the later ones know of it.
    for (int attempt = 0; attempt < 3; ++attempt) {
        const auto error = errorOf([&] { m_connection.execute(sql); });
        QVERIFY(error);
        QVERIFY2(error->isConnectionLost(),
                 qPrintable(u"%1 %2 %3"_s.arg(error->number()).arg(error->sqlState(), error->text())));
        QCOMPARE(error->sqlState().first(2), u"08"_s);
        QVERIFY(!error->text().isEmpty());
        QCOMPARE(error->statement(), sql);
    }
    odbc::ResultSet rs;
    const auto error = errorOf([&] { rs.open(m_connection, u"SELECT 1"_s); });
    QVERIFY(error);
    QVERIFY(error->isConnectionLost());
    QCOMPARE(m_server->query(u"SELECT v FROM prova"_s)[0][0], u"um"_s);
}

void TstOdbcStatements::cutConnectionIsLostAndTheStatementNotSent() {
    FaultProxy proxy(m_server->socket());
    m_server->useSocket(proxy.socket());
    m_connection.open(u"dsn=QDX"_s);
    proxy.cutBefore(2);
    m_connection.execute(u"UPDATE prova SET v = 'primeiro'"_s);
    const auto error = errorOf([&] { m_connection.execute(u"UPDATE prova SET v = 'segundo'"_s); });
    QVERIFY(error);
    QVERIFY(error->isConnectionLost());
    QVERIFY(errorOf([&] { m_connection.execute(u"UPDATE prova SET v = 'terceiro'"_s); }));
    QCOMPARE(proxy.texts(), QList<QByteArray>{"UPDATE prova SET v = 'primeiro'"});
    QCOMPARE(m_server->query(u"SELECT v FROM prova"_s)[0][0], u"primeiro"_s);
}

void TstOdbcStatements::closedConnectionIsAnError() {
    m_connection.close();
    m_connection.close();
    QVERIFY(!m_connection.isOpen());
    const auto error = errorOf([&] { m_connection.execute(u"SET @a = 1"_s); });
    QVERIFY(error);
    QCOMPARE(error->number(), number(ErrorNumber::ConnectionClosed));
    QVERIFY(error->isConnectionLost());
    QCOMPARE(error->statement(), u"SET @a = 1"_s);
    odbc::ResultSet rs;
    QCOMPARE(errorNumberOf([&] { rs.open(m_connection, u"SELECT 1"_s); }),
             number(ErrorNumber::ConnectionClosed));
}

void TstOdbcStatements::connectionOpensAgainAfterALoss() {
    m_server->killProgramConnections();
    QVERIFY(errorOf([&] { m_connection.execute(u"SET @a = 1"_s); }));
    m_connection.open(u"dsn=QDX"_s);
    m_connection.execute(u"UPDATE prova SET v = 'de novo'"_s);
    QCOMPARE(m_server->query(u"SELECT v FROM prova"_s)[0][0], u"de novo"_s);
    odbc::Connection other = std::move(m_connection);
    QVERIFY(other.isOpen());
    QVERIFY(!m_connection.isOpen());
    other.execute(u"UPDATE prova SET v = 'outra'"_s);
    QCOMPARE(m_server->query(u"SELECT v FROM prova"_s)[0][0], u"outra"_s);
}

void TstOdbcStatements::onlyAConnectionErrorMeansConnectionLost_data() {
    QTest::addColumn<int>("numeroDoDriver");
    QTest::addColumn<QString>("state");
    QTest::addColumn<bool>("lost");
    QTest::newRow("link failure") << 2013 << u"08S01"_s << true;
    QTest::newRow("not open") << 0 << u"08003"_s << true;
    QTest::newRow("gone away, general state") << 2006 << u"HY000"_s << true;
    QTest::newRow("lost in a query, general state") << 2013 << u"HY000"_s << true;
    QTest::newRow("write error") << 5014 << u"HY000"_s << true;
    QTest::newRow("read error") << 5013 << u"HY000"_s << true;
    QTest::newRow("lost, with a reason") << 2055 << u"HY000"_s << true;
    QTest::newRow("general") << 1205 << u"HY000"_s << false;
    QTest::newRow("access") << 1142 << u"42000"_s << false;
    QTest::newRow("division by zero") << 11 << QString() << false;
}

void TstOdbcStatements::onlyAConnectionErrorMeansConnectionLost() {
    QFETCH(int, numeroDoDriver);
    QFETCH(QString, state);
    QFETCH(bool, lost);
    QCOMPARE(RuntimeError(numeroDoDriver, u"x"_s, state, {}).isConnectionLost(), lost);
}

QTEST_GUILESS_MAIN(TstOdbcStatements)
#include "tst_odbc_statements.moc"
