#include "odbc/ResultSet.h"
#include "support/PrivateServer.h"

#include <QTest>

#include <map>
#include <memory>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

/// A text of `tamanho` code units that no other row shares and in which a lost or doubled piece shows.
QString longText(int row, qsizetype size) {
    QString text;
    text.reserve(size + 20);
    for (int i = 0; text.size() < size; ++i)
        text += u"%1:%2 pão de AÇÚCAR \U0001F950;"_s.arg(row).arg(i);
    // Never half a surrogate pair at the end.
    text.truncate(text[size - 1].isHighSurrogate() ? size - 1 : size);
    return text;
}

constexpr int linhas = 600;

/// The rows that hold long texts, around the edges of the blocks, and how long the texts are.
const std::map<int, qsizetype>& sizes() {
    static const std::map<int, qsizetype> value = {{0, 2048},      {5, 65536},    {6, 1025},     {254, 2048},
                                                   {255, 1048576}, {256, 65536},  {257, 65535},  {511, 65537},
                                                   {512, 2048},    {513, 131072}, {599, 1048577}};
    return value;
}

QString first(int row) {
    const auto found = sizes().find(row);
    return found == sizes().end() ? u"curto %1"_s.arg(row) : longText(row, found->second);
}

QString second(int row) {
    return sizes().contains(row) ? longText(1000 + row, 3000) : QString();
}

void fillIn(PrivateServer& server) {
    server.execute(u"CREATE TABLE longos (id INT PRIMARY KEY, a MEDIUMTEXT, n VARCHAR(20), b MEDIUMTEXT)"_s);
    for (int row = 0; row < linhas; ++row)
        server.execute(u"INSERT INTO longos VALUES (%1, '%2', 'n%1', '%3')"_s.arg(QString::number(row),
                                                                                  first(row), second(row)));
}

} // namespace

/// What a cell's value becomes on its way from the server to the program, in every way texts can travel.
class TstOdbcFields : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase_data();
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void valueArrives_data();
    void valueArrives();
    void nullArrivesAsNull_data();
    void nullArrivesAsNull();
    void emptyTextIsNotNull();
    void computedColumnsArrive();
    void textFillsItsColumn_data();
    void textFillsItsColumn();
    void lengthsAroundTheBoundBuffer();
    void longTextsAtManyRowsAndColumns();
    void longTextReadTwiceAndInAnyOrder();
    void longTextsAfterGoingBackToTheStart();

  private:
    std::unique_ptr<PrivateServer> m_server;
    odbc::Connection m_connection;
};

void TstOdbcFields::initTestCase_data() {
    QTest::addColumn<QString>("charset");
    QTest::addColumn<bool>("preferWide");
    QTest::addColumn<int>("encoding");
#ifdef _WIN32
    constexpr int usual = static_cast<int>(odbc::Encoding::Wide);
#else
    constexpr int usual = static_cast<int>(odbc::Encoding::Utf8);
#endif
    QTest::newRow("no charset") << QString() << false << usual;
    QTest::newRow("latin1") << u"latin1"_s << false << usual;
    QTest::newRow("wide") << QString() << true << static_cast<int>(odbc::Encoding::Wide);
}

void TstOdbcFields::initTestCase() {
    m_server = std::make_unique<PrivateServer>();
    fillIn(*m_server);
}

void TstOdbcFields::init() {
    QFETCH_GLOBAL(QString, charset);
    QFETCH_GLOBAL(bool, preferWide);
    QFETCH_GLOBAL(int, encoding);
    m_server->execute(u"DROP TABLE IF EXISTS prova"_s);
    m_server->useCharset(charset);
    m_connection.open(u"dsn=QDX"_s, preferWide);
    QCOMPARE(static_cast<int>(m_connection.encoding()), encoding);
}

void TstOdbcFields::cleanup() {
    m_connection.close();
}

void TstOdbcFields::cleanupTestCase() {
    m_server.reset();
}

