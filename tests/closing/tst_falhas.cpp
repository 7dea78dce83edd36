// A closing that fails on the way: what was executed stays, nothing is executed twice, the panel lives on.

#include "closing/PainelFechamento.h"
#include "closing/PainelFechamentoColumns.h"
#include "closing/PanelBench.h"
#include "support/FaultProxy.h"
#include "support/ModalHelper.h"
#include "ui/grid/Grid.h"

#include <QApplication>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

using Retrato = QMap<QString, QList<QStringList>>;

const QString formaInvalida = u"PRÉ-VENDA: 0000002 - FORMA DE PAGAMENTO INVÁLIDA."_s;
const QString semEstoque = u"PRÉ-VENDA: 0000002 - O PEDIDO NÃO POSSUI ESTOQUE DISPONÍVEL"_s;
const QString pessoa = u"PRÉ-VENDA: 0000003 - O PEDIDO É DE PESSOA FÍSICA E FOI CANCELADO"_s;
const QString interrompida =
    u"PRÉ-VENDA: 0000001 - FECHAMENTO INTERROMPIDO POR ERRO. CONFIRA ESTOQUE E FINANCEIRO."_s;

/// Acts once, when the n-th message box from now comes up.
class NaMensagem : public QObject {
  public:
    NaMensagem(int qual, std::function<void()> acao) : m_faltam(qual), m_acao(std::move(acao)) {
        qApp->installEventFilter(this);
    }

    bool eventFilter(QObject* objeto, QEvent* evento) override {
        if (evento->type() == QEvent::Show && qobject_cast<QMessageBox*>(objeto) && --m_faltam == 0)
            m_acao();
        return false;
    }

  private:
    int m_faltam;
    std::function<void()> m_acao;
};

} // namespace

class TstFalhas : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();

    void cutBeforeEachStatement_data();
    void cutBeforeEachStatement();
    void cutBeforeEachStatementOfTheStartUp_data();
    void cutBeforeEachStatementOfTheStartUp();
    void connectionsKilledBeforeTheBatch();
    void connectionsKilledInsideAStatement();
    void serverGoneInTheMiddle();
    void statementRefusedByTheServer_data();
    void statementRefusedByTheServer();
    void interruptedPreSaleIsNeverBegunAgain();
    void closedPreSalesAreNotClosedAgainWhenTheReloadFails();

  private:
    void preparaLote();
    void preparaDuas();
    void aperta(const QStringList& esperadas, bool janela = false);
    QStringList linhasDoLog(int executados) const;
    QStringList abertas();

    std::unique_ptr<PanelBench> b;
    std::unique_ptr<FaultProxy> m_corte;
    QList<QByteArray> m_comandos; // of the whole batch, as they went to the server
    QList<Retrato> m_estados;     // the database after the first so many of them
};

/// A closing with a technical sheet, a refusal for two reasons, a cancelled person, a plain closing.
void TstFalhas::preparaLote() {
    b->shop().basico();
    b->shop().cliente({.codigo = u"RUIM"_s, .prazo = u"0"_s});
    b->shop().cliente({.codigo = u"CPF"_s, .cnpjCpf = u"12345678909"_s});
    b->shop().cliente({.codigo = u"PIX"_s, .prazo = u"0"_s, .formaPg = u"PIX"_s});
    for (const QString& codigo : {u"CESTA"_s, u"PAO"_s, u"CAFE"_s})
        b->shop().produto({.codigo = codigo});
    b->shop().ficha(u"CESTA"_s, {{u"PAO"_s, u"12"_s}, {u"CAFE"_s, u"0.5"_s}});
    b->shop().documento(
        {.pedido = 1, .nomeVendedor = u"A"_s, .linhas = {{u"CESTA"_s, u"2"_s}, {}, {u"***NOTA"_s, u"0"_s}}});
    b->shop().documento(
        {.pedido = 2, .cliente = u"RUIM"_s, .nomeVendedor = u"B"_s, .linhas = {{.quantidade = u"999"_s}}});
    b->shop().documento({.pedido = 3, .cliente = u"CPF"_s, .nomeVendedor = u"C"_s});
    b->shop().documento({.pedido = 4, .cliente = u"PIX"_s, .nomeVendedor = u"D"_s});
}

