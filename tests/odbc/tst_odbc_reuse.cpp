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
    static QString sequencia(int de, int ate) {
        return u"SELECT seq AS n FROM sequencia WHERE seq BETWEEN %1 AND %2 ORDER BY seq"_s.arg(de).arg(ate);
    }
    static void percorre(odbc::ResultSet& rs, int de, int ate) {
        for (int n = de; n <= ate; ++n, rs.moveNext())
            QCOMPARE(rs.field(u"n").integer(), n);
        QVERIFY(rs.atEnd());
    }

    std::unique_ptr<PrivateServer> m_servidor;
    odbc::Connection m_conexao;
};

void TstOdbcReuse::initTestCase_data() {
    QTest::addColumn<bool>("preferWide");
    QTest::newRow("narrow") << false;
    QTest::newRow("wide") << true;
}

void TstOdbcReuse::initTestCase() {
    m_servidor = std::make_unique<PrivateServer>();
    m_servidor->execute(u"CREATE TABLE sequencia (seq INT PRIMARY KEY); "
                        "INSERT INTO sequencia SELECT seq FROM seq_1_to_1000"_s);
    m_servidor->execute(u"CREATE TABLE notas (id INT PRIMARY KEY, curta VARCHAR(5), longa LONGTEXT)"_s);
    for (int n = 1; n <= 300; ++n)
        m_servidor->execute(u"INSERT INTO notas VALUES (%1, IF(%1 % 7 = 0, NULL, 'é%1'), "
                            "IF(%1 % 5 = 0, NULL, REPEAT('çã', 400 * (%1 % 4))))"_s.arg(n));
}

void TstOdbcReuse::init() {
    QFETCH_GLOBAL(bool, preferWide);
    m_conexao.open(u"dsn=QDX"_s, preferWide);
}

void TstOdbcReuse::cleanup() {
    m_conexao.close();
}

void TstOdbcReuse::cleanupTestCase() {
    m_servidor.reset();
}

void TstOdbcReuse::queriesOfEveryShapeFollowOneAnother() {
    for (int vez = 0; vez < 3; ++vez) {
        {
            odbc::ResultSet notas;
            notas.open(m_conexao, u"SELECT id, curta, longa FROM notas ORDER BY id"_s);
            for (int n = 1; n <= 300; ++n, notas.moveNext()) {
                QCOMPARE(notas.field(u"id").integer(), n);
                QCOMPARE(notas.field(u"curta").isNull(), n % 7 == 0);
                QCOMPARE(notas.field(u"curta").text(), n % 7 == 0 ? QString() : u"é%1"_s.arg(n));
                QCOMPARE(notas.field(u"longa").isNull(), n % 5 == 0);
                QCOMPARE(notas.field(u"longa").text(),
                         n % 5 == 0 ? QString() : u"çã"_s.repeated(400 * (n % 4)));
            }
            QVERIFY(notas.atEnd());
        }
        {
            odbc::ResultSet curtas;
            curtas.open(m_conexao, u"SELECT 1 AS a, 2 AS b, 3 AS c"_s);
            QCOMPARE(curtas.field(u"c").text(), u"3"_s);
        }
        {
            // What is too long for a buffer must not go into that of the query before, either.
            odbc::ResultSet notas;
            notas.open(m_conexao, u"SELECT id, curta, longa FROM notas WHERE id = 2"_s);
            QCOMPARE(notas.field(u"longa").text(), u"çã"_s.repeated(800));
        }
        {
            // Left in the middle, after a long text was fetched on its own.
            odbc::ResultSet notas;
            notas.open(m_conexao, u"SELECT longa, id FROM notas WHERE id = 3 OR id = 4 ORDER BY id"_s);
            QCOMPARE(notas.field(u"longa").text(), u"çã"_s.repeated(1200));
        }
        {
            odbc::ResultSet nenhuma;
            nenhuma.open(m_conexao, sequencia(2000, 3000));
            QVERIFY(nenhuma.atEnd());
            QCOMPARE(nenhuma.columnNames(), QStringList{u"n"_s});
        }
        odbc::ResultSet bloco;
        bloco.open(m_conexao, sequencia(1, 700));
        percorre(bloco, 1, 700);
        odbc::ResultSet varias;
        varias.open(m_conexao, u"SELECT NULL AS a, '' AS b, 1.50 AS c, DATE '2024-02-29' AS d"_s);
        QVERIFY(varias.field(u"a").isNull());
        QVERIFY(!varias.field(u"b").isNull());
        QCOMPARE(varias.field(u"b").text(), QString());
        QCOMPARE(varias.field(u"c").text(), u"1.50"_s);
        QCOMPARE(varias.field(u"d").text(), u"2024-02-29"_s);
    }
}

void TstOdbcReuse::manyResultsAreOpenAndCloseInAnyOrder() {
    constexpr int quantos = 12;
    for (int vez = 0; vez < 3; ++vez) {
        std::vector<odbc::ResultSet> abertos(quantos);
        for (int i = 0; i < quantos; ++i)
            abertos[i].open(m_conexao, sequencia(10 * i + 1, 10 * i + 400));
        for (int i = 0; i < quantos; i += 2)
            abertos[i].close();
        for (int i = 0; i < quantos; i += 4)
            abertos[i].open(m_conexao, sequencia(i + 1, i + 3));
        for (int i = 1; i < quantos; i += 2)
            percorre(abertos[i], 10 * i + 1, 10 * i + 400);
        for (int i = 0; i < quantos; i += 4)
            percorre(abertos[i], i + 1, i + 3);
    }
}

