#include "support/AdminConnection.h"
#include "support/FaultProxy.h"
#include "support/ModalHelper.h"
#include "support/PrivateServer.h"
#include "support/StatementLog.h"
#include "support/TestError.h"

#include <QAbstractButton>
#include <QDialogButtonBox>
#include <QFile>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>
#include <QVBoxLayout>
#include <memory>
#include <optional>

#ifdef _WIN32
#define SQL_NOUNICODEMAP
#include <windows.h>
#endif
#include <sql.h>
#include <sqlext.h>

using namespace tarvessa::test;

namespace {

/// The data source QDX through bare ODBC calls.
class Odbc {
  public:
    Odbc() {
        SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &m_env);
        SQLSetEnvAttr(m_env, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
        SQLAllocHandle(SQL_HANDLE_DBC, m_env, &m_dbc);
        QByteArray font("dsn=QDX");
        const SQLRETURN r = SQLDriverConnect(m_dbc, nullptr, reinterpret_cast<SQLCHAR*>(font.data()), SQL_NTS,
                                             nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
        m_connected = SQL_SUCCEEDED(r);
        m_state = m_connected ? QString() : diagnosis(SQL_HANDLE_DBC, m_dbc);
    }
    ~Odbc() {
        if (m_connected) {
            SQLDisconnect(m_dbc);
        }
        SQLFreeHandle(SQL_HANDLE_DBC, m_dbc);
        SQLFreeHandle(SQL_HANDLE_ENV, m_env);
    }
    Odbc(const Odbc&) = delete;
    Odbc& operator=(const Odbc&) = delete;

    /// SQLSTATE and message of the failed connect; empty when connected.
    QString state() const { return m_state; }

    /// Runs `sql` with a static cursor; gives SQLSTATE and message, empty on success.
    QString execute(QByteArray sql) {
        m_valor.reset();
        SQLHSTMT command = SQL_NULL_HSTMT;
        if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_STMT, m_dbc, &command))) {
            return diagnosis(SQL_HANDLE_DBC, m_dbc);
        }
        SQLSetStmtAttr(command, SQL_ATTR_CURSOR_TYPE, reinterpret_cast<SQLPOINTER>(SQL_CURSOR_STATIC), 0);
        QString error;
        if (!SQL_SUCCEEDED(SQLExecDirect(command, reinterpret_cast<SQLCHAR*>(sql.data()),
                                         static_cast<SQLINTEGER>(sql.size())))) {
            error = diagnosis(SQL_HANDLE_STMT, command);
        } else {
            SQLSMALLINT columns = 0;
            SQLNumResultCols(command, &columns);
            if (columns > 0 && SQL_SUCCEEDED(SQLFetch(command))) {
                QByteArray cell(4096, '\0');
                SQLLEN size = 0;
                SQLGetData(command, 1, SQL_C_CHAR, cell.data(), cell.size(), &size);
                m_valor = cell.left(static_cast<qsizetype>(size));
            }
        }
        SQLFreeHandle(SQL_HANDLE_STMT, command);
        return error;
    }

    /// The first cell of the first row of `sql`, in the data source's charset.
    QByteArray value(const QByteArray& sql) {
        const QString error = execute(sql);
        return error.isEmpty() ? m_valor.value_or("no row") : error.toUtf8();
    }

  private:
    static QString diagnosis(SQLSMALLINT tipo, SQLHANDLE handle) {
        SQLCHAR state[6] = {};
        SQLCHAR text[512] = {};
        SQLINTEGER numero = 0;
        SQLSMALLINT size = 0;
        SQLGetDiagRec(tipo, handle, 1, state, &numero, text, sizeof text, &size);
        return QStringLiteral("%1 %2").arg(QString::fromLatin1(reinterpret_cast<char*>(state)),
                                           QString::fromUtf8(reinterpret_cast<char*>(text)));
    }

    SQLHENV m_env = SQL_NULL_HENV;
    SQLHDBC m_dbc = SQL_NULL_HDBC;
    bool m_connected = false;
    QString m_state;
    std::optional<QByteArray> m_valor;
};

} // namespace