void TstFalhas::preparaDuas() {
    b->shop().basico();
    b->shop().documento({.pedido = 1, .nomeVendedor = u"A"_s});
    b->shop().produto({.codigo = u"P2"_s});
    b->shop().documento({.pedido = 2, .nomeVendedor = u"B"_s, .linhas = {{.codigo = u"P2"_s}}});
}

/// Presses the closing button; the reminder comes first, then messages that contain these texts, and in the
/// end the window of interrupted closings if it is to come.
void TstFalhas::aperta(const QStringList& esperadas, bool janela) {
    ModalHelper modal;
    modal.expect(mensagens::lembrete, QMessageBox::Ok);
    for (const QString& esperada : esperadas)
        modal.expectContaining(esperada, QMessageBox::Ok);
    if (janela)
        modal.onOpen([](QWidget* interrompidos) { Hands(interrompidos).key(Qt::Key_Escape); });
    b->press(u"Command4"_s);
    QCOMPARE(modal.problem(), QString());
    for (const ModalHelper::Box& caixa : modal.boxes())
        QCOMPARE(caixa.text.startsWith(mensagens::erroDeExecucao), caixa.icon == QMessageBox::Critical);
    QVERIFY(b->panel());
    QVERIFY(!QApplication::overrideCursor());
}

void TstFalhas::initTestCase() {
    b = std::make_unique<PanelBench>();
    m_corte = std::make_unique<FaultProxy>(b->server().socket());
    init();
    preparaLote();
    QVERIFY(b->open());
    m_corte->mark();
    aperta({mensagens::comErros});
    m_comandos = m_corte->texts();
    const Retrato fim = b->shop().retrato();

    init();
    preparaLote();
    m_estados.append(b->shop().retrato());
    for (const QByteArray& comando : m_comandos) {
        b->server().execute(QString::fromUtf8(comando));
        m_estados.append(b->shop().retrato());
    }
    QCOMPARE(m_estados.last(), fim);
}

void TstFalhas::cleanupTestCase() {
    b->close();
    m_corte.reset();
    b.reset();
}

void TstFalhas::init() {
    b->reset();
    b->server().useSocket(m_corte->socket());
    m_corte->mark();
}

/// What the log must hold once so many statements of the batch were executed.
QStringList TstFalhas::linhasDoLog(int executados) const {
    // A refusal is written after its stock test, a cancellation after its update.
    const auto depoisDe = [&](const char* trecho) {
        for (int i = 0; i < executados; ++i)
            if (m_comandos[i].contains(trecho))
                return true;
        return false;
    };
    QStringList linhas;
    if (depoisDe("WHERE Nrpedido=2 AND tipoOperacao='P' GROUP BY codigo"))
        linhas << formaInvalida << semEstoque;
    if (depoisDe("Set SituacaoOrc='X'"))
        linhas << pessoa;
    return linhas;
}

/// The open pre-sales in the database, in the order of the list.
QStringList TstFalhas::abertas() {
    QStringList pedidos;
    for (const QStringList& linha : b->server().query(
             u"SELECT DISTINCT nrpedido FROM orcamento WHERE situacaoorc = 'A' ORDER BY nrpedido"_s))
        pedidos.append(linha[0]);
    return pedidos;
}

void TstFalhas::cutBeforeEachStatement_data() {
    QTest::addColumn<int>("k");
    QCOMPARE(m_comandos.size(), 37);
    for (int k = 1; k <= m_comandos.size(); ++k)
        QTest::addRow("%d: %s", k, m_comandos[k - 1].left(45).constData()) << k;
}

