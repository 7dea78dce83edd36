#include "support/FaultProxy.h"
#include "support/ModalHelper.h"
#include "support/StatementLog.h"
#include "targets/DrawnTargets.h"
#include "targets/MetasQuadro.h"
#include "targets/MetasQuadroColumns.h"
#include "targets/TargetsBench.h"
#include "ui/grid/Grid.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

const QColor yellow(255, 255, 0);
const QColor red(255, 0, 0);
const QColor lightRed(255, 192, 192);

// The statements for 01/03/2024 to 15/03/2024, whole but for the filters.
const QString sqlZera = u"Update metavendedoritem Set Vendido=0, TotalVendas=0, QtdDevolucao=0"_s;
const QString sqlVendas =
    u"Insert into Relat2 (Codigo1,Texto1,Quant,Valor1, Valor2) SELECT m.codigo,m.descricao, SUM(m.quantunit) "
    "AS quantidade, n.CodVendedor, Sum(m.totalvenda) as totalvenda FROM movsaient AS m inner join nfsaida AS "
    "n "
    "ON m.nr_nf=n.nrnf AND m.serienf=n.SerieNF WHERE m.dataemissao>='2024-03-01' AND "
    "m.dataemissao<='2024-03-15' AND m.entrsai='S' AND m.cancelado='N'"_s;
const QString sqlVendasFim = u" GROUP BY n.CodVendedor,m.codigo"_s;
const QString sqlPassaVendas =
    u"Update relat2 as r, metavendedoritem as m Set m.vendido=r.quant, m.totalvendas=r.valor2 Where "
    "r.valor1=m.codvendedor and r.codigo1=m.codigoproduto"_s;
const QString sqlDevolucoes =
    u"INSERT INTO relat2 (CODIGO1, Quant, Valor1) SELECT codigo,  SUM(quantidade) as Quantidade, Vendedor "
    u"FROM "
    "Orcamento_Troca WHERE situacaoorc='B' AND databaixa BETWEEN '2024-03-01' AND '2024-03-15' Group By "
    "vendedor, codigo"_s;
const QString sqlPassaDevolucoes =
    u"Update relat2 as r, metavendedoritem as m Set m.qtddevolucao=r.quant Where r.valor1=m.codvendedor and "
    "r.codigo1=m.codigoproduto"_s;
const QString sqlListagem =
    u"Select m.codvendedor, m.CodigoProduto,p.Descricao,m.Quantidade,m.Vendido, m.totalvendas, "
    u"m.qtddevolucao "
    "From metavendedoritem as m INNER JOIN produtos as p ON m.CodigoProduto=p.codfabr "_s;
const QString sqlListagemFim = u" Order By codvendedor"_s;

QString sqlRotulo(int vendedor) {
    return u"Select Vendedor From Vendedores Where codigovend="_s + QString::number(vendedor);
}

} // namespace

/// The progress of the targets: statements, figures and looks of the board.
class TstMetasProgresso : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { b = std::make_unique<TargetsBench>(); }
    void cleanupTestCase() { b.reset(); }
    void init() {
        b->reset();
        b->shop().basicoDasMetas();
    }

    void controlsAndLayout();
    void statements_data();
    void statements();
    void periodRefused_data();
    void periodRefused();
    void oneDayAndBothBounds();

    void boardOfOneSeller();
    void looks();
    void percentages_data();
    void percentages();
    void sellerWithoutSales();
    void sellerFilterAndAll();
    void returnsWithoutTargetAreIgnored();
    void soldWithoutTargetDoesNotAppear();
    void productFilterWithoutPendingProduct();
    void productFilterWithAnotherPending();
    void productFilterWithTheSamePending();
    void unknownSeller();
    void inactiveSeller();
    void removedProductIsUpdatedButNotListed();
    void onlyCountedLinesCount();
    void nullFigures();
    void targetTotalOfZero();
    void targetsOfZeroAndNegative();
    void periodWithoutInvoices();
    void noTargetsAtAll();
    void earlierFiguresAreOverwritten();
    void secondComputationStartsAnew();
    void figuresAgainstRawRows();

    void widthForTheScrollBar_data();
    void widthForTheScrollBar();
    void tabChangeEmptiesTheBoard();
    void waitingLabel();
    void cutAtEveryStatement();

  private:
    struct Look {
        QColor background;
        QColor letter;
        bool bold = false;
    };

    void run();
    void look(int row, int column, const Look& expected) const;
    QStringList produto(int row) { return b->row(u"Grid2"_s, row); }
    QStringList produto(const QString& codigo) { return produto(b->rowOf(u"Grid2"_s, codigo)); }

    std::unique_ptr<TargetsBench> b;
};

void TstMetasProgresso::run() {
    if (!b->screen()) {
        b->open();
        b->goToTab(1);
    }
    b->press(u"Command4"_s);
}

