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
    std::unique_ptr<PrivateServer> m_servidor;
    odbc::Connection m_conexao;
};

void TstOdbcStatements::initTestCase() {
    m_servidor = std::make_unique<PrivateServer>();
}

void TstOdbcStatements::init() {
    m_servidor->execute(
        u"DROP TABLE IF EXISTS prova; CREATE TABLE prova (id INT PRIMARY KEY, v VARCHAR(100)); "
        "INSERT INTO prova VALUES (1, 'um')"_s);
    m_conexao.open(u"dsn=QDX"_s);
}

void TstOdbcStatements::cleanup() {
    m_conexao.close();
    m_servidor->useSocket(m_servidor->socket());
}

void TstOdbcStatements::cleanupTestCase() {
    m_servidor.reset();
}

void TstOdbcStatements::statementArrivesLetterByLetter_data() {
    QTest::addColumn<QString>("valor");
    QTest::addColumn<QString>("gravado");
    const auto caso = [](const char* nome, const QString& valor, const QString& gravado = {}) {
        QTest::newRow(nome) << valor << (gravado.isNull() ? valor : gravado);
    };
    caso("plain", u"PAO"_s);
    caso("accents", u"PÃO DE AÇÚCAR Nº ÁÉÍÓÚ´"_s);
    caso("characters of three bytes", u"preço em € — “caro”"_s);
    caso("characters of four bytes", u"\U0001F950 e \U0001F35E"_s);
    caso("braces of an escape", u"{d '' 2024-01-01}"_s, u"{d ' 2024-01-01}"_s);
    caso("function escape", u"{fn NOW()} {ts} {oj x} {?=call y}"_s);
    caso("lone braces", u"} { }} {{"_s);
    caso("percent and underscore", u"100% %s _ %d %%"_s);
    caso("parameter marks", u"? ?? :nome @x"_s);
    caso("double quotes and backquotes", u"\"a\" `b`"_s);
    caso("comment marks", u"-- a /* b */ # c"_s);
    caso("semicolons", u"a; b;"_s);
    caso("backslash", u"a\\\\b"_s, u"a\\b"_s);
    caso("tab and line breaks", u"a\tb\nc\r\nd"_s);
    caso("blanks in a row", u"  a   b  "_s);
}

void TstOdbcStatements::statementArrivesLetterByLetter() {
    QFETCH(QString, valor);
    QFETCH(QString, gravado);
    FaultProxy proxy(m_servidor->socket());
    m_servidor->useSocket(proxy.socket());
    const QString sql = u"UPDATE  prova Set v='"_s + valor + u"' , id = 1 Where  ID=1"_s;
    for (const bool preferWide : {false, true}) {
        m_conexao.open(u"dsn=QDX"_s, preferWide);
        StatementLog registro(*m_servidor);
        proxy.mark();
        m_conexao.execute(sql);
        QCOMPARE(registro.texts(), QStringList{sql});
        QCOMPARE(proxy.texts(), QList<QByteArray>{sql.toUtf8()});
        QCOMPARE(m_servidor->query(u"SELECT v FROM prova"_s)[0][0], gravado);
        m_servidor->execute(u"UPDATE prova SET v = 'outro'"_s);
    }
}

void TstOdbcStatements::queryArrivesLetterByLetter() {
    const QString sql = u"Select  v,'{fn x} 100% ? \U0001F950 Nº'  as  y From prova  where Id=1 limit 1"_s;
    for (const bool preferWide : {false, true}) {
        m_conexao.open(u"dsn=QDX"_s, preferWide);
        StatementLog registro(*m_servidor);
        odbc::ResultSet rs;
        rs.open(m_conexao, sql);
        QCOMPARE(rs.field(u"y").text(), u"{fn x} 100% ? \U0001F950 Nº"_s);
        rs.close();
        QCOMPARE(registro.texts(), QStringList{sql});
    }
}

void TstOdbcStatements::connectingSendsNoStatementOfItsOwn() {
    for (const QString& charset : {QString(), u"utf8mb4"_s, u"latin1"_s, u"cp850"_s}) {
        m_servidor->useCharset(charset);
        StatementLog registro(*m_servidor);
        m_conexao.open(u"dsn=QDX"_s);
        m_conexao.close();
        QCOMPARE(registro.texts(), QStringList());
    }
    m_servidor->useCharset(QString());
}