void TstFalhas::cutBeforeEachStatement() {
    QFETCH(int, k);
    // The release of the lock comes just before the listing, and its failure is not told.
    const bool naListagem = k >= m_comandos.size() - 1;
    // The pre-sales are numbered in the order of the list, and each begins with its customer's document.
    const auto pedido =
        std::count_if(m_comandos.begin(), m_comandos.begin() + k,
                      [](const QByteArray& comando) { return comando.startsWith("Select CNPJ_CPF"); });
    QStringList log = linhasDoLog(k - 1);
    const bool naPreVenda = pedido > 0 && !naListagem;
    // A closing is interrupted from its first write on, that of the stock log.
    const auto dele =
        std::find_if(m_comandos.begin(), m_comandos.begin() + k, [&](const QByteArray& comando) {
            return comando.contains(u"FECHAMENTO DA PV Nº %1'"_s.arg(pedido).toUtf8());
        });
    if (naPreVenda && dele != m_comandos.begin() + k)
        log.append(u"PRÉ-VENDA: %1 - FECHAMENTO INTERROMPIDO POR ERRO. CONFIRA ESTOQUE E FINANCEIRO."_s.arg(
            pedido, 7, 10, QChar(u'0')));
    preparaLote();
    QVERIFY(b->open());
    m_corte->cutBefore(k);
    // What the log says is there while the report is on the screen, and opens after it.
    QByteArray logNoRelato;
    bool abertoNoRelato = false;
    const NaMensagem relato(naListagem ? 3 : 2, [&] {
        logNoRelato = b->log();
        const auto isOpened = [this] { return b->isLogOpened(); };
        abertoNoRelato = naListagem ? QTest::qWaitFor(isOpened) : isOpened();
    });
    {
        ModalHelper modal;
        modal.expect(mensagens::lembrete, QMessageBox::Ok);
        if (naListagem)
            modal.expect(mensagens::comErros, QMessageBox::Ok);
        modal.expectContaining(mensagens::conexaoPerdida, QMessageBox::Ok);
        b->press(u"Command4"_s);
        QCOMPARE(modal.problem(), QString());
        const ModalHelper::Box erro = modal.boxes().last();
        QCOMPARE(erro.title, u"Erro de execução"_s);
        QCOMPARE(erro.icon, QMessageBox::Critical);
        QVERIFY(erro.text.startsWith(mensagens::erroDeExecucao));
        const QByteArray& comando = naListagem ? m_comandos.last() : m_comandos[k - 1];
        QVERIFY2(erro.details.contains(QString::fromUtf8(comando)), qPrintable(erro.details));
        QCOMPARE(erro.text.contains(u"Pré-venda %1: "_s.arg(pedido)), naPreVenda);
    }
    QCOMPARE(m_corte->cutAt(), m_comandos[k - 1]);
    QCOMPARE(m_corte->texts(), m_comandos.first(k - 1));
    QCOMPARE(b->shop().retrato(), m_estados[k - 1]);
    QCOMPARE(b->log(), PanelBench::logWith(log));
    QCOMPARE(logNoRelato, PanelBench::logWith(log));
    QCOMPARE(abertoNoRelato, naListagem);
    QTRY_VERIFY(b->isLogOpened());
    // No pre-sale is left to work on that is settled, or may be: the answer is lost also after the server has
    // executed the statement.
    QStringList listadas = naListagem ? QStringList() : abertas();
    if (m_comandos[k - 1].toLower().startsWith("update orcamento set situacaoorc"))
        listadas.removeOne(QString::number(pedido));
    QCOMPARE(b->column(painelfechamento::Pedido), listadas);
    QCOMPARE(b->total(), u"%1,00"_s.arg(10 * listadas.size() + (listadas.contains(u"1"_s) ? 20 : 0)));
    QVERIFY(!QApplication::overrideCursor());
    QVERIFY(!b->panel()->findChild<QProgressBar*>()->isVisible());

    // While no server is to be had, a later press says so again and changes nothing.
    b->server().useSocket(b->server().socket() + u".nada"_s);
    if (naListagem) {
        ModalHelper modal;
        modal.expectContaining(mensagens::conexaoPerdida, QMessageBox::Ok);
        b->press(u"Command3"_s);
        QCOMPARE(modal.problem(), QString());
    } else {
        aperta({mensagens::conexaoPerdida});
    }
    QCOMPARE(m_corte->texts(), m_comandos.first(k - 1));
    QCOMPARE(b->shop().retrato(), m_estados[k - 1]);
    b->server().useSocket(m_corte->socket());

    // What needs no database still works.
    if (!naListagem) {
        b->press(u"Command1"_s);
        QCOMPARE(b->total(), u"0,00"_s);
    }

    // Started again, the panel lists what is open.
    b->close();
    QVERIFY(b->open());
    QCOMPARE(b->column(painelfechamento::Pedido), abertas());
}

