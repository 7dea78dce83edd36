#include "closing/ClosingSettings.h"
#include "closing/PainelFechamento.h"
#include "closing/PainelFechamentoColumns.h"
#include "closing/PanelBench.h"
#include "support/ModalHelper.h"
#include "support/StatementLog.h"
#include "ui/Twips.h"
#include "ui/grid/Grid.h"

#include <QComboBox>
#include <QHeaderView>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

// The clock stands at 15/03/2024, so the period starts on the 8th.
const QString sqlDavs =
    u"SELECT o.codigocli, o.placa, o.nrpedido, o.TipoOperacao, c.nome, SUM(o.totalped) AS totalped, "
    "o.nomevendedor, c.cidade, c.colunapreco  FROM orcamento AS o left join clientes AS c ON "
    "o.codigocli=c.codigo where o.situacaoorc in ('A','C') and TipoOperacao='D' and "
    "dataabertura>='2024-03-08' group BY o.nrpedido order by o.nomevendedor, c.nome"_s;
const QString sqlPvs =
    u"SELECT o.codigocli, o.placa, o.nrpedido, o.TipoOperacao, c.nome, SUM(o.totalped) AS totalped, "
    "o.nomevendedor, c.cidade, c.prazo, c.formapg,c.colunapreco  FROM orcamento AS o left join clientes AS c "
    "ON o.codigocli=c.codigo where o.situacaoorc in ('A','C') and TipoOperacao='P' and "
    "dataabertura>='2024-03-08' group BY o.nrpedido Order By o.nomevendedor, c.nome"_s;
const QString sqlFormas = u"SELECT * FROM Finalizadoras order by ID "_s;
const QString sqlInterrompidos =
    u"Select 'ESTOQUE' As tipo, Convert(tela Using utf8mb4) As texto From logestoque Where "
    "data>='2024-03-08' And tela Like 'FECHAMENTO DA PV Nº %' Group By tela Union All Select "
    "Convert(situacaoorc Using utf8mb4), nrpedido From orcamento Where TipoOperacao='P' And "
    "dataabertura>='2024-03-01' And (situacaoorc<>'B' Or databaixa>='2024-03-08') Group By nrpedido, "
    "situacaoorc Union All Select 'RECEBER', Nr_Pedido From areceber Where Emissao>='2024-03-08' Group By "
    "Nr_Pedido Union All Select 'CAIXA', Convert(CodigoLanc Using utf8mb4) From caixa Where "
    "DataCx>='2024-03-08' And CodigoLanc Like 'PED:%' Group By CodigoLanc Union All Select 'CONTROLE', "
    "NrPedido From orcamento_controle Where tipoOperacao='P' And Status='B' And NrCaixa<>0 And "
    "Fechamento>='2024-03-08'"_s;
const QString sqlEmpresa = u"Select ContaCTB1, PAF_ECF From Empresa"_s;

constexpr int firstDocument = 100;

} // namespace

class TstInicio : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { b = std::make_unique<PanelBench>(); }
    void cleanupTestCase() { b.reset(); }
    void init() { b->reset(); }

    void statementsWithDavs();
    void statementsWithoutDavs();
    void davLayout();
    void pvLayout();
    void clientColumnLeavesRoomForTheScrollBar_data();
    void clientColumnLeavesRoomForTheScrollBar();
    void layoutStaysPvOnceLoaded();

    void sevenDaysAgoIsListedEightIsNot_data();
    void sevenDaysAgoIsListedEightIsNot();
    void onlyOpenDocumentsAreListed_data();
    void onlyOpenDocumentsAreListed();
    void oneRowPerDocumentWithItsSum();
    void davAndPvOfOneNumberStayApart();
    void sortedBySellerThenCustomer();
    void methodNenhumaShowsAsDinheiro();
    void emptyTermShowsAsZero_data();
    void emptyTermShowsAsZero();

    void paymentMethodsInOrderOfId();
    void noPaymentMethods();
    void accounts_data();
    void accounts();
    void accountsThatAreMissingAreZero();
    void stockMovesUnlessPafEcfIsSim_data();
    void stockMovesUnlessPafEcfIsSim();
    void companyWithoutRow();
    void databaseUnreachable();

    void nullInEveryNullableColumn_data();
    void nullInEveryNullableColumn();
    void vanishedCustomer_data();
    void vanishedCustomer();
    void totalsOverTenMillion();
    void oddNames_data();
    void oddNames();
    void nothingToList();
    void fiveThousandPreSales();

  private:
    void documentos(const QString& tipo, int quantos);

    std::unique_ptr<PanelBench> b;
};

