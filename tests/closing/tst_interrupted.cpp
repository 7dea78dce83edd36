// Closings cut on the way and concluded afterwards: whatever was cut, and wherever, each pre-sale is closed
// once.

#include "closing/ClosingJournal.h"
#include "closing/FechamentosInterrompidos.h"
#include "closing/PainelFechamento.h"
#include "closing/PanelBench.h"
#include "support/AdminConnection.h"
#include "support/FaultProxy.h"
#include "support/ModalHelper.h"

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QRadioButton>
#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

using Snapshot = QMap<QString, QList<QStringList>>;

/// Answers every message box with its default button, and remembers the texts.
class AnswerAll : public QObject {
  public:
    AnswerAll() { qApp->installEventFilter(this); }

    QStringList texts;

    bool eventFilter(QObject* object, QEvent* event) override {
        auto* box = qobject_cast<QMessageBox*>(object);
        if (box && event->type() == QEvent::Show) {
            texts.append(box->text());
            QTimer::singleShot(0, box, [box] {
                QAbstractButton* yes = box->button(QMessageBox::Yes);
                (yes ? yes : box->button(QMessageBox::Ok))->click();
            });
        }
        return false;
    }
};

bool isStockUpdate(const QByteArray& sql) {
    return sql.toLower().startsWith("update produtos");
}

bool isStockLog(const QByteArray& sql) {
    return sql.startsWith("INSERT INTO logestoque");
}

/// Whether the stock of the last logged movement was changed, by what the server executed.
bool isLastMovementDone(const QList<QByteArray>& executed) {
    for (auto sql = executed.crbegin(); sql != executed.crend(); ++sql)
        if (isStockUpdate(*sql) || isStockLog(*sql))
            return isStockUpdate(*sql);
    return true;
}

} // namespace

class TstInterrupted : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();

    void everyCutIsConcluded_data();
    void everyCutIsConcluded();
    void batchesCutAtRandom();
    void statusBarTellsThemAtTheStart();
    void failedQuestionAtTheStartIsNoBox();
    void batchRefusesThemAndOpensTheWindow();
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
    using Prepare = std::function<void()>;

    void open();
    void press();
    void cutBefore(const char* start);
    void conclude(bool lastMovementDone);
    void closeAndWait();
    QString status() const { return b->control<QLabel>(u"Interrompidos"_s)->text(); }
    bool hasStatus() const { return b->control<QLabel>(u"Interrompidos"_s)->isVisible(); }
    QStringList windowRow(const std::function<void(QWidget*)>& look = {});
    void otherStationForgets() { closingjournal::end(1); }

    std::unique_ptr<PanelBench> b;
    std::unique_ptr<FaultProxy> m_proxy;
    QMap<QString, Prepare> m_shops;
};

void TstInterrupted::initTestCase() {
    b = std::make_unique<PanelBench>();
    m_proxy = std::make_unique<FaultProxy>(b->server().socket());
    const auto withMethod = [this](const QString& method, const QString& days) {
        b->shop().basico();
        b->shop().cliente({.codigo = u"C2"_s, .prazo = days, .formaPg = method});
        b->shop().documento({.pedido = 1, .cliente = u"C2"_s});
    };
    m_shops.insert(u"two products"_s, [this] {
        b->shop().basico();
        b->shop().produto({.codigo = u"P2"_s});
        b->shop().documento({.pedido = 1, .linhas = {{u"P1"_s, u"2"_s}, {u"P2"_s, u"0.5"_s}}});
    });
    m_shops.insert(u"technical sheet and note"_s, [this] {
        b->shop().basico();
        for (const QString& codigo : {u"CESTA"_s, u"PAO"_s, u"CAFE"_s})
            b->shop().produto({.codigo = codigo});
        b->shop().ficha(u"CESTA"_s, {{u"PAO"_s, u"12"_s}, {u"CAFE"_s, u"0.5"_s}});
        b->shop().documento({.pedido = 1, .linhas = {{u"CESTA"_s, u"2"_s}, {}, {u"***NOTA"_s, u"0"_s}}});
    });
    m_shops.insert(u"no stock moved"_s, [this] {
        b->shop().basico();
        b->server().execute(u"UPDATE empresa SET PAF_ECF = 'SIM'"_s);
        b->shop().documento({.pedido = 1});
    });
    m_shops.insert(u"card"_s, [withMethod] { withMethod(u"CARTÃO"_s, u"30"_s); });
    m_shops.insert(u"cheque"_s, [withMethod] { withMethod(u"CHEQUE"_s, u"30"_s); });
    m_shops.insert(u"cash"_s, [withMethod] { withMethod(u"DINHEIRO"_s, u"0"_s); });
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
    const AnswerAll answers;
    QTimer closer;
    connect(&closer, &QTimer::timeout, this, [] {
        if (auto* window = qobject_cast<FechamentosInterrompidos*>(QApplication::activeModalWidget()))
            window->reject();
    });
    closer.start(20);
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
    const auto prepare = m_shops.value(u"two products"_s);
    init();
    prepare();
    open();
    m_proxy->cutBefore(k);
    press();
    QVERIFY(m_proxy->cutAt().startsWith(start));
    b->close();
    open();
}