class TstSupport : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup();

    void schemaIsLoadedAndNothingElse();
    void dataSourceLeadsToTheDatabase();
    void nullEmptyAndOddCharacters();
    void failedStatementRaises();
    void dataSourceCharset_data();
    void dataSourceCharset();
    void dataSourceInitStmt();
    void killedConnections();

    void logHasEachStatementOnce();
    void logKeepsEveryLetter();
    void logFromLatin1();
    void logOfThisProgramOnly();

    void cutBeforeEachStatement_data();
    void cutBeforeEachStatement();
    void noCutWhenNoneIsDue();
    void proxyKeepsEveryByte();
    void proxyPassesLongStatements();
    void proxyInFrontOfNothing();

    void boxesAreAnswered();
    void unannouncedBoxIsClosed();
    void unannouncedBoxWithNoWayOutIsClosed();
    void missingBoxIsTold();
    void wrongOrderIsTold();
    void missingButtonIsTold();
    void boxInsideWindow();
    void sameBoxTwice();
    void windowLeftOpenIsTold();
    void unannouncedWindowIsClosed();

    // The slots end here for moc, which the checker does not know of.
    // NOLINTNEXTLINE(readability-redundant-access-specifiers)
  private:
    std::unique_ptr<PrivateServer> m_server;
};

void TstSupport::initTestCase() {
    m_server = std::make_unique<PrivateServer>();
}

void TstSupport::cleanupTestCase() {
    m_server.reset();
}

void TstSupport::init() {
    m_server->execute(
        QStringLiteral("CREATE TABLE prova (id INT PRIMARY KEY, nome VARCHAR(50), texto LONGTEXT); "
                       "INSERT INTO prova VALUES (1, 'PÃO', NULL), (2, '', NULL)"));
}

void TstSupport::cleanup() {
    m_server->useCharset(QString());
    m_server->useSocket(m_server->socket());
    m_server->useInitStmt(QStringLiteral("SET sql_mode='NO_ENGINE_SUBSTITUTION'"));
    m_server->execute(QStringLiteral("DROP TABLE IF EXISTS prova"));
}

void TstSupport::schemaIsLoadedAndNothingElse() {
    QFile esquema(QStringLiteral(TARVESSA_SOURCE_DIR "/demo/schema.sql"));
    QVERIFY(esquema.open(QIODevice::ReadOnly));
    static const QRegularExpression Creation(QStringLiteral("^CREATE TABLE (?:IF NOT EXISTS )?`?(\\w+)"),
                                             QRegularExpression::MultilineOption |
                                                 QRegularExpression::CaseInsensitiveOption);
    QStringList expectedTables;
    auto found = Creation.globalMatch(QString::fromUtf8(esquema.readAll()));
    while (found.hasNext()) {
        expectedTables += found.next().captured(1).toLower();
    }
    QVERIFY(expectedTables.size() > 10);
    expectedTables.sort();

    const auto tables = [this] {
        QStringList names;
        for (const QStringList& row : m_server->query(QStringLiteral("SHOW TABLES"))) {
            names += row[0];
        }
        names.sort();
        return names;
    };
    QVERIFY(tables().contains(QStringLiteral("prova")));
    m_server->recreate();
    QCOMPARE(tables(), expectedTables);
    for (const QString& table : expectedTables) {
        QCOMPARE(m_server->query(QStringLiteral("SELECT COUNT(*) FROM `%1`").arg(table))[0][0],
                 QStringLiteral("0"));
    }
}

