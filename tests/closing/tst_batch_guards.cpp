// What a closing does where the list is no longer true, a code is odd or a statement fails.

#include "base/Clock.h"
#include "closing/PainelFechamentoColumns.h"
#include "closing/PanelBench.h"
#include "core/AcessoDados.h"
#include "support/ModalHelper.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QScopeGuard>
#include <QTest>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#endif

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

QString refused(int pedido, const QString& reason) {
    return u"PRÉ-VENDA: %1 - %2"_s.arg(pedido, 7, 10, QChar(u'0')).arg(reason);
}

const QString alreadyClosed = u"O PEDIDO JÁ FOI ENCERRADO OU CANCELADO."_s;
const QString partlyClosed = u"O PEDIDO TEM ITENS JÁ ENCERRADOS OU CANCELADOS. CONFIRA O NÚMERO DO PEDIDO."_s;
const QString totalChanged = u"O TOTAL DO PEDIDO MUDOU. CARREGUE A LISTA NOVAMENTE."_s;
const QString customerChanged = u"O CLIENTE DO PEDIDO MUDOU. CARREGUE A LISTA NOVAMENTE."_s;
const QString breakOff = u"FECHAMENTO INTERROMPIDO POR ERRO. CONFIRA ESTOQUE E FINANCEIRO."_s;

/// Acts once, when the n-th message box from now comes up.
class OnBox : public QObject {
  public:
    OnBox(int which, std::function<void()> action) : m_left(which), m_action(std::move(action)) {
        qApp->installEventFilter(this);
    }
    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == QEvent::Show && qobject_cast<QMessageBox*>(object) && --m_left == 0)
            m_action();
        return false;
    }

  private:
    int m_left;
    std::function<void()> m_action;
};

#ifdef Q_OS_UNIX
/// Files of this process grow no further than it is told, while it lives.
class FileSizeLimit {
  public:
    FileSizeLimit() {
        getrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, SIG_IGN);
    }
    ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &m_before); }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

    /// Bytes.
    void set(qsizetype size) const {
        const rlimit small{static_cast<rlim_t>(size), m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
    }

  private:
    rlimit m_before{};
};
#endif

} // namespace

class TstBatchGuards : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { b = std::make_unique<PanelBench>(); }
    void cleanupTestCase() { b.reset(); }
    void init() {
        b->reset();
        b->shop().basico();
    }

    void promotionLoadsTheListAgain();
    void promotionCutByAnErrorLoadsTheListAgain();
    void promotionCutByALossLoadsTheListAgain();
    void promotionLeftAloneKeepsTheList();
    void changedSinceTheListing_data();
    void changedSinceTheListing();
    void companysPvListedForAPersonIsNotCancelled();
    void linesBeforeThePeriodDoNotCount();
    void listFromYesterdayKeepsItsPeriod();
    void settledRowsLeaveTheListAfterAnError();
    void priceCheckCutByAnErrorTellsWhatItCorrected();
    void listingThatBreaksInTheMiddleLeavesNone_data();
    void listingThatBreaksInTheMiddleLeavesNone();
    void customerCodeThatBreaksStatements_data();
    void customerCodeThatBreaksStatements();
    void productCodeThatBreaksStatements_data();
    void productCodeThatBreaksStatements();
    void componentCodeThatBreaksStatements_data();
    void componentCodeThatBreaksStatements();
    void accountThatBreaksStatements_data();
    void accountThatBreaksStatements();
    void settingsMissedAtTheStartAreReadWhenClosing();
    void errorNamesPreSaleAndProduct();
    void errorBeforeTheFirstWriteInterruptsNothing_data();
    void errorBeforeTheFirstWriteInterruptsNothing();
    void withoutStockTheOrderLinesAreTheFirstWrite();
    void decimalsInExponentForm();
    void privatePersonOfAnOldListIsNotCancelled_data();
    void privatePersonOfAnOldListIsNotCancelled();
    void totalBeyondTheRangeIsOneMarkedRow();
    void logLineThatCannotBeWrittenStopsNothing();
    void logLinesThatWereNotWrittenAreToldAfterAnError();
    void methodsMissedAtTheStartAreReadByTheEditor();

  private:
    void documents(int count);
    void closeAll(const QString& end, bool opensInterrupted = false);
    QStringList received();
    QString stateOf(int pedido) {
        return b->valor(u"SELECT GROUP_CONCAT(DISTINCT situacaoorc ORDER BY situacaoorc) FROM orcamento "
                        "WHERE nrpedido = %1"_s.arg(pedido));
    }

    std::unique_ptr<PanelBench> b;
};

/// Pre-sales 1, 2 and so on of 10,00 each, listed in that order.
void TstBatchGuards::documents(int count) {
    for (int pedido = 1; pedido <= count; ++pedido)
        b->shop().documento({.pedido = pedido, .nomeVendedor = u"V%1"_s.arg(pedido)});
}

void TstBatchGuards::closeAll(const QString& end, bool opensInterrupted) {
    ModalHelper modal;
    modal.expect(mensagens::lembrete, QMessageBox::Ok);
    modal.expectContaining(end, QMessageBox::Ok);
    if (opensInterrupted)
        modal.onOpen([](QWidget* window) { Hands(window).key(Qt::Key_Escape); });
    b->press(u"Command4"_s);
    QCOMPARE(modal.problem(), QString());
}

