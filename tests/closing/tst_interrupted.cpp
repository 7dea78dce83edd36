// The window of interrupted closings: when it comes, what it shows, what it asks, what it writes. That it
// gets every closing to its end is shown by tst_recovery.

#include "base/Clock.h"
#include "closing/Attendant.h"
#include "closing/ClosingJournal.h"
#include "closing/FechamentosInterrompidos.h"
#include "closing/PainelFechamento.h"
#include "closing/PainelFechamentoColumns.h"
#include "closing/PanelBench.h"
#include "closing/Recovery.h"
#include "support/AdminConnection.h"
#include "support/EventSpy.h"
#include "support/FaultProxy.h"
#include "support/ModalHelper.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QRadioButton>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

using Snapshot = QMap<QString, QList<QStringList>>;

} // namespace

class TstInterrupted : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();

    void statusBarTellsThemAtTheStart();
    void failedQuestionAtTheStartIsNoBox();
    void batchRefusesThemAndOpensTheWindow();
    void reconnectOpensTheWindow_data();
    void reconnectOpensTheWindow();
    void editThatReconnectsIsFollowedByTheWindow();
    void settledRowOfALostAnswerLeavesTheList();
    void conclusionThatFailsLoadsTheListAgain();
    void conclusionKeepsWhatIsUnselected();
    void lockIsWaitedForWithTheBusyPointer();
    void failedStartAsksLater();
    void reconnectThatFindsNoneOpensNothing();
    void refusedStatementOpensTheWindowAtOnce();
    void closedElsewhereIsNotCalledInterrupted();
    void wholeClosingIsNotListed_data();
    void wholeClosingIsNotListed();
    void stockChangedMeanwhileIsNotConcluded();
    void lastLoggedProductIsAskedAbout();
    void rowsOfTheLogMayComeInAnyOrder();
    void oddDocumentDoesNotHideTheOthers();
    void settledByAnotherProgramIsUnclear();
    void receivableOfAnotherAmountIsUnclear();
    void cancelledAfterACutIsListedHere();
    void methodThatCannotBeWrittenIsUnclear();
    void changedTotalIsUnclear();
    void movementsOfAnEarlierDayCount();
    void otherStationBillsWhatTheListHad();
    void linesOlderThanTheListAreUnclear();
    void settledByACashRegisterIsNotListed_data();
    void settledByACashRegisterIsNotListed();
    void spoiltNoteIsNone();
    void lockIsNotHeldBehindABox();
    void receivableRulesOverANote();
    void impossibleDueDateIsUnclear();
    void partlySettledIsListed();
    void noteOfAConversionThatMayStillRunStays();
    void lastDayOfTheListIsNotLost();
    void noteKeepsTheTermsOfTheClosing();
    void receivableGivesTheTermsWithoutANote();
    void presentTermsAreShownForConfirmation();
    void noAnswerConcludesNothing();
    void leavingOneAloneWritesNothing();
    void changedMeanwhileIsNotConcluded();
    void stockLogOfOtherLinesIsUnclear();
    void everyStatementIsLogged();
    void conversionCutBetweenItsUpdates();
    void anotherStationHoldsTheLock();
    void concludingHoldsTheLock();

  private:
    void twoProducts() { samples()[0].write(b->shop()); }
    void open();
    void press();
    void cutBefore(const char* start);
    void conclude(bool lastMovementDone);
    QString status() const { return b->control<QLabel>(u"Interrompidos"_s)->text(); }
    bool hasStatus() const { return b->control<QLabel>(u"Interrompidos"_s)->isVisible(); }
    QStringList windowRow(const std::function<void(QWidget*)>& look = {});
    bool asksAboutTheLastLine();
    void otherStationForgets() { closingjournal::forget(1); }

    std::unique_ptr<PanelBench> b;
    std::unique_ptr<FaultProxy> m_proxy;
};

void TstInterrupted::initTestCase() {
    b = std::make_unique<PanelBench>();
    m_proxy = std::make_unique<FaultProxy>(b->server().socket());
}

void TstInterrupted::cleanupTestCase() {
    b->close();
    m_proxy.reset();
    b.reset();
}

void TstInterrupted::init() {
    b->reset();
    b->server().useSocket(m_proxy->socket());
    m_proxy->mark();
}

void TstInterrupted::open() {
    QVERIFY(b->open());
}

/// Presses the closing button; every box is answered, and a window about interrupted closings is closed.
void TstInterrupted::press() {
    const Attendant attendant;
    b->press(u"Command4"_s);
}

/// A closing of pre-sale 1 that is cut before the first statement that begins like this; the program is then
/// started again.
void TstInterrupted::cutBefore(const char* start) {
    open();
    m_proxy->mark();
    press();
    const QList<QByteArray> statements = m_proxy->texts();
    int k = 1;
    while (k <= statements.size() && !statements[k - 1].startsWith(start))
        ++k;
    QVERIFY2(k <= statements.size(), start);
    b->close();
    init();
    twoProducts();
    open();
    m_proxy->cutBefore(k);
    press();
    QVERIFY(m_proxy->cutAt().startsWith(start));
    b->close();
    open();
}

