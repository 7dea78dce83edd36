// What a server can do to a closing: killed and started again, held and let go, full, out of connections,
// tired of waiting, told by its administrator to drop somebody. Afterwards the books are those of a closing
// without it.
//
// A run under ./test tries some statements; TARVESSA_CUTS=500 tries each. TARVESSA_SMALL_DISK names the
// folder of a small file system to fill up.

#include "closing/Attendant.h"
#include "closing/PanelBench.h"
#include "closing/Recovery.h"
#include "support/AdminConnection.h"
#include "support/FaultProxy.h"
#include "support/OwnServer.h"
#include "support/TestError.h"

#include <odbcinst.h>

#include <QDir>
#include <QElapsedTimer>
#include <QLabel>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

class TstServerFaults : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void cleanupTestCase();

    void faultAtEachStatement_data();
    void faultAtEachStatement();
    void waitTimeoutBetweenTwoPresses();
    void noConnectionLeftForTheStation();
    void fullDisk();

  private:
    void start(const QStringList& options = {}, const QString& folder = {});
    void prepare(const std::function<void(Shop&)>& write);
    void learnUncut(const std::function<void(Shop&)>& write);
    void pressAndAnswer(const QString& button);
    void goOn(const QList<QByteArray>& executed);
    static void dataSource(const char* name, const char* value);

    std::unique_ptr<OwnServer> m_server;
    std::unique_ptr<PanelBench> b;
    std::unique_ptr<FaultProxy> m_proxy;
    Books m_uncut;
    QList<QByteArray> m_statements;
};

void TstServerFaults::cleanupTestCase() {
    if (b)
        b->close();
    m_proxy.reset();
    b.reset();
    m_server.reset();
}

/// Durable as a shop's server is: what it has answered survives its end.
void TstServerFaults::start(const QStringList& options, const QString& folder) {
    cleanupTestCase();
    m_server = std::make_unique<OwnServer>(
        QStringList{u"--sql-mode=NO_ENGINE_SUBSTITUTION"_s, u"--innodb-flush-log-at-trx-commit=2"_s} +
            options,
        folder);
    b = std::make_unique<PanelBench>();
    m_proxy = std::make_unique<FaultProxy>(b->server().socket());
}

void TstServerFaults::dataSource(const char* name, const char* value) {
    QVERIFY(SQLWritePrivateProfileString("QDX", name, value, "odbc.ini"));
}

void TstServerFaults::prepare(const std::function<void(Shop&)>& write) {
    b->reset();
    b->server().useSocket(m_proxy->socket());
    dataSource("READ_TIMEOUT", "1");
    dataSource("WRITE_TIMEOUT", "1");
    write(b->shop());
    QVERIFY(b->open());
    m_proxy->mark();
}

void TstServerFaults::learnUncut(const std::function<void(Shop&)>& write) {
    prepare(write);
    pressAndAnswer(u"Command4"_s);
    m_statements = m_proxy->texts();
    m_uncut = booksOf(b->server());
    b->close();
}

void TstServerFaults::pressAndAnswer(const QString& button) {
    const Attendant attendant;
    b->press(button);
}

/// Presses until nothing is listed; what was interrupted after these statements is concluded in the window
/// that comes by itself.
void TstServerFaults::goOn(const QList<QByteArray>& executed) {
    QVERIFY(waitForSessionsToEnd(b->server()));
    // A busy machine is no fault of the server.
    dataSource("READ_TIMEOUT", "600");
    dataSource("WRITE_TIMEOUT", "600");
    m_proxy->mark();
    Attendant attendant;
    attendant.operate(u"FechamentosInterrompidos"_s, [&](QWidget* window) {
        concludeAll(window, [&] { return isLastMovementDone(executed + m_proxy->texts()); });
    });
    constexpr int mostPresses = 5;
    for (int press = 0; press < mostPresses; ++press) {
        if (b->grid()->rows() > 1)
            b->press(u"Command4"_s);
        else if (press == 0)
            b->press(u"Command3"_s);
    }
    QVERIFY2(!b->control<QLabel>(u"Interrompidos"_s)->isVisible(), qPrintable(attendant.texts().join(u'\n')));
    QCOMPARE(differenceBetween(booksOf(b->server()), m_uncut), QString());
}

void TstServerFaults::faultAtEachStatement_data() {
    start();
    learnUncut(samples()[0].write);
    const bool each = qEnvironmentVariableIntValue("TARVESSA_CUTS") > 0;
    constexpr int step = 7;
    const auto count = static_cast<int>(m_statements.size());
    QTest::addColumn<QString>("fault");
    QTest::addColumn<int>("k");
    int row = 0;
    for (int k = 1; k <= count; ++k)
        for (const QString& fault : {u"killed before"_s, u"killed after"_s, u"held"_s, u"dropped"_s})
            if (each || row++ % step == 0)
                QTest::addRow("%s %d: %s", qPrintable(fault), k, m_statements[k - 1].left(30).constData())
                    << fault << k;
}