void TstOdbcFields::valueArrives_data() {
    QTest::addColumn<QString>("tipo");
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("read");
    const auto addCase = [](const char* name, const QString& tipo, const QString& value,
                            const QString& read) { QTest::newRow(name) << tipo << value << read; };
    const QString nines65 = QString(65, u'9');
    const QString halves65 = QString(35, u'9') + u'.' + QString(30, u'9');
    addCase("decimal", u"DECIMAL(12,2)"_s, u"1234.50"_s, u"1234.50"_s);
    addCase("decimal zero", u"DECIMAL(12,2)"_s, u"0"_s, u"0.00"_s);
    addCase("decimal below one, negative", u"DECIMAL(12,3)"_s, u"-0.005"_s, u"-0.005"_s);
    addCase("decimal widest for its type, negative", u"DECIMAL(5,2)"_s, u"-999.99"_s, u"-999.99"_s);
    addCase("decimal of 65 digits", u"DECIMAL(65,0)"_s, nines65, nines65);
    addCase("decimal of 65 digits, negative", u"DECIMAL(65,0)"_s, u'-' + nines65, u'-' + nines65);
    addCase("decimal of 65 digits, 30 of them places", u"DECIMAL(65,30)"_s, u'-' + halves65, u'-' + halves65);
    addCase("tinyint least", u"TINYINT"_s, u"-128"_s, u"-128"_s);
    addCase("tinyint unsigned greatest", u"TINYINT UNSIGNED"_s, u"255"_s, u"255"_s);
    addCase("smallint least", u"SMALLINT"_s, u"-32768"_s, u"-32768"_s);
    addCase("smallint unsigned greatest", u"SMALLINT UNSIGNED"_s, u"65535"_s, u"65535"_s);
    addCase("mediumint least", u"MEDIUMINT"_s, u"-8388608"_s, u"-8388608"_s);
    addCase("int least", u"INT"_s, u"-2147483648"_s, u"-2147483648"_s);
    addCase("int greatest", u"INT"_s, u"2147483647"_s, u"2147483647"_s);
    addCase("int unsigned greatest", u"INT UNSIGNED"_s, u"4294967295"_s, u"4294967295"_s);
    addCase("bigint least", u"BIGINT"_s, u"-9223372036854775808"_s, u"-9223372036854775808"_s);
    addCase("bigint unsigned greatest", u"BIGINT UNSIGNED"_s, u"18446744073709551615"_s,
            u"18446744073709551615"_s);
    addCase("double", u"DOUBLE"_s, u"-1234.25"_s, u"-1234.25"_s);
    addCase("date", u"DATE"_s, u"2024-02-29"_s, u"2024-02-29"_s);
    addCase("date that means none", u"DATE"_s, u"1901-01-01"_s, u"1901-01-01"_s);
    addCase("date zero", u"DATE"_s, u"0000-00-00"_s, u"0000-00-00"_s);
    addCase("date greatest", u"DATE"_s, u"9999-12-31"_s, u"9999-12-31"_s);
    addCase("time", u"TIME"_s, u"12:34:56"_s, u"12:34:56"_s);
    addCase("time zero", u"TIME"_s, u"00:00:00"_s, u"00:00:00"_s);
    addCase("time from hours and minutes", u"TIME"_s, u"07:05"_s, u"07:05:00"_s);
    addCase("date and time", u"DATETIME"_s, u"2024-02-29 23:59:58"_s, u"2024-02-29 23:59:58"_s);
    addCase("text", u"VARCHAR(30)"_s, u"PÃO DE AÇÚCAR"_s, u"PÃO DE AÇÚCAR"_s);
    addCase("text filling its column with accents", u"VARCHAR(10)"_s, QString(10, u'Ã'), QString(10, u'Ã'));
    addCase("text with blanks around it", u"VARCHAR(30)"_s, u"  a b  "_s, u"  a b  "_s);
    addCase("text of one blank", u"VARCHAR(1)"_s, u" "_s, u" "_s);
    addCase("text with tab and line break", u"VARCHAR(30)"_s, u"a\tb\r\nc"_s, u"a\tb\r\nc"_s);
    addCase("fixed text", u"CHAR(5)"_s, u"ab"_s, u"ab"_s);
    addCase("text with no width of its own", u"TEXT"_s, u"observação"_s, u"observação"_s);
    addCase("choice", u"ENUM('NÃO','SIM')"_s, u"NÃO"_s, u"NÃO"_s);
}