/// Opens the window by its key and concludes everything in it, by keys.
void TstInterrupted::conclude(bool lastMovementDone) {
    Attendant attendant;
    attendant.operate(u"FechamentosInterrompidos"_s, [lastMovementDone](QWidget* window) {
        const Hands hands(window);
        for (int turn = 0; turn < 10 && hands.grid()->rows() > 1; ++turn) {
            if (hands.control<QWidget>(u"Frame1"_s)->isVisible())
                hands.control<QRadioButton>(lastMovementDone ? u"JaSaiu"_s : u"NaoSaiu"_s)->click();
            QVERIFY2(hands.button(u"Command1"_s)->isEnabled(),
                     qPrintable(hands.control<QLabel>(u"Label1"_s)->text()));
            hands.key(Qt::Key_C, Qt::AltModifier);
        }
        QCOMPARE(hands.grid()->rows(), 1);
        hands.key(Qt::Key_Escape);
    });
    b->key(Qt::Key_F7);
    QVERIFY(!hasStatus());
}

/// The first row of the window, which is closed again.
QStringList TstInterrupted::windowRow(const std::function<void(QWidget*)>& look) {
    QStringList row;
    ModalHelper modal;
    modal.onOpen([&](QWidget* window) {
        const Hands hands(window);
        if (hands.grid()->rows() > 1)
            row = cells(hands.grid(), 1);
        if (look)
            look(window);
        hands.key(Qt::Key_Escape);
    });
    b->key(Qt::Key_F7);
    return row;
}

void TstInterrupted::statusBarTellsThemAtTheStart() {
    twoProducts();
    open();
    QVERIFY(!hasStatus());
    b->close();
    init();
    twoProducts();
    cutBefore("INSERT INTO `areceber`");
    QVERIFY(hasStatus());
    QCOMPARE(status(), u"1 fechamento interrompido (F7)"_s);
}

void TstInterrupted::failedQuestionAtTheStartIsNoBox() {
    twoProducts();
    b->server().execute(u"ALTER TABLE logestoque CHANGE tela tela_antiga VARCHAR(100)"_s);
    ModalHelper modal;
    open();
    b->server().execute(u"ALTER TABLE logestoque CHANGE tela_antiga tela VARCHAR(100)"_s);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(status(), u"Fechamentos interrompidos: não foi possível consultar (F7)"_s);
    QCOMPARE(b->grid()->rows(), 2);
}

// Also on a station that knows nothing of the cut.
void TstInterrupted::batchRefusesThemAndOpensTheWindow() {
    twoProducts();
    cutBefore("update Produtos");
    otherStationForgets();
    const Snapshot before = b->shop().retrato();
    ModalHelper modal;
    modal.expect(mensagens::lembrete, QMessageBox::Ok);
    modal.expect(mensagens::comErros, QMessageBox::Ok);
    QString caption;
    modal.onOpen([&](QWidget* window) {
        caption = window->windowTitle();
        Hands(window).key(Qt::Key_Escape);
    });
    b->press(u"Command4"_s);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(caption, u"Fechamentos interrompidos"_s);
    QCOMPARE(
        b->log(),
        PanelBench::logWith(
            {u"PRÉ-VENDA: 0000001 - FECHAMENTO INTERROMPIDO POR ERRO. CONFIRA ESTOQUE E FINANCEIRO."_s}));
    QCOMPARE(b->shop().retrato(), before);
}

void TstInterrupted::reconnectOpensTheWindow_data() {
    QTest::addColumn<QString>("button");
    QTest::newRow("the list") << u"Command3"_s;
    QTest::newRow("something else") << u"Command1"_s;
}

// The operator need not know the key: the first operation that has a connection again ends with the window.
void TstInterrupted::reconnectOpensTheWindow() {
    QFETCH(QString, button);
    twoProducts();
    b->shop().documento({.pedido = 2, .nomeVendedor = u"ZE"_s});
    open();
    const auto receivable = [](const QByteArray& sql) { return sql.startsWith("INSERT INTO `areceber`"); };
    m_proxy->mark();
    int seen = 0;
    m_proxy->onStatement([&](const QByteArray& sql) {
        if (receivable(sql) && ++seen == 1)
            b->server().killProgramConnections();
    });
    press();
    m_proxy->onStatement({});
    QVERIFY(b->server().query(u"SELECT * FROM areceber"_s).isEmpty());
    QVERIFY(!hasStatus());
    Attendant attendant;
    QStringList row;
    attendant.operate(u"FechamentosInterrompidos"_s,
                      [&row](QWidget* window) { row = cells(Hands(window).grid(), 1); });
    if (button == u"Command3") {
        b->press(u"Command4"_s);
        QVERIFY(attendant.hasSeen(mensagens::sucesso));
    } else {
        b->press(button);
        QVERIFY(attendant.windows().isEmpty()); // needs no database, so nothing has connected
        b->press(u"Command5"_s);
    }
    QCOMPARE(attendant.windows(), QStringList{u"FechamentosInterrompidos"_s});
    QCOMPARE(row.value(0), u"0000001"_s);
    QCOMPARE(status(), u"1 fechamento interrompido (F7)"_s);

    // Left as it is, it does not come again by itself.
    attendant.forget();
    b->press(button == u"Command3" ? button : u"Command5"_s);
    QVERIFY(attendant.windows().isEmpty());
}

