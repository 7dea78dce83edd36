#include "odbc/ResultSet.h"
#include "support/ErrorOf.h"
#include "support/PrivateServer.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <clocale>
#include <memory>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

/// Texts through every character set of the data source, under every locale of the machine.
class TstOdbcCharset : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void everyCharsetIsReadAsUnicode_data();
    void everyCharsetIsReadAsUnicode();
    void accentsSurviveBothWays_data();
    void accentsSurviveBothWays();
    void everyCharacterSurvivesBothWays_data();
    void everyCharacterSurvivesBothWays();
    void accentsInNamesAndErrors_data();
    void accentsInNamesAndErrors();
    void accentsSurviveUnderTheBareCLocale();
    void accentsSurviveUnderAnyLocaleOfTheMachine_data();
    void accentsSurviveUnderAnyLocaleOfTheMachine();

  private:
    static void ways();
    void open();

    std::unique_ptr<PrivateServer> m_server;
    odbc::Connection m_connection;
};

namespace {

QString allAccents() {
    return u"ÁÀÂÃÄáàâãä Çç ÉÊéê Íí ÓÔÕÖóôõö ÚÜúü Ñ ª º ° § ´ ¨ £"_s;
}

} // namespace

void TstOdbcCharset::ways() {
    QTest::addColumn<QString>("charset");
    QTest::addColumn<bool>("preferWide");
    for (const QString& charset : {QString(), u"utf8mb4"_s, u"utf8"_s, u"latin1"_s, u"cp850"_s})
        for (const bool preferWide : {false, true})
            QTest::addRow("%s%s", charset.isEmpty() ? "no charset" : qPrintable(charset),
                          preferWide ? ", wide" : "")
                << charset << preferWide;
}

void TstOdbcCharset::open() {
    QFETCH(QString, charset);
    QFETCH(bool, preferWide);
    m_server->useCharset(charset);
    m_connection.open(u"dsn=QDX"_s, preferWide);
}

void TstOdbcCharset::initTestCase() {
    m_server = std::make_unique<PrivateServer>();
}

void TstOdbcCharset::init() {
    m_server->execute(u"DROP TABLE IF EXISTS prova; "
                      "CREATE TABLE prova (id INT PRIMARY KEY, v VARCHAR(200), `Descrição` TEXT); "
                      "INSERT INTO prova VALUES (1, '%1', '%1')"_s.arg(allAccents()));
}

void TstOdbcCharset::cleanup() {
    m_connection.close();
    m_server->useCharset(QString());
}

void TstOdbcCharset::cleanupTestCase() {
    m_server.reset();
}

void TstOdbcCharset::everyCharsetIsReadAsUnicode_data() {
    QTest::addColumn<QString>("charset");
    QTest::addColumn<bool>("preferWide");
    QTest::addColumn<int>("encoding");
    const auto addCase = [](const char* name, const QString& charset, bool wide, odbc::Encoding encoding) {
        QTest::newRow(name) << charset << wide << static_cast<int>(encoding);
    };
#ifdef _WIN32
    const auto usual = odbc::Encoding::Wide;
#else
    const auto usual = odbc::Encoding::Utf8;
#endif
    addCase("no charset", QString(), false, usual);
    addCase("utf8mb4", u"utf8mb4"_s, false, usual);
    addCase("utf8", u"utf8"_s, false, usual);
    addCase("latin1", u"latin1"_s, false, usual);
    addCase("cp850", u"cp850"_s, false, usual);
    addCase("wide asked for", QString(), true, odbc::Encoding::Wide);
    addCase("wide asked for on latin1", u"latin1"_s, true, odbc::Encoding::Wide);
}

void TstOdbcCharset::everyCharsetIsReadAsUnicode() {
    QFETCH(int, encoding);
    open();
    QCOMPARE(static_cast<int>(m_connection.encoding()), encoding);
}

void TstOdbcCharset::accentsSurviveBothWays_data() {
    ways();
}

void TstOdbcCharset::accentsSurviveBothWays() {
    open();
    odbc::ResultSet rs;
    rs.open(m_connection, u"SELECT v, `Descrição` FROM prova WHERE v LIKE '%Çç ÉÊ%'"_s);
    QVERIFY(!rs.atEnd());
    QCOMPARE(rs.field(u"v").text(), allAccents());
    QCOMPARE(rs.field(u"descrição").text(), allAccents());
    m_connection.execute(u"INSERT INTO prova VALUES (2, '"_s + allAccents() + u"', 'PÃO')"_s);
    QCOMPARE(m_server->query(u"SELECT v, `Descrição` FROM prova WHERE id = 2"_s)[0],
             (QStringList{allAccents(), u"PÃO"_s}));
}