void TstInicio::documentos(const QString& tipo, int quantos) {
    for (int i = 0; i < quantos; ++i)
        b->shop().documento({.pedido = firstDocument + i, .tipo = tipo});
}

void TstInicio::statementsWithDavs() {
    b->shop().basico();
    documentos(u"D"_s, 1);
    documentos(u"P"_s, 1);
    StatementLog log(b->server());
    QVERIFY(b->open());
    QCOMPARE(log.texts(), StatementLog::expected({sqlDavs, sqlFormas, sqlEmpresa, sqlInterrompidos}));
}

void TstInicio::statementsWithoutDavs() {
    b->shop().basico();
    documentos(u"P"_s, 1);
    StatementLog log(b->server());
    QVERIFY(b->open());
    QCOMPARE(log.texts(), StatementLog::expected({sqlDavs, sqlFormas, sqlPvs, sqlEmpresa, sqlInterrompidos}));
}

namespace {

void checkLayout(const PanelBench& b, const QList<int>& widths, int minimumHeight) {
    const Grid* grid = b.grid();
    const QStringList titles{u"PEDIDO"_s, u"TIPO"_s,     u"CLIENTE"_s,   u"VENDEDOR"_s,
                             u"CIDADE"_s, u"R$ TOTAL"_s, u"DIAS VENC"_s, u"FORMA PAGTO"_s,
                             u"TABELA"_s, u"SELEÇÃO"_s,  u"CODIGOCLI"_s};
    const QList<Qt::Alignment> sides{Qt::AlignLeft,    Qt::AlignHCenter, Qt::AlignLeft,  Qt::AlignLeft,
                                     Qt::AlignLeft,    Qt::AlignRight,   Qt::AlignRight, Qt::AlignRight,
                                     Qt::AlignHCenter, Qt::AlignHCenter, Qt::AlignLeft};
    QCOMPARE(grid->columns(), 11);
    for (int column = 0; column < grid->columns(); ++column) {
        QCOMPARE(grid->text(0, column), titles[column]);
        QVERIFY(grid->isBold(0, column));
        QVERIFY(qvariant_cast<QFont>(grid->model()->headerData(column, Qt::Horizontal, Qt::FontRole)).bold());
        const auto side =
            qvariant_cast<Qt::Alignment>(grid->model()->index(0, column).data(Qt::TextAlignmentRole));
        QCOMPARE(side & Qt::AlignHorizontal_Mask, sides[column]);
        QCOMPARE(grid->columnTwips(column), widths[column]);
        QCOMPARE(grid->isColumnHidden(column), widths[column] == 0);
        // VENDEDOR takes what the window has left.
        const int width = twipsToPixels(grid, widths[column]);
        if (column == painelfechamento::Vendedor)
            QVERIFY(grid->columnWidth(column) >= width);
        else
            QCOMPARE(grid->columnWidth(column), width);
    }
    QVERIFY(grid->horizontalHeader()->height() >= twipsToPixels(grid, minimumHeight));
    QCOMPARE(grid->rowTwips(1), minimumHeight);
    QCOMPARE(grid->verticalHeader()->minimumSectionSize(), twipsToPixels(grid, minimumHeight));
}

} // namespace

