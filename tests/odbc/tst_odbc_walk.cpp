#include "odbc/ResultSet.h"
#include "support/ErrorOf.h"
#include "support/PrivateServer.h"

#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

/// Walking a result: columns by name, blocks of rows, both ends, closed results.
class TstOdbcWalk : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase_data();
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void columnIsFoundInAnyLetterCase();
    void firstOfTwoColumnsWithOneNameIsMeant();
    void unknownColumnIsAnError();
    void everyRowComesOnceAndInOrder_data();
    void everyRowComesOnceAndInOrder();
    void noRowsLeavesTheResultOpenAtItsEnd();
    void readingPastTheEndIsAnError();
    void goingBackToTheFirstRow_data();
    void goingBackToTheFirstRow();
    void closedResultIsAnError();
    void newQueryReplacesTheOldOne();
    void failedQueryLeavesTheResultClosed();
    void twoResultsAreWalkedAtOnce();
    void rowsStayAsTheyWereWhenOpened();
    void resultMovesToAnotherOwner();
    void statementWithoutRowsGivesNoResult();
    void wholeNumberOfACell_data();
    void wholeNumberOfACell();
    void wholeNumberTooLargeIsAnError();

  private:
    static QString sequencia(int linhas) {
        return u"SELECT seq AS n, CONCAT('linha ', seq) AS texto FROM sequencia WHERE seq <= %1 "
               "ORDER BY seq"_s.arg(linhas);
    }

    std::unique_ptr<PrivateServer> m_servidor;
    odbc::Connection m_conexao;
};

void TstOdbcWalk::initTestCase_data() {
    QTest::addColumn<bool>("preferWide");
    QTest::newRow("narrow") << false;
    QTest::newRow("wide") << true;
}

void TstOdbcWalk::initTestCase() {
    m_servidor = std::make_unique<PrivateServer>();
    m_servidor->execute(u"CREATE TABLE sequencia (seq INT PRIMARY KEY)"_s);
    for (int n = 1; n <= 1000; ++n)
        m_servidor->execute(u"INSERT INTO sequencia VALUES (%1)"_s.arg(n));
}

void TstOdbcWalk::init() {
    QFETCH_GLOBAL(bool, preferWide);
    m_conexao.open(u"dsn=QDX"_s, preferWide);
}

void TstOdbcWalk::cleanup() {
    m_conexao.close();
}

void TstOdbcWalk::cleanupTestCase() {
    m_servidor.reset();
}

void TstOdbcWalk::columnIsFoundInAnyLetterCase() {
    odbc::ResultSet rs;
    rs.open(m_conexao, u"SELECT 1 AS NrPedido, 2 AS `Descrição`, 3 AS `Nota Fiscal`"_s);
    for (const QStringView nome : {u"NrPedido", u"nrpedido", u"NRPEDIDO"})
        QCOMPARE(rs.field(nome).text(), u"1"_s);
    for (const QStringView nome : {u"Descrição", u"descrição", u"DESCRIÇÃO"})
        QCOMPARE(rs.field(nome).text(), u"2"_s);
    QCOMPARE(rs.field(u"nota fiscal").text(), u"3"_s);
    QCOMPARE(rs.column(u"nota FISCAL"), 2);
    QCOMPARE(rs.columnNames(), (QStringList{u"NrPedido"_s, u"Descrição"_s, u"Nota Fiscal"_s}));
}

void TstOdbcWalk::firstOfTwoColumnsWithOneNameIsMeant() {
    odbc::ResultSet rs;
    rs.open(m_conexao, u"SELECT 'um' AS codigo, 'dois' AS Codigo"_s);
    QCOMPARE(rs.field(u"codigo").text(), u"um"_s);
    QCOMPARE(rs.field(u"Codigo").text(), u"um"_s);
    QCOMPARE(rs.field(1).text(), u"dois"_s);
}

void TstOdbcWalk::unknownColumnIsAnError() {
    const QString sql = u"SELECT 1 AS um"_s;
    odbc::ResultSet rs;
    rs.open(m_conexao, sql);
    const auto erro = errorOf([&] { rs.field(u"dois"); });
    QVERIFY(erro);
    QCOMPARE(erro->number(), number(ErrorNumber::NoSuchColumn));
    QVERIFY(erro->text().contains(u"\"dois\""_s));
    QCOMPARE(erro->statement(), sql);
    QCOMPARE(rs.field(u"um").text(), u"1"_s);
}

void TstOdbcWalk::everyRowComesOnceAndInOrder_data() {
    QTest::addColumn<int>("linhas");
    for (const int linhas : {1, 2, 255, 256, 257, 511, 512, 513, 1000})
        QTest::addRow("%d", linhas) << linhas;
}