QStringList TstBatchGuards::received() {
    QStringList pedidos;
    for (const QStringList& row : b->server().query(u"SELECT Nr_Pedido FROM areceber ORDER BY id"_s))
        pedidos.append(row[0]);
    return pedidos;
}

void TstBatchGuards::promotionLoadsTheListAgain() {
    documents(3);
    QVERIFY(b->open());
    b->click(2, painelfechamento::Selecao);
    b->grid()->setCurrentCell(3, painelfechamento::Cliente);
    b->server().execute(u"UPDATE produtos SET descricao = 'PRODUTO', ativo = 'S'"_s);
    {
        ModalHelper modal;
        modal.onOpen([&modal](QWidget* screen) {
            const Hands hands(screen);
            hands.fill(u"Descricao"_s, u"P1"_s);
            hands.key(Qt::Key_Tab);
            hands.fill(u"Venda"_s, u"4,50"_s);
            hands.press(u"Command2"_s);
            modal.expect(u"Deseja realmente realizar esse processo?"_s, QMessageBox::Yes);
            hands.press(u"Command1"_s);
        });
        b->press(u"Command6"_s);
        QCOMPARE(modal.problem(), QString());
    }
    QCOMPARE(b->column(painelfechamento::Total), (QStringList{u"4,50"_s, u"4,50"_s, u"4,50"_s}));
    QCOMPARE(b->column(painelfechamento::Selecao), (QStringList{u" "_s, QString(), u" "_s}));
    QCOMPARE(b->total(), u"9,00"_s);
    QCOMPARE(b->grid()->currentRow(), 3);
    QCOMPARE(b->grid()->currentColumn(), int(painelfechamento::Cliente));

    closeAll(mensagens::sucesso);
    QCOMPARE(b->server().query(u"SELECT Nr_Pedido, Valor FROM areceber ORDER BY id"_s),
             (QList<QStringList>{{u"1"_s, u"4.50"_s}, {u"3"_s, u"4.50"_s}}));
}

void TstBatchGuards::promotionCutByAnErrorLoadsTheListAgain() {
    b->shop().cliente({.codigo = u"C2"_s, .nome = u"ZEBRA"_s});
    documents(1);
    b->shop().documento({.pedido = 2, .cliente = u"C2"_s, .nomeVendedor = u"V2"_s});
    QVERIFY(b->open());
    b->server().execute(u"UPDATE produtos SET descricao = 'PRODUTO', ativo = 'S'"_s);
    b->server().execute(u"CREATE TRIGGER falha BEFORE UPDATE ON orcamento FOR EACH ROW IF OLD.nrpedido = 2 "
                        "THEN SIGNAL SQLSTATE '45000' SET MESSAGE_TEXT = 'recusado'; END IF"_s);
    ModalHelper modal;
    modal.onOpen([&modal](QWidget* screen) {
        const Hands hands(screen);
        hands.fill(u"Descricao"_s, u"P1"_s);
        hands.key(Qt::Key_Tab);
        hands.fill(u"Venda"_s, u"4,50"_s);
        hands.press(u"Command2"_s);
        modal.expect(u"Deseja realmente realizar esse processo?"_s, QMessageBox::Yes);
        modal.expectContaining(u"recusado"_s, QMessageBox::Ok);
        hands.press(u"Command1"_s);
        hands.key(Qt::Key_Escape);
    });
    b->press(u"Command6"_s);
    b->server().execute(u"DROP TRIGGER falha"_s);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(b->column(painelfechamento::Total), (QStringList{u"4,50"_s, u"10,00"_s}));
    QCOMPARE(b->total(), u"14,50"_s);
}

// The loss belongs to an operation within the one that opened the screen.
void TstBatchGuards::promotionCutByALossLoadsTheListAgain() {
    documents(2);
    QVERIFY(b->open());
    b->server().execute(u"UPDATE produtos SET descricao = 'PRODUTO', ativo = 'S'"_s);
    b->click(2, painelfechamento::Selecao);
    ModalHelper modal;
    modal.onOpen([this, &modal](QWidget* screen) {
        const Hands hands(screen);
        hands.fill(u"Descricao"_s, u"P1"_s);
        hands.key(Qt::Key_Tab);
        hands.fill(u"Venda"_s, u"4,50"_s);
        hands.press(u"Command2"_s);
        b->server().killProgramConnections();
        b->server().execute(u"UPDATE orcamento SET totalped = 7"_s);
        modal.expect(u"Deseja realmente realizar esse processo?"_s, QMessageBox::Yes);
        modal.expectContaining(mensagens::conexaoPerdida, QMessageBox::Ok);
        hands.press(u"Command1"_s);
        hands.key(Qt::Key_Escape);
    });
    b->press(u"Command6"_s);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(b->column(painelfechamento::Total), (QStringList{u"7,00"_s, u"7,00"_s}));
    QCOMPARE(b->total(), u"7,00"_s);
}

void TstBatchGuards::promotionLeftAloneKeepsTheList() {
    documents(2);
    QVERIFY(b->open());
    b->mark();
    ModalHelper modal;
    modal.onOpen([](QWidget* screen) { QTest::keyClick(screen, Qt::Key_Escape); });
    b->press(u"Command6"_s);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(b->texts(), QStringList());
}