void TstMetasProgresso::controlsAndLayout() {
    b->open();
    b->goToTab(1);
    QCOMPARE(b->focus(), u"DataIni"_s);
    const auto* frame = b->control(u"Frame2"_s);
    const auto text = [frame](const QString& nome) { return frame->findChild<QLabel*>(nome)->text(); };
    QCOMPARE(text(u"Label1"_s), u"VENDEDOR(A)"_s);
    QCOMPARE(text(u"Label6"_s), u"DESCRIÇÃO"_s);
    QCOMPARE(text(u"Label5"_s), u"PERÍODO DE"_s);
    QCOMPARE(text(u"Label7"_s), u"AGUARDE..."_s);
    QVERIFY(!b->control(u"Label7"_s)->isVisible());
    QCOMPARE(b->control<QPushButton>(u"Command4"_s)->text(), u"&Gerar Relatório"_s);
    QCOMPARE(b->control<QPushButton>(u"Command2"_s)->text(), u"&Imprimir"_s);
    QVERIFY(!b->control(u"Command2"_s)->isEnabled());
    const Grid* grid = b->grid(u"Grid2"_s);
    QCOMPARE(b->row(u"Grid2"_s, 0),
             QStringList({u"CÓDIGO"_s, u"DESCRIÇÃO"_s, u"META"_s, u"VENDIDO"_s, u"% META"_s,
                          u"R$ TOTAL VENDA"_s, u"DEVOLUÇÃO"_s, u"% DEVOLUÇÃO"_s}));
    const QList<int> widths{1460, 4000, 1100, 1100, 900, 1570, 1400, 1440};
    for (int column = 0; column < grid->columns(); ++column) {
        QCOMPARE(grid->columnTwips(column), widths[column]);
        const bool right = column >= metasquadro::grid2::Meta && column <= metasquadro::grid2::Devolucao;
        QVERIFY(grid->model()
                    ->headerData(column, Qt::Horizontal, Qt::TextAlignmentRole)
                    .value<Qt::Alignment>()
                    .testFlags(right ? Qt::AlignRight : Qt::AlignLeft));
    }
    b->screen()->resize(TargetsBench::largeScreen);
    b->settle();
    QVERIFY(grid->horizontalHeader()->length() <= grid->viewport()->width());
}

void TstMetasProgresso::statements_data() {
    QTest::addColumn<QString>("vendedor");
    QTest::addColumn<QString>("produto"); // of this tab
    QTest::addColumn<QString>("pending"); // of the other one
    QTest::addColumn<QString>("salesFilter");
    QTest::addColumn<QString>("listFilter");
    QTest::newRow("none") << QString() << QString() << QString() << QString() << QString();
    QTest::newRow("seller") << u"BRUNO"_s << QString() << QString() << u" AND n.CodVendedor=2"_s
                            << u"Where m.codvendedor=2"_s;
    QTest::newRow("product") << QString() << u"LEITE"_s << QString() << u" AND m.codigo='' "_s
                             << u"Where m.CodigoProduto='P3'"_s;
    QTest::newRow("both") << u"ANA"_s << u"LEITE"_s << QString() << u" AND n.CodVendedor=1 AND m.codigo='' "_s
                          << u"Where m.codvendedor=1 And m.CodigoProduto='P3'"_s;
    QTest::newRow("pending on the other tab only")
        << QString() << QString() << u"PAO DOCE"_s << QString() << QString();
    QTest::newRow("another pending on the other tab")
        << QString() << u"LEITE"_s << u"PAO DOCE"_s << u" AND m.codigo='P2' "_s
        << u"Where m.CodigoProduto='P3'"_s;
    QTest::newRow("both and pending")
        << u"ANA"_s << u"LEITE"_s << u"LEITE"_s << u" AND n.CodVendedor=1 AND m.codigo='P3' "_s
        << u"Where m.codvendedor=1 And m.CodigoProduto='P3'"_s;
}

void TstMetasProgresso::statements() {
    QFETCH(QString, vendedor);
    QFETCH(QString, produto);
    QFETCH(QString, pending);
    QFETCH(QString, salesFilter);
    QFETCH(QString, listFilter);
    b->shop().meta(1, u"P3"_s, u"10"_s);
    b->shop().meta(2, u"P3"_s, u"10"_s);
    b->open();
    if (!pending.isEmpty())
        b->enterProduct(u"Descricao"_s, pending);
    b->goToTab(1);
    if (!vendedor.isEmpty())
        b->choose(u"Vendedores2"_s, vendedor);
    if (!produto.isEmpty())
        b->enterProduct(u"Descricao2"_s, produto);
    StatementLog log(b->server());
    run();
    QStringList expectedRows{sqlZera,
                             u"Truncate Relat2"_s,
                             sqlVendas + salesFilter + sqlVendasFim,
                             sqlPassaVendas,
                             u"TRUNCATE relat2"_s,
                             sqlDevolucoes,
                             sqlPassaDevolucoes,
                             sqlListagem + listFilter + sqlListagemFim};
    for (const int codigo : {1, 2})
        if (vendedor.isEmpty() || vendedor == (codigo == 1 ? u"ANA"_s : u"BRUNO"_s))
            expectedRows.append(sqlRotulo(codigo));
    QCOMPARE(log.texts(), StatementLog::expected(expectedRows));
}