void TstOdbcStatements::statementsAreCommittedAsTheyRun() {
    m_conexao.execute(u"INSERT INTO prova VALUES (2, 'dois')"_s);
    QCOMPARE(m_servidor->query(u"SELECT v FROM prova WHERE id = 2"_s)[0][0], u"dois"_s);
    m_conexao.close();
    QCOMPARE(m_servidor->query(u"SELECT COUNT(*) FROM prova"_s)[0][0], u"2"_s);
}

void TstOdbcStatements::failedStatementTellsWhatAndWhy_data() {
    QTest::addColumn<QString>("sql");
    QTest::addColumn<int>("numeroEsperado");
    QTest::addColumn<QString>("estado");
    QTest::addColumn<QString>("trecho");
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
    QFETCH(int, numeroEsperado);
    QFETCH(QString, estado);
    QFETCH(QString, trecho);
    for (const QString& charset : {QString(), u"latin1"_s, u"cp850"_s}) {
        m_servidor->useCharset(charset);
        m_conexao.open(u"dsn=QDX"_s);
        const auto erro = errorOf([&] { m_conexao.execute(sql); });
        QVERIFY(erro);
        QCOMPARE(erro->number(), numeroEsperado);
        QCOMPARE(erro->sqlState(), estado);
        QCOMPARE(erro->statement(), sql);
        QVERIFY2(erro->text().contains(trecho), qPrintable(charset + u": "_s + erro->text()));
        QCOMPARE(QString::fromUtf8(erro->what()), erro->text());
        QVERIFY(!erro->isConnectionLost());
    }
    m_servidor->useCharset(QString());
}

void TstOdbcStatements::failedStatementLeavesTheConnectionUsable() {
    QVERIFY(errorOf([&] { m_conexao.execute(u"UPDATE nenhuma SET a = 1"_s); }));
    QVERIFY(m_conexao.isOpen());
    m_conexao.execute(u"UPDATE prova SET v = 'ainda'"_s);
    QCOMPARE(m_servidor->query(u"SELECT v FROM prova"_s)[0][0], u"ainda"_s);
}

void TstOdbcStatements::serverThatIsDownCannotBeOpened() {
    m_servidor->useSocket(m_servidor->socket() + u".nada"_s);
    for (const bool preferWide : {false, true}) {
        const auto erro = errorOf([&] { m_conexao.open(u"dsn=QDX"_s, preferWide); });
        QVERIFY(erro);
        QCOMPARE(erro->number(), 2002);
        QVERIFY(erro->text().contains(m_servidor->socket() + u".nada"_s));
        QVERIFY(!m_conexao.isOpen());
    }
}

void TstOdbcStatements::unknownDataSourceCannotBeOpened() {
    const auto erro = errorOf([&] { m_conexao.open(u"dsn=NENHUMA"_s); });
    QVERIFY(erro);
    QCOMPARE(erro->sqlState(), u"IM002"_s);
    QVERIFY(!m_conexao.isOpen());
}

void TstOdbcStatements::killedConnectionIsLost_data() {
    QTest::addColumn<bool>("preferWide");
    QTest::newRow("narrow") << false;
    QTest::newRow("wide") << true;
}

void TstOdbcStatements::queryOnAKilledConnectionIsLost() {
    for (const bool preferWide : {false, true}) {
        m_conexao.open(u"dsn=QDX"_s, preferWide);
        m_servidor->killProgramConnections();
        for (int vez = 0; vez < 3; ++vez) {
            odbc::ResultSet rs;
            const auto erro = errorOf([&] { rs.open(m_conexao, u"SELECT v FROM prova"_s); });
            QVERIFY(erro);
            QVERIFY2(erro->isConnectionLost(),
                     qPrintable(u"%1 %2 %3"_s.arg(erro->number()).arg(erro->sqlState(), erro->text())));
            QCOMPARE(erro->statement(), u"SELECT v FROM prova"_s);
        }
    }
}