void TstSupport::dataSourceLeadsToTheDatabase() {
    Odbc odbc;
    QCOMPARE(odbc.state(), QString());
    QCOMPARE(odbc.value("SELECT DATABASE()"), m_server->database().toUtf8());
    QCOMPARE(odbc.value("SELECT CURRENT_USER()"), m_server->user().toUtf8() + "@localhost");
    QCOMPARE(odbc.value("SELECT @@sql_mode"), QByteArray("NO_ENGINE_SUBSTITUTION"));
    QCOMPARE(odbc.value("SELECT @@skip_networking"), QByteArray("1"));
    QCOMPARE(odbc.value("SELECT nome FROM PROVA WHERE id = 1"), QByteArray("PÃO"));
}

void TstSupport::nullEmptyAndOddCharacters() {
    m_server->execute(QStringLiteral("INSERT INTO prova VALUES (3, '\U0001F950 d''Ávila', 'a\nb')"));
    const auto linhas = m_server->query(QStringLiteral("SELECT nome, texto FROM prova ORDER BY id"));
    QCOMPARE(linhas.size(), 3);
    QCOMPARE(linhas[0][0], QStringLiteral("PÃO"));
    QVERIFY(linhas[0][1].isNull());
    QVERIFY(linhas[1][0].isEmpty() && !linhas[1][0].isNull());
    QCOMPARE(linhas[2], (QStringList{QStringLiteral("\U0001F950 d'Ávila"), QStringLiteral("a\nb")}));
}

void TstSupport::failedStatementRaises() {
    QVERIFY_THROWS_EXCEPTION(TestError,
                             m_server->execute(QStringLiteral("SELECT 1; UPDATE nenhuma SET a = 1")));
    QVERIFY_THROWS_EXCEPTION(TestError, m_server->query(QStringLiteral("SELECT")));
    QVERIFY_THROWS_EXCEPTION(TestError, m_server->query(QStringLiteral("UPDATE prova SET nome = 'x'")));
    QVERIFY_THROWS_EXCEPTION(TestError, m_server->query(QStringLiteral("SELECT 1; SELECT 2")));
    QCOMPARE(m_server->query(QStringLiteral("SELECT 3"))[0][0], QStringLiteral("3"));
}

void TstSupport::dataSourceCharset_data() {
    QTest::addColumn<QString>("charset");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("none") << QString() << QByteArray("P\xC3\x83O");
    QTest::newRow("utf8mb4") << QStringLiteral("utf8mb4") << QByteArray("P\xC3\x83O");
    QTest::newRow("latin1") << QStringLiteral("latin1") << QByteArray("P\xC3O");
}

void TstSupport::dataSourceCharset() {
    QFETCH(QString, charset);
    QFETCH(QByteArray, expected);
    m_server->useCharset(charset);
    Odbc odbc;
    QCOMPARE(odbc.state(), QString());
    QCOMPARE(odbc.value("SELECT nome FROM prova WHERE id = 1"), expected);
}

void TstSupport::dataSourceInitStmt() {
    m_server->useInitStmt(QStringLiteral("SET @marca = 'primeira'"));
    Odbc first;
    QCOMPARE(first.value("SELECT @marca"), QByteArray("primeira"));
    m_server->useInitStmt(QStringLiteral("SET @marca = 'segunda'"));
    Odbc second;
    QCOMPARE(second.value("SELECT @marca"), QByteArray("segunda"));
    m_server->useInitStmt(QString());
    Odbc third;
    QCOMPARE(third.value("SELECT COALESCE(@marca, 'nenhuma')"), QByteArray("nenhuma"));
}

void TstSupport::killedConnections() {
    m_server->killProgramConnections();
    Odbc odbc;
    QCOMPARE(odbc.execute("UPDATE prova SET nome = 'antes'"), QString());
    m_server->killProgramConnections();
    const QString error = odbc.execute("UPDATE prova SET nome = 'depois'");
    QVERIFY2(error.startsWith(QStringLiteral("08S01")), qPrintable(error));
    QCOMPARE(m_server->query(QStringLiteral("SELECT nome FROM prova WHERE id = 1"))[0][0],
             QStringLiteral("antes"));
}

