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
QString textoLongo(int linha, qsizetype tamanho) {
    QString texto;
    texto.reserve(tamanho + 20);
    for (int i = 0; texto.size() < tamanho; ++i)
        texto += u"%1:%2 pão de AÇÚCAR \U0001F950;"_s.arg(linha).arg(i);
    // Never half a surrogate pair at the end.
    texto.truncate(texto[tamanho - 1].isHighSurrogate() ? tamanho - 1 : tamanho);
    return texto;
}

constexpr int linhas = 600;

/// The rows that hold long texts, around the edges of the blocks, and how long the texts are.
const std::map<int, qsizetype>& tamanhos() {
    static const std::map<int, qsizetype> valor = {{0, 2048},      {5, 65536},    {6, 1025},     {254, 2048},
                                                   {255, 1048576}, {256, 65536},  {257, 65535},  {511, 65537},
                                                   {512, 2048},    {513, 131072}, {599, 1048577}};
    return valor;
}

QString primeiro(int linha) {
    const auto achado = tamanhos().find(linha);
    return achado == tamanhos().end() ? u"curto %1"_s.arg(linha) : textoLongo(linha, achado->second);
}

QString segundo(int linha) {
    return tamanhos().contains(linha) ? textoLongo(1000 + linha, 3000) : QString();
}

void preenche(PrivateServer& servidor) {
    servidor.execute(
        u"CREATE TABLE longos (id INT PRIMARY KEY, a MEDIUMTEXT, n VARCHAR(20), b MEDIUMTEXT)"_s);
    for (int linha = 0; linha < linhas; ++linha)
        servidor.execute(u"INSERT INTO longos VALUES (%1, '%2', 'n%1', '%3')"_s.arg(
            QString::number(linha), primeiro(linha), segundo(linha)));
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
    std::unique_ptr<PrivateServer> m_servidor;
    odbc::Connection m_conexao;
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
    m_servidor = std::make_unique<PrivateServer>();
    preenche(*m_servidor);
}

void TstOdbcFields::init() {
    QFETCH_GLOBAL(QString, charset);
    QFETCH_GLOBAL(bool, preferWide);
    QFETCH_GLOBAL(int, encoding);
    m_servidor->execute(u"DROP TABLE IF EXISTS prova"_s);
    m_servidor->useCharset(charset);
    m_conexao.open(u"dsn=QDX"_s, preferWide);
    QCOMPARE(static_cast<int>(m_conexao.encoding()), encoding);
}

void TstOdbcFields::cleanup() {
    m_conexao.close();
}

void TstOdbcFields::cleanupTestCase() {
    m_servidor.reset();
}