void TstOdbcStatements::killedConnectionIsLost() {
    QFETCH(bool, preferWide);
    m_conexao.open(u"dsn=QDX"_s, preferWide);
    m_conexao.execute(u"SET @a = 1"_s);
    m_servidor->killProgramConnections();
    const QString sql = u"UPDATE prova SET v = 'depois'"_s;
    // The first statement finds the loss, the later ones know of it.
    for (int vez = 0; vez < 3; ++vez) {
        const auto erro = errorOf([&] { m_conexao.execute(sql); });
        QVERIFY(erro);
        QVERIFY2(erro->isConnectionLost(),
                 qPrintable(u"%1 %2 %3"_s.arg(erro->number()).arg(erro->sqlState(), erro->text())));
        QCOMPARE(erro->sqlState().first(2), u"08"_s);
        QVERIFY(!erro->text().isEmpty());
        QCOMPARE(erro->statement(), sql);
    }
    odbc::ResultSet rs;
    const auto erro = errorOf([&] { rs.open(m_conexao, u"SELECT 1"_s); });
    QVERIFY(erro);
    QVERIFY(erro->isConnectionLost());
    QCOMPARE(m_servidor->query(u"SELECT v FROM prova"_s)[0][0], u"um"_s);
}

void TstOdbcStatements::cutConnectionIsLostAndTheStatementNotSent() {
    FaultProxy proxy(m_servidor->socket());
    m_servidor->useSocket(proxy.socket());
    m_conexao.open(u"dsn=QDX"_s);
    proxy.cutBefore(2);
    m_conexao.execute(u"UPDATE prova SET v = 'primeiro'"_s);
    const auto erro = errorOf([&] { m_conexao.execute(u"UPDATE prova SET v = 'segundo'"_s); });
    QVERIFY(erro);
    QVERIFY(erro->isConnectionLost());
    QVERIFY(errorOf([&] { m_conexao.execute(u"UPDATE prova SET v = 'terceiro'"_s); }));
    QCOMPARE(proxy.texts(), QList<QByteArray>{"UPDATE prova SET v = 'primeiro'"});
    QCOMPARE(m_servidor->query(u"SELECT v FROM prova"_s)[0][0], u"primeiro"_s);
}

void TstOdbcStatements::closedConnectionIsAnError() {
    m_conexao.close();
    m_conexao.close();
    QVERIFY(!m_conexao.isOpen());
    const auto erro = errorOf([&] { m_conexao.execute(u"SET @a = 1"_s); });
    QVERIFY(erro);
    QCOMPARE(erro->number(), number(ErrorNumber::ConnectionClosed));
    QVERIFY(erro->isConnectionLost());
    QCOMPARE(erro->statement(), u"SET @a = 1"_s);
    odbc::ResultSet rs;
    QCOMPARE(errorNumberOf([&] { rs.open(m_conexao, u"SELECT 1"_s); }),
             number(ErrorNumber::ConnectionClosed));
}

void TstOdbcStatements::connectionOpensAgainAfterALoss() {
    m_servidor->killProgramConnections();
    QVERIFY(errorOf([&] { m_conexao.execute(u"SET @a = 1"_s); }));
    m_conexao.open(u"dsn=QDX"_s);
    m_conexao.execute(u"UPDATE prova SET v = 'de novo'"_s);
    QCOMPARE(m_servidor->query(u"SELECT v FROM prova"_s)[0][0], u"de novo"_s);
    odbc::Connection outra = std::move(m_conexao);
    QVERIFY(outra.isOpen());
    QVERIFY(!m_conexao.isOpen());
    outra.execute(u"UPDATE prova SET v = 'outra'"_s);
    QCOMPARE(m_servidor->query(u"SELECT v FROM prova"_s)[0][0], u"outra"_s);
}

void TstOdbcStatements::onlyAConnectionErrorMeansConnectionLost_data() {
    QTest::addColumn<int>("numeroDoDriver");
    QTest::addColumn<QString>("estado");
    QTest::addColumn<bool>("perdida");
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
    QFETCH(QString, estado);
    QFETCH(bool, perdida);
    QCOMPARE(RuntimeError(numeroDoDriver, u"x"_s, estado, {}).isConnectionLost(), perdida);
}

QTEST_GUILESS_MAIN(TstOdbcStatements)
#include "tst_odbc_statements.moc"