void TstSupport::logHasEachStatementOnce() {
    StatementLog log(*m_server);
    Odbc odbc;
    QCOMPARE(log.texts(), QStringList());
    const QList<QByteArray> sqls{"SELECT nome FROM prova", "UPDATE prova SET nome = 'a' WHERE id = 2",
                                 "SELECT id FROM prova",   "INSERT INTO prova VALUES (9, 'n', '')",
                                 "DELETE FROM nenhuma",    "TRUNCATE TABLE prova",
                                 "SELECT nome FROM prova"};
    QStringList expectedStatements;
    for (const QByteArray& sql : sqls) {
        QCOMPARE(odbc.execute(sql).isEmpty(), !sql.contains("nenhuma"));
        expectedStatements += QString::fromUtf8(sql);
    }
    QCOMPARE(log.texts(), expectedStatements);

    log.mark();
    QCOMPARE(log.texts(), QStringList());
    odbc.execute("SET @a = 1");
    QCOMPARE(log.texts(), QStringList{QStringLiteral("SET @a = 1")});
}

void TstSupport::logKeepsEveryLetter() {
    if (!m_server->query(QStringLiteral("SELECT VERSION()"))[0][0].contains(QLatin1String("MariaDB"))) {
        QSKIP("this server's log keeps no characters of four bytes");
    }
    StatementLog log(*m_server);
    Odbc odbc;
    const QStringList sqls{
        QStringLiteral("  SELECT  nome   FROM prova WHERE nome = ' ÁÉÍ´  \"x\" \\\\ \U0001F950 '  "),
        QStringLiteral("UPDATE prova SET nome = 'a\n\tb,\"c\"' WHERE id =  2 ;"),
        QStringLiteral("UPDATE prova SET nome = 'sem brancos' WHERE id = 2")};
    for (const QString& sql : sqls) {
        QCOMPARE(odbc.execute(sql.toUtf8()), QString());
    }
    QCOMPARE(log.texts(), StatementLog::expected(sqls));
    QCOMPARE(StatementLog::expected(sqls)[0],
             QStringLiteral("SELECT  nome   FROM prova WHERE nome = ' ÁÉÍ´  \"x\" \\\\ \U0001F950 '"));
    QCOMPARE(StatementLog::expected(sqls)[1],
             QStringLiteral("UPDATE prova SET nome = 'a\n\tb,\"c\"' WHERE id =  2"));
}

void TstSupport::logFromLatin1() {
    m_server->useCharset(QStringLiteral("latin1"));
    StatementLog log(*m_server);
    Odbc odbc;
    QCOMPARE(odbc.execute("UPDATE prova SET nome = 'P\xC3O DE A\xC7\xDA"
                          "CAR'"),
             QString());
    QCOMPARE(log.texts(), QStringList{QStringLiteral("UPDATE prova SET nome = 'P\\xC3O DE A\\xC7\\xDACAR'")});
    QCOMPARE(m_server->query(QStringLiteral("SELECT DISTINCT nome FROM prova")),
             QList<QStringList>{{QStringLiteral("PÃO DE AÇÚCAR")}});
}

void TstSupport::logOfThisProgramOnly() {
    StatementLog log(*m_server);
    Odbc odbc;
    m_server->execute(QStringLiteral("UPDATE prova SET nome = 'do teste'"));
    QCOMPARE(odbc.execute("UPDATE prova SET nome = 'do programa'"), QString());
    QCOMPARE(log.texts(), QStringList{QStringLiteral("UPDATE prova SET nome = 'do programa'")});
}

void TstSupport::cutBeforeEachStatement_data() {
    QTest::addColumn<int>("k");
    for (int k = 1; k <= 6; ++k) {
        QTest::newRow(qPrintable(QString::number(k))) << k;
    }
}