void TstFalhas::cutBeforeEachStatementOfTheStartUp_data() {
    QTest::addColumn<int>("k");
    QTest::addColumn<QString>("inicio");
    QTest::addColumn<int>("linhas");
    QTest::newRow("DAVs") << 1 << u"SELECT o.codigocli"_s << 1;
    QTest::newRow("payment methods") << 2 << u"SELECT * FROM Finalizadoras"_s << 1;
    QTest::newRow("PVs") << 3 << u"SELECT o.codigocli"_s << 1;
    QTest::newRow("company") << 4 << u"Select ContaCTB1"_s << 5;
}

void TstFalhas::cutBeforeEachStatementOfTheStartUp() {
    QFETCH(int, k);
    QFETCH(QString, inicio);
    QFETCH(int, linhas);
    preparaLote();
    // The driver's own statements at connect come first.
    QVERIFY(b->open());
    const int todos = static_cast<int>(m_corte->texts().size());
    b->close();
    const int doDriver = todos - 5;
    m_corte->cutBefore(doDriver + k);
    ModalHelper modal;
    modal.expectContaining(mensagens::conexaoPerdida, QMessageBox::Ok);
    QVERIFY(b->open());
    QCOMPARE(modal.problem(), QString());
    QVERIFY(m_corte->cutAt().startsWith(inicio.toUtf8()));
    QVERIFY(modal.boxes()[0].details.contains(inicio));
    QVERIFY(b->panel()->isVisible());
    QCOMPARE(b->grid()->rows(), linhas);
    QCOMPARE(b->shop().retrato(), m_estados[0]);
}

void TstFalhas::connectionsKilledBeforeTheBatch() {
    preparaLote();
    QVERIFY(b->open());
    const NaMensagem morte(1, [this] { b->server().killProgramConnections(); });
    aperta({mensagens::conexaoPerdida});
    QCOMPARE(b->shop().retrato(), m_estados[0]);

    // Nothing was begun: the next press opens the connection again and closes everything, once.
    aperta({mensagens::comErros});
    QCOMPARE(b->shop().retrato(), m_estados.last());
}

// The statement has reached the server and is being executed.
void TstFalhas::connectionsKilledInsideAStatement() {
    if (!b->valor(u"SELECT VERSION()"_s).contains(u"MariaDB"_s))
        QSKIP("this server tells the interruption first, and the loss with the next statement");
    preparaLote();
    QVERIFY(b->open());
    b->server().execute(
        u"CREATE TRIGGER falha BEFORE INSERT ON caixa FOR EACH ROW KILL CONNECTION CONNECTION_ID()"_s);
    aperta({mensagens::conexaoPerdida});
    b->server().execute(u"DROP TRIGGER falha"_s);
    const auto caixaDaPrimeira =
        std::find_if(m_comandos.begin(), m_comandos.end(),
                     [](const QByteArray& comando) { return comando.startsWith("insert into caixa"); });
    QCOMPARE(b->shop().retrato(), m_estados[caixaDaPrimeira - m_comandos.begin()]);
}

void TstFalhas::serverGoneInTheMiddle() {
    preparaLote();
    auto servidor = std::make_unique<FaultProxy>(b->server().socket());
    b->server().useSocket(servidor->socket());
    QVERIFY(b->open());
    const NaMensagem morte(1, [&servidor] { servidor.reset(); });
    aperta({mensagens::conexaoPerdida});
    aperta({mensagens::conexaoPerdida});
    QCOMPARE(b->shop().retrato(), m_estados[0]);

    // Nobody answers at a new start either.
    b->close();
    ModalHelper modal;
    modal.expect(mensagens::semConexao, QMessageBox::Ok);
    QVERIFY(!b->open());
    QCOMPARE(modal.problem(), QString());
}

void TstFalhas::statementRefusedByTheServer_data() {
    QTest::addColumn<QString>("gatilho");
    QTest::addColumn<bool>("continuaListada");
    QTest::addColumn<bool>("comecou");
    QTest::newRow("stock log") << u"INSERT ON logestoque"_s << true << false;
    QTest::newRow("stock") << u"UPDATE ON produtos"_s << true << true;
    QTest::newRow("order lines") << u"UPDATE ON orcamento"_s << true << true;
    QTest::newRow("control row") << u"UPDATE ON orcamento_controle"_s << false << true;
    QTest::newRow("receivable") << u"INSERT ON areceber"_s << false << true;
    QTest::newRow("cash book") << u"INSERT ON caixa"_s << false << true;
    QTest::newRow("last number") << u"UPDATE ON empresa"_s << false << true;
}