void TstBatchGuards::changedSinceTheListing_data() {
    QTest::addColumn<QString>("change");
    QTest::addColumn<QString>("reason");
    QTest::newRow("closed") << u"UPDATE orcamento SET situacaoorc = 'B' WHERE nrpedido = 1"_s
                            << alreadyClosed;
    QTest::newRow("cancelled") << u"UPDATE orcamento SET situacaoorc = 'X' WHERE nrpedido = 1"_s
                               << alreadyClosed;
    QTest::newRow("state gone") << u"UPDATE orcamento SET situacaoorc = NULL WHERE nrpedido = 1"_s
                                << alreadyClosed;
    QTest::newRow("lines gone") << u"DELETE FROM orcamento WHERE nrpedido = 1"_s << alreadyClosed;
    QTest::newRow("one line closed") << u"UPDATE orcamento SET situacaoorc = 'B' WHERE nrpedido = 1 LIMIT 1"_s
                                     << partlyClosed;
    QTest::newRow("dearer") << u"UPDATE orcamento SET totalped = 10.01 WHERE nrpedido = 1 LIMIT 1"_s
                            << totalChanged;
    QTest::newRow("line added")
        << u"INSERT INTO orcamento (nrpedido, TipoOperacao, situacaoorc, codigocli, dataabertura, codigo, "
           "quantidade, totalped) VALUES (1, 'P', 'A', 'C1', '2024-03-14', 'P1', 1, 5)"_s
        << totalChanged;
    QTest::newRow("another customer's")
        << u"INSERT INTO clientes (codigo, nome, cidade, formapg, CNPJ_CPF) VALUES ('C2', 'ZEBRA', "
           u"'CAMPINAS', "
           "'PIX', '11222333000181'); UPDATE orcamento SET codigocli = 'C2' WHERE nrpedido = 1"_s
        << customerChanged;
    QTest::newRow("the same customer's")
        << u"UPDATE orcamento SET codigocli = 'c1 ' WHERE nrpedido = 1"_s << QString();
    QTest::newRow("still open") << u"UPDATE orcamento SET situacaoorc = 'C' WHERE nrpedido = 1"_s
                                << QString();
}

void TstBatchGuards::changedSinceTheListing() {
    QFETCH(QString, change);
    QFETCH(QString, reason);
    b->shop().documento({.pedido = 1, .nomeVendedor = u"A"_s, .linhas = {{}, {}}});
    b->shop().documento({.pedido = 2, .nomeVendedor = u"B"_s});
    QVERIFY(b->open());
    b->server().execute(change);
    const auto lines = b->server().query(u"SELECT * FROM orcamento WHERE nrpedido = 1"_s);
    closeAll(reason.isEmpty() ? mensagens::sucesso : mensagens::comErros);
    QCOMPARE(b->log(),
             PanelBench::logWith(reason.isEmpty() ? QStringList() : QStringList{refused(1, reason)}));
    QCOMPARE(received(), reason.isEmpty() ? (QStringList{u"1"_s, u"2"_s}) : QStringList{u"2"_s});
    if (reason.isEmpty())
        return;
    QCOMPARE(b->server().query(u"SELECT * FROM orcamento WHERE nrpedido = 1"_s), lines);
    QCOMPARE(b->valor(u"SELECT COUNT(*) FROM logestoque"_s), u"1"_s);
    QCOMPARE(b->valor(u"SELECT COUNT(*) FROM caixa"_s), u"1"_s);
}

void TstBatchGuards::companysPvListedForAPersonIsNotCancelled() {
    b->shop().cliente({.codigo = u"CPF"_s, .cnpjCpf = u"12345678909"_s});
    b->shop().documento({.pedido = 1, .cliente = u"CPF"_s});
    QVERIFY(b->open());
    b->server().execute(u"UPDATE orcamento SET codigocli = 'C1'"_s);
    closeAll(mensagens::comErros);
    QCOMPARE(b->log(), PanelBench::logWith({refused(1, customerChanged)}));
    QCOMPARE(b->valor(u"SELECT situacaoorc FROM orcamento"_s), u"A"_s);
}

void TstBatchGuards::linesBeforeThePeriodDoNotCount() {
    b->shop().documento({.pedido = 1});
    b->shop().documento({.pedido = 1, .diasAtras = 8, .linhas = {{.total = u"70.00"_s}}, .controle = false});
    QVERIFY(b->open());
    QCOMPARE(b->total(), u"10,00"_s);
    closeAll(mensagens::sucesso);
    QCOMPARE(b->valor(u"SELECT Valor FROM areceber"_s), u"10.00"_s);
}

void TstBatchGuards::listFromYesterdayKeepsItsPeriod() {
    b->shop().documento({.pedido = 1, .diasAtras = 7});
    QVERIFY(b->open());
    clock::fix(QDateTime(QDate(2024, 3, 16), QTime(0, 1)));
    closeAll(mensagens::sucesso);
    QCOMPARE(b->valor(u"SELECT Valor FROM areceber"_s), u"10.00"_s);
    const QStringList questions = b->statements().filter(u"From logestoque"_s);
    QCOMPARE(questions.size(), 1);
    QVERIFY2(questions[0].contains(u"data>='2024-03-08'"_s), qPrintable(questions[0]));
}