void TstInicio::davLayout() {
    b->shop().basico();
    b->shop().documento({.pedido = 4801, .tipo = u"D"_s, .linhas = {{.total = u"1234.50"_s}}});
    documentos(u"P"_s, 3);
    QVERIFY(b->open());
    QCOMPARE(b->panel()->windowTitle(), u"Ormelind DAV/PV/NFE - Versão 1.5c  -  [17/01/23]"_s);
    checkLayout(*b, {1100, 500, 5200, 1700, 2400, 1200, 0, 0, 800, 900, 0}, 360);
    if (QTest::currentTestFailed())
        return;
    QCOMPARE(b->grid()->rows(), 2);
    QCOMPARE(b->row(1), (QStringList{u"4801"_s,
                                     u"D"_s,
                                     u"PADARIA MODELO"_s,
                                     u"ANA"_s,
                                     u"CAMPINAS"_s,
                                     u"1.234,50"_s,
                                     {},
                                     {},
                                     u"1"_s,
                                     u" "_s,
                                     u"C1"_s}));
    QVERIFY(b->grid()->hasPicture(1, painelfechamento::Selecao));
    QCOMPARE(b->total(), u"1.234,50"_s);
    QVERIFY(b->button(u"Command1"_s)->isEnabled());
    QCOMPARE(b->button(u"Command1"_s)->text(), u"Desmarcar todos os Registros"_s);
    QVERIFY(b->button(u"Command2"_s)->isEnabled());
    for (const QString& button : {u"Command3"_s, u"Command4"_s, u"Command5"_s, u"Command6"_s})
        QVERIFY2(!b->button(button)->isEnabled(), qPrintable(button));
}

void TstInicio::pvLayout() {
    b->shop().basico();
    b->shop().documento({.pedido = 10301, .linhas = {{.total = u"1234.50"_s}}});
    QVERIFY(b->open());
    checkLayout(*b, {1100, 500, 3630, 1200, 2000, 1200, 1000, 1500, 800, 900, 0}, 420);
    if (QTest::currentTestFailed())
        return;
    QCOMPARE(b->grid()->rows(), 2);
    QCOMPARE(b->row(1), (QStringList{u"10301"_s, u"P"_s, u"PADARIA MODELO"_s, u"ANA"_s, u"CAMPINAS"_s,
                                     u"1.234,50"_s, u"30"_s, u"BOLETO"_s, u"1"_s, u" "_s, u"C1"_s}));
    QVERIFY(b->grid()->hasPicture(1, painelfechamento::Selecao));
    QCOMPARE(b->total(), u"1.234,50"_s);
    QVERIFY(b->button(u"Command1"_s)->isEnabled());
    QVERIFY(!b->button(u"Command2"_s)->isEnabled());
    QVERIFY(!b->button(u"Command3"_s)->isEnabled());
    for (const QString& button : {u"Command4"_s, u"Command5"_s, u"Command6"_s})
        QVERIFY2(b->button(button)->isEnabled(), qPrintable(button));
}

void TstInicio::clientColumnLeavesRoomForTheScrollBar_data() {
    QTest::addColumn<QString>("tipo");
    QTest::addColumn<int>("listedDocuments");
    QTest::addColumn<int>("width");
    QTest::newRow("DAVs, 16 rows with the header") << u"D"_s << 15 << 5200;
    QTest::newRow("DAVs, 17 rows with the header") << u"D"_s << 16 << 4950;
    QTest::newRow("PVs, 16 rows with the header") << u"P"_s << 15 << 3630;
    QTest::newRow("PVs, 17 rows with the header") << u"P"_s << 16 << 3380;
}

void TstInicio::clientColumnLeavesRoomForTheScrollBar() {
    QFETCH(QString, tipo);
    QFETCH(int, listedDocuments);
    QFETCH(int, width);
    b->shop().basico();
    documentos(tipo, listedDocuments);
    QVERIFY(b->open());
    QCOMPARE(b->grid()->rows(), listedDocuments + 1);
    QCOMPARE(b->grid()->columnTwips(painelfechamento::Cliente), width);
    QCOMPARE(b->grid()->columnWidth(painelfechamento::Cliente), twipsToPixels(b->grid(), width));
}