// Not only buttons come to a new connection.
void TstInterrupted::editThatReconnectsIsFollowedByTheWindow() {
    twoProducts();
    b->shop().documento({.pedido = 2, .nomeVendedor = u"ZE"_s});
    open();
    m_proxy->mark();
    m_proxy->onStatement([this](const QByteArray& sql) {
        if (sql.startsWith("INSERT INTO `areceber`"))
            b->server().killProgramConnections();
    });
    press();
    m_proxy->onStatement({});
    QCOMPARE(b->column(painelfechamento::Pedido), QStringList{u"2"_s});
    QVERIFY(showActive(b->panel())); // the log is open in front of it
    Attendant attendant;
    b->click(1, painelfechamento::Tabela);
    b->type(u"2"_s);
    b->key(Qt::Key_Return);
    QCOMPARE(b->cell(1, painelfechamento::Tabela), u"2"_s);
    b->press(u"Command1"_s);
    QCOMPARE(attendant.windows(), QStringList{u"FechamentosInterrompidos"_s});
    QCOMPARE(status(), u"1 fechamento interrompido (F7)"_s);
}

// No operation may work on lines that the server has settled.
void TstInterrupted::settledRowOfALostAnswerLeavesTheList() {
    twoProducts();
    b->shop().documento({.pedido = 2, .nomeVendedor = u"ZE"_s});
    open();
    m_proxy->mark();
    press();
    const QList<QByteArray> statements = m_proxy->texts();
    int k = 1;
    while (!statements.value(k - 1).startsWith("UPDATE orcamento SET SituacaoOrc='B'"))
        QVERIFY(++k <= statements.size());
    b->close();
    init();
    twoProducts();
    b->shop().documento({.pedido = 2, .nomeVendedor = u"ZE"_s});
    open();
    m_proxy->cutAfter(k);
    press();
    QVERIFY(m_proxy->cutAt().startsWith("UPDATE orcamento SET SituacaoOrc='B'"));
    QTRY_COMPARE(b->valor(u"SELECT DISTINCT situacaoorc FROM orcamento WHERE nrpedido = 1"_s), u"B"_s);
    QCOMPARE(b->column(painelfechamento::Pedido), QStringList{u"2"_s});
}

void TstInterrupted::conclusionThatFailsLoadsTheListAgain() {
    twoProducts();
    b->shop().documento({.pedido = 2, .nomeVendedor = u"ZE"_s});
    cutBefore("UPDATE orcamento SET SituacaoOrc='B'");
    QCOMPARE(b->grid()->rows(), 2);
    b->server().execute(u"CREATE TRIGGER falha BEFORE INSERT ON areceber FOR EACH ROW SIGNAL SQLSTATE "
                        "'45000' SET MESSAGE_TEXT = 'recusado'"_s);
    Attendant attendant;
    attendant.operate(u"FechamentosInterrompidos"_s, [](QWidget* window) {
        const Hands hands(window);
        if (hands.control<QWidget>(u"Frame1"_s)->isVisible())
            hands.control<QRadioButton>(u"JaSaiu"_s)->click();
        hands.press(u"Command1"_s);
        hands.key(Qt::Key_Escape);
    });
    QVERIFY(showActive(b->panel()));
    b->key(Qt::Key_F7);
    b->server().execute(u"DROP TRIGGER falha"_s);
    QCOMPARE(b->valor(u"SELECT DISTINCT situacaoorc FROM orcamento WHERE nrpedido = 1"_s), u"B"_s);
    QVERIFY(!b->column(painelfechamento::Pedido).contains(u"1"_s));
}

void TstInterrupted::conclusionKeepsWhatIsUnselected() {
    twoProducts();
    cutBefore("UPDATE orcamento SET SituacaoOrc='B'");
    b->shop().documento({.pedido = 2, .nomeVendedor = u"ZE"_s});
    b->shop().documento({.pedido = 3, .nomeVendedor = u"ZU"_s});
    b->close();
    open();
    const QStringList listed = b->column(painelfechamento::Pedido);
    const int row = static_cast<int>(listed.indexOf(u"2"_s)) + 1;
    QVERIFY(row > 0);
    b->click(row, painelfechamento::Selecao);
    conclude(true);
    QCOMPARE(b->column(painelfechamento::Pedido), (QStringList{u"2"_s, u"3"_s}));
    QCOMPARE(b->column(painelfechamento::Selecao), (QStringList{QString(), u" "_s}));
}

void TstInterrupted::lockIsWaitedForWithTheBusyPointer() {
    twoProducts();
    open();
    std::atomic<int> shape = -1;
    m_proxy->onStatement([&shape](const QByteArray& sql) {
        if (sql.contains("GET_LOCK"))
            shape = QApplication::overrideCursor() ? int(QApplication::overrideCursor()->shape()) : -1;
    });
    press();
    m_proxy->onStatement({});
    QCOMPARE(shape.load(), int(Qt::WaitCursor));
    QVERIFY(!QApplication::overrideCursor());
}

// A start that fails has not asked for them.
void TstInterrupted::failedStartAsksLater() {
    twoProducts();
    cutBefore("INSERT INTO `areceber`");
    b->close();
    b->server().execute(u"RENAME TABLE Finalizadoras TO guardada"_s);
    Attendant attendant;
    open();
    b->server().execute(u"RENAME TABLE guardada TO Finalizadoras"_s);
    QVERIFY(attendant.windows().isEmpty());
    QVERIFY(!hasStatus());
    b->press(u"Command3"_s);
    QVERIFY(attendant.windows().isEmpty());
    QVERIFY(hasStatus());
    QCOMPARE(status(), u"1 fechamento interrompido (F7)"_s);
}