void TstOdbcFields::valueArrives() {
    QFETCH(QString, tipo);
    QFETCH(QString, stored);
    QFETCH(QString, read);
    m_server->execute(u"CREATE TABLE prova (v %1); INSERT INTO prova SET v = '%2'"_s.arg(tipo, stored));
    odbc::ResultSet rs;
    rs.open(m_connection, u"SELECT v FROM prova"_s);
    QVERIFY(!rs.atEnd());
    QVERIFY(!rs.field(u"v").isNull());
    QCOMPARE(rs.field(u"v").text(), read);
    QCOMPARE(rs.textView(rs.column(u"v")).toString(), read);
    rs.moveNext();
    QVERIFY(rs.atEnd());
}

void TstOdbcFields::nullArrivesAsNull_data() {
    QTest::addColumn<QString>("tipo");
    for (const char* tipo : {"DECIMAL(12,2)", "DECIMAL(65,30)", "INT", "BIGINT UNSIGNED", "DOUBLE", "DATE",
                             "TIME", "DATETIME", "CHAR(5)", "VARCHAR(30)", "TEXT", "ENUM('a')"})
        QTest::newRow(tipo) << QString::fromLatin1(tipo);
}

void TstOdbcFields::nullArrivesAsNull() {
    QFETCH(QString, tipo);
    m_server->execute(u"CREATE TABLE prova (v %1 NULL); INSERT INTO prova SET v = NULL"_s.arg(tipo));
    odbc::ResultSet rs;
    rs.open(m_connection, u"SELECT v FROM prova"_s);
    QVERIFY(rs.field(u"v").isNull());
    QCOMPARE(rs.field(u"v").text(), QString());
    QVERIFY(rs.textView(0).isEmpty());
    QCOMPARE(rs.field(u"v").integer(), 0);
}

void TstOdbcFields::emptyTextIsNotNull() {
    m_server->execute(u"CREATE TABLE prova (a VARCHAR(10), b TEXT, c VARCHAR(10)); "
                      "INSERT INTO prova VALUES ('', '', NULL)"_s);
    odbc::ResultSet rs;
    rs.open(m_connection, u"SELECT a, b, c FROM prova"_s);
    QVERIFY(!rs.field(u"a").isNull());
    QVERIFY(!rs.field(u"b").isNull());
    QVERIFY(rs.field(u"c").isNull());
    QCOMPARE(rs.field(u"a").text(), QString());
    QCOMPARE(rs.field(u"b").text(), QString());
}

void TstOdbcFields::computedColumnsArrive() {
    m_server->execute(u"CREATE TABLE prova (q DECIMAL(12,3), p DECIMAL(12,2), d DATE); "
                      "INSERT INTO prova VALUES (1.500, 10.05, '2024-02-29'), (2.000, 0.99, NULL)"_s);
    odbc::ResultSet rs;
    rs.open(m_connection, u"SELECT SUM(q*p) AS total, COUNT(*) AS quantos, IFNULL(SUM(NULL),0) AS nada, "
                          "MAX(d) AS ultima, ROUND(SUM(q*p),2) AS redondo, LEFT('5101',3) AS grupo, "
                          "NULL AS vazio FROM prova"_s);
    QCOMPARE(rs.field(u"total").text(), u"17.05500"_s);
    QCOMPARE(rs.field(u"quantos").integer(), 2);
    QCOMPARE(rs.field(u"nada").integer(), 0);
    QCOMPARE(rs.field(u"ultima").text(), u"2024-02-29"_s);
    QCOMPARE(rs.field(u"redondo").text(), u"17.06"_s);
    QCOMPARE(rs.field(u"grupo").text(), u"510"_s);
    QVERIFY(rs.field(u"vazio").isNull());
}

void TstOdbcFields::textFillsItsColumn_data() {
    QTest::addColumn<int>("width");
    QTest::addColumn<QString>("letter");
    for (const int width : {1, 2, 10, 127, 255, 256, 257, 341, 342, 1023, 1024, 1025, 2000})
        for (const QString& letter : {u"x"_s, u"Ú"_s, u"€"_s, u"\U0001F950"_s})
            QTest::addRow("%d times %s", width, qPrintable(letter)) << width << letter;
}

