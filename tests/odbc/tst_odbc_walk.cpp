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
    static QString sequence(int linhas) {
        return u"SELECT seq AS n, CONCAT('linha ', seq) AS texto FROM sequencia WHERE seq <= %1 "
               "ORDER BY seq"_s.arg(linhas);
    }

    std::unique_ptr<PrivateServer> m_server;
    odbc::Connection m_connection;
};

void TstOdbcWalk::initTestCase_data() {
    QTest::addColumn<bool>("preferWide");
    QTest::newRow("narrow") << false;
    QTest::newRow("wide") << true;
}

void TstOdbcWalk::initTestCase() {
    m_server = std::make_unique<PrivateServer>();
    m_server->execute(u"CREATE TABLE sequencia (seq INT PRIMARY KEY)"_s);
    for (int n = 1; n <= 1000; ++n)
        m_server->execute(u"INSERT INTO sequencia VALUES (%1)"_s.arg(n));
}

void TstOdbcWalk::init() {
    QFETCH_GLOBAL(bool, preferWide);
    m_connection.open(u"dsn=QDX"_s, preferWide);
}

void TstOdbcWalk::cleanup() {
    m_connection.close();
}

void TstOdbcWalk::cleanupTestCase() {
    m_server.reset();
}

void TstOdbcWalk::columnIsFoundInAnyLetterCase() {
    odbc::ResultSet rs;
    rs.open(m_connection, u"SELECT 1 AS NrPedido, 2 AS `Descrição`, 3 AS `Nota Fiscal`"_s);
    for (const QStringView name : {u"NrPedido", u"nrpedido", u"NRPEDIDO"})
        QCOMPARE(rs.field(name).text(), u"1"_s);
    for (const QStringView name : {u"Descrição", u"descrição", u"DESCRIÇÃO"})
        QCOMPARE(rs.field(name).text(), u"2"_s);
    QCOMPARE(rs.field(u"nota fiscal").text(), u"3"_s);
    QCOMPARE(rs.column(u"nota FISCAL"), 2);
    QCOMPARE(rs.columnNames(), (QStringList{u"NrPedido"_s, u"Descrição"_s, u"Nota Fiscal"_s}));
}

void TstOdbcWalk::firstOfTwoColumnsWithOneNameIsMeant() {
    odbc::ResultSet rs;
    rs.open(m_connection, u"SELECT 'um' AS codigo, 'dois' AS Codigo"_s);
    QCOMPARE(rs.field(u"codigo").text(), u"um"_s);
    QCOMPARE(rs.field(u"Codigo").text(), u"um"_s);
    QCOMPARE(rs.field(1).text(), u"dois"_s);
}

void TstOdbcWalk::unknownColumnIsAnError() {
    const QString sql = u"SELECT 1 AS um"_s;
    odbc::ResultSet rs;
    rs.open(m_connection, sql);
    const auto error = errorOf([&] { rs.field(u"dois"); });
    QVERIFY(error);
    QCOMPARE(error->number(), number(ErrorNumber::NoSuchColumn));
    QVERIFY(error->text().contains(u"\"dois\""_s));
    QCOMPARE(error->statement(), sql);
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
    rs.open(m_connection, sequence(linhas));
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
    rs.open(m_connection, sequence(0));
    QVERIFY(rs.isOpen());
    QVERIFY(rs.atEnd());
    QCOMPARE(rs.columnNames(), (QStringList{u"n"_s, u"texto"_s}));
    rs.moveFirst();
    QVERIFY(rs.atEnd());
}

void TstOdbcWalk::readingPastTheEndIsAnError() {
    odbc::ResultSet rs;
    rs.open(m_connection, sequence(2));
    rs.moveNext();
    rs.moveNext();
    QVERIFY(rs.atEnd());
    const int semRegistro = number(ErrorNumber::NoCurrentRecord);
    QCOMPARE(errorNumberOf([&] { rs.field(u"n"); }), semRegistro);
    QCOMPARE(errorNumberOf([&] { rs.field(0); }), semRegistro);
    const auto error = errorOf([&] { rs.moveNext(); });
    QVERIFY(error);
    QCOMPARE(error->number(), semRegistro);
    QCOMPARE(error->statement(), sequence(2));

    rs.open(m_connection, sequence(0));
    QCOMPARE(errorNumberOf([&] { rs.field(u"n"); }), semRegistro);
    QCOMPARE(errorNumberOf([&] { rs.moveNext(); }), semRegistro);
}

void TstOdbcWalk::goingBackToTheFirstRow_data() {
    QTest::addColumn<int>("linhas");
    QTest::addColumn<int>("steps");
    QTest::newRow("from the first row") << 3 << 0;
    QTest::newRow("within the first block") << 300 << 100;
    QTest::newRow("from the second block") << 300 << 260;
    QTest::newRow("from the end of one block") << 3 << 3;
    QTest::newRow("from the end of a full block") << 256 << 256;
    QTest::newRow("from the end of three blocks") << 600 << 600;
}

