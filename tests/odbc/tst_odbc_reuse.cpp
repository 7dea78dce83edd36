#include "odbc/ResultSet.h"
#include "support/ErrorOf.h"
#include "support/PrivateServer.h"

#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

/// A connection uses its statements again: nothing of one query is ever seen in another.
class TstOdbcReuse : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase_data();
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void queriesOfEveryShapeFollowOneAnother();
    void manyResultsAreOpenAndCloseInAnyOrder();
    void rowsAfterAChangeOfData();
    void queryAfterAnErrorInTheMiddle();
    void resultsGoAfterTheirConnection();
    void resultsAreReleasedOnAnotherConnectionsTime();
    void resultIsNotReadAfterItsConnection();
    void lossIsMetByEveryIdleStatement();
    void movedFromResultOpensAgain();

  private:
    static QString sequence(int from, int to) {
        return u"SELECT seq AS n FROM sequencia WHERE seq BETWEEN %1 AND %2 ORDER BY seq"_s.arg(from).arg(to);
    }
    static void walk(odbc::ResultSet& rs, int from, int to) {
        for (int n = from; n <= to; ++n, rs.moveNext())
            QCOMPARE(rs.field(u"n").integer(), n);
        QVERIFY(rs.atEnd());
    }

    std::unique_ptr<PrivateServer> m_server;
    odbc::Connection m_connection;
};

void TstOdbcReuse::initTestCase_data() {
    QTest::addColumn<bool>("preferWide");
    QTest::newRow("narrow") << false;
    QTest::newRow("wide") << true;
}

void TstOdbcReuse::initTestCase() {
    m_server = std::make_unique<PrivateServer>();
    m_server->execute(u"CREATE TABLE sequencia (seq INT PRIMARY KEY); "
                      "INSERT INTO sequencia SELECT seq FROM seq_1_to_1000"_s);
    m_server->execute(u"CREATE TABLE notas (id INT PRIMARY KEY, curta VARCHAR(5), longa LONGTEXT)"_s);
    for (int n = 1; n <= 300; ++n)
        m_server->execute(u"INSERT INTO notas VALUES (%1, IF(%1 % 7 = 0, NULL, 'é%1'), "
                          "IF(%1 % 5 = 0, NULL, REPEAT('çã', 400 * (%1 % 4))))"_s.arg(n));
}

void TstOdbcReuse::init() {
    QFETCH_GLOBAL(bool, preferWide);
    m_connection.open(u"dsn=QDX"_s, preferWide);
}

void TstOdbcReuse::cleanup() {
    m_connection.close();
}

void TstOdbcReuse::cleanupTestCase() {
    m_server.reset();
}