void TstInicio::layoutStaysPvOnceLoaded() {
    b->shop().basico();
    QVERIFY(b->open());
    documentos(u"D"_s, 2);
    b->shop().documento({.pedido = 900});
    StatementLog log(b->server());
    b->press(u"Command3"_s);
    QCOMPARE(log.texts(), QStringList{sqlPvs});
    QCOMPARE(b->column(painelfechamento::Pedido), QStringList{u"900"_s});
    QCOMPARE(b->grid()->columnTwips(painelfechamento::Cliente), 3630);
    b->panel()->DefineGrid();
    QCOMPARE(b->grid()->rows(), 1);
    QCOMPARE(b->grid()->columnTwips(painelfechamento::FormaPagto), 1500);
}

void TstInicio::sevenDaysAgoIsListedEightIsNot_data() {
    QTest::addColumn<QString>("tipo");
    QTest::newRow("DAV") << u"D"_s;
    QTest::newRow("PV") << u"P"_s;
}

void TstInicio::sevenDaysAgoIsListedEightIsNot() {
    QFETCH(QString, tipo);
    b->shop().basico();
    b->shop().documento({.pedido = 7, .tipo = tipo, .nomeVendedor = u"A"_s, .diasAtras = 7});
    b->shop().documento({.pedido = 8, .tipo = tipo, .diasAtras = 8});
    b->shop().documento({.pedido = 1, .tipo = tipo, .nomeVendedor = u"B"_s, .diasAtras = 0});
    QVERIFY(b->open());
    QCOMPARE(b->column(painelfechamento::Pedido), (QStringList{u"7"_s, u"1"_s}));
}

void TstInicio::onlyOpenDocumentsAreListed_data() {
    sevenDaysAgoIsListedEightIsNot_data();
}

void TstInicio::onlyOpenDocumentsAreListed() {
    QFETCH(QString, tipo);
    b->shop().basico();
    int pedido = 1;
    for (const QString& situacao : {u"A"_s, u"B"_s, u"C"_s, u"X"_s, QString()})
        b->shop().documento(
            {.pedido = pedido++, .tipo = tipo, .situacao = situacao, .nomeVendedor = u"V"_s + situacao});
    QVERIFY(b->open());
    QCOMPARE(b->column(painelfechamento::Pedido), (QStringList{u"1"_s, u"3"_s}));
}

void TstInicio::oneRowPerDocumentWithItsSum() {
    b->shop().basico();
    b->shop().documento({.pedido = 1,
                         .nomeVendedor = u"A"_s,
                         .linhas = {{.total = u"10.10"_s}, {.total = u"0.05"_s}, {.total = u"-1.15"_s}}});
    b->shop().documento(
        {.pedido = 2, .nomeVendedor = u"B"_s, .linhas = {{.total = u"999.99"_s}, {.total = u"0.01"_s}}});
    QVERIFY(b->open());
    QCOMPARE(b->column(painelfechamento::Pedido), (QStringList{u"1"_s, u"2"_s}));
    QCOMPARE(b->column(painelfechamento::Total), (QStringList{u"9,00"_s, u"1.000,00"_s}));
    QCOMPARE(b->total(), u"1.009,00"_s);
}

void TstInicio::davAndPvOfOneNumberStayApart() {
    b->shop().basico();
    b->shop().documento({.pedido = 5, .tipo = u"D"_s, .situacao = u"B"_s, .linhas = {{.total = u"70.00"_s}}});
    b->shop().documento({.pedido = 5, .linhas = {{.total = u"3.00"_s}}});
    QVERIFY(b->open());
    QCOMPARE(b->column(painelfechamento::Tipo), QStringList{u"P"_s});
    QCOMPARE(b->column(painelfechamento::Total), QStringList{u"3,00"_s});
}