void TstOdbcFields::textFillsItsColumn() {
    QFETCH(int, width);
    QFETCH(QString, letter);
    const QString full = letter.repeated(width);
    m_server->execute(u"CREATE TABLE prova (id INT, v VARCHAR(%1)); "
                      "INSERT INTO prova VALUES (1, '%2'), (2, ''), (3, NULL), (4, '%2')"_s.arg(
                          QString::number(width), full));
    odbc::ResultSet rs;
    rs.open(m_connection, u"SELECT v FROM prova ORDER BY id"_s);
    QVERIFY(rs.field(u"v").text() == full);
    rs.moveNext();
    QVERIFY(!rs.field(u"v").isNull());
    QCOMPARE(rs.field(u"v").text(), QString());
    rs.moveNext();
    QVERIFY(rs.field(u"v").isNull());
    rs.moveNext();
    QVERIFY(rs.field(u"v").text() == full);
}

void TstOdbcFields::lengthsAroundTheBoundBuffer() {
    QStringList texts;
    for (int size = 1015; size <= 1035; ++size)
        texts += QString(size, u'x');
    for (int size = 505; size <= 520; ++size)
        texts += QString(size, u'ã');
    for (int size = 250; size <= 262; ++size)
        texts += u"\U0001F950"_s.repeated(size);
    m_server->execute(u"CREATE TABLE prova (id INT PRIMARY KEY, a TEXT, b VARCHAR(1100))"_s);
    for (int id = 0; id < texts.size(); ++id)
        m_server->execute(u"INSERT INTO prova VALUES (%1, '%2', '%2')"_s.arg(id).arg(texts[id]));
    odbc::ResultSet rs;
    rs.open(m_connection, u"SELECT a, b FROM prova ORDER BY id"_s);
    for (const QString& text : texts) {
        QCOMPARE(rs.field(u"a").text(), text);
        QCOMPARE(rs.field(u"b").text(), text);
        QVERIFY(rs.textView(0) == text);
        QVERIFY(rs.textView(1) == text);
        rs.moveNext();
    }
    QVERIFY(rs.atEnd());
}

void TstOdbcFields::longTextsAtManyRowsAndColumns() {
    odbc::ResultSet rs;
    rs.open(m_connection, u"SELECT a, n, b FROM longos ORDER BY id"_s);
    for (int row = 0; row < linhas; ++row) {
        // Not by QCOMPARE: a mismatch would print a megabyte.
        QVERIFY2(rs.field(u"a").text() == first(row), qPrintable(u"a %1"_s.arg(row)));
        QCOMPARE(rs.field(u"n").text(), u"n%1"_s.arg(row));
        QVERIFY2(rs.field(u"b").text() == second(row), qPrintable(u"b %1"_s.arg(row)));
        rs.moveNext();
    }
    QVERIFY(rs.atEnd());
}

void TstOdbcFields::longTextReadTwiceAndInAnyOrder() {
    odbc::ResultSet rs;
    rs.open(m_connection, u"SELECT a, n, b FROM longos WHERE id IN (5, 6, 255) ORDER BY id"_s);
    for (const int row : {5, 6, 255}) {
        for (int attempt = 0; attempt < 2; ++attempt) {
            QVERIFY(rs.field(u"b").text() == second(row));
            QVERIFY(rs.field(u"a").text() == first(row));
            QVERIFY(rs.field(u"a").text() == first(row));
            QCOMPARE(rs.field(u"n").text(), u"n%1"_s.arg(row));
            // Of several columns at once.
            const QAnyStringView a = rs.textView(0);
            const QAnyStringView n = rs.textView(1);
            const QAnyStringView b = rs.textView(2);
            QVERIFY(a == first(row) && b == second(row));
            QCOMPARE(n.toString(), u"n%1"_s.arg(row));
        }
        rs.moveNext();
    }
}

void TstOdbcFields::longTextsAfterGoingBackToTheStart() {
    odbc::ResultSet rs;
    rs.open(m_connection, u"SELECT id, a FROM longos ORDER BY id"_s);
    while (rs.field(u"id").integer() < 513)
        rs.moveNext();
    QVERIFY(rs.field(u"a").text() == first(513));
    rs.moveFirst();
    QVERIFY(rs.field(u"a").text() == first(0));
    rs.moveNext();
    QCOMPARE(rs.field(u"a").text(), u"curto 1"_s);
}

QTEST_GUILESS_MAIN(TstOdbcFields)
#include "tst_odbc_fields.moc"
