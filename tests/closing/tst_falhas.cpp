// A closing that fails on the way: what was executed stays, nothing is executed twice, the panel lives on.

#include "closing/Bancada.h"
#include "closing/Colunas.h"
#include "closing/PainelFechamento.h"
#include "support/FaultProxy.h"
#include "support/ModalHelper.h"
#include "ui/grid/Grid.h"

#include <QApplication>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::teste;

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
    void aperta(const QStringList& esperadas);
    QStringList linhasDoLog(int executados) const;

    std::unique_ptr<Bancada> b;
    std::unique_ptr<FaultProxy> m_corte;
    QList<QByteArray> m_comandos; // of the whole batch, as they went to the server
    QList<Retrato> m_estados;     // the database after the first so many of them
};

/// A closing with a technical sheet, a refusal for two reasons, a cancelled person, a plain closing.
void TstFalhas::preparaLote() {
    b->cenario().basico();
    b->cenario().cliente({.codigo = u"RUIM"_s, .prazo = u"0"_s});
    b->cenario().cliente({.codigo = u"CPF"_s, .cnpjCpf = u"12345678909"_s});
    b->cenario().cliente({.codigo = u"PIX"_s, .prazo = u"0"_s, .formaPg = u"PIX"_s});
    for (const QString& codigo : {u"CESTA"_s, u"PAO"_s, u"CAFE"_s})
        b->cenario().produto({.codigo = codigo});
    b->cenario().ficha(u"CESTA"_s, {{u"PAO"_s, u"12"_s}, {u"CAFE"_s, u"0.5"_s}});
    b->cenario().documento(
        {.pedido = 1, .nomeVendedor = u"A"_s, .linhas = {{u"CESTA"_s, u"2"_s}, {}, {u"***NOTA"_s, u"0"_s}}});
    b->cenario().documento(
        {.pedido = 2, .cliente = u"RUIM"_s, .nomeVendedor = u"B"_s, .linhas = {{.quantidade = u"999"_s}}});
    b->cenario().documento({.pedido = 3, .cliente = u"CPF"_s, .nomeVendedor = u"C"_s});
    b->cenario().documento({.pedido = 4, .cliente = u"PIX"_s, .nomeVendedor = u"D"_s});
}

void TstFalhas::preparaDuas() {
    b->cenario().basico();
    b->cenario().documento({.pedido = 1, .nomeVendedor = u"A"_s});
    b->cenario().produto({.codigo = u"P2"_s});
    b->cenario().documento({.pedido = 2, .nomeVendedor = u"B"_s, .linhas = {{.codigo = u"P2"_s}}});
}

/// Presses the closing button; the reminder comes first, then messages that contain these texts.
void TstFalhas::aperta(const QStringList& esperadas) {
    ModalHelper modal;
    modal.espera(mensagens::lembrete, QMessageBox::Ok);
    for (const QString& esperada : esperadas)
        modal.esperaContendo(esperada, QMessageBox::Ok);
    b->aperta(u"Command4"_s);
    QCOMPARE(modal.confere(), QString());
    for (const ModalHelper::Caixa& caixa : modal.caixas())
        QCOMPARE(caixa.texto.startsWith(mensagens::erroDeExecucao), caixa.icone == QMessageBox::Critical);
    QVERIFY(b->painel());
    QVERIFY(!QApplication::overrideCursor());
}

void TstFalhas::initTestCase() {
    b = std::make_unique<Bancada>();
    m_corte = std::make_unique<FaultProxy>(b->servidor().socket());
    init();
    preparaLote();
    QVERIFY(b->abre());
    m_corte->marca();
    aperta({mensagens::comErros});
    m_comandos = m_corte->textos();
    const Retrato fim = b->cenario().retrato();

    init();
    preparaLote();
    m_estados.append(b->cenario().retrato());
    for (const QByteArray& comando : m_comandos) {
        b->servidor().executa(QString::fromUtf8(comando));
        m_estados.append(b->cenario().retrato());
    }
    QCOMPARE(m_estados.last(), fim);
}

void TstFalhas::cleanupTestCase() {
    b->fecha();
    m_corte.reset();
    b.reset();
}