// The connection lives, so another press closes the others; the interrupted one is left to a person's eyes,
// unless nothing had been written for it.
void TstFalhas::statementRefusedByTheServer() {
    QFETCH(QString, gatilho);
    QFETCH(bool, continuaListada);
    QFETCH(bool, comecou);
    preparaDuas();
    QVERIFY(b->open());
    b->server().execute(u"CREATE TRIGGER falha BEFORE %1 FOR EACH ROW SIGNAL SQLSTATE '45000' SET "
                        "MESSAGE_TEXT = 'recusado de propósito'"_s.arg(gatilho));
    m_corte->mark();
    aperta({u"recusado de propósito"_s}, comecou);
    b->server().execute(u"DROP TRIGGER falha"_s);
    const QList<QByteArray> primeira = m_corte->texts();
    QCOMPARE(b->log(), PanelBench::logWith({interrompida}));
    QCOMPARE(b->column(painelfechamento::Pedido),
             continuaListada ? (QStringList{u"1"_s, u"2"_s}) : QStringList{u"2"_s});

    m_corte->mark();
    const bool recusada = continuaListada && comecou;
    aperta({recusada ? mensagens::comErros : mensagens::sucesso}, recusada);
    QCOMPARE(b->log(), PanelBench::logWith(recusada ? QStringList{interrompida} : QStringList()));
    for (const QByteArray& comando : m_corte->texts())
        QVERIFY2(!comecou || comando.toLower().startsWith("select") || !primeira.contains(comando),
                 comando.constData());
    QCOMPARE(b->server().query(u"SELECT COUNT(*) FROM areceber WHERE Nr_Pedido = 2"_s),
             (QList<QStringList>{{u"1"_s}}));
    QVERIFY(b->server().query(u"SELECT COUNT(*) FROM areceber WHERE Nr_Pedido = 1"_s)[0][0].toInt() <= 1);
    QCOMPARE(b->column(painelfechamento::Pedido), recusada ? QStringList{u"1"_s} : QStringList());
}

// Also when it comes back with a new listing.
void TstFalhas::interruptedPreSaleIsNeverBegunAgain() {
    preparaDuas();
    QVERIFY(b->open());
    b->server().execute(
        u"CREATE TRIGGER falha BEFORE UPDATE ON orcamento FOR EACH ROW SIGNAL SQLSTATE '45000'"_s);
    aperta({mensagens::erroDeExecucao}, true);
    b->server().execute(u"DROP TRIGGER falha"_s);
    for (int vez = 0; vez < 3; ++vez) {
        aperta({mensagens::comErros}, true);
        QCOMPARE(b->log(), PanelBench::logWith({interrompida}));
        QCOMPARE(b->column(painelfechamento::Pedido), QStringList{u"1"_s});
    }
    QCOMPARE(b->server().query(u"SELECT quantidade FROM produtos"_s),
             (QList<QStringList>{{u"99.000"_s}, {u"99.000"_s}}));
}

void TstFalhas::closedPreSalesAreNotClosedAgainWhenTheReloadFails() {
    preparaDuas();
    QVERIFY(b->open());
    {
        // Only the listing reads this column.
        const NaMensagem semColuna(1, [this] {
            b->server().execute(u"ALTER TABLE orcamento CHANGE placa placa_antiga VARCHAR(8)"_s);
        });
        aperta({mensagens::sucesso, u"o.placa"_s});
    }
    b->server().execute(u"ALTER TABLE orcamento CHANGE placa_antiga placa VARCHAR(8)"_s);
    QCOMPARE(b->grid()->rows(), 1);
    QCOMPARE(b->total(), u"0,00"_s);
    QVERIFY(!b->button(u"Command4"_s)->isEnabled());
    QVERIFY(!b->button(u"Command5"_s)->isEnabled());
    b->press(u"Command3"_s);
    QCOMPARE(b->grid()->rows(), 1);
}

QTEST_MAIN(TstFalhas)
#include "tst_falhas.moc"
