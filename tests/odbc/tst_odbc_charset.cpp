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

    std::unique_ptr<PrivateServer> m_servidor;
    odbc::Connection m_conexao;
};

namespace {

QString todosOsAcentos() {
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
    m_servidor->useCharset(charset);
    m_conexao.open(u"dsn=QDX"_s, preferWide);
}

void TstOdbcCharset::initTestCase() {
    m_servidor = std::make_unique<PrivateServer>();
}

void TstOdbcCharset::init() {
    m_servidor->execute(u"DROP TABLE IF EXISTS prova; "
                        "CREATE TABLE prova (id INT PRIMARY KEY, v VARCHAR(200), `Descrição` TEXT); "
                        "INSERT INTO prova VALUES (1, '%1', '%1')"_s.arg(todosOsAcentos()));
}

void TstOdbcCharset::cleanup() {
    m_conexao.close();
    m_servidor->useCharset(QString());
}

void TstOdbcCharset::cleanupTestCase() {
    m_servidor.reset();
}

void TstOdbcCharset::everyCharsetIsReadAsUnicode_data() {
    QTest::addColumn<QString>("charset");
    QTest::addColumn<bool>("preferWide");
    QTest::addColumn<int>("encoding");
    const auto caso = [](const char* nome, const QString& charset, bool wide, odbc::Encoding encoding) {
        QTest::newRow(nome) << charset << wide << static_cast<int>(encoding);
    };
#ifdef _WIN32
    const auto habitual = odbc::Encoding::Wide;
#else
    const auto habitual = odbc::Encoding::Utf8;
#endif
    caso("no charset", QString(), false, habitual);
    caso("utf8mb4", u"utf8mb4"_s, false, habitual);
    caso("utf8", u"utf8"_s, false, habitual);
    caso("latin1", u"latin1"_s, false, habitual);
    caso("cp850", u"cp850"_s, false, habitual);
    caso("wide asked for", QString(), true, odbc::Encoding::Wide);
    caso("wide asked for on latin1", u"latin1"_s, true, odbc::Encoding::Wide);
}

void TstOdbcCharset::everyCharsetIsReadAsUnicode() {
    QFETCH(int, encoding);
    open();
    QCOMPARE(static_cast<int>(m_conexao.encoding()), encoding);
}

void TstOdbcCharset::accentsSurviveBothWays_data() {
    ways();
}

void TstOdbcCharset::accentsSurviveBothWays() {
    open();
    odbc::ResultSet rs;
    rs.open(m_conexao, u"SELECT v, `Descrição` FROM prova WHERE v LIKE '%Çç ÉÊ%'"_s);
    QVERIFY(!rs.atEnd());
    QCOMPARE(rs.field(u"v").text(), todosOsAcentos());
    QCOMPARE(rs.field(u"descrição").text(), todosOsAcentos());
    m_conexao.execute(u"INSERT INTO prova VALUES (2, '"_s + todosOsAcentos() + u"', 'PÃO')"_s);
    QCOMPARE(m_servidor->query(u"SELECT v, `Descrição` FROM prova WHERE id = 2"_s)[0],
             (QStringList{todosOsAcentos(), u"PÃO"_s}));
}

void TstOdbcCharset::everyCharacterSurvivesBothWays_data() {
    ways();
}

// Also those that the data source's own character set has no code for.
void TstOdbcCharset::everyCharacterSurvivesBothWays() {
    open();
    const QString texto = u"“€” Łódź Ω 東京 \U0001F950"_s;
    m_conexao.execute(u"UPDATE prova SET v = '"_s + texto + u"'"_s);
    QCOMPARE(m_servidor->query(u"SELECT v FROM prova"_s)[0][0], texto);
    odbc::ResultSet rs;
    rs.open(m_conexao, u"SELECT v FROM prova WHERE v = '"_s + texto + u"'"_s);
    QVERIFY(!rs.atEnd());
    QCOMPARE(rs.field(u"v").text(), texto);
}

void TstOdbcCharset::accentsInNamesAndErrors_data() {
    ways();
}

void TstOdbcCharset::accentsInNamesAndErrors() {
    open();
    odbc::ResultSet rs;
    rs.open(m_conexao, u"SELECT * FROM prova"_s);
    QCOMPARE(rs.columnNames(), (QStringList{u"id"_s, u"v"_s, u"Descrição"_s}));
    const auto erro = errorOf([&] { m_conexao.execute(u"UPDATE prova SET `aplicação` = 1"_s); });
    QVERIFY(erro);
    QVERIFY2(erro->text().contains(u"'aplicação'"_s), qPrintable(erro->text()));
}

// The application object moves to a locale in UTF-8 when it starts; a library may set another one later.
void TstOdbcCharset::accentsSurviveUnderTheBareCLocale() {
    const QByteArray anterior = setlocale(LC_ALL, nullptr);
    setlocale(LC_ALL, "C");
    for (const QString& charset : {QString(), u"utf8mb4"_s, u"latin1"_s, u"cp850"_s}) {
        m_servidor->useCharset(charset);
        m_conexao.open(u"dsn=QDX"_s);
        odbc::ResultSet rs;
        rs.open(m_conexao, u"SELECT v FROM prova WHERE v LIKE '%Çç ÉÊ%'"_s);
        QVERIFY(!rs.atEnd());
        QCOMPARE(rs.field(u"v").text(), todosOsAcentos());
        const auto erro = errorOf([&] { m_conexao.execute(u"UPDATE prova SET `aplicação` = 1"_s); });
        QVERIFY(erro);
        QVERIFY2(erro->text().contains(u"'aplicação'"_s), qPrintable(charset + u": "_s + erro->text()));
    }
    setlocale(LC_ALL, anterior.constData());
}

void TstOdbcCharset::accentsSurviveUnderAnyLocaleOfTheMachine_data() {
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("codificacao");
    QTest::newRow("none") << QString() << QString();
    QTest::newRow("C") << u"C"_s << QString();
    QTest::newRow("Brazil in UTF-8") << u"pt_BR.UTF-8"_s << u"UTF-8"_s;
    QTest::newRow("Brazil in latin1") << u"pt_BR"_s << u"ISO-8859-1"_s;
}

// This program once more, in an environment of its own.
void TstOdbcCharset::accentsSurviveUnderAnyLocaleOfTheMachine() {
    QFETCH(QString, locale);
    QFETCH(QString, codificacao);
    QProcessEnvironment ambiente = QProcessEnvironment::systemEnvironment();
    const QStringList nomes = ambiente.keys();
    for (const QString& nome : nomes)
        if (nome.startsWith(u"LC_"_s) || nome == u"LANG"_s || nome == u"LANGUAGE"_s)
            ambiente.remove(nome);
    if (!locale.isEmpty())
        ambiente.insert(u"LC_ALL"_s, locale);
    QTemporaryDir locais;
    // A machine seldom has a Brazilian locale ready; where it cannot be made either, the name alone is tried.
    if (!codificacao.isEmpty() &&
        QProcess::execute(u"localedef"_s, {u"-i"_s, u"pt_BR"_s, u"-f"_s, codificacao, u"--no-archive"_s,
                                           locais.filePath(locale)}) == 0)
        ambiente.insert(u"LOCPATH"_s, locais.path());

    QProcess programa;
    programa.setProcessEnvironment(ambiente);
    programa.setProcessChannelMode(QProcess::MergedChannels);
    programa.start(QCoreApplication::applicationFilePath(),
                   {u"accentsSurviveBothWays"_s, u"everyCharacterSurvivesBothWays"_s,
                    u"accentsInNamesAndErrors"_s, u"accentsSurviveUnderTheBareCLocale"_s});
    QVERIFY(programa.waitForFinished(120000));
    const QByteArray saida = programa.readAll();
    QVERIFY2(programa.exitStatus() == QProcess::NormalExit && programa.exitCode() == 0, saida.constData());
    QVERIFY2(saida.contains("Totals: 33 passed, 0 failed"), saida.constData());
}

QTEST_GUILESS_MAIN(TstOdbcCharset)
#include "tst_odbc_charset.moc"