void TstSupport::cutBeforeEachStatement() {
    QFETCH(int, k);
    FaultProxy proxy(m_server->socket());
    m_server->useSocket(proxy.socket());
    StatementLog log(*m_server);
    Odbc odbc;
    QCOMPARE(odbc.state(), QString());
    m_server->execute(QStringLiteral("DELETE FROM prova"));

    QList<QByteArray> sqls;
    for (int i = 1; i <= 6; ++i) {
        sqls += i % 2 == 1 ? "INSERT INTO prova (id) VALUES (" + QByteArray::number(i) + ")"
                           : "SELECT COUNT(*) AS n" + QByteArray::number(i) + " FROM prova";
    }
    proxy.cutBefore(k);
    QStringList failures;
    for (const QByteArray& sql : sqls) {
        failures += odbc.execute(sql);
    }
    for (int i = 1; i <= 6; ++i) {
        const QString& failure = failures[i - 1];
        // The driver finds the loss at the statement that is cut, and knows of it from then on.
        QCOMPARE(failure.left(5), i < k    ? QString()
                                  : i == k ? QStringLiteral("08S01")
                                           : QStringLiteral("08003"));
    }
    QCOMPARE(proxy.texts(), sqls.mid(0, k - 1));
    QCOMPARE(proxy.cutAt(), sqls[k - 1]);
    QStringList received;
    for (const QByteArray& sql : sqls.mid(0, k - 1)) {
        received += QString::fromUtf8(sql);
    }
    QCOMPARE(log.texts(), StatementLog::expected(received));
    // Statements 1, 3 and 5 insert: those below k did.
    QCOMPARE(m_server->query(QStringLiteral("SELECT COUNT(*) FROM prova"))[0][0], QString::number(k / 2));

    Odbc newOne;
    QCOMPARE(newOne.value("SELECT 7"), QByteArray("7"));
}

void TstSupport::noCutWhenNoneIsDue() {
    FaultProxy proxy(m_server->socket());
    m_server->useSocket(proxy.socket());
    Odbc odbc;
    QVERIFY(!proxy.texts().isEmpty());
    proxy.cutBefore(2);
    QCOMPARE(odbc.value("SELECT 1"), QByteArray("1"));
    proxy.mark();
    QCOMPARE(proxy.texts(), QList<QByteArray>());
    QCOMPARE(odbc.value("SELECT 2"), QByteArray("2"));
    QCOMPARE(odbc.value("SELECT 3"), QByteArray("3"));
    QCOMPARE(proxy.texts(), (QList<QByteArray>{"SELECT 2", "SELECT 3"}));
    QVERIFY(proxy.cutAt().isNull());
}

void TstSupport::proxyKeepsEveryByte() {
    FaultProxy proxy(m_server->socket());
    m_server->useSocket(proxy.socket());
    m_server->useCharset(QStringLiteral("latin1"));
    Odbc odbc;
    proxy.mark();
    // The last two do not parse, one to be prepared and one to be executed at once.
    const QList<QByteArray> sqls{"UPDATE  prova SET nome = 'P\xC3O  '", "SELECT nome  FROM prova",
                                 "SELECT nome FROM", "UPDATE prova SET"};
    QCOMPARE(odbc.execute(sqls[0]), QString());
    QCOMPARE(odbc.execute(sqls[1]), QString());
    QVERIFY(!odbc.execute(sqls[2]).isEmpty());
    QVERIFY(!odbc.execute(sqls[3]).isEmpty());
    QCOMPARE(proxy.texts(), sqls);

    // The driver cuts blanks off the ends before it sends; the tests' own connection does not.
    proxy.mark();
    QCOMPARE(odbc.execute("  UPDATE prova SET nome = 'a'  "), QString());
    AdminConnection own(proxy.socket());
    own.execute(QStringLiteral("  DO 1 ; "));
    QCOMPARE(proxy.texts(), (QList<QByteArray>{"UPDATE prova SET nome = 'a'", "  DO 1 ; "}));
}