void TstOdbcWalk::everyRowComesOnceAndInOrder() {
    QFETCH(int, linhas);
    odbc::ResultSet rs;
    rs.open(m_conexao, sequencia(linhas));
    int n = 0;
    while (!rs.atEnd()) {
        ++n;
        QCOMPARE(rs.field(u"n").integer(), n);
        QCOMPARE(rs.field(u"texto").text(), u"linha %1"_s.arg(n));
        rs.moveNext();
    }
    QCOMPARE(n, linhas);
    QVERIFY(rs.isOpen());
}

void TstOdbcWalk::noRowsLeavesTheResultOpenAtItsEnd() {
    odbc::ResultSet rs;
    rs.open(m_conexao, sequencia(0));
    QVERIFY(rs.isOpen());
    QVERIFY(rs.atEnd());
    QCOMPARE(rs.columnNames(), (QStringList{u"n"_s, u"texto"_s}));
    rs.moveFirst();
    QVERIFY(rs.atEnd());
}

void TstOdbcWalk::readingPastTheEndIsAnError() {
    odbc::ResultSet rs;
    rs.open(m_conexao, sequencia(2));
    rs.moveNext();
    rs.moveNext();
    QVERIFY(rs.atEnd());
    const int semRegistro = number(ErrorNumber::NoCurrentRecord);
    QCOMPARE(errorNumberOf([&] { rs.field(u"n"); }), semRegistro);
    QCOMPARE(errorNumberOf([&] { rs.field(0); }), semRegistro);
    const auto erro = errorOf([&] { rs.moveNext(); });
    QVERIFY(erro);
    QCOMPARE(erro->number(), semRegistro);
    QCOMPARE(erro->statement(), sequencia(2));

    rs.open(m_conexao, sequencia(0));
    QCOMPARE(errorNumberOf([&] { rs.field(u"n"); }), semRegistro);
    QCOMPARE(errorNumberOf([&] { rs.moveNext(); }), semRegistro);
}

void TstOdbcWalk::goingBackToTheFirstRow_data() {
    QTest::addColumn<int>("linhas");
    QTest::addColumn<int>("passos");
    QTest::newRow("from the first row") << 3 << 0;
    QTest::newRow("within the first block") << 300 << 100;
    QTest::newRow("from the second block") << 300 << 260;
    QTest::newRow("from the end of one block") << 3 << 3;
    QTest::newRow("from the end of a full block") << 256 << 256;
    QTest::newRow("from the end of three blocks") << 600 << 600;
}

void TstOdbcWalk::goingBackToTheFirstRow() {
    QFETCH(int, linhas);
    QFETCH(int, passos);
    odbc::ResultSet rs;
    rs.open(m_conexao, sequencia(linhas));
    for (int i = 0; i < passos; ++i)
        rs.moveNext();
    rs.moveFirst();
    for (int n = 1; n <= linhas; ++n) {
        QCOMPARE(rs.field(u"n").integer(), n);
        rs.moveNext();
    }
    QVERIFY(rs.atEnd());
}

void TstOdbcWalk::closedResultIsAnError() {
    odbc::ResultSet nunca;
    QVERIFY(!nunca.isOpen());
    const int fechado = number(ErrorNumber::ConnectionClosed);
    QCOMPARE(errorNumberOf([&] { nunca.atEnd(); }), fechado);

    odbc::ResultSet rs;
    rs.open(m_conexao, sequencia(2));
    rs.close();
    rs.close();
    QVERIFY(!rs.isOpen());
    QCOMPARE(errorNumberOf([&] { rs.atEnd(); }), fechado);
    QCOMPARE(errorNumberOf([&] { rs.moveNext(); }), fechado);
    QCOMPARE(errorNumberOf([&] { rs.moveFirst(); }), fechado);
    QCOMPARE(errorNumberOf([&] { rs.field(0); }), fechado);
    QCOMPARE(errorNumberOf([&] { rs.field(u"n"); }), number(ErrorNumber::NoSuchColumn));
}

void TstOdbcWalk::newQueryReplacesTheOldOne() {
    odbc::ResultSet rs;
    rs.open(m_conexao, sequencia(600));
    for (int i = 0; i < 300; ++i)
        rs.moveNext();
    rs.open(m_conexao, u"SELECT 'outra' AS x"_s);
    QCOMPARE(rs.columnNames(), QStringList{u"x"_s});
    QCOMPARE(rs.field(u"x").text(), u"outra"_s);
    rs.moveNext();
    QVERIFY(rs.atEnd());
}

void TstOdbcWalk::failedQueryLeavesTheResultClosed() {
    odbc::ResultSet rs;
    rs.open(m_conexao, sequencia(3));
    QVERIFY(errorOf([&] { rs.open(m_conexao, u"SELECT * FROM nenhuma"_s); }));
    QVERIFY(!rs.isOpen());
    rs.open(m_conexao, sequencia(1));
    QCOMPARE(rs.field(u"n").integer(), 1);
}