void TstInicio::sortedBySellerThenCustomer() {
    b->shop().basico();
    b->shop().cliente({.codigo = u"C2"_s, .nome = u"ARMAZÉM"_s});
    b->shop().documento({.pedido = 1, .nomeVendedor = u"ZECA"_s});
    b->shop().documento({.pedido = 2, .nomeVendedor = u"BIA"_s});
    b->shop().documento({.pedido = 3, .cliente = u"C2"_s, .nomeVendedor = u"BIA"_s});
    b->shop().documento({.pedido = 4, .nomeVendedor = std::nullopt});
    QVERIFY(b->open());
    QCOMPARE(b->column(painelfechamento::Pedido), (QStringList{u"4"_s, u"3"_s, u"2"_s, u"1"_s}));
}

void TstInicio::methodNenhumaShowsAsDinheiro() {
    b->shop().basico();
    b->shop().cliente({.codigo = u"C2"_s, .formaPg = u"(Nenhuma)"_s});
    b->shop().documento({.pedido = 1, .cliente = u"C2"_s});
    QVERIFY(b->open());
    QCOMPARE(b->column(painelfechamento::FormaPagto), QStringList{u"DINHEIRO"_s});
}

void TstInicio::emptyTermShowsAsZero_data() {
    QTest::addColumn<Valor>("prazo");
    QTest::addColumn<QString>("cell");
    QTest::newRow("NULL") << Valor() << u"0"_s;
    QTest::newRow("0") << Valor(u"0"_s) << u"0"_s;
    QTest::newRow("45") << Valor(u"45"_s) << u"45"_s;
    QTest::newRow("negative") << Valor(u"-3"_s) << u"-3"_s;
}

void TstInicio::emptyTermShowsAsZero() {
    QFETCH(Valor, prazo);
    QFETCH(QString, cell);
    b->shop().basico();
    b->shop().cliente({.codigo = u"C2"_s, .prazo = prazo});
    b->shop().documento({.pedido = 1, .cliente = u"C2"_s});
    QVERIFY(b->open());
    QCOMPARE(b->column(painelfechamento::DiasVenc), QStringList{cell});
}

void TstInicio::paymentMethodsInOrderOfId() {
    b->shop().empresa();
    b->server().execute(u"INSERT INTO Finalizadoras (ID, Descricao, avista) VALUES (30, 'BOLETO', 'N'), "
                        "(10, 'PIX', 'S'), (20, 'CARTÃO', NULL), (40, 'VALE', 's')"_s);
    QVERIFY(b->open());
    const QComboBox* methods = b->methods();
    QStringList items;
    for (int i = 0; i < methods->count(); ++i)
        items.append(methods->itemText(i) + u'=' + methods->itemData(i).toString());
    QCOMPARE(items, (QStringList{u"PIX=1"_s, u"CARTÃO=0"_s, u"BOLETO=0"_s, u"VALE=0"_s}));
    QVERIFY(!methods->isVisible());
}

void TstInicio::noPaymentMethods() {
    b->shop().empresa();
    b->shop().cliente({.codigo = u"C1"_s});
    b->shop().produto({.codigo = u"P1"_s});
    b->shop().documento({.pedido = 77});
    QVERIFY(b->open());
    QCOMPARE(b->methods()->count(), 0);
    QCOMPARE(b->grid()->rows(), 2);

    ModalHelper modal;
    modal.expect(mensagens::lembrete, QMessageBox::Ok);
    modal.expect(mensagens::comErros, QMessageBox::Ok);
    b->press(u"Command4"_s);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(b->log(), PanelBench::logWith({u"PRÉ-VENDA: 0000077 - FORMA DE PAGAMENTO INVÁLIDA."_s}));
}

