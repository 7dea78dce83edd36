#include "base/Operation.h"
#include "core/AcessoDados.h"
#include "support/ErrorOf.h"
#include "support/ModalHelper.h"
#include "support/PrivateServer.h"
#include "support/StatementLog.h"

#include <QTemporaryFile>
#include <QTest>

#ifndef _WIN32
#include <cstdio>
#include <unistd.h>
#endif

#include <memory>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

/// The process-wide connection and its two results.
class TstAcessoDados : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void startMakesShellAndConnectionAndSendsNothing();
    void failedConnectionShowsOneMessageAndRunsNothing();
    void failedConnectionTellsItsReason();
    void failedConnectionThenAnotherStart();
    void lostConnectionComesBackInTheNextOperation();
    void queryWithRowsAnswersTrueAndStandsOnTheFirst();
    void queryWithNoRowsAnswersFalseAndIsWalkedZeroTimes();
    void newQueryReplacesTheResult();
    void secondResultIsIndependentOfTheFirst();
    void ownResultDisturbsNeither();
    void executeRunsOneStatementAndReadsNothingBack();
    void errorsSurfaceToTheCaller();
    void queryAfterALostConnectionFails();
    void nullIsTheEmptyText();
    void blanksAroundATextAreRemoved_data();
    void blanksAroundATextAreRemoved();
    void endReleasesEverything();

  private:
    std::unique_ptr<PrivateServer> m_server;
};

void TstAcessoDados::initTestCase() {
    m_server = std::make_unique<PrivateServer>();
    m_server->execute(u"INSERT INTO vendedores (codigovend, vendedor) VALUES (1, 'ANA'), (2, 'BETO'), "
                      "(3, 'CIDA')"_s);
}

void TstAcessoDados::init() {
    QVERIFY(IniciaBanco());
}

void TstAcessoDados::cleanup() {
    EncerraBanco();
    m_server->useSocket(m_server->socket());
}

void TstAcessoDados::cleanupTestCase() {
    m_server.reset();
}

void TstAcessoDados::startMakesShellAndConnectionAndSendsNothing() {
    EncerraBanco();
    StatementLog log(*m_server);
    ModalHelper boxes;
    QVERIFY(IniciaBanco());
    QVERIFY(Shell);
    QVERIFY(Connection.isOpen());
    QVERIFY(!rs.isOpen());
    QVERIFY(!rs2.isOpen());
    QCOMPARE(log.texts(), QStringList());
    QCOMPARE(boxes.problem(), QString());
}

