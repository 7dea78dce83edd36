#include "base/RuntimeError.h"
#include "odbc/ResultSet.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using namespace tarvessa;

namespace {

constexpr int rowCount = 600; // more than two blocks

/// A text of so many letters in which a lost or doubled piece shows.
QString longText(int row, qsizetype length) {
    QString text;
    for (int i = 0; text.size() < length; ++i)
        text += u"%1:%2 pão de AÇÚCAR;"_s.arg(row).arg(i);
    text.truncate(length);
    return text;
}

QString firstText(int row) {
    switch (row) {
    case 0:
    case 255:
    case 256:
    case 599:
        return longText(row, 70000);
    case 5:
    case 300:
        return longText(row, 1025);
    default:
        return u"curto %1"_s.arg(row);
    }
}

/// The file of a driver by its name, wherever Debian's architecture puts it.
QString driverFile(const QString& name) {
    const QString root = u"/usr/lib/"_s;
    for (const QString& folder : QDir(root).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QString file = root + folder + u"/odbc/"_s + name;
        if (QFile::exists(file))
            return file;
    }
    return {};
}

} // namespace

/// The same questions to drivers that have nothing to do with the one the program is used with.
class TstOdbcDrivers : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase_data();
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void valuesArrive();
    void nullIsNotTheEmptyText();
    void rowsOfSeveralBlocksArriveInOrder();
    void longTextsArriveWhole();
    void longTextReadTwice();
    void walkBackToTheStart();
    void columnsAreFoundByName();
    void statementsAreCommittedAsTheyRun();
    void failedStatementTellsItself();
    void emptyResultIsWalkedZeroTimes();

  private:
    QString connectionString(const QString& driver) const;

    QTemporaryDir m_folder{u"/tmp/tarvessa-XXXXXX"_s};
    QString m_postgresSocket;
    odbc::Connection m_connection;
};

void TstOdbcDrivers::initTestCase_data() {
    QTest::addColumn<QString>("driver");
    QTest::addColumn<bool>("preferWide");
    QTest::newRow("SQLite, narrow") << u"libsqlite3odbc.so"_s << false;
    QTest::newRow("SQLite, wide") << u"libsqlite3odbc.so"_s << true;
    QTest::newRow("PostgreSQL, narrow") << u"psqlodbcw.so"_s << false;
    QTest::newRow("PostgreSQL, wide") << u"psqlodbcw.so"_s << true;
}

void TstOdbcDrivers::initTestCase() {
    // The server may run as another user, who has to get through to its folder.
    QVERIFY(QFile::setPermissions(m_folder.path(), QFile::Permissions(0x7755)));
    QProcess script;
    script.start(QStringLiteral(TARVESSA_SOURCE_DIR "/tools/private-postgres"),
                 {u"start"_s, m_folder.path()});
    QVERIFY(script.waitForFinished(150000));
    QVERIFY2(script.exitCode() == 0, script.readAllStandardError().constData());
    m_postgresSocket = QString::fromLocal8Bit(script.readAllStandardOutput()).trimmed();
    for (const QString& driver : {u"libsqlite3odbc.so"_s, u"psqlodbcw.so"_s}) {
        QVERIFY2(!driverFile(driver).isEmpty(), qPrintable(driver));
        m_connection.open(connectionString(driver));
        m_connection.execute(
            u"CREATE TABLE prova (id INTEGER PRIMARY KEY, a TEXT, n VARCHAR(20), v DECIMAL(10,3))"_s);
        m_connection.execute(u"BEGIN"_s);
        for (int row = 0; row < rowCount; ++row)
            m_connection.execute(u"INSERT INTO prova VALUES (%1, '%2', %3, %4.125)"_s.arg(
                QString::number(row), firstText(row), row % 3 == 0 ? u"NULL"_s : u"'É %1'"_s.arg(row),
                QString::number(row)));
        m_connection.execute(u"COMMIT"_s);
        m_connection.close();
    }
}

void TstOdbcDrivers::init() {
    QFETCH_GLOBAL(QString, driver);
    QFETCH_GLOBAL(bool, preferWide);
    m_connection.open(connectionString(driver), preferWide);
}

void TstOdbcDrivers::cleanup() {
    m_connection.close();
}

void TstOdbcDrivers::cleanupTestCase() {
    QCOMPARE(QProcess::execute(QStringLiteral(TARVESSA_SOURCE_DIR "/tools/private-postgres"),
                               {u"stop"_s, m_folder.path()}),
             0);
}

QString TstOdbcDrivers::connectionString(const QString& driver) const {
    const QString start = u"Driver="_s + driverFile(driver);
    return driver.startsWith(u"psql"_s)
               ? start +
                     u";Servername=%1;Database=postgres;Username=teste;BoolsAsChar=0"_s.arg(m_postgresSocket)
               : start + u";Database=%1"_s.arg(m_folder.filePath(u"prova.sqlite"_s));
}