void TstBatchGuards::settledRowsLeaveTheListAfterAnError() {
    b->shop().cliente({.codigo = u"CPF"_s, .cnpjCpf = u"12345678909"_s});
    b->shop().documento({.pedido = 1, .nomeVendedor = u"A"_s});
    b->shop().documento({.pedido = 2, .cliente = u"CPF"_s, .nomeVendedor = u"B"_s});
    b->shop().documento({.pedido = 3, .nomeVendedor = u"C"_s, .vendedor = u"40000"_s});
    b->shop().documento({.pedido = 4, .nomeVendedor = u"D"_s});
    b->server().execute(u"UPDATE produtos SET Venda = 99"_s);
    QVERIFY(b->open());
    closeAll(u"código de vendedor 40000"_s);
    QCOMPARE(b->column(painelfechamento::Pedido), (QStringList{u"3"_s, u"4"_s}));
    QCOMPARE(b->column(painelfechamento::Selecao), (QStringList{u" "_s, u" "_s}));
    QCOMPARE(b->total(), u"20,00"_s);
    QVERIFY(b->button(u"Command4"_s)->isEnabled());

    // The price check finds open lines only.
    ModalHelper modal;
    modal.expect(u"Deseja realmente o processo desta função?"_s, QMessageBox::Yes);
    modal.expectContaining(u"PV Nº 3 - "_s, QMessageBox::Ok);
    b->press(u"Command5"_s);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(b->valor(u"SELECT GROUP_CONCAT(unitario ORDER BY nrpedido) FROM orcamento WHERE nrpedido < 3"_s),
             b->valor(u"SELECT GROUP_CONCAT(unitario ORDER BY id) FROM (SELECT id, DEFAULT(unitario) AS "
                      "unitario FROM orcamento LIMIT 2) AS padrao"_s));
}

void TstBatchGuards::priceCheckCutByAnErrorTellsWhatItCorrected() {
    documents(3);
    b->server().execute(u"UPDATE produtos SET Venda = 7; UPDATE orcamento SET unitario = 10"_s);
    QVERIFY(b->open());
    b->server().execute(u"CREATE TRIGGER falha BEFORE UPDATE ON orcamento FOR EACH ROW IF OLD.nrpedido = 3 "
                        "THEN SIGNAL SQLSTATE '45000' SET MESSAGE_TEXT = 'recusado'; END IF"_s);
    QString captionInTheMessage;
    ModalHelper modal;
    modal.expect(u"Deseja realmente o processo desta função?"_s, QMessageBox::Yes);
    modal.expectContaining(u"recusado"_s, QMessageBox::Ok);
    modal.expect(u"PEDIDOS COM PREÇOS CORRIGIDOS:\n\nPV Nº 1 - PADARIA MODELO\nPV Nº 2 - PADARIA MODELO\n"_s,
                 QMessageBox::Ok);
    const OnBox caption(3, [&] { captionInTheMessage = b->control<QLabel>(u"Label1"_s)->text(); });
    b->press(u"Command5"_s);
    b->server().execute(u"DROP TRIGGER falha"_s);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(captionInTheMessage, u"TOTAL SELEÇÃO R$"_s);
    QFile log(b->programFolder() + u"/LogTarvessa.log"_s);
    QVERIFY(log.open(QIODevice::ReadOnly));
    QCOMPARE(QString::fromUtf8(log.readAll()),
             u"PV Nº 1 - PADARIA MODELO\r\nPV Nº 2 - PADARIA MODELO\r\n\r\n"_s);
    QCOMPARE(b->grid()->rows(), 1);
    QCOMPARE(b->total(), u"0,00"_s);
}

void TstBatchGuards::listingThatBreaksInTheMiddleLeavesNone_data() {
    QTest::addColumn<bool>("atTheStart");
    QTest::newRow("at the start") << true;
    QTest::newRow("later") << false;
}

void TstBatchGuards::listingThatBreaksInTheMiddleLeavesNone() {
    QFETCH(bool, atTheStart);
    const auto restore =
        qScopeGuard([this] { b->server().execute(u"ALTER TABLE clientes MODIFY prazo INT DEFAULT 0"_s); });
    b->server().execute(u"ALTER TABLE clientes MODIFY prazo DECIMAL(30)"_s);
    b->shop().cliente({.codigo = u"C2"_s, .prazo = u"99999999999999999999"_s});
    const auto add = [this] {
        b->shop().documento({.pedido = 1, .nomeVendedor = u"A"_s});
        b->shop().documento({.pedido = 2, .cliente = u"C2"_s, .nomeVendedor = u"B"_s});
    };
    if (atTheStart)
        add();
    ModalHelper modal;
    if (atTheStart)
        modal.expectContaining(mensagens::erroDeExecucao, QMessageBox::Ok);
    QVERIFY(b->open());
    if (!atTheStart) {
        add();
        modal.expectContaining(mensagens::erroDeExecucao, QMessageBox::Ok);
        b->press(u"Command3"_s);
    }
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(b->grid()->rows(), 1);
    QCOMPARE(b->total(), u"0,00"_s);
    QVERIFY(!rs.isOpen());
    QVERIFY(b->button(u"Command3"_s)->isEnabled());
    for (const QString& name : {u"Command2"_s, u"Command4"_s, u"Command5"_s, u"Command6"_s})
        QVERIFY2(!b->button(name)->isEnabled(), qPrintable(name));
    b->server().execute(u"DELETE FROM clientes WHERE codigo = 'C2'"_s);
    b->press(u"Command3"_s);
    QCOMPARE(b->grid()->rows(), 3);
}

void TstBatchGuards::customerCodeThatBreaksStatements_data() {
    QTest::addColumn<QString>("code");
    QTest::addColumn<bool>("selected");
    for (const bool selected : {true, false}) {
        QTest::addRow("apostrophe, %s", selected ? "selected" : "not selected") << u"C'2"_s << selected;
        QTest::addRow("backslash, %s", selected ? "selected" : "not selected") << u"C2\\"_s << selected;
    }
}