void TstOdbcReuse::queriesOfEveryShapeFollowOneAnother() {
    for (int attempt = 0; attempt < 3; ++attempt) {
        {
            odbc::ResultSet notas;
            notas.open(m_connection, u"SELECT id, curta, longa FROM notas ORDER BY id"_s);
            for (int n = 1; n <= 300; ++n, notas.moveNext()) {
                QCOMPARE(notas.field(u"id").integer(), n);
                QCOMPARE(notas.field(u"curta").isNull(), n % 7 == 0);
                QCOMPARE(notas.field(u"curta").text(), n % 7 == 0 ? QString() : u"é%1"_s.arg(n));
                QCOMPARE(notas.field(u"longa").isNull(), n % 5 == 0);
                QCOMPARE(notas.field(u"longa").text(),
                         n % 5 == 0 ? QString() : u"çã"_s.repeated(qsizetype{400} * (n % 4)));
            }
            QVERIFY(notas.atEnd());
        }
        {
            odbc::ResultSet shortOnes;
            shortOnes.open(m_connection, u"SELECT 1 AS a, 2 AS b, 3 AS c"_s);
            QCOMPARE(shortOnes.field(u"c").text(), u"3"_s);
        }
        {
            // What is too long for a buffer must not go into that of the query before, either.
            odbc::ResultSet notas;
            notas.open(m_connection, u"SELECT id, curta, longa FROM notas WHERE id = 2"_s);
            QCOMPARE(notas.field(u"longa").text(), u"çã"_s.repeated(800));
        }
        {
            // Left in the middle, after a long text was fetched on its own.
            odbc::ResultSet notas;
            notas.open(m_connection, u"SELECT longa, id FROM notas WHERE id = 3 OR id = 4 ORDER BY id"_s);
            QCOMPARE(notas.field(u"longa").text(), u"çã"_s.repeated(1200));
        }
        {
            odbc::ResultSet none;
            none.open(m_connection, sequence(2000, 3000));
            QVERIFY(none.atEnd());
            QCOMPARE(none.columnNames(), QStringList{u"n"_s});
        }
        odbc::ResultSet block;
        block.open(m_connection, sequence(1, 700));
        walk(block, 1, 700);
        odbc::ResultSet several;
        several.open(m_connection, u"SELECT NULL AS a, '' AS b, 1.50 AS c, DATE '2024-02-29' AS d"_s);
        QVERIFY(several.field(u"a").isNull());
        QVERIFY(!several.field(u"b").isNull());
        QCOMPARE(several.field(u"b").text(), QString());
        QCOMPARE(several.field(u"c").text(), u"1.50"_s);
        QCOMPARE(several.field(u"d").text(), u"2024-02-29"_s);
    }
}

void TstOdbcReuse::manyResultsAreOpenAndCloseInAnyOrder() {
    constexpr int quantos = 12;
    for (int attempt = 0; attempt < 3; ++attempt) {
        std::vector<odbc::ResultSet> opened(quantos);
        for (int i = 0; i < quantos; ++i)
            opened[i].open(m_connection, sequence(10 * i + 1, 10 * i + 400));
        for (int i = 0; i < quantos; i += 2)
            opened[i].close();
        for (int i = 0; i < quantos; i += 4)
            opened[i].open(m_connection, sequence(i + 1, i + 3));
        for (int i = 1; i < quantos; i += 2)
            walk(opened[i], 10 * i + 1, 10 * i + 400);
        for (int i = 0; i < quantos; i += 4)
            walk(opened[i], i + 1, i + 3);
    }
}

void TstOdbcReuse::rowsAfterAChangeOfData() {
    m_server->execute(
        u"DROP TABLE IF EXISTS prova; CREATE TABLE prova (id INT PRIMARY KEY, v VARCHAR(20))"_s);
    for (int n = 1; n <= 50; ++n) {
        m_connection.execute(u"INSERT INTO prova VALUES (%1, 'novo')"_s.arg(n));
        odbc::ResultSet rs;
        rs.open(m_connection, u"SELECT COUNT(*) AS n, MAX(v) AS v FROM prova"_s);
        QCOMPARE(rs.field(u"n").integer(), n);
        m_connection.execute(u"UPDATE prova SET v = 'v%1'"_s.arg(n));
        // 'novo' sorts before 'v1', 'v2' and so on.
        QCOMPARE(rs.field(u"v").text(), n == 1 ? u"novo"_s : u"v%1"_s.arg(n - 1));
    }
    m_server->execute(u"DROP TABLE prova"_s);
}

void TstOdbcReuse::queryAfterAnErrorInTheMiddle() {
    for (int attempt = 0; attempt < 10; ++attempt) {
        odbc::ResultSet rs;
        rs.open(m_connection, sequence(1, 3));
        QVERIFY(errorOf([&] { m_connection.execute(u"UPDATE nenhuma SET a = 1"_s); }));
        odbc::ResultSet wrong;
        const auto error = errorOf([&] { wrong.open(m_connection, u"SELECT nada FROM sequencia"_s); });
        QVERIFY(error);
        QCOMPARE(error->sqlState(), u"42S22"_s);
        walk(rs, 1, 3);
        wrong.open(m_connection, sequence(5, 9));
        walk(wrong, 5, 9);
    }
}