void TstOdbcWalk::twoResultsAreWalkedAtOnce() {
    odbc::ResultSet fora;
    fora.open(m_conexao, sequencia(300));
    int linhas = 0;
    while (!fora.atEnd()) {
        odbc::ResultSet dentro;
        dentro.open(m_conexao, u"SELECT %1 * 2 AS dobro"_s.arg(fora.field(u"n").integer()));
        ++linhas;
        QCOMPARE(dentro.field(u"dobro").integer(), 2 * linhas);
        m_conexao.execute(u"SET @linhas = %1"_s.arg(linhas));
        fora.moveNext();
    }
    QCOMPARE(linhas, 300);
}

void TstOdbcWalk::rowsStayAsTheyWereWhenOpened() {
    m_servidor->execute(u"CREATE TABLE prova (id INT PRIMARY KEY, v VARCHAR(10)); "
                        "INSERT INTO prova SELECT seq, 'antes' FROM sequencia"_s);
    odbc::ResultSet rs;
    rs.open(m_conexao, u"SELECT id, v FROM prova ORDER BY id"_s);
    m_conexao.execute(u"UPDATE prova SET v = 'depois'"_s);
    m_conexao.execute(u"DELETE FROM prova WHERE id > 500"_s);
    int linhas = 0;
    for (; !rs.atEnd(); rs.moveNext(), ++linhas)
        QCOMPARE(rs.field(u"v").text(), u"antes"_s);
    QCOMPARE(linhas, 1000);
    m_servidor->execute(u"DROP TABLE prova"_s);
}

void TstOdbcWalk::resultMovesToAnotherOwner() {
    odbc::ResultSet primeiro;
    primeiro.open(m_conexao, sequencia(600));
    for (int i = 0; i < 255; ++i)
        primeiro.moveNext();
    odbc::ResultSet segundo = std::move(primeiro);
    odbc::ResultSet terceiro;
    terceiro.open(m_conexao, sequencia(1));
    terceiro = std::move(segundo);
    for (int n = 256; n <= 600; ++n) {
        QCOMPARE(terceiro.field(u"n").integer(), n);
        terceiro.moveNext();
    }
    QVERIFY(terceiro.atEnd());
}

void TstOdbcWalk::statementWithoutRowsGivesNoResult() {
    odbc::ResultSet rs;
    QVERIFY(errorOf([&] { rs.open(m_conexao, u"SET @a = 1"_s); }));
    QVERIFY(!rs.isOpen());
}

void TstOdbcWalk::wholeNumberOfACell_data() {
    QTest::addColumn<QString>("texto");
    QTest::addColumn<qint64>("valor");
    QTest::newRow("digits") << u"42"_s << Q_INT64_C(42);
    QTest::newRow("negative") << u"-42"_s << Q_INT64_C(-42);
    QTest::newRow("decimals are cut") << u"12.99"_s << Q_INT64_C(12);
    QTest::newRow("negative decimals are cut") << u"-12.99"_s << Q_INT64_C(-12);
    QTest::newRow("exponent") << u"1.25e+3"_s << Q_INT64_C(1250);
    QTest::newRow("less than one by its exponent") << u"5.55e-17"_s << Q_INT64_C(0);
    QTest::newRow("blanks around") << u"  7 "_s << Q_INT64_C(7);
    QTest::newRow("something after the digits") << u"30 dias"_s << Q_INT64_C(30);
    QTest::newRow("empty") << QString() << Q_INT64_C(0);
    QTest::newRow("no number") << u"abc"_s << Q_INT64_C(0);
    QTest::newRow("sign only") << u"-"_s << Q_INT64_C(0);
    QTest::newRow("greatest") << u"9223372036854775807"_s << std::numeric_limits<qint64>::max();
    QTest::newRow("least") << u"-9223372036854775808"_s << std::numeric_limits<qint64>::min();
}

void TstOdbcWalk::wholeNumberOfACell() {
    QFETCH(QString, texto);
    QFETCH(qint64, valor);
    QCOMPARE(odbc::Field(texto).integer(), valor);
}

void TstOdbcWalk::wholeNumberTooLargeIsAnError() {
    const int estouro = number(ErrorNumber::Overflow);
    QCOMPARE(errorNumberOf([] { odbc::Field(u"9223372036854775808"_s).integer(); }), estouro);
    QCOMPARE(errorNumberOf([] { odbc::Field(u"-9223372036854775809"_s).integer(); }), estouro);
}

QTEST_GUILESS_MAIN(TstOdbcWalk)
#include "tst_odbc_walk.moc"
