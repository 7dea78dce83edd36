// Closings cut at every statement and gone on with afterwards: in the same process, in a new one, at another
// station. Whatever was cut, and wherever, the books are those of a closing that nothing has cut.
//
// A run under ./test tries each statement in one of the three ways and some batches; TARVESSA_CUTS=500 tries
// each in all three, and so many batches of fifty pre-sales.

#include "closing/Attendant.h"
#include "closing/ClosingJournal.h"
#include "closing/PanelBench.h"
#include "closing/Recovery.h"
#include "support/AdminConnection.h"
#include "support/FaultProxy.h"

#include <QLabel>
#include <QRadioButton>
#include <QRandomGenerator>
#include <QTest>
#include <QThread>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

enum Way { SameProcess, NewProcess, OtherStation };
constexpr int ways = 3;
const QStringList wayNames = {u"same process"_s, u"new process"_s, u"other station"_s};

constexpr const char* cashRow = "insert into caixa";
constexpr const char* lastNumber = "UPDATE Empresa";

/// Nothing is missing but the number of the last closed pre-sale.
bool isCutBeforeTheLastNumber(const QByteArray& cutAt, bool executed) {
    return cutAt.startsWith(executed ? cashRow : lastNumber);
}

} // namespace

class TstRecovery : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();

    void everyCut_data();
    void everyCut();
    void batchesCutAtRandom_data();
    void batchesCutAtRandom();
    void conclusionsCutToo_data();
    void conclusionsCutToo();
    void conversionsCut_data();
    void conversionsCut();
    void sessionThatStillExecutesKeepsTheLock();

  private:
    struct Uncut {
        Books books;
        QList<QByteArray> statements;
    };

    void prepare(const std::function<void(Shop&)>& write);
    Uncut closeUncut(const std::function<void(Shop&)>& write);
    QList<int> waysFor(int row) const;
    void goOn(Way way, bool lastMovementDone, bool concludesFirst = false);
    void pressF7();
    void compare(const Books& uncut, bool isLastNumberUnknown);

    std::unique_ptr<PanelBench> b;
    std::unique_ptr<FaultProxy> m_proxy;
    QMap<QString, Uncut> m_uncut;
    int m_cuts = 0;
};

void TstRecovery::initTestCase() {
    m_cuts = qEnvironmentVariableIntValue("TARVESSA_CUTS");
    b = std::make_unique<PanelBench>();
    m_proxy = std::make_unique<FaultProxy>(b->server().socket());
}

void TstRecovery::cleanupTestCase() {
    b->close();
    m_proxy.reset();
    b.reset();
}

/// An opened panel in front of a shop that holds just this.
void TstRecovery::prepare(const std::function<void(Shop&)>& write) {
    b->reset();
    b->server().useSocket(m_proxy->socket());
    write(b->shop());
    m_proxy->mark();
    QVERIFY(b->open());
    m_proxy->mark();
}

TstRecovery::Uncut TstRecovery::closeUncut(const std::function<void(Shop&)>& write) {
    prepare(write);
    const Attendant attendant;
    b->press(u"Command4"_s);
    Uncut uncut{booksOf(b->server()), m_proxy->texts()};
    b->close();
    return uncut;
}

/// The log of the batch that was cut is open in front of the panel.
void TstRecovery::pressF7() {
    QVERIFY(showActive(b->panel()));
    b->grid()->setFocus();
    b->key(Qt::Key_F7);
}