void TstInterrupted::reconnectThatFindsNoneOpensNothing() {
    twoProducts();
    open();
    b->server().killProgramConnections();
    Attendant attendant;
    b->press(u"Command4"_s);
    QVERIFY(attendant.hasSeen(mensagens::conexaoPerdida));
    b->press(u"Command4"_s);
    QVERIFY(attendant.hasSeen(mensagens::sucesso));
    QVERIFY(attendant.windows().isEmpty());
    QVERIFY(!hasStatus());
}

// The connection lives, so nobody has to press anything first.
void TstInterrupted::refusedStatementOpensTheWindowAtOnce() {
    twoProducts();
    open();
    b->server().execute(
        u"CREATE TRIGGER falha BEFORE INSERT ON caixa FOR EACH ROW SIGNAL SQLSTATE '45000'"_s);
    Attendant attendant;
    QString missing;
    attendant.operate(u"FechamentosInterrompidos"_s,
                      [&missing](QWidget* window) { missing = Hands(window).grid()->text(1, 6); });
    b->press(u"Command4"_s);
    b->server().execute(u"DROP TRIGGER falha"_s);
    QCOMPARE(attendant.windows(), QStringList{u"FechamentosInterrompidos"_s});
    QCOMPARE(missing, u"caixa"_s);
    QVERIFY(hasStatus());
}

// A list that is older than what another station has done.
void TstInterrupted::closedElsewhereIsNotCalledInterrupted() {
    twoProducts();
    open();
    const QTemporaryDir elsewhere;
    QCOMPARE(closeElsewhere(elsewhere.path(), true), QString());
    const Snapshot before = b->shop().retrato();
    Attendant attendant;
    b->press(u"Command4"_s);
    QVERIFY(attendant.windows().isEmpty());
    QCOMPARE(b->log(),
             PanelBench::logWith({u"PRÉ-VENDA: 0000001 - O PEDIDO JÁ FOI ENCERRADO OU CANCELADO."_s}));
    QCOMPARE(b->shop().retrato(), before);
    QVERIFY(!hasStatus());
}

// Its last answer was lost, so its note is still there.
void TstInterrupted::wholeClosingIsNotListed_data() {
    QTest::addColumn<int>("lastNumber");
    QTest::newRow("the last one") << 1;
    QTest::newRow("another was closed later") << 9;
}

void TstInterrupted::wholeClosingIsNotListed() {
    QFETCH(int, lastNumber);
    twoProducts();
    open();
    b->server().execute(
        u"CREATE TRIGGER falha AFTER UPDATE ON empresa FOR EACH ROW SIGNAL SQLSTATE '45000'"_s);
    press();
    b->server().execute(u"DROP TRIGGER falha; UPDATE empresa SET UltimaPV = %1"_s.arg(lastNumber));
    QCOMPARE(closingjournal::all(), QList<qint32>{1});
    b->close();
    open();
    QVERIFY(!hasStatus());
    QVERIFY(closingjournal::all().isEmpty());
}

// Listed for the last time on the day of the cut, concluded on the next one.
void TstInterrupted::lastDayOfTheListIsNotLost() {
    twoProducts();
    b->server().execute(u"UPDATE orcamento SET dataabertura = '2024-03-08'"_s);
    open();
    m_proxy->onStatement([this](const QByteArray& sql) {
        if (sql.startsWith(" UPDATE orcamento") || sql.startsWith("UPDATE orcamento"))
            b->server().killProgramConnections();
    });
    press();
    m_proxy->onStatement({});
    b->close();
    clock::fix(QDateTime(QDate(2024, 3, 16), QTime(8, 0)));
    open();
    QCOMPARE(b->grid()->rows(), 1);
    QCOMPARE(status(), u"1 fechamento interrompido (F7)"_s);
    conclude(true);
    QCOMPARE(b->valor(u"SELECT COUNT(*) FROM areceber"_s), u"1"_s);
    // What was settled before the listed period is none of this question's.
    b->close();
    b->server().execute(u"UPDATE orcamento SET databaixa = '2024-03-08'; DELETE FROM areceber"_s);
    open();
    QVERIFY(!hasStatus());
}

void TstInterrupted::noteKeepsTheTermsOfTheClosing() {
    twoProducts();
    cutBefore("INSERT INTO `areceber`");
    b->server().execute(u"UPDATE clientes SET formapg = 'DINHEIRO', prazo = 0, nome = 'OUTRO'"_s);
    QString terms;
    const QStringList row =
        windowRow([&](QWidget* window) { terms = Hands(window).control<QLabel>(u"Label1"_s)->text(); });
    QCOMPARE(row, (QStringList{u"0000001"_s, u"PADARIA MODELO"_s, u"20,00"_s, u"BOLETO"_s, u"14/04/2024"_s,
                               u"2 baixas de estoque, pedido encerrado"_s, u"conta a receber, caixa"_s}));
    QCOMPARE(terms, u"Os termos são os do fechamento interrompido."_s);
    conclude(true);
    QCOMPARE(b->server().query(u"SELECT NomeCli, Vencto, TipoPag, SitBaixa FROM areceber"_s),
             (QList<QStringList>{{u"PADARIA MODELO"_s, u"2024-04-14"_s, u"BOLETO"_s, u"A"_s}}));
}