void TstBatchGuards::customerCodeThatBreaksStatements() {
    QFETCH(QString, code);
    QFETCH(bool, selected);
    b->shop().cliente({.codigo = code});
    b->shop().documento({.pedido = 1, .cliente = code, .nomeVendedor = u"A"_s});
    b->shop().documento({.pedido = 2, .nomeVendedor = u"B"_s});
    QVERIFY(b->open());
    if (!selected)
        b->click(1, painelfechamento::Selecao);
    b->mark();
    closeAll(mensagens::comErros);
    QCOMPARE(b->log(), PanelBench::logWith({refused(1, u"CÓDIGO DE CLIENTE INVÁLIDO."_s)}));
    for (const QString& sql : b->texts())
        QVERIFY2(!sql.contains(u"pedido=1"_s, Qt::CaseInsensitive) && !sql.contains(code), qPrintable(sql));
    QCOMPARE(received(), QStringList{u"2"_s});
    QCOMPARE(stateOf(1), u"A"_s);
}

void TstBatchGuards::productCodeThatBreaksStatements_data() {
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("pafEcf");
    QTest::addColumn<bool>("closes");
    QTest::newRow("apostrophe") << u"P'9"_s << u"NAO"_s << false;
    QTest::newRow("backslash") << u"P9\\"_s << u"NAO"_s << false;
    QTest::newRow("no stock is moved") << u"P'9"_s << u"SIM"_s << true;
    QTest::newRow("note") << u"***D'AVILA"_s << u"NAO"_s << true;
}

void TstBatchGuards::productCodeThatBreaksStatements() {
    QFETCH(QString, code);
    QFETCH(QString, pafEcf);
    QFETCH(bool, closes);
    b->server().execute(u"UPDATE empresa SET PAF_ECF = '%1'"_s.arg(pafEcf));
    b->shop().produto({.codigo = code});
    b->shop().documento({.pedido = 1, .nomeVendedor = u"A"_s, .linhas = {{}, {.codigo = code}}});
    b->shop().documento({.pedido = 2, .nomeVendedor = u"B"_s});
    QVERIFY(b->open());
    closeAll(closes ? mensagens::sucesso : mensagens::comErros);
    QCOMPARE(b->log(),
             PanelBench::logWith(closes ? QStringList()
                                        : QStringList{refused(1, u"CÓDIGO DE PRODUTO INVÁLIDO."_s)}));
    QCOMPARE(stateOf(1), closes ? u"B"_s : u"A"_s);
    QCOMPARE(stateOf(2), u"B"_s);
    if (!closes)
        QCOMPARE(b->valor(u"SELECT COUNT(*) FROM logestoque"_s), u"1"_s);
}

void TstBatchGuards::componentCodeThatBreaksStatements_data() {
    QTest::addColumn<QString>("component");
    QTest::addColumn<QString>("sold"); // as the order line has it
    QTest::addColumn<QString>("pafEcf");
    QTest::addColumn<bool>("closes");
    QTest::newRow("apostrophe") << u"P'9"_s << u"CESTA"_s << u"NAO"_s << false;
    QTest::newRow("backslash") << u"P9\\"_s << u"CESTA"_s << u"NAO"_s << false;
    QTest::newRow("other letter case") << u"P'9"_s << u"Cesta "_s << u"NAO"_s << false;
    QTest::newRow("no stock is moved") << u"P'9"_s << u"CESTA"_s << u"SIM"_s << true;
    QTest::newRow("of a product not sold") << u"P'9"_s << u"P1"_s << u"NAO"_s << true;
}

// The line before it must not have left the stock either.
void TstBatchGuards::componentCodeThatBreaksStatements() {
    QFETCH(QString, component);
    QFETCH(QString, sold);
    QFETCH(QString, pafEcf);
    QFETCH(bool, closes);
    b->server().execute(u"UPDATE empresa SET PAF_ECF = '%1'"_s.arg(pafEcf));
    b->shop().produto({.codigo = u"CESTA"_s});
    b->shop().ficha(u"CESTA"_s, {{u"P1"_s, u"1"_s}, {component, u"1"_s}});
    b->shop().documento({.pedido = 1, .nomeVendedor = u"A"_s, .linhas = {{}, {.codigo = sold}}});
    b->shop().documento({.pedido = 2, .nomeVendedor = u"B"_s});
    QVERIFY(b->open());
    closeAll(closes ? mensagens::sucesso : mensagens::comErros);
    QCOMPARE(b->log(),
             PanelBench::logWith(closes ? QStringList()
                                        : QStringList{refused(1, u"CÓDIGO DE PRODUTO INVÁLIDO."_s)}));
    QCOMPARE(stateOf(1), closes ? u"B"_s : u"A"_s);
    QCOMPARE(stateOf(2), u"B"_s);
    if (!closes)
        QCOMPARE(b->valor(u"SELECT COUNT(*) FROM logestoque"_s), u"1"_s);
}

void TstBatchGuards::accountThatBreaksStatements_data() {
    QTest::addColumn<QString>("accounts"); // as a literal has them
    QTest::newRow("cash") << u"1''01/1.02/1.03/1.04/1.05"_s;
    QTest::newRow("receivables") << u"1.01/1.02/1.03/1.04/1\\\\05"_s;
}