void TstOdbcReuse::rowsAfterAChangeOfData() {
    m_servidor->execute(u"CREATE OR REPLACE TABLE prova (id INT PRIMARY KEY, v VARCHAR(20))"_s);
    for (int n = 1; n <= 50; ++n) {
        m_conexao.execute(u"INSERT INTO prova VALUES (%1, 'novo')"_s.arg(n));
        odbc::ResultSet rs;
        rs.open(m_conexao, u"SELECT COUNT(*) AS n, MAX(v) AS v FROM prova"_s);
        QCOMPARE(rs.field(u"n").integer(), n);
        m_conexao.execute(u"UPDATE prova SET v = 'v%1'"_s.arg(n));
        // 'novo' sorts before 'v1', 'v2' and so on.
        QCOMPARE(rs.field(u"v").text(), n == 1 ? u"novo"_s : u"v%1"_s.arg(n - 1));
    }
    m_servidor->execute(u"DROP TABLE prova"_s);
}

void TstOdbcReuse::queryAfterAnErrorInTheMiddle() {
    for (int vez = 0; vez < 10; ++vez) {
        odbc::ResultSet rs;
        rs.open(m_conexao, sequencia(1, 3));
        QVERIFY(errorOf([&] { m_conexao.execute(u"UPDATE nenhuma SET a = 1"_s); }));
        odbc::ResultSet errado;
        const auto erro = errorOf([&] { errado.open(m_conexao, u"SELECT nada FROM sequencia"_s); });
        QVERIFY(erro);
        QCOMPARE(erro->sqlState(), u"42S22"_s);
        percorre(rs, 1, 3);
        errado.open(m_conexao, sequencia(5, 9));
        percorre(errado, 5, 9);
    }
}

void TstOdbcReuse::resultsGoAfterTheirConnection() {
    QFETCH_GLOBAL(bool, preferWide);
    for (int vez = 0; vez < 5; ++vez) {
        odbc::ResultSet resto;
        {
            odbc::Connection outra;
            outra.open(u"dsn=QDX"_s, preferWide);
            resto.open(outra, sequencia(1, 600));
        }
        resto.close();
        QVERIFY(!resto.isOpen());
        resto.open(m_conexao, sequencia(4, 6));
        percorre(resto, 4, 6);
    }
}

// The place of a statement that went with its connection may be another statement's by then.
void TstOdbcReuse::resultsAreReleasedOnAnotherConnectionsTime() {
    QFETCH_GLOBAL(bool, preferWide);
    std::vector<odbc::ResultSet> restos(6);
    for (odbc::ResultSet& resto : restos)
        resto.open(m_conexao, sequencia(1, 600));
    m_conexao.close();
    m_conexao.open(u"dsn=QDX"_s, preferWide);
    std::vector<odbc::ResultSet> novos(6);
    for (odbc::ResultSet& novo : novos)
        novo.open(m_conexao, sequencia(1, 600));
    restos.clear();
    for (odbc::ResultSet& novo : novos)
        percorre(novo, 1, 600);
}

void TstOdbcReuse::resultIsNotReadAfterItsConnection() {
    QFETCH_GLOBAL(bool, preferWide);
    odbc::ResultSet resto;
    resto.open(m_conexao, sequencia(1, 600));
    m_conexao.open(u"dsn=QDX"_s, preferWide);
    odbc::ResultSet novo;
    novo.open(m_conexao, sequencia(1, 600));
    QVERIFY(!resto.isOpen());
    const int fechado = number(ErrorNumber::ConnectionClosed);
    QCOMPARE(errorNumberOf([&] { resto.atEnd(); }), fechado);
    QCOMPARE(errorNumberOf([&] { resto.moveNext(); }), fechado);
    QCOMPARE(errorNumberOf([&] { resto.moveFirst(); }), fechado);
    QCOMPARE(errorNumberOf([&] { resto.field(0); }), fechado);
    percorre(novo, 1, 600);
}

void TstOdbcReuse::lossIsMetByEveryIdleStatement() {
    {
        std::vector<odbc::ResultSet> abertos(3);
        for (odbc::ResultSet& aberto : abertos)
            aberto.open(m_conexao, sequencia(1, 3));
    }
    m_servidor->killProgramConnections();
    for (int vez = 0; vez < 6; ++vez) {
        odbc::ResultSet rs;
        const auto consulta = errorOf([&] { rs.open(m_conexao, sequencia(1, 3)); });
        QVERIFY(consulta);
        QVERIFY(consulta->isConnectionLost());
        QCOMPARE(consulta->statement(), sequencia(1, 3));
        const auto comando = errorOf([&] { m_conexao.execute(u"SET @a = 1"_s); });
        QVERIFY(comando);
        QVERIFY(comando->isConnectionLost());
    }
}

void TstOdbcReuse::movedFromResultOpensAgain() {
    odbc::ResultSet primeiro;
    primeiro.open(m_conexao, sequencia(1, 300));
    odbc::ResultSet segundo = std::move(primeiro);
    primeiro.open(m_conexao, u"SELECT curta AS n, longa, id FROM notas WHERE id = 2"_s);
    QCOMPARE(primeiro.field(u"n").text(), u"é2"_s);
    percorre(segundo, 1, 300);
    QCOMPARE(primeiro.field(u"longa").text(), u"çã"_s.repeated(800));
    segundo = std::move(primeiro);
    QCOMPARE(segundo.field(u"id").integer(), 2);
    primeiro.open(m_conexao, sequencia(1, 2));
    percorre(primeiro, 1, 2);
}

QTEST_GUILESS_MAIN(TstOdbcReuse)
#include "tst_odbc_reuse.moc"