/// After a cut: presses until nothing is listed, here or in another process. The window of interrupted
/// closings must come by itself unless it is called first, and what it shows is concluded.
void TstRecovery::goOn(Way way, bool lastMovementDone, bool concludesFirst) {
    m_proxy->mark();
    if (way != SameProcess) {
        const QTemporaryDir elsewhere;
        b->close();
        QCOMPARE(closeElsewhere(way == NewProcess ? b->programFolder() : elsewhere.path(), lastMovementDone),
                 QString());
        return;
    }
    Attendant attendant;
    attendant.operate(u"FechamentosInterrompidos"_s,
                      [lastMovementDone](QWidget* window) { concludeAll(window, lastMovementDone); });
    if (concludesFirst)
        pressF7();
    constexpr int mostPresses = 5;
    for (int press = 0; press < mostPresses; ++press) {
        if (b->grid()->rows() > 1)
            b->press(u"Command4"_s);
        else if (press == 0)
            b->press(u"Command3"_s);
    }
    QCOMPARE(b->grid()->rows(), 1);
    QVERIFY(!b->control<QLabel>(u"Interrompidos"_s)->isVisible());
    QVERIFY(closingjournal::all().isEmpty());
}

/// Only the note of its own station tells that the number of the last closed pre-sale is missing.
void TstRecovery::compare(const Books& uncut, bool isLastNumberUnknown) {
    Books books = booksOf(b->server());
    Books expected = uncut;
    if (isLastNumberUnknown) {
        books.remove(u"empresa"_s);
        expected.remove(u"empresa"_s);
    }
    QCOMPARE(differenceBetween(books, expected), QString());
}

/// Another process costs more than all the rest.
QList<int> TstRecovery::waysFor(int row) const {
    if (m_cuts > 0)
        return {SameProcess, NewProcess, OtherStation};
    return {row % 6 == 0 ? NewProcess : row % 6 == 3 ? OtherStation : SameProcess};
}

void TstRecovery::everyCut_data() {
    QTest::addColumn<int>("sample");
    QTest::addColumn<int>("k");
    QTest::addColumn<bool>("executed");
    QTest::addColumn<int>("way");
    constexpr int moneyStatements = 8;
    int row = 0;
    for (int sample = 0; sample < samples().size(); ++sample) {
        const Sample& each = samples()[sample];
        m_uncut.insert(each.name, closeUncut(each.write));
        const QList<QByteArray> statements = m_uncut[each.name].statements;
        const auto count = static_cast<int>(statements.size());
        for (int k = each.isSameStock ? count - moneyStatements : 1; k <= count; ++k)
            for (const bool executed : {false, true})
                for (const int way : waysFor(++row))
                    QTest::addRow("%s, %s, %s %d: %s", qPrintable(each.name), qPrintable(wayNames[way]),
                                  executed ? "after" : "before", k, statements[k - 1].left(30).constData())
                        << sample << k << executed << way;
    }
}

void TstRecovery::everyCut() {
    QFETCH(int, sample);
    QFETCH(int, k);
    QFETCH(bool, executed);
    QFETCH(int, way);
    const Sample& each = samples()[sample];
    prepare(each.write);
    {
        const Attendant attendant;
        if (executed)
            m_proxy->cutAfter(k);
        else
            m_proxy->cutBefore(k);
        b->press(u"Command4"_s);
    }
    QVERIFY(!m_proxy->cutAt().isNull());
    QVERIFY(waitForSessionsToEnd(b->server()));
    const bool unknown = way == OtherStation && isCutBeforeTheLastNumber(m_proxy->cutAt(), executed);
    goOn(static_cast<Way>(way), isLastMovementDone(m_proxy->texts()));
    compare(m_uncut[each.name].books, unknown);
}

void TstRecovery::batchesCutAtRandom_data() {
    QTest::addColumn<int>("way");
    for (int way = 0; way < ways; ++way)
        QTest::newRow(qPrintable(wayNames[way])) << way;
}