void TstInicio::accounts_data() {
    QTest::addColumn<Valor>("contaCtb1");
    QTest::addColumn<QString>("entrada0");
    QTest::addColumn<QString>("entrada4");
    QTest::newRow("NULL") << Valor() << u"00.000"_s << u"00.000"_s;
    QTest::newRow("empty") << Valor(QString(u""_s)) << u"00.000"_s << u"00.000"_s;
    QTest::newRow("two pieces") << Valor(u"1.01/2.02"_s) << u"1.01"_s << u"00.000"_s;
    QTest::newRow("four pieces") << Valor(u"1/2/3/4"_s) << u"1"_s << u"00.000"_s;
    QTest::newRow("five pieces") << Valor(u"1/2/3/4/5"_s) << u"1"_s << u"5"_s;
    QTest::newRow("nine pieces") << Valor(u"1/2/3/4/5/6/7/8/9"_s) << u"1"_s << u"5"_s;
    QTest::newRow("empty pieces") << Valor(u"//a//"_s) << QString() << QString();
}

void TstInicio::accounts() {
    QFETCH(Valor, contaCtb1);
    QFETCH(QString, entrada0);
    QFETCH(QString, entrada4);
    b->shop().empresa(contaCtb1);
    b->shop().formas();
    b->shop().cliente({.codigo = u"C1"_s});
    b->shop().produto({.codigo = u"P1"_s});
    b->shop().documento({.pedido = 1});
    QVERIFY(b->open());

    ModalHelper modal;
    modal.expect(mensagens::lembrete, QMessageBox::Ok);
    modal.expect(mensagens::sucesso, QMessageBox::Ok);
    b->press(u"Command4"_s);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(b->server().query(u"SELECT cd_cta FROM caixa"_s), QList<QStringList>{{entrada0}});
    QCOMPARE(b->server().query(u"SELECT ContaCTB FROM areceber"_s), QList<QStringList>{{entrada4}});
}

void TstInicio::accountsThatAreMissingAreZero() {
    b->shop().empresa(u"1.01/2.02"_s);
    QVERIFY(b->open());
    const ClosingSettings settings = ClosingSettings::read();
    const QString none = u"00.000"_s;
    QCOMPARE(QStringList(settings.contaCtb.begin(), settings.contaCtb.end()),
             (QStringList{u"1.01"_s, u"2.02"_s, none, none, none, none, none, none}));
}

void TstInicio::stockMovesUnlessPafEcfIsSim_data() {
    QTest::addColumn<Valor>("pafEcf");
    QTest::addColumn<int>("movimentos");
    QTest::newRow("SIM") << Valor(u"SIM"_s) << 0;
    QTest::newRow("NAO") << Valor(u"NAO"_s) << 1;
    QTest::newRow("sim") << Valor(u"sim"_s) << 1;
    QTest::newRow("S") << Valor(u"S"_s) << 1;
    QTest::newRow("empty") << Valor(QString(u""_s)) << 1;
    QTest::newRow("NULL") << Valor() << 1;
}

void TstInicio::stockMovesUnlessPafEcfIsSim() {
    QFETCH(Valor, pafEcf);
    QFETCH(int, movimentos);
    b->shop().empresa(u"1"_s, pafEcf);
    b->shop().formas();
    b->shop().cliente({.codigo = u"C1"_s});
    b->shop().produto({.codigo = u"P1"_s});
    b->shop().documento({.pedido = 1});
    QVERIFY(b->open());

    ModalHelper modal;
    modal.expect(mensagens::lembrete, QMessageBox::Ok);
    modal.expect(mensagens::sucesso, QMessageBox::Ok);
    b->press(u"Command4"_s);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(b->server().query(u"SELECT * FROM logestoque"_s).size(), movimentos);
}