void TstMetasProgresso::periodRefused_data() {
    QTest::addColumn<QString>("inicio");
    QTest::addColumn<QString>("fim");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("focus");
    const QString inicioInvalido = u"Data Inicial inválida. Verifique!!!"_s;
    const QString fimInvalido = u"Data Final inválida. Verifique!!!"_s;
    QTest::newRow("no start") << QString() << u"15/03/2024"_s << inicioInvalido << u"DataIni"_s;
    QTest::newRow("31 February") << u"31/02/2024"_s << u"15/03/2024"_s << inicioInvalido << u"DataIni"_s;
    QTest::newRow("no end") << u"01/03/2024"_s << QString() << fimInvalido << u"DataFin"_s;
    QTest::newRow("31 April") << u"01/03/2024"_s << u"31/04/2024"_s << fimInvalido << u"DataFin"_s;
    QTest::newRow("both wrong") << u"00/00/0000"_s << u"99/99/9999"_s << inicioInvalido << u"DataIni"_s;
    QTest::newRow("inverted") << u"16/03/2024"_s << u"15/03/2024"_s
                              << u"Data Inicial superior a Data Final. Verifique!!!"_s << u"DataIni"_s;
}

void TstMetasProgresso::periodRefused() {
    QFETCH(QString, inicio);
    QFETCH(QString, fim);
    QFETCH(QString, message);
    QFETCH(QString, focus);
    b->open();
    b->goToTab(1);
    b->period(inicio, fim);
    StatementLog log(b->server());
    ModalHelper boxes;
    boxes.expect(message, QMessageBox::Ok);
    run();
    QCOMPARE(boxes.problem(), QString());
    QCOMPARE(boxes.boxes()[0].title, u"Atenção!!!"_s);
    QCOMPARE(boxes.boxes()[0].icon, QMessageBox::Information);
    QCOMPARE(b->focus(), focus);
    QCOMPARE(log.texts(), QStringList());
    QVERIFY(!b->control(u"Label7"_s)->isVisible());
}

void TstMetasProgresso::oneDayAndBothBounds() {
    b->shop().meta(1, u"P1"_s, u"100"_s);
    for (const auto& dia : {u"2024-03-09"_s, u"2024-03-10"_s, u"2024-03-12"_s, u"2024-03-13"_s}) {
        b->shop().venda({.vendedor = 1, .produto = u"P1"_s, .quantidade = u"1"_s, .emissao = dia});
        b->shop().devolucao({.vendedor = 1, .produto = u"P1"_s, .baixa = dia});
    }
    b->open();
    b->goToTab(1);
    b->period(u"10/03/2024"_s, u"12/03/2024"_s);
    run();
    QCOMPARE(produto(2)[metasquadro::grid2::Vendido], u"2"_s);
    QCOMPARE(produto(2)[metasquadro::grid2::Devolucao], u"2"_s);
    b->period(u"13/03/2024"_s, u"13/03/2024"_s);
    run();
    QCOMPARE(produto(2)[metasquadro::grid2::Vendido], u"1"_s);
    QCOMPARE(produto(2)[metasquadro::grid2::Devolucao], u"1"_s);
}

void TstMetasProgresso::boardOfOneSeller() {
    b->shop().meta(1, u"P1"_s, u"100"_s);
    b->shop().meta(1, u"P2"_s, u"1500.5"_s);
    b->shop().venda({.vendedor = 1, .produto = u"P1"_s, .quantidade = u"100"_s, .total = u"1234.50"_s});
    b->shop().venda({.vendedor = 1, .produto = u"P1"_s, .quantidade = u"50"_s, .total = u"0.50"_s});
    b->shop().venda({.vendedor = 1, .produto = u"P2"_s, .quantidade = u"0.125"_s, .total = u"10"_s});
    b->shop().devolucao({.vendedor = 1, .produto = u"P1"_s, .quantidade = u"7.5"_s});
    run();
    const QString v;
    QCOMPARE(b->grid(u"Grid2"_s)->rows(), 1 + 5);
    QCOMPARE(produto(1), QStringList({v, u"1 - ANA"_s, v, v, v, v, v, v}));
    QCOMPARE(produto(u"P1"_s), QStringList({u"P1"_s, u"PAO FRANCES"_s, u"100"_s, u"150"_s, u"150,0%"_s,
                                            u"1.235,00"_s, u"7,500"_s, u"5,0%"_s}));
    QCOMPARE(produto(u"P2"_s), QStringList({u"P2"_s, u"PAO DOCE"_s, u"1.500,500"_s, u"0,125"_s, u"0,01%"_s,
                                            u"10,00"_s, u"0"_s, u"0,0%"_s}));
    QCOMPARE(produto(4), QStringList({v, v, v, v, v, v, v, v}));
    QCOMPARE(produto(5), QStringList({v, u"*** TOTAIS DE 1 - ANA ***"_s, u"1.600,500"_s, u"150,125"_s,
                                      u"9,38%"_s, u"1.245,00"_s, u"7,500"_s, u"5,0%"_s}));
    QVERIFY(b->control(u"Command2"_s)->isEnabled());
    QVERIFY(!b->control(u"Label7"_s)->isVisible());
    QCOMPARE(b->shop().metas()[0],
             QStringList({u"1"_s, u"P1"_s, u"100.000"_s, u"150.000"_s, u"1235.00"_s, u"7.500"_s}));
}