void TstSupport::proxyPassesLongStatements() {
    // Left so: other test programs on the same server may be about to rely on it.
    m_server->execute(QStringLiteral("SET GLOBAL max_allowed_packet = 67108864"));
    FaultProxy proxy(m_server->socket());
    m_server->useSocket(proxy.socket());
    Odbc odbc;
    proxy.cutBefore(4);

    // Below, at and above the 16777215 bytes, one of them the command's own, that a packet holds.
    const QByteArray inicio = "UPDATE prova SET texto = '";
    const QByteArray fim = "' WHERE id = 1";
    for (const qsizetype total : {16777213, 16777214, 40000000}) {
        const qsizetype conteudo = total - inicio.size() - fim.size();
        const QByteArray sql = inicio + QByteArray(conteudo, 'x') + fim;
        QCOMPARE(odbc.execute(sql), QString());
        QVERIFY(proxy.texts().last() == sql);
        QCOMPARE(m_server->query(QStringLiteral("SELECT LENGTH(texto) FROM prova WHERE id = 1"))[0][0],
                 QString::number(conteudo));
    }
    const QByteArray tooLong = inicio + QByteArray(20000000, 'y') + fim;
    QVERIFY(odbc.execute(tooLong).startsWith(QStringLiteral("08S01")));
    QVERIFY(proxy.cutAt() == tooLong);
    QCOMPARE(m_server->query(QStringLiteral("SELECT LEFT(texto, 1) FROM prova WHERE id = 1"))[0][0],
             QStringLiteral("x"));
}

void TstSupport::proxyInFrontOfNothing() {
    FaultProxy proxy(m_server->socket() + QStringLiteral(".nenhum"));
    m_server->useSocket(proxy.socket());
    Odbc odbc;
    QVERIFY(!odbc.state().isEmpty());
}

void TstSupport::boxesAreAnswered() {
    ModalHelper modal;
    modal.expect(QStringLiteral("Confirma?"), QMessageBox::Yes);
    modal.expect(QStringLiteral("Confirma mesmo?"), QMessageBox::No);
    modal.expect(QStringLiteral("Pronto."), QMessageBox::NoButton);
    modal.expectContaining(QStringLiteral("08S01"), QMessageBox::Ok);

    const auto pergunta = [](const char* text) {
        return QMessageBox::question(nullptr, QStringLiteral("Atenção!!!"), QString::fromUtf8(text));
    };
    QCOMPARE(pergunta("Confirma?"), QMessageBox::Yes);
    QCOMPARE(pergunta("Confirma mesmo?"), QMessageBox::No);
    QMessageBox::information(nullptr, QStringLiteral("Atenção!!!"), QStringLiteral("Pronto."));
    QMessageBox error(QMessageBox::Critical, QStringLiteral("Erro"), QStringLiteral("Falhou"),
                      QMessageBox::Ok);
    error.setDetailedText(QStringLiteral("SQLSTATE 08S01"));
    QCOMPARE(error.exec(), int(QMessageBox::Ok));

    QCOMPARE(modal.problem(), QString());
    QCOMPARE(modal.boxes().size(), 4);
    QCOMPARE(modal.boxes()[0].title, QStringLiteral("Atenção!!!"));
    QCOMPARE(modal.boxes()[0].icon, QMessageBox::Question);
    QCOMPARE(modal.boxes()[0].buttons, QMessageBox::Yes | QMessageBox::No);
    QCOMPARE(modal.boxes()[2].text, QStringLiteral("Pronto."));
    QCOMPARE(modal.boxes()[2].icon, QMessageBox::Information);
    QCOMPARE(modal.boxes()[3].details, QStringLiteral("SQLSTATE 08S01"));
}