void TstAcessoDados::failedConnectionShowsOneMessageAndRunsNothing() {
    EncerraBanco();
    StatementLog log(*m_server);
    m_server->useSocket(m_server->socket() + u".nada"_s);
    ModalHelper boxes;
    boxes.expect(u"Não foi possível conectar ao banco de dados. Verifique!!!"_s, QMessageBox::Ok);
    QVERIFY(!IniciaBanco());
    QCOMPARE(boxes.problem(), QString());
    QCOMPARE(boxes.boxes().size(), 1);
    QCOMPARE(boxes.boxes()[0].title, u"Atenção!!!"_s);
    QCOMPARE(boxes.boxes()[0].icon, QMessageBox::Information);
    QCOMPARE(boxes.boxes()[0].buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QVERIFY(Shell); // made before the connection
    QVERIFY(!Connection.isOpen());
    QCOMPARE(log.texts(), QStringList());
}

void TstAcessoDados::failedConnectionTellsItsReason() {
#ifdef _WIN32
    QSKIP("goes to the debug output");
#else
    EncerraBanco();
    const QString nowhere = m_server->socket() + u".nada"_s;
    m_server->useSocket(nowhere);
    ModalHelper boxes;
    boxes.expect(u"Não foi possível conectar ao banco de dados. Verifique!!!"_s, QMessageBox::Ok);
    QTemporaryFile told;
    QVERIFY(told.open());
    std::fflush(stderr);
    const int standardError = dup(STDERR_FILENO);
    QVERIFY(dup2(told.handle(), STDERR_FILENO) >= 0);
    const bool isConnected = IniciaBanco();
    std::fflush(stderr);
    QVERIFY(dup2(standardError, STDERR_FILENO) >= 0);
    close(standardError);
    QVERIFY(!isConnected);
    QCOMPARE(boxes.problem(), QString());
    QFile reread(told.fileName());
    QVERIFY(reread.open(QIODevice::ReadOnly));
    const QString text = QString::fromLocal8Bit(reread.readAll());
    QVERIFY2(text.contains(nowhere), qPrintable(text));
    QVERIFY2(text.contains(u"2002"_s), qPrintable(text));
#endif
}

void TstAcessoDados::lostConnectionComesBackInTheNextOperation() {
    QVERIFY(AbreRS(u"SELECT vendedor FROM vendedores"_s));
    m_server->killProgramConnections();
    const odbc::Connection* const one = &Connection;
    {
        const Operation operation;
        QVERIFY(errorOf([] { Executa(u"UPDATE vendedores SET ComissEsp1 = 1"_s); }));
        QVERIFY(errorOf([] { AbreRS(u"SELECT 1 AS um"_s); }));
    }
    const Operation operation;
    QVERIFY(AbreRS(u"SELECT COUNT(*) AS n FROM vendedores WHERE ComissEsp1 = 1"_s));
    QCOMPARE(rs.field(u"n").integer(), Q_INT64_C(0));
    QVERIFY(AbreRS2(u"SELECT 2 AS dois"_s));
    QCOMPARE(&Connection, one);
}

void TstAcessoDados::failedConnectionThenAnotherStart() {
    m_server->useSocket(m_server->socket() + u".nada"_s);
    ModalHelper boxes;
    boxes.expect(u"Não foi possível conectar ao banco de dados. Verifique!!!"_s, QMessageBox::Ok);
    QVERIFY(!IniciaBanco());
    m_server->useSocket(m_server->socket());
    QVERIFY(IniciaBanco());
    QVERIFY(AbreRS(u"SELECT 1 AS um"_s));
    QCOMPARE(boxes.problem(), QString());
}

void TstAcessoDados::queryWithRowsAnswersTrueAndStandsOnTheFirst() {
    TemRegistro = AbreRS(u"SELECT vendedor FROM vendedores ORDER BY codigovend"_s);
    QVERIFY(TemRegistro);
    QStringList names;
    while (!rs.atEnd()) {
        names += rs.field(u"vendedor").text();
        rs.moveNext();
    }
    rs.close();
    QCOMPARE(names, (QStringList{u"ANA"_s, u"BETO"_s, u"CIDA"_s}));
}

void TstAcessoDados::queryWithNoRowsAnswersFalseAndIsWalkedZeroTimes() {
    TemRegistro = AbreRS(u"SELECT vendedor FROM vendedores WHERE codigovend = 99"_s);
    QVERIFY(!TemRegistro);
    QVERIFY(rs.isOpen());
    int rounds = 0;
    for (; !rs.atEnd(); rs.moveNext())
        ++rounds;
    QCOMPARE(rounds, 0);
}

void TstAcessoDados::newQueryReplacesTheResult() {
    QVERIFY(AbreRS(u"SELECT vendedor FROM vendedores ORDER BY codigovend"_s));
    QVERIFY(AbreRS(u"SELECT codigovend FROM vendedores WHERE codigovend = 3"_s));
    QCOMPARE(rs.columnNames(), QStringList{u"codigovend"_s});
    QCOMPARE(rs.field(u"codigovend").integer(), 3);
}

void TstAcessoDados::secondResultIsIndependentOfTheFirst() {
    QStringList pairs;
    QVERIFY(AbreRS(u"SELECT codigovend FROM vendedores ORDER BY codigovend"_s));
    for (; !rs.atEnd(); rs.moveNext())
        for (bool found = AbreRS2(u"SELECT vendedor FROM vendedores WHERE codigovend > "_s +
                                  rs.field(u"codigovend").text() + u" ORDER BY codigovend"_s);
             found && !rs2.atEnd(); rs2.moveNext())
            pairs += rs.field(u"codigovend").text() + rs2.field(u"vendedor").text();
    QCOMPARE(pairs, (QStringList{u"1BETO"_s, u"1CIDA"_s, u"2CIDA"_s}));
    QVERIFY(!AbreRS2(u"SELECT 1 FROM vendedores WHERE codigovend = 99"_s));
}

void TstAcessoDados::ownResultDisturbsNeither() {
    QVERIFY(AbreRS(u"SELECT vendedor FROM vendedores ORDER BY codigovend"_s));
    QVERIFY(AbreRS2(u"SELECT vendedor FROM vendedores ORDER BY codigovend DESC"_s));
    {
        odbc::ResultSet own = NovoRS(u"SELECT 'outro' AS vendedor"_s);
        QCOMPARE(own.field(u"vendedor").text(), u"outro"_s);
    }
    QCOMPARE(rs.field(u"vendedor").text(), u"ANA"_s);
    QCOMPARE(rs2.field(u"vendedor").text(), u"CIDA"_s);
}

void TstAcessoDados::executeRunsOneStatementAndReadsNothingBack() {
    StatementLog log(*m_server);
    const QString sql = u"Update Vendedores Set ComissEsp1= 2.5,ComissEsp2=-1 Where CodigoVend=2"_s;
    Executa(sql);
    QCOMPARE(log.texts(), QStringList{sql});
    QCOMPARE(m_server->query(u"SELECT ComissEsp1, ComissEsp2 FROM vendedores WHERE codigovend = 2"_s)[0],
             (QStringList{u"2.50"_s, u"-1.00"_s}));
}

void TstAcessoDados::errorsSurfaceToTheCaller() {
    ModalHelper boxes;
    for (const auto& action : {std::function<void()>([] { AbreRS(u"SELECT x FROM nenhuma"_s); }),
                               std::function<void()>([] { AbreRS2(u"SELECT x FROM nenhuma"_s); }),
                               std::function<void()>([] { NovoRS(u"SELECT x FROM nenhuma"_s); }),
                               std::function<void()>([] { Executa(u"UPDATE nenhuma SET x = 1"_s); })}) {
        const auto error = errorOf(action);
        QVERIFY(error);
        QCOMPARE(error->number(), 1146);
        QVERIFY(error->statement().contains(u"nenhuma"_s));
    }
    QCOMPARE(boxes.problem(), QString());
    QVERIFY(AbreRS(u"SELECT 1 AS um"_s));
}

void TstAcessoDados::queryAfterALostConnectionFails() {
    m_server->killProgramConnections();
    for (int attempt = 0; attempt < 2; ++attempt) {
        const auto error = errorOf([] { AbreRS(u"SELECT 1 AS um"_s); });
        QVERIFY(error);
        QVERIFY2(error->isConnectionLost(),
                 qPrintable(u"%1 %2 %3"_s.arg(error->number()).arg(error->sqlState(), error->text())));
    }
}

void TstAcessoDados::nullIsTheEmptyText() {
    QVERIFY(AbreRS(u"SELECT NULL AS nulo, '' AS vazio, '  abc  ' AS texto, 12.50 AS valor"_s));
    QCOMPARE(NuloVazio(rs.field(u"nulo")), u""_s);
    QCOMPARE(NuloVazio(rs.field(u"vazio")), u""_s);
    QCOMPARE(NuloVazio(rs.field(u"texto")), u"abc"_s);
    QCOMPARE(NuloVazio(rs.field(u"valor")), u"12.50"_s);
    QCOMPARE(NuloVazio(odbc::Field()), u""_s);
}

void TstAcessoDados::blanksAroundATextAreRemoved_data() {
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("trimmed");
    QTest::newRow("none") << u"abc"_s << u"abc"_s;
    QTest::newRow("before and after") << u"  abc   "_s << u"abc"_s;
    QTest::newRow("inside stays") << u" a  b "_s << u"a  b"_s;
    QTest::newRow("blanks only") << u"    "_s << u""_s;
    QTest::newRow("empty") << u""_s << u""_s;
    QTest::newRow("tab and line break are no blanks") << u" \tabc\r\n "_s << u"\tabc\r\n"_s;
    QTest::newRow("hard blank is no blank") << u"\u00A0abc\u00A0"_s << u"\u00A0abc\u00A0"_s;
}

void TstAcessoDados::blanksAroundATextAreRemoved() {
    QFETCH(QString, stored);
    QFETCH(QString, trimmed);
    QCOMPARE(NuloVazio(odbc::Field(stored)), trimmed);
}

void TstAcessoDados::endReleasesEverything() {
    QVERIFY(AbreRS(u"SELECT 1 AS um"_s));
    QVERIFY(AbreRS2(u"SELECT 2 AS dois"_s));
    EncerraBanco();
    QVERIFY(!rs.isOpen());
    QVERIFY(!rs2.isOpen());
    QVERIFY(!Connection.isOpen());
    QVERIFY(!Shell);
    const auto connections = [this] {
        return m_server->query(
            u"SELECT id FROM information_schema.processlist WHERE user = '%1'"_s.arg(m_server->user()));
    };
    QTRY_COMPARE(connections().size(), 0);
}

QTEST_MAIN(TstAcessoDados)
#include "tst_acesso_dados.moc"