void TstMetasProgresso::looks() {
    b->shop().meta(1, u"P1"_s, u"100"_s);
    b->shop().meta(1, u"P2"_s, u"100"_s);
    b->shop().venda({.vendedor = 1, .produto = u"P1"_s, .quantidade = u"100"_s});
    b->shop().venda({.vendedor = 1, .produto = u"P2"_s, .quantidade = u"99.99"_s});
    run();
    const Grid* grid = b->grid(u"Grid2"_s);
    const int reached = b->rowOf(u"Grid2"_s, u"P1"_s);
    const int almost = b->rowOf(u"Grid2"_s, u"P2"_s);
    QCOMPARE(produto(reached)[metasquadro::grid2::PercMeta], u"100,0%"_s);
    QCOMPARE(produto(almost)[metasquadro::grid2::PercMeta], u"99,99%"_s);
    for (int column = 0; column < grid->columns(); ++column) {
        QCOMPARE(grid->backColor(1, column), yellow);
        QCOMPARE(grid->foreColor(1, column), red);
        QVERIFY(grid->isBold(1, column));
        const bool emphasis = column == metasquadro::grid2::PercMeta;
        QCOMPARE(grid->backColor(reached, column), emphasis ? lightRed : QColor());
        QCOMPARE(grid->foreColor(reached, column), emphasis ? red : QColor());
        QCOMPARE(grid->isBold(reached, column), emphasis);
        for (const int common : {almost, 4}) {
            QCOMPARE(grid->backColor(common, column), QColor());
            QCOMPARE(grid->foreColor(common, column), QColor());
            QVERIFY(!grid->isBold(common, column));
        }
        QCOMPARE(grid->backColor(5, column), lightRed);
        QCOMPARE(grid->foreColor(5, column), QColor());
        QVERIFY(grid->isBold(5, column));
    }
}

void TstMetasProgresso::percentages_data() {
    QTest::addColumn<QString>("meta");
    QTest::addColumn<QString>("vendido");
    QTest::addColumn<QString>("devolvido");
    QTest::addColumn<QString>("percMeta");
    QTest::addColumn<QString>("percDevolucao");
    QTest::addColumn<bool>("emphasis");
    QTest::addColumn<QString>("totalMeta");
    QTest::addColumn<QString>("totalDevolucao");
    QTest::newRow("half") << u"100"_s << u"50"_s << u"25"_s << u"50,0%"_s << u"50,0%"_s << false << u"50,0%"_s
                          << u"50,0%"_s;
    QTest::newRow("a third") << u"3"_s << u"1"_s << u"0"_s << u"33,33%"_s << u"0,0%"_s << false << u"33,33%"_s
                             << u"0,0%"_s;
    QTest::newRow("two thirds") << u"3"_s << u"2"_s << u"2"_s << u"66,67%"_s << u"100,0%"_s << false
                                << u"66,67%"_s << u"100,0%"_s;
    QTest::newRow("exactly reached") << u"0.001"_s << u"0.001"_s << u"0"_s << u"100,0%"_s << u"0,0%"_s << true
                                     << u"100,0%"_s << u"0,0%"_s;
    QTest::newRow("just below, rounded up") << u"999999.999"_s << u"999999.998"_s << u"0"_s << u"100,0%"_s
                                            << u"0,0%"_s << false << u"100,0%"_s << u"0,0%"_s;
    // 33.33499...: rounded twice it would be 33,34.
    QTest::newRow("rounded once") << u"100000"_s << u"33334.999"_s << u"0"_s << u"33,33%"_s << u"0,0%"_s
                                  << false << u"33,33%"_s << u"0,0%"_s;
    QTest::newRow("half goes up") << u"100000"_s << u"33335"_s << u"0"_s << u"33,34%"_s << u"0,0%"_s << false
                                  << u"33,34%"_s << u"0,0%"_s;
    QTest::newRow("far beyond") << u"0.001"_s << u"999999"_s << u"0"_s << u"99999900000,0%"_s << u"0,0%"_s
                                << true << u"99999900000,0%"_s << u"0,0%"_s;
    QTest::newRow("half as much again")
        << u"100"_s << u"150"_s << u"0"_s << u"150,0%"_s << u"0,0%"_s << true << u"150,0%"_s << u"0,0%"_s;
    QTest::newRow("returned more than sold")
        << u"10"_s << u"1"_s << u"2"_s << u"10,0%"_s << u"200,0%"_s << false << u"10,0%"_s << u"200,0%"_s;
    QTest::newRow("returned, nothing sold")
        << u"10"_s << u"0"_s << u"2"_s << u"0,0%"_s << u"0,0%"_s << false << u"10,0%"_s << u"200,0%"_s;
    QTest::newRow("sold negative") << u"10"_s << u"-5"_s << u"2"_s << u"0,0%"_s << u"0,0%"_s << false
                                   << u"-50,0%"_s << u""_s;
}