void TstInicio::companyWithoutRow() {
    b->shop().formas();
    b->shop().cliente({.codigo = u"C1"_s});
    documentos(u"P"_s, 2);
    ModalHelper modal;
    modal.expectContaining(u"A tabela empresa não tem nenhum registro"_s, QMessageBox::Ok);
    QVERIFY(b->open());
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(modal.boxes()[0].title, u"Erro de execução"_s);
    QCOMPARE(modal.boxes()[0].icon, QMessageBox::Critical);
    QVERIFY(modal.boxes()[0].text.startsWith(mensagens::erroDeExecucao));
    QVERIFY(modal.boxes()[0].details.contains(sqlEmpresa));

    QVERIFY(b->panel()->isVisible());
    QCOMPARE(b->grid()->rows(), 3);

    // Accounts and stock handling are unknown: nothing may be closed with them.
    StatementLog log(b->server());
    modal.expectContaining(u"A tabela empresa não tem nenhum registro"_s, QMessageBox::Ok);
    b->press(u"Command4"_s);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(log.texts(), QStringList{sqlEmpresa});
    b->press(u"Command1"_s);
    QCOMPARE(b->total(), u"0,00"_s);
}

void TstInicio::databaseUnreachable() {
    b->shop().basico();
    documentos(u"P"_s, 1);
    StatementLog log(b->server());
    b->server().useSocket(u"/tmp/tarvessa-nobody-listens-here"_s);
    ModalHelper modal;
    modal.expect(mensagens::semConexao, QMessageBox::Ok);
    QVERIFY(!b->open());
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(modal.boxes().size(), 1);
    QCOMPARE(modal.boxes()[0].title, u"Atenção!!!"_s);
    QCOMPARE(modal.boxes()[0].icon, QMessageBox::Information);
    QCOMPARE(modal.boxes()[0].buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QVERIFY(!b->panel()->isVisible());
    QCOMPARE(b->grid()->rows(), 1);
    QCOMPARE(log.texts(), QStringList());
}

void TstInicio::nullInEveryNullableColumn_data() {
    sevenDaysAgoIsListedEightIsNot_data();
}

void TstInicio::nullInEveryNullableColumn() {
    QFETCH(QString, tipo);
    b->server().execute(u"INSERT INTO empresa (id) VALUES (1); INSERT INTO Finalizadoras (ID) VALUES (1); "
                        "INSERT INTO clientes (codigo) VALUES ('C1')"_s);
    const Linha empty{.codigo = QString(), .quantidade = std::nullopt, .total = std::nullopt};
    b->shop().documento({.pedido = 1,
                         .tipo = tipo,
                         .nomeVendedor = std::nullopt,
                         .vendedor = std::nullopt,
                         .linhas = {empty}});
    b->shop().documento({.pedido = 2, .cliente = std::nullopt, .tipo = tipo, .linhas = {empty, empty}});
    ModalHelper modal;
    QVERIFY(b->open());
    QCOMPARE(modal.problem(), QString());
    const QString dias = tipo == u"P" ? u"0"_s : QString();
    QCOMPARE(b->row(1), (QStringList{u"1"_s, tipo, {}, {}, {}, u"0,00"_s, dias, {}, {}, u" "_s, u"C1"_s}));
    QCOMPARE(b->row(2), (QStringList{u"2"_s, tipo, {}, u"ANA"_s, {}, u"0,00"_s, dias, {}, {}, u" "_s, {}}));
    QCOMPARE(b->total(), u"0,00"_s);
}

void TstInicio::vanishedCustomer_data() {
    sevenDaysAgoIsListedEightIsNot_data();
}

void TstInicio::vanishedCustomer() {
    QFETCH(QString, tipo);
    b->shop().basico();
    b->shop().documento({.pedido = 1, .cliente = u"C9"_s, .tipo = tipo});
    QVERIFY(b->open());
    const QString dias = tipo == u"P" ? u"0"_s : QString();
    QCOMPARE(b->row(1),
             (QStringList{u"1"_s, tipo, {}, u"ANA"_s, {}, u"10,00"_s, dias, {}, {}, u" "_s, u"C9"_s}));
}

void TstInicio::totalsOverTenMillion() {
    b->shop().basico();
    b->shop().documento({.pedido = 1, .nomeVendedor = u"A"_s, .linhas = {{.total = u"12345678.90"_s}}});
    b->shop().documento({.pedido = 2,
                         .nomeVendedor = u"B"_s,
                         .linhas = {{.total = u"999999999999.99"_s}, {.total = u"0.01"_s}}});
    QVERIFY(b->open());
    QCOMPARE(b->column(painelfechamento::Total),
             (QStringList{u"12.345.678,90"_s, u"1.000.000.000.000,00"_s}));
    QCOMPARE(b->total(), u"1.000.012.345.678,90"_s);
}

void TstInicio::oddNames_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("apostrophe") << u"EMPÓRIO D'ÁVILA"_s;
    QTest::newRow("backslash") << u"PÃES\\DOCES\\"_s;
    QTest::newRow("line break") << u"PADARIA\r\nDO PORTO"_s;
    QTest::newRow("tab") << u"PADARIA\tDO\tPORTO"_s;
    QTest::newRow("four-byte characters") << u"CAFÉ \U0001F950\U0001F956"_s;
    QTest::newRow("markup") << u"<b>PADARIA</b> & CIA | {d '2024-01-01'} %s ?"_s;
    QTest::newRow("blanks at the ends") << u"  PADARIA  "_s;
}