void TstBatchGuards::accountThatBreaksStatements() {
    QFETCH(QString, accounts);
    b->server().execute(u"UPDATE empresa SET ContaCTB1 = '%1'"_s.arg(accounts));
    b->shop().cliente({.codigo = u"CPF"_s, .cnpjCpf = u"12345678909"_s});
    b->shop().documento({.pedido = 1, .nomeVendedor = u"A"_s});
    b->shop().documento({.pedido = 2, .cliente = u"CPF"_s, .nomeVendedor = u"B"_s});
    QVERIFY(b->open());
    closeAll(mensagens::comErros);
    QCOMPARE(b->log(), PanelBench::logWith({refused(1, u"CONTA CONTÁBIL INVÁLIDA."_s),
                                            refused(2, u"O PEDIDO É DE PESSOA FÍSICA E FOI CANCELADO"_s)}));
    QCOMPARE(stateOf(1), u"A"_s);
    QCOMPARE(b->valor(u"SELECT COUNT(*) FROM logestoque"_s), u"0"_s);
}

void TstBatchGuards::settingsMissedAtTheStartAreReadWhenClosing() {
    documents(1);
    // Only the listings read this column.
    b->server().execute(u"ALTER TABLE orcamento CHANGE placa placa_antiga VARCHAR(8)"_s);
    {
        ModalHelper modal;
        modal.expectContaining(u"o.placa"_s, QMessageBox::Ok);
        QVERIFY(b->open());
        QCOMPARE(modal.problem(), QString());
    }
    b->server().execute(u"ALTER TABLE orcamento CHANGE placa_antiga placa VARCHAR(8)"_s);
    QCOMPARE(b->methods()->count(), 0);
    b->press(u"Command3"_s);
    QCOMPARE(b->grid()->rows(), 2);
    b->mark();
    closeAll(mensagens::sucesso);
    QCOMPARE(b->texts().first(2), StatementLog::expected({u"SELECT * FROM Finalizadoras order by ID "_s,
                                                          u"Select ContaCTB1, PAF_ECF From Empresa"_s}));
    QCOMPARE(b->valor(u"SELECT ContaCTB FROM areceber"_s), u"1.05"_s);
    QVERIFY(b->methods()->count() > 0);
}

void TstBatchGuards::errorNamesPreSaleAndProduct() {
    b->shop().produto({.codigo = u"P2"_s});
    b->shop().documento({.pedido = 1, .nomeVendedor = u"A"_s});
    b->shop().documento({.pedido = 12, .nomeVendedor = u"B"_s, .linhas = {{}, {.codigo = u"P2"_s}}});
    QVERIFY(b->open());
    b->server().execute(u"CREATE TRIGGER falha BEFORE UPDATE ON produtos FOR EACH ROW IF OLD.codfabr = 'P2' "
                        "THEN SIGNAL SQLSTATE '45000' SET MESSAGE_TEXT = 'recusado'; END IF"_s);
    closeAll(u"Pré-venda 12: Produto P2: "_s, true);
    b->server().execute(u"DROP TRIGGER falha"_s);
    QCOMPARE(b->log(), PanelBench::logWith({refused(12, breakOff)}));
    QCOMPARE(b->column(painelfechamento::Pedido), QStringList{u"12"_s});
}

void TstBatchGuards::errorBeforeTheFirstWriteInterruptsNothing_data() {
    QTest::addColumn<QString>("breaks");
    QTest::addColumn<QString>("mends");
    QTest::addColumn<bool>("selected");
    const auto renamed = [](const QString& table, const QString& column, const QString& type) {
        const QString text = u"ALTER TABLE %1 CHANGE %2 %3 %4"_s;
        return std::pair(text.arg(table, column, column + u"_antiga"_s, type),
                         text.arg(table, column + u"_antiga"_s, column, type));
    };
    const QString amount = u"DECIMAL(12,3) DEFAULT 0.000"_s;
    const auto [document, documentBack] = renamed(u"clientes"_s, u"cnpj_cpf"_s, u"VARCHAR(20)"_s);
    const auto [stock, stockBack] = renamed(u"produtos"_s, u"quantidade2"_s, amount);
    const auto [sheet, sheetBack] = renamed(u"fichatecnica"_s, u"quantidade"_s, amount);
    QTest::newRow("customer's document") << document << documentBack << true;
    QTest::newRow("customer's document, not selected") << document << documentBack << false;
    QTest::newRow("stock test") << stock << stockBack << true;
    QTest::newRow("seller's code") << u"UPDATE orcamento SET vendedor = '40000' WHERE nrpedido = 2"_s
                                   << u"UPDATE orcamento SET vendedor = '7' WHERE nrpedido = 2"_s << true;
    QTest::newRow("technical sheet") << sheet << sheetBack << true;
}

void TstBatchGuards::errorBeforeTheFirstWriteInterruptsNothing() {
    QFETCH(QString, breaks);
    QFETCH(QString, mends);
    QFETCH(bool, selected);
    b->shop().documento({.pedido = 2});
    b->shop().documento({.pedido = 3, .nomeVendedor = u"Z"_s});
    QVERIFY(b->open());
    if (!selected)
        b->click(1, painelfechamento::Selecao);
    b->server().execute(breaks);
    const auto mend = qScopeGuard([&] { b->server().execute(mends); });
    const auto before = b->shop().retrato();
    closeAll(u"Pré-venda 2: "_s);
    QCOMPARE(b->log(), PanelBench::logWith({}));
    QCOMPARE(b->shop().retrato(), before);
    QCOMPARE(QDir(b->programFolder()).entryList({u"*.andamento"_s}), QStringList());
    QCOMPARE(b->column(painelfechamento::Pedido), (QStringList{u"2"_s, u"3"_s}));
}