void TstMetasProgresso::percentages() {
    QFETCH(QString, meta);
    QFETCH(QString, vendido);
    QFETCH(QString, devolvido);
    b->shop().meta(1, u"P1"_s, meta);
    b->shop().venda({.vendedor = 1, .produto = u"P1"_s, .quantidade = vendido});
    b->shop().devolucao({.vendedor = 1, .produto = u"P1"_s, .quantidade = devolvido});
    run();
    QTEST(produto(2)[metasquadro::grid2::PercMeta], "percMeta");
    QTEST(produto(2)[metasquadro::grid2::PercDevolucao], "percDevolucao");
    QFETCH(bool, emphasis);
    const Grid* grid = b->grid(u"Grid2"_s);
    QCOMPARE(grid->isBold(2, metasquadro::grid2::PercMeta), emphasis);
    QCOMPARE(grid->backColor(2, metasquadro::grid2::PercMeta), emphasis ? lightRed : QColor());
    QCOMPARE(grid->foreColor(2, metasquadro::grid2::PercMeta), emphasis ? red : QColor());
    QTEST(produto(4)[metasquadro::grid2::PercMeta], "totalMeta");
    QTEST(produto(4)[metasquadro::grid2::PercDevolucao], "totalDevolucao");
}

void TstMetasProgresso::sellerWithoutSales() {
    b->shop().meta(1, u"P1"_s, u"40"_s);
    b->shop().meta(1, u"P2"_s, u"10"_s);
    run();
    QCOMPARE(produto(u"P1"_s), QStringList({u"P1"_s, u"PAO FRANCES"_s, u"40"_s, u"0"_s, u"0,0%"_s, u"0,00"_s,
                                            u"0"_s, u"0,0%"_s}));
    QCOMPARE(produto(5), QStringList({QString(), u"*** TOTAIS DE 1 - ANA ***"_s, u"50"_s, u"1"_s, u"2,0%"_s,
                                      u"0,00"_s, u"0"_s, u"0,0%"_s}));
}

void TstMetasProgresso::sellerFilterAndAll() {
    b->shop().meta(2, u"P1"_s, u"10"_s);
    b->shop().meta(1, u"P1"_s, u"10"_s);
    b->shop().meta(1, u"P2"_s, u"10"_s);
    b->shop().venda({.vendedor = 1, .produto = u"P1"_s, .quantidade = u"3"_s});
    b->shop().venda({.vendedor = 2, .produto = u"P1"_s, .quantidade = u"4"_s});
    run();
    QCOMPARE(b->grid(u"Grid2"_s)->rows(), 1 + 5 + 4);
    QCOMPARE(produto(1)[1], u"1 - ANA"_s);
    QCOMPARE(produto(6)[1], u"2 - BRUNO"_s);
    QCOMPARE(produto(7)[metasquadro::grid2::Vendido], u"4"_s);
    b->choose(u"Vendedores2"_s, u"BRUNO"_s);
    run();
    QCOMPARE(b->grid(u"Grid2"_s)->rows(), 1 + 4);
    QCOMPARE(produto(1)[1], u"2 - BRUNO"_s);
    // Every target was cleared, only those of the filter have figures again.
    QCOMPARE(b->shop().metas()[0][3], u"0.000"_s);
    QCOMPARE(b->shop().metas()[2][3], u"4.000"_s);
}

void TstMetasProgresso::returnsWithoutTargetAreIgnored() {
    b->shop().meta(1, u"P1"_s, u"10"_s);
    b->shop().devolucao({.vendedor = 1, .produto = u"P2"_s, .quantidade = u"5"_s});
    b->shop().devolucao({.vendedor = 2, .produto = u"P1"_s, .quantidade = u"5"_s});
    b->shop().devolucao({.vendedor = 1, .produto = u"P1"_s, .quantidade = u"5"_s, .situacao = u"A"_s});
    run();
    QCOMPARE(b->grid(u"Grid2"_s)->rows(), 1 + 4);
    QCOMPARE(produto(2)[metasquadro::grid2::Devolucao], u"0"_s);
}

void TstMetasProgresso::soldWithoutTargetDoesNotAppear() {
    b->shop().meta(1, u"P1"_s, u"10"_s);
    b->shop().venda({.vendedor = 1, .produto = u"P2"_s, .quantidade = u"5"_s});
    run();
    QCOMPARE(b->grid(u"Grid2"_s)->rows(), 1 + 4);
    QCOMPARE(produto(4)[metasquadro::grid2::Vendido], u"1"_s);
}

void TstMetasProgresso::productFilterWithoutPendingProduct() {
    b->shop().meta(1, u"P1"_s, u"10"_s);
    b->shop().meta(1, u"P2"_s, u"10"_s);
    b->shop().venda({.vendedor = 1, .produto = u"P1"_s, .quantidade = u"5"_s});
    b->shop().devolucao({.vendedor = 1, .produto = u"P1"_s, .quantidade = u"2"_s});
    b->open();
    b->goToTab(1);
    b->enterProduct(u"Descricao2"_s, u"PAO FRANCES"_s);
    run();
    QCOMPARE(b->grid(u"Grid2"_s)->rows(), 1 + 4);
    QCOMPARE(produto(u"P1"_s), QStringList({u"P1"_s, u"PAO FRANCES"_s, u"10"_s, u"0"_s, u"0,0%"_s, u"0,00"_s,
                                            u"2"_s, u"0,0%"_s}));
}