// Each batch is cut once on its way, anywhere.
void TstRecovery::batchesCutAtRandom() {
    QFETCH(int, way);
    const int preSales = m_cuts > 0 ? 50 : 12;
    const int batches = m_cuts > 0 ? (m_cuts + ways - 1) / ways : 3;
    const auto write = [preSales](Shop& shop) { writeMixedPreSales(shop, preSales); };
    const Uncut uncut = closeUncut(write);
    // A later closing stores its own number, so only that of the last one can be missing for good.
    const auto isLast = [&uncut](const QByteArray& cutAt) {
        const auto start = uncut.statements.size() - uncut.statements.lastIndexOf(cutAt);
        constexpr int statementsAfterTheCashRow = 4;
        return start <= statementsAfterTheCashRow;
    };
    QRandomGenerator random(20240315 + way);
    for (int batch = 0; batch < batches; ++batch) {
        prepare(write);
        const int k = random.bounded(1, static_cast<int>(uncut.statements.size()));
        const bool executed = random.bounded(2) == 1;
        {
            const Attendant attendant;
            if (executed)
                m_proxy->cutAfter(k);
            else
                m_proxy->cutBefore(k);
            b->press(u"Command4"_s);
        }
        const QByteArray cutAt = m_proxy->cutAt();
        QVERIFY(!cutAt.isNull());
        QVERIFY(waitForSessionsToEnd(b->server()));
        goOn(static_cast<Way>(way), isLastMovementDone(m_proxy->texts()), true);
        compare(uncut.books,
                way == OtherStation && isCutBeforeTheLastNumber(cutAt, executed) && isLast(cutAt));
        if (QTest::currentTestFailed())
            QFAIL(qPrintable(u"batch %1, %2 statement %3: %4"_s.arg(batch)
                                 .arg(executed ? u"after"_s : u"before"_s)
                                 .arg(k)
                                 .arg(QString::fromUtf8(cutAt))));
    }
}

void TstRecovery::conclusionsCutToo_data() {
    QTest::addColumn<QByteArray>("first");
    QTest::newRow("stock") << QByteArray("update Produtos");
    QTest::newRow("lines") << QByteArray(" UPDATE orcamento");
    QTest::newRow("receivable") << QByteArray("INSERT INTO `areceber`");
}

// Each statement that the window sends is cut in turn, until it sends fewer.
void TstRecovery::conclusionsCutToo() {
    QFETCH(QByteArray, first);
    const Sample& sample = samples()[0];
    const Uncut uncut = closeUncut(sample.write);
    const auto k = std::find_if(uncut.statements.cbegin(), uncut.statements.cend(),
                                [&](const QByteArray& sql) { return sql.startsWith(first.trimmed()); }) -
                   uncut.statements.cbegin() + 1;
    const int step = m_cuts > 0 ? 1 : 4;
    bool wasCut = true;
    int tried = 0;
    for (int j = 1; wasCut; j += step) {
        const bool executed = tried++ % 2 == 1;
        prepare(sample.write);
        m_proxy->cutBefore(static_cast<int>(k));
        {
            const Attendant attendant;
            b->press(u"Command4"_s);
        }
        QList<QByteArray> before = m_proxy->texts();
        QVERIFY(waitForSessionsToEnd(b->server()));
        if (executed)
            m_proxy->cutAfter(j);
        else
            m_proxy->cutBefore(j);
        {
            Attendant attendant;
            attendant.operate(u"FechamentosInterrompidos"_s, [&](QWidget* window) {
                concludeAll(window, [&] { return isLastMovementDone(before + m_proxy->texts()); });
            });
            pressF7();
        }
        wasCut = !m_proxy->cutAt().isNull();
        goOn(SameProcess, isLastMovementDone(before + m_proxy->texts()));
        compare(uncut.books, false);
        if (QTest::currentTestFailed())
            QFAIL(qPrintable(u"cut at statement %1: %2"_s.arg(j).arg(QString::fromUtf8(m_proxy->cutAt()))));
    }
    QVERIFY(tried > 3);
}

void TstRecovery::conversionsCut_data() {
    QTest::addColumn<bool>("restarted");
    QTest::newRow("same process") << false;
    QTest::newRow("new panel") << true;
}