void TstFalhas::init() {
    b->arruma();
    b->servidor().usaSocket(m_corte->socket());
    m_corte->marca();
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

void TstFalhas::cutBeforeEachStatement_data() {
    QTest::addColumn<int>("k");
    QCOMPARE(m_comandos.size(), 34);
    for (int k = 1; k <= m_comandos.size(); ++k)
        QTest::addRow("%d: %s", k, m_comandos[k - 1].left(45).constData()) << k;
}

void TstFalhas::cutBeforeEachStatement() {
    QFETCH(int, k);
    const bool naListagem = k == m_comandos.size();
    preparaLote();
    QVERIFY(b->abre());
    m_corte->cortaAntesDe(k);
    {
        ModalHelper modal;
        modal.espera(mensagens::lembrete, QMessageBox::Ok);
        if (naListagem)
            modal.espera(mensagens::comErros, QMessageBox::Ok);
        modal.esperaContendo(mensagens::inicieNovamente, QMessageBox::Ok);
        b->aperta(u"Command4"_s);
        QCOMPARE(modal.confere(), QString());
        const ModalHelper::Caixa erro = modal.caixas().last();
        QCOMPARE(erro.titulo, u"Erro de execução"_s);
        QCOMPARE(erro.icone, QMessageBox::Critical);
        QVERIFY(erro.texto.startsWith(mensagens::erroDeExecucao));
        QVERIFY2(erro.detalhes.contains(QString::fromUtf8(m_comandos[k - 1])), qPrintable(erro.detalhes));
    }
    QCOMPARE(m_corte->cortado(), m_comandos[k - 1]);
    QCOMPARE(m_corte->textos(), m_comandos.first(k - 1));
    QCOMPARE(b->cenario().retrato(), m_estados[k - 1]);
    QCOMPARE(b->log(), Bancada::logCom(linhasDoLog(k - 1)));
    QVERIFY(!QApplication::overrideCursor());
    QVERIFY(!b->painel()->findChild<QProgressBar*>()->isVisible());

    // A later press says so again and changes nothing.
    aperta({mensagens::inicieNovamente});
    QCOMPARE(m_corte->textos(), m_comandos.first(k - 1));
    QCOMPARE(b->cenario().retrato(), m_estados[k - 1]);

    // What needs no database still works.
    b->aperta(u"Command1"_s);
    QCOMPARE(b->total(), u"0,00"_s);

    // Started again, the panel lists what is open.
    b->fecha();
    QVERIFY(b->abre());
    QStringList abertas;
    for (const QStringList& linha : b->servidor().consulta(
             u"SELECT DISTINCT nrpedido FROM orcamento WHERE situacaoorc = 'A' ORDER BY nrpedido"_s))
        abertas.append(linha[0]);
    QCOMPARE(b->coluna(colunas::Pedido), abertas);
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
    QVERIFY(b->abre());
    const int todos = static_cast<int>(m_corte->textos().size());
    b->fecha();
    const int doDriver = todos - 4;
    m_corte->cortaAntesDe(doDriver + k);
    ModalHelper modal;
    modal.esperaContendo(mensagens::inicieNovamente, QMessageBox::Ok);
    QVERIFY(b->abre());
    QCOMPARE(modal.confere(), QString());
    QVERIFY(m_corte->cortado().startsWith(inicio.toUtf8()));
    QVERIFY(modal.caixas()[0].detalhes.contains(inicio));
    QVERIFY(b->painel()->isVisible());
    QCOMPARE(b->grade()->rows(), linhas);
    QCOMPARE(b->cenario().retrato(), m_estados[0]);
}

void TstFalhas::connectionsKilledBeforeTheBatch() {
    preparaLote();
    QVERIFY(b->abre());
    const NaMensagem morte(1, [this] { b->servidor().mataConexoesDoPrograma(); });
    aperta({mensagens::inicieNovamente});
    QCOMPARE(b->cenario().retrato(), m_estados[0]);
    aperta({mensagens::inicieNovamente});
    QCOMPARE(b->cenario().retrato(), m_estados[0]);
}

// The statement has reached the server and is being executed.
void TstFalhas::connectionsKilledInsideAStatement() {
    preparaLote();
    QVERIFY(b->abre());
    b->servidor().executa(
        u"CREATE TRIGGER falha BEFORE INSERT ON caixa FOR EACH ROW KILL CONNECTION CONNECTION_ID()"_s);
    aperta({mensagens::inicieNovamente});
    aperta({mensagens::inicieNovamente});
    b->servidor().executa(u"DROP TRIGGER falha"_s);
    const auto caixaDaPrimeira =
        std::find_if(m_comandos.begin(), m_comandos.end(),
                     [](const QByteArray& comando) { return comando.startsWith("insert into caixa"); });
    QCOMPARE(b->cenario().retrato(), m_estados[caixaDaPrimeira - m_comandos.begin()]);
}

void TstFalhas::serverGoneInTheMiddle() {
    preparaLote();
    auto servidor = std::make_unique<FaultProxy>(b->servidor().socket());
    b->servidor().usaSocket(servidor->socket());
    QVERIFY(b->abre());
    const NaMensagem morte(1, [&servidor] { servidor.reset(); });
    aperta({mensagens::inicieNovamente});
    aperta({mensagens::inicieNovamente});
    QCOMPARE(b->cenario().retrato(), m_estados[0]);

    // Nobody answers at a new start either.
    b->fecha();
    ModalHelper modal;
    modal.espera(mensagens::semConexao, QMessageBox::Ok);
    QVERIFY(!b->abre());
    QCOMPARE(modal.confere(), QString());
}

void TstFalhas::statementRefusedByTheServer_data() {
    QTest::addColumn<QString>("gatilho");
    QTest::addColumn<bool>("continuaListada");
    QTest::newRow("stock log") << u"INSERT ON logestoque"_s << true;
    QTest::newRow("stock") << u"UPDATE ON produtos"_s << true;
    QTest::newRow("order lines") << u"UPDATE ON orcamento"_s << true;
    QTest::newRow("control row") << u"UPDATE ON orcamento_controle"_s << false;
    QTest::newRow("receivable") << u"INSERT ON areceber"_s << false;
    QTest::newRow("cash book") << u"INSERT ON caixa"_s << false;
    QTest::newRow("last number") << u"UPDATE ON empresa"_s << false;
}

// The connection lives, so another press closes the others; the interrupted one is left to a person's eyes.
void TstFalhas::statementRefusedByTheServer() {
    QFETCH(QString, gatilho);
    QFETCH(bool, continuaListada);
    preparaDuas();
    QVERIFY(b->abre());
    b->servidor().executa(u"CREATE TRIGGER falha BEFORE %1 FOR EACH ROW SIGNAL SQLSTATE '45000' SET "
                          "MESSAGE_TEXT = 'recusado de propósito'"_s.arg(gatilho));
    m_corte->marca();
    aperta({u"recusado de propósito"_s});
    b->servidor().executa(u"DROP TRIGGER falha"_s);
    const QList<QByteArray> primeira = m_corte->textos();

    m_corte->marca();
    aperta({mensagens::comErros});
    QCOMPARE(b->log(), Bancada::logCom({interrompida}));
    for (const QByteArray& comando : m_corte->textos())
        QVERIFY2(comando.toLower().startsWith("select") || !primeira.contains(comando), comando.constData());
    QCOMPARE(b->servidor().consulta(u"SELECT COUNT(*) FROM areceber WHERE Nr_Pedido = 2"_s),
             (QList<QStringList>{{u"1"_s}}));
    QVERIFY(b->servidor().consulta(u"SELECT COUNT(*) FROM areceber WHERE Nr_Pedido = 1"_s)[0][0].toInt() <=
            1);
    QCOMPARE(b->coluna(colunas::Pedido), continuaListada ? QStringList{u"1"_s} : QStringList());
}

// Also when it comes back with a new listing.
void TstFalhas::interruptedPreSaleIsNeverBegunAgain() {
    preparaDuas();
    QVERIFY(b->abre());
    b->servidor().executa(
        u"CREATE TRIGGER falha BEFORE UPDATE ON orcamento FOR EACH ROW SIGNAL SQLSTATE '45000'"_s);
    aperta({mensagens::erroDeExecucao});
    b->servidor().executa(u"DROP TRIGGER falha"_s);
    for (int vez = 0; vez < 3; ++vez) {
        aperta({mensagens::comErros});
        QCOMPARE(b->log(), Bancada::logCom({interrompida}));
        QCOMPARE(b->coluna(colunas::Pedido), QStringList{u"1"_s});
    }
    QCOMPARE(b->servidor().consulta(u"SELECT quantidade FROM produtos"_s),
             (QList<QStringList>{{u"99.000"_s}, {u"99.000"_s}}));
}

void TstFalhas::closedPreSalesAreNotClosedAgainWhenTheReloadFails() {
    preparaDuas();
    QVERIFY(b->abre());
    {
        // Only the listing reads this column.
        const NaMensagem semColuna(1, [this] {
            b->servidor().executa(u"ALTER TABLE orcamento RENAME COLUMN placa TO placa_antiga"_s);
        });
        aperta({mensagens::sucesso, u"o.placa"_s});
    }
    b->servidor().executa(u"ALTER TABLE orcamento RENAME COLUMN placa_antiga TO placa"_s);
    const Retrato depois = b->cenario().retrato();
    aperta({mensagens::sucesso});
    QCOMPARE(b->cenario().retrato(), depois);
    QCOMPARE(b->grade()->rows(), 1);
    QVERIFY(b->botao(u"Command3"_s)->isEnabled());
}

QTEST_MAIN(TstFalhas)
#include "tst_falhas.moc"