void TstMetasProgresso::productFilterWithAnotherPending() {
    b->shop().meta(1, u"P1"_s, u"10"_s);
    b->shop().meta(1, u"P2"_s, u"10"_s);
    b->shop().venda({.vendedor = 1, .produto = u"P1"_s, .quantidade = u"5"_s});
    b->shop().venda({.vendedor = 1, .produto = u"P2"_s, .quantidade = u"7"_s});
    b->open();
    b->enterProduct(u"Descricao"_s, u"PAO DOCE"_s);
    b->goToTab(1);
    b->enterProduct(u"Descricao2"_s, u"PAO FRANCES"_s);
    run();
    QCOMPARE(produto(2)[metasquadro::grid2::Codigo], u"P1"_s);
    QCOMPARE(produto(2)[metasquadro::grid2::Vendido], u"0"_s);
    QCOMPARE(b->shop().metas()[0][3], u"0.000"_s);
    QCOMPARE(b->shop().metas()[1][3], u"7.000"_s);
}

void TstMetasProgresso::productFilterWithTheSamePending() {
    b->shop().meta(1, u"P1"_s, u"10"_s);
    b->shop().venda({.vendedor = 1, .produto = u"P1"_s, .quantidade = u"5"_s});
    b->open();
    b->enterProduct(u"Descricao"_s, u"PAO FRANCES"_s);
    b->goToTab(1);
    b->enterProduct(u"Descricao2"_s, u"PAO FRANCES"_s);
    run();
    QCOMPARE(produto(2)[metasquadro::grid2::Vendido], u"5"_s);
}

void TstMetasProgresso::unknownSeller() {
    b->shop().meta(9, u"P1"_s, u"10"_s);
    run();
    QCOMPARE(produto(1)[1], u"9 - (Nenhum)"_s);
    QCOMPARE(produto(4)[1], u"*** TOTAIS DE 9 - (Nenhum) ***"_s);
}

void TstMetasProgresso::inactiveSeller() {
    b->shop().vendedor(3, u"CAIO"_s, u"N"_s);
    b->shop().meta(3, u"P1"_s, u"10"_s);
    run();
    QCOMPARE(produto(1)[1], u"3 - CAIO"_s);
}

void TstMetasProgresso::removedProductIsUpdatedButNotListed() {
    b->shop().meta(1, u"SUMIU"_s, u"10"_s);
    b->shop().venda({.vendedor = 1, .produto = u"SUMIU"_s, .quantidade = u"5"_s});
    run();
    QCOMPARE(b->grid(u"Grid2"_s)->rows(), 1);
    QVERIFY(!b->control(u"Command2"_s)->isEnabled());
    QCOMPARE(b->shop().metas()[0][3], u"5.000"_s);
}

void TstMetasProgresso::onlyCountedLinesCount() {
    b->shop().meta(1, u"P1"_s, u"10"_s);
    b->shop().venda({.vendedor = 1, .produto = u"P1"_s, .quantidade = u"1"_s});
    b->shop().venda({.vendedor = 1, .produto = u"P1"_s, .quantidade = u"20"_s, .entrSai = u"E"_s});
    b->shop().venda({.vendedor = 1, .produto = u"P1"_s, .quantidade = u"30"_s, .cancelado = u"S"_s});
    b->shop().venda({.vendedor = 2, .produto = u"P1"_s, .quantidade = u"40"_s});
    // The same number in another series belongs to another seller's invoice.
    b->server().execute(u"INSERT INTO nfsaida (nrnf, SerieNF, CodVendedor) VALUES (1, '2', 2)"_s);
    run();
    QCOMPARE(produto(2)[metasquadro::grid2::Vendido], u"1"_s);
}

// Sums over NULL alone are NULL, and so are written into the target.
void TstMetasProgresso::nullFigures() {
    b->shop().meta(1, u"P1"_s, std::nullopt);
    b->shop().venda({.vendedor = 1, .produto = u"P1"_s, .quantidade = std::nullopt, .total = std::nullopt});
    b->server().execute(u"INSERT INTO Orcamento_Troca (codigo, Vendedor, quantidade, situacaoorc, databaixa) "
                        "VALUES ('P1', 1, NULL, 'B', '2024-03-10')"_s);
    b->shop().meta(1, u"P2"_s, u"10"_s);
    b->server().execute(u"UPDATE produtos SET descricao = NULL WHERE codfabr = 'P1'"_s);
    run();
    QVERIFY(b->shop().metas()[0][3].isNull());
    QVERIFY(b->shop().metas()[0][4].isNull());
    QVERIFY(b->shop().metas()[0][5].isNull());
    QCOMPARE(produto(u"P1"_s),
             QStringList({u"P1"_s, QString(), u"0"_s, u"0"_s, u"0,0%"_s, u"0,00"_s, u"0"_s, u"0,0%"_s}));
    QCOMPARE(produto(5)[metasquadro::grid2::Vendido], u"1"_s);
}