void TstInterrupted::receivableGivesTheTermsWithoutANote() {
    twoProducts();
    cutBefore("insert into caixa");
    otherStationForgets();
    b->server().execute(u"UPDATE clientes SET formapg = 'DINHEIRO', prazo = 0"_s);
    QString terms;
    const QStringList row =
        windowRow([&](QWidget* window) { terms = Hands(window).control<QLabel>(u"Label1"_s)->text(); });
    QCOMPARE(row.value(3), u"BOLETO"_s);
    QCOMPARE(row.value(4), u"14/04/2024"_s);
    QCOMPARE(row.value(6), u"caixa"_s);
    QCOMPARE(terms, u"Os termos são os da conta a receber já gravada."_s);
    conclude(true);
    QCOMPARE(b->server().query(u"SELECT Finaliza1, Valor FROM caixa"_s),
             (QList<QStringList>{{u"BOLETO"_s, u"20.00"_s}}));
}

void TstInterrupted::presentTermsAreShownForConfirmation() {
    twoProducts();
    cutBefore("INSERT INTO `areceber`");
    otherStationForgets();
    b->server().execute(u"UPDATE clientes SET formapg = '(Nenhuma)', prazo = 0"_s);
    QString terms;
    const QStringList row =
        windowRow([&](QWidget* window) { terms = Hands(window).control<QLabel>(u"Label1"_s)->text(); });
    QCOMPARE(row.value(3), u"DINHEIRO"_s);
    QCOMPARE(row.value(4), u"15/03/2024"_s);
    QVERIFY(terms.startsWith(u"Os termos do fechamento interrompido não são conhecidos"_s));
}

// Cut a second time while it was concluded, some days later: the first movements have left the period.
void TstInterrupted::movementsOfAnEarlierDayCount() {
    twoProducts();
    cutBefore("UPDATE orcamento SET SituacaoOrc='B'");
    otherStationForgets();
    b->server().execute(u"UPDATE orcamento SET dataabertura = '2024-03-05'; "
                        "UPDATE logestoque SET data = '2024-03-06' WHERE codproduto = 'P1'"_s);
    const auto stock = [this] {
        return b->server().query(u"SELECT codfabr, quantidade FROM produtos ORDER BY codfabr"_s);
    };
    const QList<QStringList> before = stock();
    const QStringList row = windowRow();
    QCOMPARE(row.value(2), u"20,00"_s);
    QCOMPARE(row.value(5), u"2 baixas de estoque"_s);
    conclude(true);
    QCOMPARE(stock(), before);
    QCOMPARE(b->valor(u"SELECT COUNT(*) FROM logestoque"_s), u"2"_s);
    QCOMPARE(b->valor(u"SELECT SUM(Valor) FROM areceber"_s), u"20.00"_s);
}

// An uncut closing bills the total of the list, which has no lines from before its period.
void TstInterrupted::otherStationBillsWhatTheListHad() {
    twoProducts();
    cutBefore("UPDATE orcamento SET SituacaoOrc='B'");
    otherStationForgets();
    b->server().execute(u"UPDATE orcamento SET dataabertura = '2024-03-01' WHERE codigo = 'P2'"_s);
    const QString listed = b->valor(u"SELECT totalped FROM orcamento WHERE codigo = 'P1'"_s);
    QVERIFY(listed != u"20.00"_s);
    QCOMPARE(windowRow().value(2), QString(listed).replace(u'.', u','));
    conclude(true);
    QCOMPARE(b->valor(u"SELECT Valor FROM areceber"_s), listed);
    QCOMPARE(b->valor(u"SELECT Valor FROM caixa"_s), listed);
}

void TstInterrupted::linesOlderThanTheListAreUnclear() {
    twoProducts();
    cutBefore("UPDATE orcamento SET SituacaoOrc='B'");
    otherStationForgets();
    b->server().execute(u"UPDATE orcamento SET dataabertura = '2024-03-02'"_s);
    QCOMPARE(windowRow().value(6), u"conferir: os itens são de antes do período listado"_s);
}

void TstInterrupted::settledByACashRegisterIsNotListed_data() {
    QTest::addColumn<QString>("cashRegister");
    QTest::addColumn<bool>("listed");
    QTest::newRow("number 3") << u"3"_s << false;
    QTest::newRow("none, as the panel writes it") << u"0"_s << true;
}

void TstInterrupted::settledByACashRegisterIsNotListed() {
    QFETCH(const QString, cashRegister);
    QFETCH(const bool, listed);
    twoProducts();
    b->server().execute(u"UPDATE empresa SET PAF_ECF = 'SIM'; "
                        "UPDATE orcamento SET situacaoorc = 'B', databaixa = '2024-03-15'; "
                        "REPLACE INTO orcamento_controle SET NrPedido = 1, tipoOperacao = 'P', NrCaixa = %1, "
                        "Status = 'B', Fechamento = '2024-03-15 10:00:00'"_s.arg(cashRegister));
    open();
    QCOMPARE(hasStatus(), listed);
    // A note of this station lists it, but leaves nothing to conclude.
    closingjournal::ClosingNote note;
    QVERIFY(note.begin({1, u"BOLETO"_s, Dinheiro(20), QDate(2024, 4, 14), u"X"_s}));
    note.keep();
    QCOMPARE(windowRow().value(6),
             listed ? u"conta a receber, caixa"_s : u"conferir: o pedido foi encerrado pelo caixa 3"_s);
}