/// Ends the program, and waits until the server has ended what it was still executing for it.
void TstInterrupted::closeAndWait() {
    b->close();
    QTRY_COMPARE(
        b->server().query(u"SELECT COUNT(*) FROM information_schema.processlist WHERE user = '%1'"_s.arg(
            b->server().user())),
        (QList<QStringList>{{u"0"_s}}));
}

/// Opens the window by its key and concludes everything in it, by keys.
void TstInterrupted::conclude(bool lastMovementDone) {
    ModalHelper modal;
    const AnswerAll answers;
    modal.onOpen([&](QWidget* window) {
        const Hands hands(window);
        for (int turn = 0; turn < 10 && hands.grid()->rows() > 1; ++turn) {
            if (hands.control<QWidget>(u"Frame1"_s)->isVisible())
                hands.key(lastMovementDone ? Qt::Key_J : Qt::Key_N, Qt::AltModifier);
            QVERIFY(hands.button(u"Command1"_s)->isEnabled());
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

void TstInterrupted::everyCutIsConcluded_data() {
    QTest::addColumn<QString>("shop");
    QTest::addColumn<int>("k");
    QTest::addColumn<bool>("executed");
    for (auto shop = m_shops.cbegin(); shop != m_shops.cend(); ++shop) {
        init();
        shop.value()();
        open();
        m_proxy->mark();
        press();
        const QList<QByteArray> statements = m_proxy->texts();
        b->close();
        // The stock is the same for all forms of the receivable.
        const bool moneyOnly = !shop.key().contains(u' ');
        for (int k = 1; k <= statements.size(); ++k)
            for (const bool executed : {false, true})
                if (!moneyOnly || k > statements.size() - 8)
                    QTest::addRow("%s, %s %d: %s", qPrintable(shop.key()), executed ? "after" : "before", k,
                                  statements[k - 1].left(30).constData())
                        << shop.key() << k << executed;
    }
}

void TstInterrupted::everyCutIsConcluded() {
    QFETCH(QString, shop);
    QFETCH(int, k);
    QFETCH(bool, executed);
    m_shops.value(shop)();
    open();
    press();
    const Snapshot uncut = b->shop().retrato();

    init();
    m_shops.value(shop)();
    open();
    if (executed)
        m_proxy->cutAfter(k);
    else
        m_proxy->cutBefore(k);
    press();
    QVERIFY(!m_proxy->cutAt().isNull());
    const bool done = isLastMovementDone(m_proxy->texts());
    closeAndWait();
    open();
    if (hasStatus())
        conclude(done);
    // What was never begun is closed like any other.
    if (b->grid()->rows() > 1)
        press();
    QCOMPARE(b->shop().retrato(), uncut);
    QVERIFY(closingjournal::all().isEmpty());
}

// A batch that is cut again and again, until it gets through. TARVESSA_CUTS sets how many cuts there are in
// all.
void TstInterrupted::batchesCutAtRandom() {
    constexpr int preSales = 10;
    const int cuts = qEnvironmentVariableIntValue("TARVESSA_CUTS") > 0
                         ? qEnvironmentVariableIntValue("TARVESSA_CUTS")
                         : 12;
    QRandomGenerator random(20240315);
    b->shop().basico();
    b->shop().produto({.codigo = u"P2"_s});
    b->shop().ficha(u"P2"_s, {{u"P1"_s, u"2"_s}});
    int lastNumber = 0;
    const auto addPreSales = [&] {
        for (int i = 0; i < preSales; ++i)
            b->shop().documento({.pedido = ++lastNumber, .linhas = {{}, {u"P2"_s, u"1"_s}}});
    };
    addPreSales();
    b->server().execute(u"UPDATE produtos SET quantidade = 1000000"_s);
    open();
    for (int cut = 0; cut < cuts; ++cut) {
        if (b->grid()->rows() == 1) {
            addPreSales();
            b->close();
            open();
        }
        const int k = 1 + random.bounded(15 * preSales);
        if (random.bounded(2) == 0)
            m_proxy->cutBefore(k);
        else
            m_proxy->cutAfter(k);
        press();
        const bool done = isLastMovementDone(m_proxy->texts());
        closeAndWait();
        m_proxy->mark();
        open();
        if (hasStatus())
            conclude(done);
    }
    if (b->grid()->rows() > 1)
        press();
    const QString each = QString::number(lastNumber);
    const auto one = [this](const QString& sql) { return b->server().query(sql)[0][0]; };
    QCOMPARE(one(u"SELECT COUNT(DISTINCT nrpedido) FROM orcamento WHERE situacaoorc = 'B'"_s), each);
    QCOMPARE(one(u"SELECT COUNT(*) FROM areceber"_s), each);
    QCOMPARE(one(u"SELECT COUNT(DISTINCT Nr_Pedido) FROM areceber"_s), each);
    QCOMPARE(one(u"SELECT COUNT(*) FROM caixa"_s), each);
    QCOMPARE(one(u"SELECT COUNT(DISTINCT CodigoLanc) FROM caixa"_s), each);
    QCOMPARE(one(u"SELECT COUNT(*) FROM logestoque"_s), QString::number(2 * lastNumber));
    QCOMPARE(one(u"SELECT quantidade FROM produtos WHERE codfabr = 'P1'"_s),
             QString::number(1000000 - 3 * lastNumber) + u".000"_s);
}

void TstInterrupted::statusBarTellsThemAtTheStart() {
    m_shops.value(u"two products"_s)();
    open();
    QVERIFY(!hasStatus());
    b->close();
    init();
    m_shops.value(u"two products"_s)();
    cutBefore("INSERT INTO `areceber`");
    QVERIFY(hasStatus());
    QCOMPARE(status(), u"1 fechamento interrompido (F7)"_s);
}

void TstInterrupted::failedQuestionAtTheStartIsNoBox() {
    m_shops.value(u"two products"_s)();
    b->server().execute(u"ALTER TABLE logestoque RENAME COLUMN tela TO tela_antiga"_s);
    ModalHelper modal;
    open();
    b->server().execute(u"ALTER TABLE logestoque RENAME COLUMN tela_antiga TO tela"_s);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(status(), u"Fechamentos interrompidos: não foi possível consultar (F7)"_s);
    QCOMPARE(b->grid()->rows(), 2);
}

// Also on a station that knows nothing of the cut.
void TstInterrupted::batchRefusesThemAndOpensTheWindow() {
    m_shops.value(u"two products"_s)();
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

void TstInterrupted::noteKeepsTheTermsOfTheClosing() {
    m_shops.value(u"two products"_s)();
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
    m_shops.value(u"two products"_s)();
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
    m_shops.value(u"two products"_s)();
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

void TstInterrupted::noAnswerConcludesNothing() {
    m_shops.value(u"two products"_s)();
    cutBefore("update Produtos");
    const Snapshot before = b->shop().retrato();
    windowRow([&](QWidget* window) {
        const Hands hands(window);
        QVERIFY(hands.control<QWidget>(u"Frame1"_s)->isVisible());
        QVERIFY(!hands.button(u"Command1"_s)->isEnabled());
        const QString question = hands.control<QLabel>(u"Label2"_s)->text();
        QVERIFY2(question.startsWith(u"P1"_s) && question.contains(u"quantidade 2, estoque atual 100."_s),
                 qPrintable(question));
    });
    QCOMPARE(b->shop().retrato(), before);
}

void TstInterrupted::leavingOneAloneWritesNothing() {
    m_shops.value(u"two products"_s)();
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
    m_shops.value(u"two products"_s)();
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
    m_shops.value(u"two products"_s)();
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
    m_shops.value(u"two products"_s)();
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
        const AnswerAll answers;
        b->press(u"Command2"_s);
        QCOMPARE(answers.texts.size(), 1);
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

void TstInterrupted::anotherStationHoldsTheLock() {
    m_shops.value(u"two products"_s)();
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
    m_shops.value(u"two products"_s)();
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