void TstServerFaults::faultAtEachStatement() {
    QFETCH(QString, fault);
    QFETCH(int, k);
    prepare(samples()[0].write);
    // The proxy's thread acts while the program waits for its answer.
    int seen = 0;
    const auto atStatement = [&](const std::function<void()>& act) {
        m_proxy->onStatement([&seen, k, act](const QByteArray&) {
            if (++seen == k)
                act();
        });
    };
    bool isExecuted = false;
    if (fault == u"killed before") {
        atStatement([this] { m_server->kill(); });
    } else if (fault == u"killed after") {
        m_proxy->cutAfter(k);
        isExecuted = true;
    } else if (fault == u"held") {
        atStatement([this] { m_server->hold(); });
        isExecuted = true;
    } else {
        atStatement([this] { b->server().killProgramConnections(); });
    }
    pressAndAnswer(u"Command4"_s);
    m_proxy->onStatement({});
    const QList<QByteArray> texts = m_proxy->texts();
    QVERIFY(texts.size() >= k);
    QCOMPARE(texts[k - 1], m_statements[k - 1]);
    if (fault == u"killed after")
        m_server->kill();
    if (fault.startsWith(u"killed"_s))
        m_server->start();
    else if (fault == u"held")
        m_server->release();
    goOn(texts.first(isExecuted ? k : k - 1));
}

// The server ends sessions that say nothing for some time.
void TstServerFaults::waitTimeoutBetweenTwoPresses() {
    start();
    learnUncut(samples()[0].write);
    b->server().execute(u"SET GLOBAL wait_timeout = 5"_s);
    prepare(samples()[0].write);
    QVERIFY(waitForSessionsToEnd(b->server()) ||
            QTest::qWaitFor([this] { return waitForSessionsToEnd(b->server()); }, 10000));
    Attendant attendant;
    const Books before = booksOf(b->server());
    b->press(u"Command4"_s);
    QVERIFY(attendant.hasSeen(mensagens::conexaoPerdida));
    QCOMPARE(differenceBetween(booksOf(b->server()), before), QString());
    attendant.forget();
    b->press(u"Command4"_s);
    QVERIFY(attendant.hasSeen(mensagens::sucesso));
    QCOMPARE(differenceBetween(booksOf(b->server()), m_uncut), QString());
}

// Others have taken every connection by the time when the station wants its own again.
void TstServerFaults::noConnectionLeftForTheStation() {
    start({u"--max-connections=10"_s});
    learnUncut(samples()[0].write);
    const auto receivable =
        std::find_if(m_statements.cbegin(), m_statements.cend(),
                     [](const QByteArray& sql) { return sql.startsWith("INSERT INTO `areceber`"); });
    prepare(samples()[0].write);
    m_proxy->cutBefore(static_cast<int>(receivable - m_statements.cbegin()) + 1);
    pressAndAnswer(u"Command4"_s);
    QVERIFY(m_proxy->cutAt().startsWith("INSERT INTO `areceber`"));
    QVERIFY(waitForSessionsToEnd(b->server()));
    const Books cut = booksOf(b->server());
    {
        std::vector<std::unique_ptr<AdminConnection>> others;
        Attendant attendant;
        try {
            for (;;)
                others.push_back(std::make_unique<AdminConnection>(b->server().socket()));
        } catch (const TestError& error) {
            QVERIFY2(QString::fromUtf8(error.what()).contains(u"Too many connections"_s), error.what());
        }
        for (int press = 0; press < 2; ++press) {
            attendant.forget();
            b->press(u"Command3"_s);
            QVERIFY(attendant.hasSeen(u"Too many connections"_s));
        }
        QCOMPARE(differenceBetween(booksOf(b->server()), cut), QString());
    }
    goOn(m_statements.first(receivable - m_statements.cbegin()));
}

// Statements are refused wherever the server needs room; the connection lives.
void TstServerFaults::fullDisk() {
    const QString disk = qEnvironmentVariable("TARVESSA_SMALL_DISK");
    constexpr int preSales = 300;
    const auto write = [](Shop& shop) { writeMixedPreSales(shop, preSales); };
    if (disk.isEmpty())
        QSKIP("TARVESSA_SMALL_DISK names no small file system to fill up");
    start({}, disk + u"/server"_s);
    learnUncut(write);
    prepare(write);
    const QString path = disk + u"/recheio"_s;
    b->server().execute(u"SET GLOBAL general_log = 0"_s);
    {
        QFile filler(path);
        QVERIFY(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        constexpr qsizetype blockSize = 65536;
        const QByteArray block(blockSize, 'x');
        while (filler.write(block) == block.size()) {
        }
    }
    Attendant attendant;
    // Nothing can be concluded while there is no room.
    attendant.operate(u"FechamentosInterrompidos"_s, [](QWidget* window) { window->close(); });
    m_proxy->mark();
    b->press(u"Command4"_s);
    QVERIFY2(attendant.hasSeen(mensagens::erroDeExecucao), qPrintable(attendant.texts().join(u'\n')));
    // The statement that was refused is the one before the lock's release.
    const QList<QByteArray> texts = m_proxy->texts();
    const auto release = std::find_if(texts.cbegin(), texts.cend(), [](const QByteArray& sql) {
        return sql.startsWith("SELECT RELEASE_LOCK");
    });
    QVERIFY(release != texts.cend());
    const auto refused = release - texts.cbegin() - 1;
    qInfo("no room for statement %d: %s", static_cast<int>(refused), texts[refused].left(60).constData());
    QVERIFY(!texts[refused].toUpper().startsWith("SELECT"));
    QVERIFY(QFile::remove(path));
    attendant.operate(u"FechamentosInterrompidos"_s, [done = isLastMovementDone(texts.first(refused))](
                                                         QWidget* window) { concludeAll(window, done); });
    b->key(Qt::Key_F7);
    for (int press = 0; press < 3 && b->grid()->rows() > 1; ++press)
        b->press(u"Command4"_s);
    QCOMPARE(b->grid()->rows(), 1);
    QCOMPARE(differenceBetween(booksOf(b->server()), m_uncut), QString());
}

QTEST_MAIN(TstServerFaults)
#include "tst_server_faults.moc"