void TstBatchGuards::withoutStockTheOrderLinesAreTheFirstWrite() {
    b->server().execute(u"UPDATE empresa SET PAF_ECF = 'SIM'"_s);
    documents(1);
    QVERIFY(b->open());
    b->server().execute(u"CREATE TRIGGER falha BEFORE UPDATE ON orcamento FOR EACH ROW SIGNAL SQLSTATE "
                        "'45000' SET MESSAGE_TEXT = 'recusado'"_s);
    const QDir folder(b->programFolder());
    QStringList notesInTheReport;
    const OnBox report(2, [&] { notesInTheReport = folder.entryList({u"*.andamento"_s}); });
    closeAll(u"Pré-venda 1: "_s);
    b->server().execute(u"DROP TRIGGER falha"_s);
    QCOMPARE(b->log(), PanelBench::logWith({refused(1, breakOff)}));
    QCOMPARE(notesInTheReport, QStringList{u"Fechamento1.andamento"_s});
    // The database shows that the first write was not executed, and the next closing takes the note's place.
    closeAll(mensagens::sucesso);
    QCOMPARE(folder.entryList({u"*.andamento"_s}), QStringList());
}

// What a server makes of 0.1 + 0.2 - 0.3 in columns of another system's type.
void TstBatchGuards::decimalsInExponentForm() {
    const auto restore = qScopeGuard([this] {
        b->server().execute(
            u"ALTER TABLE produtos MODIFY quantidade DECIMAL(12,3) DEFAULT 0.000; "
            "ALTER TABLE orcamento MODIFY totalped DECIMAL(14,2) DEFAULT 0.00, MODIFY quantidade "
            "DECIMAL(12,3) DEFAULT 0.000"_s);
    });
    b->server().execute(u"ALTER TABLE produtos MODIFY quantidade DOUBLE; ALTER TABLE orcamento MODIFY "
                        "totalped DOUBLE, MODIFY quantidade DOUBLE"_s);
    b->shop().produto({.codigo = u"P2"_s});
    b->shop().documento(
        {.pedido = 1, .linhas = {{}, {.codigo = u"P2"_s, .quantidade = u"0"_s, .total = u"0"_s}}});
    b->server().execute(u"UPDATE produtos SET quantidade = 0.1e0 + 0.2e0 - 0.3e0 WHERE codfabr = 'P2'; "
                        "UPDATE orcamento SET totalped = 0.1e0 + 0.2e0 - 0.3e0, quantidade = 1e-9 WHERE "
                        "codigo = 'P2'"_s);
    QVERIFY(b->valor(u"SELECT CAST(totalped AS CHAR) FROM orcamento WHERE codigo = 'P2'"_s).contains(u'e'));
    QVERIFY(b->open());
    QCOMPARE(b->total(), u"10,00"_s);
    closeAll(mensagens::sucesso);
    QCOMPARE(received(), QStringList{u"1"_s});
}

void TstBatchGuards::privatePersonOfAnOldListIsNotCancelled_data() {
    QTest::addColumn<QString>("change");
    QTest::addColumn<QString>("reason");
    QTest::newRow("closed") << u"UPDATE orcamento SET situacaoorc = 'B' WHERE nrpedido = 1"_s
                            << alreadyClosed;
    QTest::newRow("cancelled") << u"UPDATE orcamento SET situacaoorc = 'X' WHERE nrpedido = 1"_s
                               << alreadyClosed;
    QTest::newRow("older lines billed")
        << u"INSERT INTO orcamento (nrpedido, TipoOperacao, situacaoorc, codigocli, codigo, dataabertura, "
           "databaixa, quantidade, totalped) SELECT nrpedido, TipoOperacao, 'B', codigocli, codigo, "
           "'2024-02-14', '2024-02-15', quantidade, totalped FROM orcamento WHERE nrpedido = 1"_s
        << partlyClosed;
    QTest::newRow("begun")
        << u"INSERT INTO logestoque (data, hora, usuario, tela, codproduto, qtdLoja) SELECT "
           "'2024-03-15', '10:00:00', '', 'FECHAMENTO DA PV Nº 1', codigo, -quantidade FROM "
           "orcamento WHERE nrpedido = 1"_s
        << breakOff;
}

// Its goods are gone, and somebody owes for them.
void TstBatchGuards::privatePersonOfAnOldListIsNotCancelled() {
    QFETCH(QString, change);
    QFETCH(QString, reason);
    documents(1);
    QVERIFY(b->open());
    b->server().execute(u"UPDATE clientes SET cnpj_cpf = '11122233344'"_s);
    b->server().execute(change);
    const auto before = b->shop().retrato();
    const bool begun = reason == breakOff;
    closeAll(mensagens::comErros, begun);
    QCOMPARE(b->log(), PanelBench::logWith({refused(1, reason)}));
    QCOMPARE(b->shop().retrato(), before);
}