void TstOdbcCharset::everyCharacterSurvivesBothWays_data() {
    ways();
}

// Also those that the data source's own character set has no code for.
void TstOdbcCharset::everyCharacterSurvivesBothWays() {
    open();
    const QString text = u"“€” Łódź Ω 東京 \U0001F950"_s;
    m_connection.execute(u"UPDATE prova SET v = '"_s + text + u"'"_s);
    QCOMPARE(m_server->query(u"SELECT v FROM prova"_s)[0][0], text);
    odbc::ResultSet rs;
    rs.open(m_connection, u"SELECT v FROM prova WHERE v = '"_s + text + u"'"_s);
    QVERIFY(!rs.atEnd());
    QCOMPARE(rs.field(u"v").text(), text);
}

void TstOdbcCharset::accentsInNamesAndErrors_data() {
    ways();
}

void TstOdbcCharset::accentsInNamesAndErrors() {
    open();
    odbc::ResultSet rs;
    rs.open(m_connection, u"SELECT * FROM prova"_s);
    QCOMPARE(rs.columnNames(), (QStringList{u"id"_s, u"v"_s, u"Descrição"_s}));
    const auto error = errorOf([&] { m_connection.execute(u"UPDATE prova SET `aplicação` = 1"_s); });
    QVERIFY(error);
    QVERIFY2(error->text().contains(u"'aplicação'"_s), qPrintable(error->text()));
}

// The application object moves to a locale in UTF-8 when it starts; a library may set another one later.
void TstOdbcCharset::accentsSurviveUnderTheBareCLocale() {
    const QByteArray previous = setlocale(LC_ALL, nullptr);
    setlocale(LC_ALL, "C");
    for (const QString& charset : {QString(), u"utf8mb4"_s, u"latin1"_s, u"cp850"_s}) {
        m_server->useCharset(charset);
        m_connection.open(u"dsn=QDX"_s);
        odbc::ResultSet rs;
        rs.open(m_connection, u"SELECT v FROM prova WHERE v LIKE '%Çç ÉÊ%'"_s);
        QVERIFY(!rs.atEnd());
        QCOMPARE(rs.field(u"v").text(), allAccents());
        const auto error = errorOf([&] { m_connection.execute(u"UPDATE prova SET `aplicação` = 1"_s); });
        QVERIFY(error);
        QVERIFY2(error->text().contains(u"'aplicação'"_s), qPrintable(charset + u": "_s + error->text()));
    }
    setlocale(LC_ALL, previous.constData());
}

void TstOdbcCharset::accentsSurviveUnderAnyLocaleOfTheMachine_data() {
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("localeCharset");
    QTest::newRow("none") << QString() << QString();
    QTest::newRow("C") << u"C"_s << QString();
    QTest::newRow("Brazil in UTF-8") << u"pt_BR.UTF-8"_s << u"UTF-8"_s;
    QTest::newRow("Brazil in latin1") << u"pt_BR"_s << u"ISO-8859-1"_s;
}

// This program once more, in an environment of its own.
void TstOdbcCharset::accentsSurviveUnderAnyLocaleOfTheMachine() {
    QFETCH(QString, locale);
    QFETCH(QString, localeCharset);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const QStringList names = environment.keys();
    for (const QString& name : names)
        if (name.startsWith(u"LC_"_s) || name == u"LANG"_s || name == u"LANGUAGE"_s)
            environment.remove(name);
    if (!locale.isEmpty())
        environment.insert(u"LC_ALL"_s, locale);
    QTemporaryDir places;
    // A machine seldom has a Brazilian locale ready; where it cannot be made either, the name alone is tried.
    if (!localeCharset.isEmpty() &&
        QProcess::execute(u"localedef"_s, {u"-i"_s, u"pt_BR"_s, u"-f"_s, localeCharset, u"--no-archive"_s,
                                           places.filePath(locale)}) == 0)
        environment.insert(u"LOCPATH"_s, places.path());

    QProcess program;
    program.setProcessEnvironment(environment);
    program.setProcessChannelMode(QProcess::MergedChannels);
    program.start(QCoreApplication::applicationFilePath(),
                  {u"accentsSurviveBothWays"_s, u"everyCharacterSurvivesBothWays"_s,
                   u"accentsInNamesAndErrors"_s, u"accentsSurviveUnderTheBareCLocale"_s});
    QVERIFY(program.waitForFinished(120000));
    const QByteArray output = program.readAll();
    QVERIFY2(program.exitStatus() == QProcess::NormalExit && program.exitCode() == 0, output.constData());
    QVERIFY2(output.contains("Totals: 33 passed, 0 failed"), output.constData());
}

QTEST_GUILESS_MAIN(TstOdbcCharset)
#include "tst_odbc_charset.moc"