void TstOdbcFields::valueArrives_data() {
    QTest::addColumn<QString>("tipo");
    QTest::addColumn<QString>("gravado");
    QTest::addColumn<QString>("lido");
    const auto caso = [](const char* nome, const QString& tipo, const QString& valor, const QString& lido) {
        QTest::newRow(nome) << tipo << valor << lido;
    };
    const QString noves65 = QString(65, u'9');
    const QString metades65 = QString(35, u'9') + u'.' + QString(30, u'9');
    caso("decimal", u"DECIMAL(12,2)"_s, u"1234.50"_s, u"1234.50"_s);
    caso("decimal zero", u"DECIMAL(12,2)"_s, u"0"_s, u"0.00"_s);
    caso("decimal below one, negative", u"DECIMAL(12,3)"_s, u"-0.005"_s, u"-0.005"_s);
    caso("decimal widest for its type, negative", u"DECIMAL(5,2)"_s, u"-999.99"_s, u"-999.99"_s);
    caso("decimal of 65 digits", u"DECIMAL(65,0)"_s, noves65, noves65);
    caso("decimal of 65 digits, negative", u"DECIMAL(65,0)"_s, u'-' + noves65, u'-' + noves65);
    caso("decimal of 65 digits, 30 of them places", u"DECIMAL(65,30)"_s, u'-' + metades65, u'-' + metades65);
    caso("tinyint least", u"TINYINT"_s, u"-128"_s, u"-128"_s);
    caso("tinyint unsigned greatest", u"TINYINT UNSIGNED"_s, u"255"_s, u"255"_s);
    caso("smallint least", u"SMALLINT"_s, u"-32768"_s, u"-32768"_s);
    caso("smallint unsigned greatest", u"SMALLINT UNSIGNED"_s, u"65535"_s, u"65535"_s);
    caso("mediumint least", u"MEDIUMINT"_s, u"-8388608"_s, u"-8388608"_s);
    caso("int least", u"INT"_s, u"-2147483648"_s, u"-2147483648"_s);
    caso("int greatest", u"INT"_s, u"2147483647"_s, u"2147483647"_s);
    caso("int unsigned greatest", u"INT UNSIGNED"_s, u"4294967295"_s, u"4294967295"_s);
    caso("bigint least", u"BIGINT"_s, u"-9223372036854775808"_s, u"-9223372036854775808"_s);
    caso("bigint unsigned greatest", u"BIGINT UNSIGNED"_s, u"18446744073709551615"_s,
         u"18446744073709551615"_s);
    caso("double", u"DOUBLE"_s, u"-1234.25"_s, u"-1234.25"_s);
    caso("date", u"DATE"_s, u"2024-02-29"_s, u"2024-02-29"_s);
    caso("date that means none", u"DATE"_s, u"1901-01-01"_s, u"1901-01-01"_s);
    caso("date zero", u"DATE"_s, u"0000-00-00"_s, u"0000-00-00"_s);
    caso("date greatest", u"DATE"_s, u"9999-12-31"_s, u"9999-12-31"_s);
    caso("time", u"TIME"_s, u"12:34:56"_s, u"12:34:56"_s);
    caso("time zero", u"TIME"_s, u"00:00:00"_s, u"00:00:00"_s);
    caso("time from hours and minutes", u"TIME"_s, u"07:05"_s, u"07:05:00"_s);
    caso("date and time", u"DATETIME"_s, u"2024-02-29 23:59:58"_s, u"2024-02-29 23:59:58"_s);
    caso("text", u"VARCHAR(30)"_s, u"PÃO DE AÇÚCAR"_s, u"PÃO DE AÇÚCAR"_s);
    caso("text filling its column with accents", u"VARCHAR(10)"_s, QString(10, u'Ã'), QString(10, u'Ã'));
    caso("text with blanks around it", u"VARCHAR(30)"_s, u"  a b  "_s, u"  a b  "_s);
    caso("text of one blank", u"VARCHAR(1)"_s, u" "_s, u" "_s);
    caso("text with tab and line break", u"VARCHAR(30)"_s, u"a\tb\r\nc"_s, u"a\tb\r\nc"_s);
    caso("fixed text", u"CHAR(5)"_s, u"ab"_s, u"ab"_s);
    caso("text with no width of its own", u"TEXT"_s, u"observação"_s, u"observação"_s);
    caso("choice", u"ENUM('NÃO','SIM')"_s, u"NÃO"_s, u"NÃO"_s);
}

void TstOdbcFields::valueArrives() {
    QFETCH(QString, tipo);
    QFETCH(QString, gravado);
    QFETCH(QString, lido);
    m_servidor->execute(u"CREATE TABLE prova (v %1); INSERT INTO prova SET v = '%2'"_s.arg(tipo, gravado));
    odbc::ResultSet rs;
    rs.open(m_conexao, u"SELECT v FROM prova"_s);
    QVERIFY(!rs.atEnd());
    QVERIFY(!rs.field(u"v").isNull());
    QCOMPARE(rs.field(u"v").text(), lido);
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
    m_servidor->execute(u"CREATE TABLE prova (v %1 NULL); INSERT INTO prova SET v = NULL"_s.arg(tipo));
    odbc::ResultSet rs;
    rs.open(m_conexao, u"SELECT v FROM prova"_s);
    QVERIFY(rs.field(u"v").isNull());
    QCOMPARE(rs.field(u"v").text(), QString());
    QCOMPARE(rs.field(u"v").integer(), 0);
}

void TstOdbcFields::emptyTextIsNotNull() {
    m_servidor->execute(u"CREATE TABLE prova (a VARCHAR(10), b TEXT, c VARCHAR(10)); "
                        "INSERT INTO prova VALUES ('', '', NULL)"_s);
    odbc::ResultSet rs;
    rs.open(m_conexao, u"SELECT a, b, c FROM prova"_s);
    QVERIFY(!rs.field(u"a").isNull());
    QVERIFY(!rs.field(u"b").isNull());
    QVERIFY(rs.field(u"c").isNull());
    QCOMPARE(rs.field(u"a").text(), QString());
    QCOMPARE(rs.field(u"b").text(), QString());
}