void TstOdbcReuse::resultsGoAfterTheirConnection() {
    QFETCH_GLOBAL(bool, preferWide);
    for (int attempt = 0; attempt < 5; ++attempt) {
        odbc::ResultSet rest;
        {
            odbc::Connection other;
            other.open(u"dsn=QDX"_s, preferWide);
            rest.open(other, sequence(1, 600));
        }
        rest.close();
        QVERIFY(!rest.isOpen());
        rest.open(m_connection, sequence(4, 6));
        walk(rest, 4, 6);
    }
}

// The place of a statement that went with its connection may be another statement's by then.
void TstOdbcReuse::resultsAreReleasedOnAnotherConnectionsTime() {
    QFETCH_GLOBAL(bool, preferWide);
    std::vector<odbc::ResultSet> rests(6);
    for (odbc::ResultSet& rest : rests)
        rest.open(m_connection, sequence(1, 600));
    m_connection.close();
    m_connection.open(u"dsn=QDX"_s, preferWide);
    std::vector<odbc::ResultSet> novos(6);
    for (odbc::ResultSet& newer : novos)
        newer.open(m_connection, sequence(1, 600));
    rests.clear();
    for (odbc::ResultSet& newer : novos)
        walk(newer, 1, 600);
}

void TstOdbcReuse::resultIsNotReadAfterItsConnection() {
    QFETCH_GLOBAL(bool, preferWide);
    odbc::ResultSet rest;
    rest.open(m_connection, sequence(1, 600));
    m_connection.open(u"dsn=QDX"_s, preferWide);
    odbc::ResultSet newer;
    newer.open(m_connection, sequence(1, 600));
    QVERIFY(!rest.isOpen());
    const int fechado = number(ErrorNumber::ConnectionClosed);
    QCOMPARE(errorNumberOf([&] { rest.atEnd(); }), fechado);
    QCOMPARE(errorNumberOf([&] { rest.moveNext(); }), fechado);
    QCOMPARE(errorNumberOf([&] { rest.moveFirst(); }), fechado);
    QCOMPARE(errorNumberOf([&] { rest.field(0); }), fechado);
    walk(newer, 1, 600);
}

void TstOdbcReuse::lossIsMetByEveryIdleStatement() {
    {
        std::vector<odbc::ResultSet> opened(3);
        for (odbc::ResultSet& result : opened)
            result.open(m_connection, sequence(1, 3));
    }
    m_server->killProgramConnections();
    for (int attempt = 0; attempt < 6; ++attempt) {
        odbc::ResultSet rs;
        const auto failedQuery = errorOf([&] { rs.open(m_connection, sequence(1, 3)); });
        QVERIFY(failedQuery);
        QVERIFY(failedQuery->isConnectionLost());
        QCOMPARE(failedQuery->statement(), sequence(1, 3));
        const auto command = errorOf([&] { m_connection.execute(u"SET @a = 1"_s); });
        QVERIFY(command);
        QVERIFY(command->isConnectionLost());
    }
}

void TstOdbcReuse::movedFromResultOpensAgain() {
    odbc::ResultSet first;
    first.open(m_connection, sequence(1, 300));
    odbc::ResultSet second = std::move(first);
    const QString shorter = u"SELECT curta AS n, longa, id FROM notas WHERE id = 2"_s;
    // What a moved-from result does is the subject here.
    first.open(m_connection, shorter); // NOLINT(bugprone-use-after-move)
    QCOMPARE(first.field(u"n").text(), u"é2"_s);
    walk(second, 1, 300);
    QCOMPARE(first.field(u"longa").text(), u"çã"_s.repeated(800));
    second = std::move(first);
    QCOMPARE(second.field(u"id").integer(), 2);
    first.open(m_connection, sequence(1, 2)); // NOLINT(bugprone-use-after-move)
    walk(first, 1, 2);
}

QTEST_GUILESS_MAIN(TstOdbcReuse)
#include "tst_odbc_reuse.moc"