// The database tells what it can; a note that cannot be read does not stand in the way.
void TstInterrupted::spoiltNoteIsNone() {
    twoProducts();
    cutBefore("INSERT INTO `areceber`");
    int spoilt = 0;
    const QDir folder(b->programFolder());
    for (const QString& name : folder.entryList({u"*.andamento"_s}, QDir::Files)) {
        QFile file(folder.filePath(name));
        QVERIFY(file.open(QIODevice::ReadWrite));
        QByteArray bytes = file.readAll();
        QVERIFY(bytes.contains("VALOR=20\n"));
        bytes.replace("VALOR=20\n", "VALOR=vi\n");
        QVERIFY(file.seek(0) && file.write(bytes) == bytes.size());
        ++spoilt;
    }
    QCOMPARE(spoilt, 1);
    QVERIFY(!closingjournal::find(1));
    const QStringList row = windowRow();
    QCOMPARE(row.value(2), u"20,00"_s);
    QCOMPARE(row.value(6), u"conta a receber, caixa"_s);
    conclude(true);
    QCOMPARE(b->valor(u"SELECT Valor FROM areceber"_s), u"20.00"_s);
}

// Other stations do not wait for the answer to it.
void TstInterrupted::lockIsNotHeldBehindABox() {
    twoProducts();
    cutBefore("insert into caixa");
    ModalHelper modal;
    modal.onOpen([&](QWidget* window) {
        b->server().execute(u"INSERT INTO caixa SET CodigoLanc = 'PED:000.001', DataCx = '2024-03-15'"_s);
        Hands(window).key(Qt::Key_C, Qt::AltModifier);
        Hands(window).key(Qt::Key_Escape);
    });
    modal.expectContaining(u"Deseja realmente concluir"_s, QMessageBox::Yes);
    modal.expectContaining(u"mudou desde que foi mostrada"_s, QMessageBox::Ok);
    QStringList isFree;
    const EventSpy watch([&](QObject* object, QEvent* event) {
        if (isBoxShown(object, event))
            isFree.append(
                b->valor(u"SELECT IS_FREE_LOCK(CONCAT('tarvessa_fechamento_', MD5(DATABASE())))"_s));
    });
    b->key(Qt::Key_F7);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(isFree, (QStringList{u"1"_s, u"1"_s}));
}

void TstInterrupted::noAnswerConcludesNothing() {
    twoProducts();
    cutBefore("update Produtos");
    const Snapshot before = b->shop().retrato();
    windowRow([&](QWidget* window) {
        const Hands hands(window);
        QVERIFY(hands.control<QWidget>(u"Frame1"_s)->isVisible());
        QVERIFY(!hands.button(u"Command1"_s)->isEnabled());
        const QString question = hands.control<QLabel>(u"Label2"_s)->text();
        QVERIFY2(question.startsWith(u"P1"_s) && question.contains(u"quantidade 2, estoque atual 100."_s),
                 qPrintable(question));
        hands.key(Qt::Key_J, Qt::AltModifier);
        QVERIFY(hands.control<QRadioButton>(u"JaSaiu"_s)->isChecked());
        hands.key(Qt::Key_N, Qt::AltModifier);
        QVERIFY(hands.control<QRadioButton>(u"NaoSaiu"_s)->isChecked());
        QVERIFY(hands.button(u"Command1"_s)->isEnabled());
    });
    QCOMPARE(b->shop().retrato(), before);
}

void TstInterrupted::leavingOneAloneWritesNothing() {
    twoProducts();
    cutBefore("insert into caixa");
    const Snapshot before = b->shop().retrato();
    {
        ModalHelper modal;
        modal.onOpen([&](QWidget* window) { Hands(window).key(Qt::Key_D, Qt::AltModifier); });
        b->key(Qt::Key_F7);
        QCOMPARE(modal.problem(), QString());
    }
    QCOMPARE(b->shop().retrato(), before);
    QCOMPARE(windowRow().value(0), u"0000001"_s);
}

// Somebody finished it by hand while the window showed it.
void TstInterrupted::changedMeanwhileIsNotConcluded() {
    twoProducts();
    cutBefore("insert into caixa");
    Snapshot changed;
    ModalHelper modal;
    modal.onOpen([&](QWidget* window) {
        b->server().execute(u"INSERT INTO caixa SET CodigoLanc = 'PED:000.001', DataCx = '2024-03-15'"_s);
        changed = b->shop().retrato();
        Hands(window).key(Qt::Key_C, Qt::AltModifier);
        Hands(window).key(Qt::Key_Escape);
    });
    modal.expectContaining(u"Deseja realmente concluir o fechamento da PV 0000001?"_s, QMessageBox::Yes);
    modal.expectContaining(u"A PV 0000001 mudou desde que foi mostrada."_s, QMessageBox::Ok);
    b->key(Qt::Key_F7);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(b->shop().retrato(), changed);
}

void TstInterrupted::stockLogOfOtherLinesIsUnclear() {
    twoProducts();
    b->server().execute(u"INSERT INTO logestoque SET data = '2024-03-15', tela = 'FECHAMENTO DA PV Nº 1', "
                        "codproduto = 'P2', qtdLoja = -9"_s);
    open();
    QCOMPARE(status(), u"1 fechamento interrompido (F7)"_s);
    const QStringList row = windowRow([&](QWidget* window) {
        QVERIFY(!Hands(window).button(u"Command1"_s)->isEnabled());
        QVERIFY(!Hands(window).control<QWidget>(u"Frame1"_s)->isVisible());
    });
    QCOMPARE(row.value(6), u"conferir: o log de estoque não corresponde aos itens do pedido"_s);
}