void TstInicio::oddNames() {
    QFETCH(QString, name);
    b->shop().basico();
    b->shop().cliente({.codigo = u"C2"_s, .nome = name, .cidade = name.left(40)});
    b->shop().documento({.pedido = 1, .cliente = u"C2"_s, .nomeVendedor = name.left(40)});
    QVERIFY(b->open());
    QCOMPARE(b->row(1), (QStringList{u"1"_s, u"P"_s, name, name.left(40), name.left(40), u"10,00"_s, u"30"_s,
                                     u"BOLETO"_s, u"1"_s, u" "_s, u"C2"_s}));
}

void TstInicio::nothingToList() {
    b->shop().basico();
    QVERIFY(b->open());
    QCOMPARE(b->grid()->rows(), 1);
    QCOMPARE(b->total(), u"0,00"_s);
    QVERIFY(b->button(u"Command3"_s)->isEnabled());
    for (const QString& button : {u"Command2"_s, u"Command4"_s, u"Command5"_s, u"Command6"_s})
        QVERIFY2(!b->button(button)->isEnabled(), qPrintable(button));

    ModalHelper modal;
    modal.expect(mensagens::semRegistro, QMessageBox::Ok);
    b->press(u"Command1"_s);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(b->button(u"Command1"_s)->text(), u"Desmarcar todos os Registros"_s);

    b->press(u"Command3"_s);
    QCOMPARE(b->grid()->rows(), 1);
    QVERIFY(b->button(u"Command3"_s)->isEnabled());
    QVERIFY(!b->button(u"Command4"_s)->isEnabled());
}

void TstInicio::fiveThousandPreSales() {
    b->shop().basico();
    b->server().execute(
        u"INSERT INTO orcamento (nrpedido, TipoOperacao, codigocli, nomevendedor, dataabertura, codigo, "
        u"totalped) "
        "SELECT seq, 'P', 'C1', LPAD(seq, 6, '0'), '2024-03-14', 'P1', 1.01 FROM seq_1_to_5000"_s);
    QVERIFY(b->open());
    QCOMPARE(b->grid()->rows(), 5001);
    QCOMPARE(b->grid()->text(1, painelfechamento::Pedido), u"1"_s);
    QCOMPARE(b->grid()->text(5000, painelfechamento::Pedido), u"5000"_s);
    QCOMPARE(b->total(), u"5.050,00"_s);
    b->press(u"Command1"_s);
    QCOMPARE(b->total(), u"0,00"_s);
    QCOMPARE(b->column(painelfechamento::Selecao).count(QString()), 5000);
}

QTEST_MAIN(TstInicio)
#include "tst_inicio.moc"