void TstOdbcWalk::goingBackToTheFirstRow() {
    QFETCH(int, linhas);
    QFETCH(int, steps);
    odbc::ResultSet rs;
    rs.open(m_connection, sequence(linhas));
    for (int i = 0; i < steps; ++i)
        rs.moveNext();
    rs.moveFirst();
    for (int n = 1; n <= linhas; ++n) {
        QCOMPARE(rs.field(u"n").integer(), n);
        rs.moveNext();
    }
    QVERIFY(rs.atEnd());
}

void TstOdbcWalk::closedResultIsAnError() {
    odbc::ResultSet never;
    QVERIFY(!never.isOpen());
    const int fechado = number(ErrorNumber::ConnectionClosed);
    QCOMPARE(errorNumberOf([&] { never.atEnd(); }), fechado);

    odbc::ResultSet rs;
    rs.open(m_connection, sequence(2));
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
    rs.open(m_connection, sequence(600));
    for (int i = 0; i < 300; ++i)
        rs.moveNext();
    rs.open(m_connection, u"SELECT 'outra' AS x"_s);
    QCOMPARE(rs.columnNames(), QStringList{u"x"_s});
    QCOMPARE(rs.field(u"x").text(), u"outra"_s);
    rs.moveNext();
    QVERIFY(rs.atEnd());
}

void TstOdbcWalk::failedQueryLeavesTheResultClosed() {
    odbc::ResultSet rs;
    rs.open(m_connection, sequence(3));
    QVERIFY(errorOf([&] { rs.open(m_connection, u"SELECT * FROM nenhuma"_s); }));
    QVERIFY(!rs.isOpen());
    rs.open(m_connection, sequence(1));
    QCOMPARE(rs.field(u"n").integer(), 1);
}

void TstOdbcWalk::twoResultsAreWalkedAtOnce() {
    odbc::ResultSet outside;
    outside.open(m_connection, sequence(300));
    int linhas = 0;
    while (!outside.atEnd()) {
        odbc::ResultSet inside;
        inside.open(m_connection, u"SELECT %1 * 2 AS dobro"_s.arg(outside.field(u"n").integer()));
        ++linhas;
        QCOMPARE(inside.field(u"dobro").integer(), 2 * linhas);
        m_connection.execute(u"SET @linhas = %1"_s.arg(linhas));
        outside.moveNext();
    }
    QCOMPARE(linhas, 300);
}

void TstOdbcWalk::rowsStayAsTheyWereWhenOpened() {
    m_server->execute(u"CREATE TABLE prova (id INT PRIMARY KEY, v VARCHAR(10)); "
                      "INSERT INTO prova SELECT seq, 'antes' FROM sequencia"_s);
    odbc::ResultSet rs;
    rs.open(m_connection, u"SELECT id, v FROM prova ORDER BY id"_s);
    m_connection.execute(u"UPDATE prova SET v = 'depois'"_s);
    m_connection.execute(u"DELETE FROM prova WHERE id > 500"_s);
    int linhas = 0;
    for (; !rs.atEnd(); rs.moveNext(), ++linhas)
        QCOMPARE(rs.field(u"v").text(), u"antes"_s);
    QCOMPARE(linhas, 1000);
    m_server->execute(u"DROP TABLE prova"_s);
}

void TstOdbcWalk::resultMovesToAnotherOwner() {
    odbc::ResultSet first;
    first.open(m_connection, sequence(600));
    for (int i = 0; i < 255; ++i)
        first.moveNext();
    odbc::ResultSet second = std::move(first);
    odbc::ResultSet third;
    third.open(m_connection, sequence(1));
    third = std::move(second);
    for (int n = 256; n <= 600; ++n) {
        QCOMPARE(third.field(u"n").integer(), n);
        third.moveNext();
    }
    QVERIFY(third.atEnd());
}

void TstOdbcWalk::statementWithoutRowsGivesNoResult() {
    odbc::ResultSet rs;
    QVERIFY(errorOf([&] { rs.open(m_connection, u"SET @a = 1"_s); }));
    QVERIFY(!rs.isOpen());
}

void TstOdbcWalk::wholeNumberOfACell_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<qint64>("value");
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
    QFETCH(QString, text);
    QFETCH(qint64, value);
    QCOMPARE(odbc::Field(text).integer(), value);
}

void TstOdbcWalk::wholeNumberTooLargeIsAnError() {
    const int overflow = number(ErrorNumber::Overflow);
    QCOMPARE(errorNumberOf([] { odbc::Field(u"9223372036854775808"_s).integer(); }), overflow);
    QCOMPARE(errorNumberOf([] { odbc::Field(u"-9223372036854775809"_s).integer(); }), overflow);
}

QTEST_GUILESS_MAIN(TstOdbcWalk)
#include "tst_odbc_walk.moc"