void TstOdbcDrivers::valuesArrive() {
    odbc::ResultSet result;
    result.open(m_connection, u"SELECT id, v, 'PÃO € ÇÉ' AS t, -7 AS i FROM prova WHERE id = 12"_s);
    QCOMPARE(result.field(u"id").integer(), Q_INT64_C(12));
    QCOMPARE(result.field(u"v").decimal(), Dinheiro::deDecimosMilesimos(121250));
    QCOMPARE(result.field(u"t").text(), u"PÃO € ÇÉ"_s);
    QCOMPARE(result.field(u"i").integer(), Q_INT64_C(-7));
}

void TstOdbcDrivers::nullIsNotTheEmptyText() {
    odbc::ResultSet result;
    result.open(m_connection, u"SELECT n, '' AS vazio FROM prova WHERE id = 3"_s);
    QVERIFY(result.field(u"n").isNull());
    QVERIFY(!result.field(u"vazio").isNull());
    QCOMPARE(result.field(u"vazio").text(), QString());
}

void TstOdbcDrivers::rowsOfSeveralBlocksArriveInOrder() {
    odbc::ResultSet result;
    result.open(m_connection, u"SELECT id, n FROM prova ORDER BY id"_s);
    int row = 0;
    for (; !result.atEnd(); result.moveNext(), ++row) {
        QCOMPARE(result.field(u"id").integer(), qint64(row));
        QCOMPARE(result.field(u"n").isNull(), row % 3 == 0);
        if (row % 3 != 0)
            QCOMPARE(result.field(u"n").text(), u"É %1"_s.arg(row));
    }
    QCOMPARE(row, rowCount);
}

void TstOdbcDrivers::longTextsArriveWhole() {
    odbc::ResultSet result;
    result.open(m_connection, u"SELECT id, a, n FROM prova ORDER BY id"_s);
    int row = 0;
    for (; !result.atEnd(); result.moveNext(), ++row) {
        QVERIFY2(result.field(u"a").text() == firstText(row), qPrintable(QString::number(row)));
        QCOMPARE(result.field(u"id").integer(), qint64(row));
    }
    QCOMPARE(row, rowCount);
}

void TstOdbcDrivers::longTextReadTwice() {
    odbc::ResultSet result;
    result.open(m_connection, u"SELECT a, id, a AS b FROM prova WHERE id IN (255, 256) ORDER BY id"_s);
    for (const int row : {255, 256}) {
        QVERIFY(result.field(u"b").text() == firstText(row));
        QVERIFY(result.field(u"a").text() == firstText(row));
        QVERIFY(result.field(u"a").text() == firstText(row));
        QCOMPARE(result.field(u"id").integer(), qint64(row));
        result.moveNext();
    }
    QVERIFY(result.atEnd());
}

void TstOdbcDrivers::walkBackToTheStart() {
    odbc::ResultSet result;
    result.open(m_connection, u"SELECT id FROM prova ORDER BY id"_s);
    for (int round = 0; round < 2; ++round) {
        int row = 0;
        for (; !result.atEnd(); result.moveNext(), ++row)
            QCOMPARE(result.field(u"id").integer(), qint64(row));
        QCOMPARE(row, rowCount);
        result.moveFirst();
    }
    QCOMPARE(result.field(u"id").integer(), Q_INT64_C(0));
}

void TstOdbcDrivers::columnsAreFoundByName() {
    odbc::ResultSet result;
    result.open(m_connection, u"SELECT id AS \"Descrição\", 2 AS outra FROM prova WHERE id = 1"_s);
    QCOMPARE(result.field(u"descrição").integer(), Q_INT64_C(1));
    QCOMPARE(result.field(u"OUTRA").integer(), Q_INT64_C(2));
}

void TstOdbcDrivers::statementsAreCommittedAsTheyRun() {
    m_connection.execute(u"DELETE FROM prova WHERE id > 1000"_s);
    m_connection.execute(u"INSERT INTO prova (id, a) VALUES (1001, 'só')"_s);
    QFETCH_GLOBAL(QString, driver);
    odbc::Connection other;
    other.open(connectionString(driver));
    odbc::ResultSet result;
    result.open(other, u"SELECT a FROM prova WHERE id = 1001"_s);
    QCOMPARE(result.field(u"a").text(), u"só"_s);
    result.close();
    m_connection.execute(u"DELETE FROM prova WHERE id = 1001"_s);
}

void TstOdbcDrivers::failedStatementTellsItself() {
    const QString sql = u"UPDATE nenhuma SET a = 'São'"_s;
    try {
        m_connection.execute(sql);
        QFAIL("no error");
    } catch (const RuntimeError& error) {
        QCOMPARE(error.statement(), sql);
        QVERIFY2(error.text().contains(u"nenhuma"_s), qPrintable(error.text()));
        QVERIFY(!error.isConnectionLost());
    }
    m_connection.execute(u"UPDATE prova SET a = 'x' WHERE id = -1"_s);
}

void TstOdbcDrivers::emptyResultIsWalkedZeroTimes() {
    odbc::ResultSet result;
    result.open(m_connection, u"SELECT id FROM prova WHERE id = -1"_s);
    QVERIFY(result.atEnd());
    result.moveFirst();
    QVERIFY(result.atEnd());
}

QTEST_GUILESS_MAIN(TstOdbcDrivers)
#include "tst_odbc_drivers.moc"