void TstOdbcFields::computedColumnsArrive() {
    m_servidor->execute(u"CREATE TABLE prova (q DECIMAL(12,3), p DECIMAL(12,2), d DATE); "
                        "INSERT INTO prova VALUES (1.500, 10.05, '2024-02-29'), (2.000, 0.99, NULL)"_s);
    odbc::ResultSet rs;
    rs.open(m_conexao, u"SELECT SUM(q*p) AS total, COUNT(*) AS quantos, IFNULL(SUM(NULL),0) AS nada, "
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
    QTest::addColumn<int>("largura");
    QTest::addColumn<QString>("letra");
    for (const int largura : {1, 2, 10, 127, 255, 256, 257, 341, 342, 1023, 1024, 1025, 2000})
        for (const QString& letra : {u"x"_s, u"Ú"_s, u"€"_s, u"\U0001F950"_s})
            QTest::addRow("%d times %s", largura, qPrintable(letra)) << largura << letra;
}

void TstOdbcFields::textFillsItsColumn() {
    QFETCH(int, largura);
    QFETCH(QString, letra);
    const QString cheio = letra.repeated(largura);
    m_servidor->execute(u"CREATE TABLE prova (id INT, v VARCHAR(%1)); "
                        "INSERT INTO prova VALUES (1, '%2'), (2, ''), (3, NULL), (4, '%2')"_s.arg(
                            QString::number(largura), cheio));
    odbc::ResultSet rs;
    rs.open(m_conexao, u"SELECT v FROM prova ORDER BY id"_s);
    QVERIFY(rs.field(u"v").text() == cheio);
    rs.moveNext();
    QVERIFY(!rs.field(u"v").isNull());
    QCOMPARE(rs.field(u"v").text(), QString());
    rs.moveNext();
    QVERIFY(rs.field(u"v").isNull());
    rs.moveNext();
    QVERIFY(rs.field(u"v").text() == cheio);
}

void TstOdbcFields::lengthsAroundTheBoundBuffer() {
    QStringList textos;
    for (int tamanho = 1015; tamanho <= 1035; ++tamanho)
        textos += QString(tamanho, u'x');
    for (int tamanho = 505; tamanho <= 520; ++tamanho)
        textos += QString(tamanho, u'ã');
    for (int tamanho = 250; tamanho <= 262; ++tamanho)
        textos += u"\U0001F950"_s.repeated(tamanho);
    m_servidor->execute(u"CREATE TABLE prova (id INT PRIMARY KEY, a TEXT, b VARCHAR(1100))"_s);
    for (int id = 0; id < textos.size(); ++id)
        m_servidor->execute(u"INSERT INTO prova VALUES (%1, '%2', '%2')"_s.arg(id).arg(textos[id]));
    odbc::ResultSet rs;
    rs.open(m_conexao, u"SELECT a, b FROM prova ORDER BY id"_s);
    for (const QString& texto : textos) {
        QCOMPARE(rs.field(u"a").text(), texto);
        QCOMPARE(rs.field(u"b").text(), texto);
        rs.moveNext();
    }
    QVERIFY(rs.atEnd());
}

void TstOdbcFields::longTextsAtManyRowsAndColumns() {
    odbc::ResultSet rs;
    rs.open(m_conexao, u"SELECT a, n, b FROM longos ORDER BY id"_s);
    for (int linha = 0; linha < linhas; ++linha) {
        // Not by QCOMPARE: a mismatch would print a megabyte.
        QVERIFY2(rs.field(u"a").text() == primeiro(linha), qPrintable(u"a %1"_s.arg(linha)));
        QCOMPARE(rs.field(u"n").text(), u"n%1"_s.arg(linha));
        QVERIFY2(rs.field(u"b").text() == segundo(linha), qPrintable(u"b %1"_s.arg(linha)));
        rs.moveNext();
    }
    QVERIFY(rs.atEnd());
}

void TstOdbcFields::longTextReadTwiceAndInAnyOrder() {
    odbc::ResultSet rs;
    rs.open(m_conexao, u"SELECT a, n, b FROM longos WHERE id IN (5, 6, 255) ORDER BY id"_s);
    for (const int linha : {5, 6, 255}) {
        for (int vez = 0; vez < 2; ++vez) {
            QVERIFY(rs.field(u"b").text() == segundo(linha));
            QVERIFY(rs.field(u"a").text() == primeiro(linha));
            QVERIFY(rs.field(u"a").text() == primeiro(linha));
            QCOMPARE(rs.field(u"n").text(), u"n%1"_s.arg(linha));
        }
        rs.moveNext();
    }
}

void TstOdbcFields::longTextsAfterGoingBackToTheStart() {
    odbc::ResultSet rs;
    rs.open(m_conexao, u"SELECT id, a FROM longos ORDER BY id"_s);
    while (rs.field(u"id").integer() < 513)
        rs.moveNext();
    QVERIFY(rs.field(u"a").text() == primeiro(513));
    rs.moveFirst();
    QVERIFY(rs.field(u"a").text() == primeiro(0));
    rs.moveNext();
    QCOMPARE(rs.field(u"a").text(), u"curto 1"_s);
}

QTEST_GUILESS_MAIN(TstOdbcFields)
#include "tst_odbc_fields.moc"