void TstMetasProgresso::targetTotalOfZero() {
    b->shop().meta(1, u"P1"_s, u"0"_s);
    b->open();
    b->goToTab(1);
    ModalHelper boxes;
    boxes.expectContaining(u"Divisão por zero"_s, QMessageBox::Ok);
    run();
    QCOMPARE(boxes.problem(), QString());
    QVERIFY(!b->control(u"Label7"_s)->isVisible());
    QVERIFY(!b->control(u"Command2"_s)->isEnabled());
    // The screen goes on.
    b->server().execute(u"UPDATE metavendedoritem SET Quantidade = 5"_s);
    run();
    QCOMPARE(boxes.problem(), QString());
    QCOMPARE(b->grid(u"Grid2"_s)->rows(), 1 + 4);
}

void TstMetasProgresso::targetsOfZeroAndNegative() {
    b->shop().meta(1, u"P1"_s, u"0"_s);
    b->shop().meta(1, u"P2"_s, u"-4"_s);
    b->shop().meta(1, u"P3"_s, u"9"_s);
    for (const auto& codigo : {u"P1"_s, u"P2"_s})
        b->shop().venda({.vendedor = 1, .produto = codigo, .quantidade = u"5"_s});
    run();
    QCOMPARE(produto(u"P1"_s)[metasquadro::grid2::PercMeta], u"0,0%"_s);
    QCOMPARE(produto(u"P2"_s)[metasquadro::grid2::PercMeta], u"0,0%"_s);
    for (const int row : {2, 3, 4})
        QVERIFY(!b->grid(u"Grid2"_s)->isBold(row, metasquadro::grid2::PercMeta));
    QCOMPARE(produto(6)[metasquadro::grid2::Meta], u"5"_s);
    QCOMPARE(produto(6)[metasquadro::grid2::PercMeta], u"200,0%"_s);
}

void TstMetasProgresso::periodWithoutInvoices() {
    b->shop().meta(1, u"P1"_s, u"10"_s);
    b->shop().venda({.vendedor = 1, .produto = u"P1"_s, .emissao = u"2020-01-01"_s});
    run();
    QCOMPARE(produto(2)[metasquadro::grid2::Vendido], u"0"_s);
    QCOMPARE(b->server().query(u"SELECT * FROM relat2"_s).size(), 0);
}

void TstMetasProgresso::noTargetsAtAll() {
    run();
    QCOMPARE(b->grid(u"Grid2"_s)->rows(), 1);
    QVERIFY(!b->control(u"Command2"_s)->isEnabled());
}

void TstMetasProgresso::earlierFiguresAreOverwritten() {
    b->shop().meta(1, u"P1"_s, u"10"_s);
    b->server().execute(u"UPDATE metavendedoritem SET Vendido=5, TotalVendas=6, QtdDevolucao=7"_s);
    run();
    QCOMPARE(b->shop().metas()[0].sliced(3), QStringList({u"0.000"_s, u"0.00"_s, u"0.000"_s}));
}

// Rows of one seller come in the database's order: each is looked up by its product.
void TstMetasProgresso::look(int row, int column, const Look& expected) const {
    const Grid* grid = b->grid(u"Grid2"_s);
    QCOMPARE(grid->backColor(row, column), expected.background);
    QCOMPARE(grid->foreColor(row, column), expected.letter);
    QCOMPARE(grid->isBold(row, column), expected.bold);
}

void TstMetasProgresso::secondComputationStartsAnew() {
    b->shop().meta(1, u"P1"_s, u"10"_s);
    run();
    const QList<QStringList> first = b->rows(u"Grid2"_s);
    QCOMPARE(first.size(), 4);
    b->grid(u"Grid2"_s)->setColumnTwips(metasquadro::grid2::Meta, 2000);
    run();
    QCOMPARE(b->rows(u"Grid2"_s), first);
    QCOMPARE(b->grid(u"Grid2"_s)->columnTwips(metasquadro::grid2::Meta), 1100);
    // Refused by the server at once, it leaves nothing of the earlier board to be printed.
    b->server().execute(u"RENAME TABLE metavendedoritem TO guardada"_s);
    ModalHelper boxes;
    boxes.expectContaining(u"Erro em tempo de execução"_s, QMessageBox::Ok);
    run();
    b->server().execute(u"RENAME TABLE guardada TO metavendedoritem"_s);
    QCOMPARE(boxes.problem(), QString());
    QCOMPARE(b->rows(u"Grid2"_s), QList<QStringList>());
    QVERIFY(!b->button(u"Command2"_s)->isEnabled());
}