void TstInterrupted::everyStatementIsLogged() {
    twoProducts();
    cutBefore("insert into caixa");
    conclude(true);
    QFile file(b->programFolder() + u"/LogRetomada.txt"_s);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QStringList lines = QString::fromUtf8(file.readAll()).split(u"\r\n"_s);
    QCOMPARE(lines.size(), 5);
    QVERIFY2(lines[0].startsWith(u"15/03/2024 14:07:09 - ESTAÇÃO "_s) &&
                 lines[0].endsWith(u" - PV 0000001"_s),
             qPrintable(lines[0]));
    QVERIFY(lines[1].startsWith(u"  insert into caixa Set "_s));
    QCOMPARE(lines[2], u"  UPDATE Empresa SET UltimaPV=1"_s);
    QCOMPARE(lines[3], u"  CONCLUÍDO"_s);
}

void TstInterrupted::conversionCutBetweenItsUpdates() {
    b->shop().basico();
    b->server().execute(u"UPDATE empresa SET contadorPV = 100"_s);
    b->shop().documento({.pedido = 7, .tipo = u"D"_s});
    b->server().execute(u"INSERT INTO observacao SET nrpedido = 7, tipoOperacao = 'D'"_s);
    open();
    b->server().execute(
        u"CREATE TRIGGER falha BEFORE UPDATE ON observacao FOR EACH ROW SIGNAL SQLSTATE '45000'"_s);
    {
        const Attendant attendant;
        b->press(u"Command2"_s);
        QCOMPARE(attendant.texts().size(), 1);
    }
    b->server().execute(u"DROP TRIGGER falha"_s);
    b->close();
    open();
    QCOMPARE(status(), u"1 fechamento interrompido (F7)"_s);
    conclude(true);
    QCOMPARE(b->server().query(u"SELECT nrpedido, tipoOperacao FROM observacao"_s),
             (QList<QStringList>{{u"101"_s, u"P"_s}}));
    QVERIFY(closingjournal::conversions().isEmpty());
}

// The update that was cut may still be executed while the window is open.
void TstInterrupted::stockChangedMeanwhileIsNotConcluded() {
    twoProducts();
    cutBefore("update Produtos");
    Snapshot changed;
    ModalHelper modal;
    modal.onOpen([&](QWidget* window) {
        b->server().execute(u"UPDATE produtos SET quantidade = quantidade - 1"_s);
        changed = b->shop().retrato();
        const Hands hands(window);
        hands.control<QRadioButton>(u"NaoSaiu"_s)->click();
        hands.press(u"Command1"_s);
        hands.key(Qt::Key_Escape);
    });
    modal.expectContaining(u"Deseja realmente concluir o fechamento da PV 0000001?"_s, QMessageBox::Yes);
    modal.expectContaining(u"A PV 0000001 mudou desde que foi mostrada."_s, QMessageBox::Ok);
    b->key(Qt::Key_F7);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(b->shop().retrato(), changed);
}

// A technical sheet may be listed in another order by then.
void TstInterrupted::lastLoggedProductIsAskedAbout() {
    twoProducts();
    b->server().execute(
        u"INSERT INTO logestoque (data, hora, usuario, tela, codproduto, qtdLoja) SELECT '2024-03-15', "
        u"'10:00:00', "
        "'', 'FECHAMENTO DA PV Nº 1', codigo, -quantidade FROM orcamento WHERE nrpedido = 1 ORDER BY id DESC "
        "LIMIT 1"_s);
    QVERIFY2(asksAboutTheLastLine(), qPrintable(windowRow().join(u'|')));
}

// A server gives the log's rows in the order of whatever index it reads.
void TstInterrupted::rowsOfTheLogMayComeInAnyOrder() {
    twoProducts();
    b->server().execute(
        u"INSERT INTO logestoque (data, hora, usuario, tela, codproduto, qtdLoja) SELECT '2024-03-15', "
        u"'10:00:00', "
        "'', 'FECHAMENTO DA PV Nº 1', codigo, -quantidade FROM orcamento WHERE nrpedido = 1 ORDER BY id DESC"_s);
    QVERIFY2(asksAboutTheLastLine(), qPrintable(windowRow().join(u'|')));
}

bool TstInterrupted::asksAboutTheLastLine() {
    const QString last =
        b->valor(u"SELECT codigo FROM orcamento WHERE nrpedido = 1 ORDER BY id DESC LIMIT 1"_s);
    open();
    QString asked;
    windowRow([&](QWidget* window) { asked = Hands(window).control<QLabel>(u"Label2"_s)->text(); });
    return asked.startsWith(last + u" - "_s);
}

void TstInterrupted::oddDocumentDoesNotHideTheOthers() {
    twoProducts();
    cutBefore("insert into caixa");
    b->shop().documento({.pedido = 2, .situacao = u"B"_s, .vendedor = u"40000"_s});
    b->server().execute(u"UPDATE orcamento SET databaixa = '2024-03-15' WHERE nrpedido = 2"_s);
    QStringList missing;
    windowRow([&](QWidget* window) {
        const Grid* grid = Hands(window).grid();
        for (int row = 1; row < grid->rows(); ++row)
            missing.append(grid->text(row, 6));
    });
    QCOMPARE(missing.size(), 2);
    QCOMPARE(missing[0], u"caixa"_s);
    QVERIFY2(missing[1].startsWith(u"conferir: "_s) && missing[1].contains(u"40000"_s),
             qPrintable(missing[1]));
}

void TstInterrupted::settledByAnotherProgramIsUnclear() {
    twoProducts();
    b->server().execute(u"UPDATE orcamento SET situacaoorc = 'B', databaixa = '2024-03-15'"_s);
    open();
    QCOMPARE(windowRow().value(6), u"conferir: o log de estoque não tem as baixas deste pedido"_s);
}