void TstSupport::unannouncedBoxIsClosed() {
    ModalHelper modal;
    QCOMPARE(QMessageBox::question(nullptr, QString(), QStringLiteral("Surpresa")), QMessageBox::No);
    QVERIFY(modal.problem().contains(QStringLiteral("Surpresa")));
    QCOMPARE(modal.boxes().size(), 1);
}

void TstSupport::unannouncedBoxWithNoWayOutIsClosed() {
    ModalHelper modal;
    QMessageBox caixa(QMessageBox::Question, QString(), QStringLiteral("Sem saída"),
                      QMessageBox::Yes | QMessageBox::YesToAll);
    caixa.exec();
    QVERIFY(modal.problem().contains(QStringLiteral("Sem saída")));
}

void TstSupport::missingBoxIsTold() {
    ModalHelper modal;
    modal.expect(QStringLiteral("Nunca vem"), QMessageBox::Ok);
    QVERIFY(modal.problem().contains(QStringLiteral("Nunca vem")));
}

void TstSupport::wrongOrderIsTold() {
    ModalHelper modal;
    modal.expect(QStringLiteral("A"), QMessageBox::Ok);
    modal.expect(QStringLiteral("B"), QMessageBox::Ok);
    QMessageBox::information(nullptr, QString(), QStringLiteral("B"));
    QMessageBox::information(nullptr, QString(), QStringLiteral("A"));
    QVERIFY(modal.problem().startsWith(QStringLiteral("unannounced box: B")));
    QCOMPARE(modal.boxes().size(), 2);
}

void TstSupport::missingButtonIsTold() {
    ModalHelper modal;
    modal.expect(QStringLiteral("Só OK"), QMessageBox::Yes);
    QMessageBox::information(nullptr, QString(), QStringLiteral("Só OK"));
    QVERIFY(modal.problem().contains(QStringLiteral("without the button")));
}

void TstSupport::boxInsideWindow() {
    QDialog window;
    auto* button = new QPushButton(QStringLiteral("Gravar"), &window);
    auto answer = QMessageBox::NoButton;
    QObject::connect(button, &QPushButton::clicked, &window, [&] {
        answer = QMessageBox::question(&window, QString(), QStringLiteral("Grava?"));
        window.accept();
    });

    ModalHelper modal;
    QWidget* seen = nullptr;
    modal.onOpen([&](QWidget* open) {
        seen = open;
        QTest::mouseClick(open->findChild<QPushButton*>(), Qt::LeftButton);
    });
    modal.expect(QStringLiteral("Grava?"), QMessageBox::Yes);
    QCOMPARE(window.exec(), int(QDialog::Accepted));
    QCOMPARE(answer, QMessageBox::Yes);
    QCOMPARE(seen, &window);
    QCOMPARE(modal.problem(), QString());
}

void TstSupport::sameBoxTwice() {
    ModalHelper modal;
    QMessageBox caixa(QMessageBox::Information, QString(), QStringLiteral("De novo"), QMessageBox::Ok);
    for (int i = 0; i < 20; ++i) {
        modal.expect(QStringLiteral("De novo"), QMessageBox::Ok);
        QCOMPARE(caixa.exec(), int(QMessageBox::Ok));
    }
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(modal.boxes().size(), 20);
}

void TstSupport::windowLeftOpenIsTold() {
    ModalHelper modal;
    modal.onOpen([](QWidget*) {});
    QDialog window;
    QCOMPARE(window.exec(), int(QDialog::Rejected));
    QVERIFY(modal.problem().contains(QStringLiteral("left open")));
}

void TstSupport::unannouncedWindowIsClosed() {
    ModalHelper modal;
    modal.expect(QStringLiteral("Uma caixa"), QMessageBox::Ok);
    QDialog window;
    window.setObjectName(QStringLiteral("Intrusa"));
    QCOMPARE(window.exec(), int(QDialog::Rejected));
    QVERIFY(modal.problem().contains(QStringLiteral("Intrusa")));
}

QTEST_MAIN(TstSupport)
#include "tst_support.moc"