// Each document becomes one pre-sale of its own number, and its notes follow it.
void TstRecovery::conversionsCut() {
    QFETCH(bool, restarted);
    const auto write = [this](Shop& shop) {
        shop.basico();
        for (const int number : {7, 8, 9}) {
            shop.documento(
                {.pedido = number, .tipo = u"D"_s, .linhas = {{}, {u"P1"_s, QString::number(number)}}});
            b->server().execute(
                u"INSERT INTO observacao SET nrpedido = %1, tipoOperacao = 'D', texto = '%1'"_s.arg(number));
        }
    };
    bool wasCut = true;
    for (int k = 1; wasCut; ++k)
        for (const bool executed : {false, true}) {
            prepare(write);
            if (executed)
                m_proxy->cutAfter(k);
            else
                m_proxy->cutBefore(k);
            Attendant attendant;
            attendant.operate(u"FechamentosInterrompidos"_s,
                              [](QWidget* window) { concludeAll(window, true); });
            b->press(u"Command2"_s);
            wasCut = !m_proxy->cutAt().isNull();
            QVERIFY(waitForSessionsToEnd(b->server()) || !wasCut);
            m_proxy->mark();
            if (restarted) {
                b->close();
                QVERIFY(b->open());
                if (b->control<QLabel>(u"Interrompidos"_s)->isVisible())
                    b->key(Qt::Key_F7);
            }
            if (b->button(u"Command2"_s)->isEnabled())
                b->press(u"Command2"_s);
            const QString context = u"%1 statement %2"_s.arg(executed ? u"after"_s : u"before"_s).arg(k);
            QVERIFY2(b->server().query(u"SELECT * FROM orcamento WHERE TipoOperacao = 'D'"_s).isEmpty(),
                     qPrintable(context));
            // The second line's quantity is the document's number.
            const QList<QStringList> notes = b->server().query(
                u"SELECT o.nrpedido, n.texto FROM orcamento o JOIN observacao n ON n.nrpedido = o.nrpedido "
                u"AND "
                "n.tipoOperacao = 'P' AND n.texto = ROUND(o.quantidade) WHERE o.quantidade > 1 GROUP BY "
                "o.nrpedido ORDER BY n.texto"_s);
            QVERIFY2(notes.size() == 3, qPrintable(context));
            QVERIFY2(b->server().query(u"SELECT DISTINCT nrpedido FROM orcamento"_s).size() == 3,
                     qPrintable(context));
        }
}

// The server does not notice that a client has gone while it waits for a row: what the client sent may still
// be executed later, so nobody may conclude before that session has ended.
void TstRecovery::sessionThatStillExecutesKeepsTheLock() {
    constexpr int untilItWaitsMs = 1000;
    const Sample& sample = samples()[0];
    const Books uncut = closeUncut(sample.write).books;
    prepare(sample.write);
    auto line = std::make_unique<FaultProxy>(b->server().socket());
    b->server().useSocket(line->socket());
    QVERIFY(b->open());
    AdminConnection other(b->server().socket());
    other.select(b->server().database());
    other.execute(u"BEGIN; UPDATE produtos SET descricao = 'P2' WHERE codfabr = 'P2'"_s);
    {
        const Attendant attendant;
        const std::unique_ptr<QThread> cut(QThread::create([&line] {
            QThread::msleep(untilItWaitsMs);
            line.reset();
        }));
        cut->start();
        b->press(u"Command4"_s);
        cut->wait();
    }
    b->server().useSocket(m_proxy->socket());
    {
        Attendant attendant;
        attendant.operate(u"FechamentosInterrompidos"_s, [](QWidget* window) {
            const Hands hands(window);
            hands.control<QRadioButton>(u"NaoSaiu"_s)->click();
            hands.press(u"Command1"_s);
        });
        pressF7();
        QVERIFY(attendant.hasSeen(u"Outra estação está encerrando pré-vendas."_s));
    }
    other.execute(u"ROLLBACK"_s);
    const QString old = u"SELECT COUNT(*) FROM information_schema.processlist WHERE user = '%1'"_s;
    QTRY_COMPARE(b->server().query(old.arg(b->server().user())), (QList<QStringList>{{u"1"_s}}));
    {
        Attendant attendant;
        attendant.operate(u"FechamentosInterrompidos"_s, [](QWidget* window) { concludeAll(window, true); });
        pressF7();
    }
    compare(uncut, false);
}

QTEST_MAIN(TstRecovery)
#include "tst_recovery.moc"