void TstInterrupted::receivableOfAnotherAmountIsUnclear() {
    twoProducts();
    cutBefore("INSERT INTO `areceber`");
    b->server().execute(
        u"INSERT INTO areceber SET Nr_Pedido = 1, Emissao = '2024-03-15', Vencto = '2024-03-15', "
        "Valor = 5, TipoPag = 'DINHEIRO'"_s);
    QCOMPARE(windowRow().value(6), u"conferir: a conta a receber não é do total do pedido"_s);
}

void TstInterrupted::cancelledAfterACutIsListedHere() {
    twoProducts();
    cutBefore("UPDATE orcamento");
    b->server().execute(u"UPDATE orcamento SET situacaoorc = 'X', databaixa = '2024-03-15'"_s);
    QCOMPARE(windowRow().value(6), u"conferir: o pedido foi cancelado"_s);
}

void TstInterrupted::methodThatCannotBeWrittenIsUnclear() {
    twoProducts();
    cutBefore("INSERT INTO `areceber`");
    otherStationForgets();
    b->server().execute(u"UPDATE clientes SET formapg = 'D\\'ÁGUA'"_s);
    QCOMPARE(windowRow().value(6), u"conferir: a forma de pagamento não pode ser gravada"_s);
}

void TstInterrupted::changedTotalIsUnclear() {
    twoProducts();
    cutBefore("update Produtos");
    b->server().execute(u"UPDATE orcamento SET totalped = totalped + 1"_s);
    QCOMPARE(windowRow().value(6), u"conferir: o total dos itens não é mais o do fechamento"_s);
}

void TstInterrupted::receivableRulesOverANote() {
    twoProducts();
    cutBefore("insert into caixa");
    QCOMPARE(closingjournal::all(), QList<qint32>{1});
    b->server().execute(u"UPDATE areceber SET TipoPag = 'CHEQUE', Vencto = '2024-05-01'; "
                        "UPDATE orcamento SET totalped = totalped + 1"_s);
    const QStringList row = windowRow();
    QCOMPARE(row.value(3), u"CHEQUE"_s);
    QCOMPARE(row.value(4), u"01/05/2024"_s);
    QCOMPARE(row.value(6), u"caixa"_s);
}

void TstInterrupted::impossibleDueDateIsUnclear() {
    twoProducts();
    cutBefore("INSERT INTO `areceber`");
    otherStationForgets();
    b->server().execute(u"UPDATE clientes SET prazo = 99999999"_s);
    QCOMPARE(windowRow().value(6), u"conferir: o vencimento não é uma data possível"_s);
}

// Nothing of the stock tells it where the closing moves none.
void TstInterrupted::partlySettledIsListed() {
    twoProducts();
    b->server().execute(
        u"UPDATE empresa SET PAF_ECF = 'SIM'; UPDATE orcamento SET situacaoorc = 'B', databaixa = "
        "'2024-03-15' WHERE nrpedido = 1 LIMIT 1"_s);
    open();
    QCOMPARE(status(), u"1 fechamento interrompido (F7)"_s);
    QCOMPARE(windowRow().value(6), u"conferir: parte dos itens está em outra situação"_s);
}

void TstInterrupted::noteOfAConversionThatMayStillRunStays() {
    b->shop().basico();
    b->shop().documento({.pedido = 7, .tipo = u"D"_s});
    b->server().execute(u"INSERT INTO observacao SET nrpedido = 7, tipoOperacao = 'D'"_s);
    QVERIFY(closingjournal::beginConversion({7, 101}));
    open();
    QVERIFY(!hasStatus());
    QCOMPARE(closingjournal::conversions().size(), 1);
    // The server has executed the update that was waiting.
    b->server().execute(u"UPDATE orcamento SET nrpedido = 101, TipoOperacao = 'P'"_s);
    b->close();
    open();
    QCOMPARE(status(), u"1 fechamento interrompido (F7)"_s);
}

void TstInterrupted::anotherStationHoldsTheLock() {
    twoProducts();
    open();
    const Snapshot before = b->shop().retrato();
    AdminConnection other(b->server().socket());
    other.query(
        u"SELECT GET_LOCK(CONCAT('tarvessa_fechamento_', MD5('%1')), 0)"_s.arg(b->server().database()));
    ModalHelper modal;
    modal.expect(mensagens::lembrete, QMessageBox::Ok);
    modal.expect(u"Outra estação está encerrando pré-vendas. Tente novamente em instantes. Verifique!!!"_s,
                 QMessageBox::Ok);
    b->press(u"Command4"_s);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(b->shop().retrato(), before);
}

void TstInterrupted::concludingHoldsTheLock() {
    twoProducts();
    cutBefore("insert into caixa");
    b->mark();
    conclude(true);
    const QStringList texts = b->texts();
    const qsizetype taken =
        texts.indexOf(u"SELECT GET_LOCK(CONCAT('tarvessa_fechamento_', MD5(DATABASE())), 10)"_s);
    const qsizetype released =
        texts.indexOf(u"SELECT RELEASE_LOCK(CONCAT('tarvessa_fechamento_', MD5(DATABASE())))"_s);
    const qsizetype written = texts.indexOf(u"UPDATE Empresa SET UltimaPV=1"_s);
    QVERIFY(taken >= 0 && taken < written && written < released);
}

QTEST_MAIN(TstInterrupted)
#include "tst_interrupted.moc"