void TstBatchGuards::totalBeyondTheRangeIsOneMarkedRow() {
    const auto restore = qScopeGuard([this] {
        b->server().execute(
            u"DELETE FROM orcamento; ALTER TABLE orcamento MODIFY totalped DECIMAL(14,2) DEFAULT 0.00"_s);
    });
    b->server().execute(u"ALTER TABLE orcamento MODIFY totalped DECIMAL(30,2)"_s);
    documents(3);
    b->server().execute(u"UPDATE orcamento SET totalped = 1e20 WHERE nrpedido = 2"_s);
    QVERIFY(b->open());
    QCOMPARE(b->column(painelfechamento::Total), (QStringList{u"10,00"_s, u"ACIMA DO LIMITE"_s, u"10,00"_s}));
    QCOMPARE(b->column(painelfechamento::Selecao), (QStringList{u" "_s, QString(), u" "_s}));
    QVERIFY(b->grid()->backColor(2, painelfechamento::Total).isValid());
    QVERIFY(b->grid()->backColor(2, painelfechamento::Total) !=
            b->grid()->backColor(1, painelfechamento::Total));
    QCOMPARE(b->total(), u"20,00"_s);

    b->click(2, painelfechamento::Selecao);
    QCOMPARE(b->total(), u"20,00"_s);
    closeAll(mensagens::comErros);
    QCOMPARE(b->log(),
             PanelBench::logWith({refused(2, u"O TOTAL DO PEDIDO PASSA DO LIMITE. CONFIRA OS ITENS."_s)}));
    QCOMPARE(received(), (QStringList{u"1"_s, u"3"_s}));
    QCOMPARE(stateOf(2), u"A"_s);
}

void TstBatchGuards::methodsMissedAtTheStartAreReadByTheEditor() {
    documents(1);
    b->server().execute(u"RENAME TABLE Finalizadoras TO guardada"_s);
    {
        ModalHelper modal;
        modal.expectContaining(u"inalizadoras"_s, QMessageBox::Ok);
        QVERIFY(b->open());
        QCOMPARE(modal.problem(), QString());
    }
    b->server().execute(u"RENAME TABLE guardada TO Finalizadoras"_s);
    b->press(u"Command3"_s);
    QCOMPARE(b->methods()->count(), 0);
    b->click(1, painelfechamento::FormaPagto);
    QVERIFY(b->methods()->isVisible());
    QVERIFY(b->methods()->count() > 1);
    QCOMPARE(b->methods()->currentText(), b->cell(1, painelfechamento::FormaPagto));
}

// No pre-sale stays half closed because the disk is full.
void TstBatchGuards::logLineThatCannotBeWrittenStopsNothing() {
#ifdef Q_OS_UNIX
    b->shop().cliente({.codigo = u"RUIM"_s, .formaPg = u"FIADO"_s});
    b->shop().documento({.pedido = 1, .cliente = u"RUIM"_s, .nomeVendedor = u"A"_s});
    b->shop().documento({.pedido = 2, .nomeVendedor = u"B"_s});
    QVERIFY(b->open());
    // The header fits; what comes after it does not.
    const FileSizeLimit limit;
    const OnBox full(1, [this, &limit] { limit.set(b->log().size()); });
    ModalHelper modal;
    modal.expect(mensagens::lembrete, QMessageBox::Ok);
    modal.expect(mensagens::comErros, QMessageBox::Ok);
    modal.expectContaining(u"Não foi possível gravar o arquivo"_s, QMessageBox::Ok);
    b->press(u"Command4"_s);
    QCOMPARE(modal.problem(), QString());
    QVERIFY(modal.boxes()[2].text.contains(refused(1, u"FORMA DE PAGAMENTO INVÁLIDA."_s)));
    QCOMPARE(received(), QStringList{u"2"_s});
    QCOMPARE(b->column(painelfechamento::Pedido), QStringList{u"1"_s});
#else
    QSKIP("needs a limit on the size of files");
#endif
}

void TstBatchGuards::logLinesThatWereNotWrittenAreToldAfterAnError() {
#ifdef Q_OS_UNIX
    b->shop().cliente({.codigo = u"RUIM"_s, .formaPg = u"FIADO"_s});
    b->shop().documento({.pedido = 1, .cliente = u"RUIM"_s, .nomeVendedor = u"A"_s});
    b->shop().documento({.pedido = 2, .nomeVendedor = u"B"_s});
    QVERIFY(b->open());
    b->server().execute(u"CREATE TRIGGER falha BEFORE INSERT ON areceber FOR EACH ROW SIGNAL SQLSTATE "
                        "'45000' SET MESSAGE_TEXT = 'recusado'"_s);
    const auto restore = qScopeGuard([this] { b->server().execute(u"DROP TRIGGER falha"_s); });
    const FileSizeLimit limit;
    const OnBox full(1, [this, &limit] { limit.set(b->log().size()); });
    ModalHelper modal;
    modal.expect(mensagens::lembrete, QMessageBox::Ok);
    modal.expectContaining(u"recusado"_s, QMessageBox::Ok);
    modal.expectContaining(u"Não foi possível gravar o arquivo"_s, QMessageBox::Ok);
    modal.onOpen([](QWidget* window) { Hands(window).key(Qt::Key_Escape); });
    b->press(u"Command4"_s);
    QCOMPARE(modal.problem(), QString());
    QVERIFY(modal.boxes()[2].text.contains(refused(1, u"FORMA DE PAGAMENTO INVÁLIDA."_s)));
    QVERIFY(modal.boxes()[2].text.contains(refused(2, breakOff)));
#else
    QSKIP("needs a limit on the size of files");
#endif
}

QTEST_MAIN(TstBatchGuards)
#include "tst_batch_guards.moc"