void TstMetasProgresso::figuresAgainstRawRows() {
    const Look emphasis{lightRed, red, true};
    const DrawnTargets world(b->server());
    run();
    const Grid* grid = b->grid(u"Grid2"_s);
    int row = 1;
    for (int v = 1; v <= DrawnTargets::vendedores; ++v) {
        const QString label = v == 1 ? u"1 - ANA"_s : v == 2 ? u"2 - BRUNO"_s : u"%1 - (Nenhum)"_s.arg(v);
        for (int column = 0; column < grid->columns(); ++column)
            look(row, column, {yellow, red, true});
        QCOMPARE(produto(row++)[metasquadro::grid2::Descricao], label);
        QSet<int> seen;
        DrawnTargets::Conta totais;
        for (; !produto(row)[metasquadro::grid2::Codigo].isEmpty(); ++row) {
            const int p = produto(row)[metasquadro::grid2::Codigo].sliced(1).toInt();
            seen.insert(p);
            const DrawnTargets::Conta conta = world.contas().at({v, p});
            totais += conta;
            QCOMPARE(produto(row),
                     DrawnTargets::celulas(DrawnTargets::codigo(p), DrawnTargets::descricao(p), conta));
            const bool reached = conta.vendido >= conta.meta;
            for (int column = 0; column < grid->columns(); ++column)
                look(row, column, reached && column == metasquadro::grid2::PercMeta ? emphasis : Look{});
        }
        const auto doVendedor = [v](const auto& conta) { return conta.first.first == v; };
        QCOMPARE(seen.size(), std::count_if(world.contas().begin(), world.contas().end(), doVendedor));
        QVERIFY(totais.vendido > 0);
        for (int column = 0; column < grid->columns(); ++column) {
            look(row, column, {});
            look(row + 1, column, {lightRed, {}, true});
        }
        QCOMPARE(produto(row++), QStringList(QList<QString>(8)));
        QCOMPARE(produto(row++), DrawnTargets::celulas({}, u"*** TOTAIS DE "_s + label + u" ***"_s, totais));
    }
    QCOMPARE(row, grid->rows());
}

void TstMetasProgresso::widthForTheScrollBar_data() {
    QTest::addColumn<int>("linhas"); // header included
    QTest::addColumn<int>("largura");
    QTest::newRow("17") << 17 << 4000;
    QTest::newRow("18") << 18 << 4000;
    QTest::newRow("19") << 19 << 3750;
}

void TstMetasProgresso::widthForTheScrollBar() {
    QFETCH(int, linhas);
    for (int i = 0; i < linhas - 4; ++i) {
        const QString codigo = u"Q%1"_s.arg(i);
        b->shop().produto(codigo, codigo);
        b->shop().meta(1, codigo, u"1"_s);
    }
    run();
    const Grid* grid = b->grid(u"Grid2"_s);
    QCOMPARE(grid->rows(), linhas);
    QTEST(grid->columnTwips(metasquadro::grid2::Descricao), "largura");
    b->screen()->resize(TargetsBench::largeScreen);
    b->settle();
    QVERIFY(!grid->horizontalScrollBar()->isVisible());
    // A smaller result gets the full width back.
    b->server().execute(u"DELETE FROM metavendedoritem"_s);
    run();
    QCOMPARE(grid->columnTwips(metasquadro::grid2::Descricao), 4000);
}

void TstMetasProgresso::tabChangeEmptiesTheBoard() {
    b->shop().meta(1, u"P1"_s, u"10"_s);
    run();
    QVERIFY(b->control(u"Command2"_s)->isEnabled());
    b->goToTab(0);
    QCOMPARE(b->focus(), u"Vendedores"_s);
    b->goToTab(1);
    QCOMPARE(b->grid(u"Grid2"_s)->rows(), 1);
    QVERIFY(!b->control(u"Command2"_s)->isEnabled());
    QCOMPARE(b->focus(), u"DataIni"_s);
}

namespace {

// Notes each painting of a widget.
class PaintCounter : public QObject {
  public:
    explicit PaintCounter(QWidget* target) { target->installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override {
        times += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
    int times = 0;
};

} // namespace

void TstMetasProgresso::waitingLabel() {
    b->shop().meta(1, u"P1"_s, u"10"_s);
    b->open();
    b->goToTab(1);
    PaintCounter painting(b->control(u"Label7"_s));
    run();
    QCOMPARE(painting.times, 1);
    QVERIFY(!b->control(u"Label7"_s)->isVisible());
}

// The computation is cut before each of its statements in turn: one report, and the screen goes on to close.
void TstMetasProgresso::cutAtEveryStatement() {
    constexpr int commands = 9;
    b->shop().meta(1, u"P1"_s, u"10"_s);
    FaultProxy proxy(b->server().socket());
    for (int k = 1; k <= commands; ++k) {
        b->server().useSocket(proxy.socket());
        b->open();
        b->goToTab(1);
        ModalHelper boxes;
        boxes.expectContaining(u"a próxima operação tentará abri-la novamente"_s, QMessageBox::Ok);
        proxy.cutBefore(k);
        b->press(u"Command4"_s);
        QCOMPARE(boxes.problem(), QString());
        QVERIFY(!proxy.cutAt().isNull());
        QVERIFY(!b->control(u"Label7"_s)->isVisible());
        QVERIFY(!b->control(u"Command2"_s)->isEnabled());
        b->key(Qt::Key_Escape);
        QVERIFY(!b->screen()->isVisible());
    }
}

QTEST_MAIN(TstMetasProgresso)
#include "tst_metas_progresso.moc"
