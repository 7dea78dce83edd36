#include "base/Clock.h"
#include "base/Datas.h"
#include "core/PrintLayout.h"
#include "reports/Comissao.h"
#include "support/Amounts.h"
#include "support/Bench.h"
#include "support/EventWatcher.h"
#include "support/ModalHelper.h"
#include "support/Preview.h"
#include "ui/DateBox.h"
#include "ui/grid/Grid.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

const QColor yellow(255, 255, 0);
const QColor green(0, 255, 0);

bool isBread(const QString& descricao) {
    // The server compares without regard to case and accents.
    return descricao.toUpper().replace(u'Ã', u'A').contains(u"PAO"_s);
}

/// "1,5" of hundredths, one decimal: the percentages' display.
QString percentage(const QString& ponto) {
    return ponto.isEmpty() ? QString() : onScreen(proportion(cents(ponto), 1, 10), 1);
}

/// Tenths of a displayed percentage.
qint64 tenths(const QString& screen) {
    return QString(screen).remove(u',').toLongLong();
}

} // namespace

/// The commission run: statements, control break, figures, colours.
class TstComissao : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { m = std::make_unique<Bench>(); }
    void cleanupTestCase() { m.reset(); }
    void init();
    void cleanup() { screen.reset(); }

    void opensWithThePreviousMonth_data();
    void opensWithThePreviousMonth();
    void captionsWidthsAndNames();
    void refusesBadPeriods_data();
    void refusesBadPeriods();
    void refusedPeriodLeavesTheGrid();
    void sendsTheStatementsInTheirOrder();
    void figuresOfARandomMonth_data();
    void figuresOfARandomMonth();
    void coloursBoldAndPictures();
    void breadByTheWordInTheDescription_data();
    void breadByTheWordInTheDescription();
    void currentDescriptionReplacesTheInvoices();
    void returnedBreadLowersBread();
    void counterExchangesAreReturns();
    void sellerWithoutARow();
    void nullPercentages();
    void twoSellersOfOneName();
    void invoicesWithoutSellerAreLeftOut();
    void seriesMustMatch();
    void oneDayPeriod();
    void rowCounts_data();
    void rowCounts();
    void nothingInThePeriod();
    void onlyExchangesIsADivisionByZero();
    void sellersLeftByAnErrorCanBeEdited();
    void totalSalesOfZeroIsADivisionByZero();
    void percentagesAreExact();
    void failingStatementLeavesTheScreenUsable();
    void busyLabelIsSeenWhileRunning();
    void masksFromAThousandOn();
    void refusedDatesAreTypedOver_data();
    void refusedDatesAreTypedOver();
    void altKeysAreTold();
    void runsAgainFromEmpty();
    void altKeysTakeADateWithSingleDigits();
    void byKeyboardAlone();

  private:
    Grid* grid() const { return control<Grid>(screen.get(), "Grid1"); }
    void periodo(const QString& inicio, const QString& fim);
    void run() { QTest::mouseClick(control<QPushButton>(screen.get(), "Command4"), Qt::LeftButton); }
    QPushButton* imprime() const { return control<QPushButton>(screen.get(), "Command1"); }
    void venda(int vendedor, const QString& valor, const QString& descricao, const QString& cfop = u"5102"_s);
    QList<QStringList> expectedRows(const QString& inicio, const QString& fim);

    std::unique_ptr<Bench> m;
    std::unique_ptr<Comissao> screen;
    int m_nota = 0;
};

void TstComissao::init() {
    m->resetConnected();
    m_nota = 0;
    screen = std::make_unique<Comissao>();
    QVERIFY(showActive(screen.get()));
    m->mark();
}

void TstComissao::periodo(const QString& inicio, const QString& fim) {
    control<DateBox>(screen.get(), "DataIni")->setText(inicio);
    control<DateBox>(screen.get(), "DataFin")->setText(fim);
}

// A returned invoice when the code is one of a return.
void TstComissao::venda(int vendedor, const QString& valor, const QString& descricao, const QString& cfop) {
    ++m_nota;
    m->shop().nota(m_nota, vendedor, u"CLIENTE"_s);
    LinhaFiscal l;
    l.nota = m_nota;
    l.entrsai = cfop.startsWith(u'1') ? u"E"_s : u"S"_s;
    l.cfop = cfop;
    l.codigo = u"SEM CADASTRO"_s;
    l.descricao = descricao;
    l.totalVenda = valor;
    m->shop().linhaFiscal(l);
}

// All rows of the grid from the raw rows, with the test's own arithmetic, by seller name.
QList<QStringList> TstComissao::expectedRows(const QString& inicio, const QString& fim) {
    const QStringList vendas = {u"5101"_s, u"5102"_s, u"5104"_s, u"5401"_s, u"5403"_s, u"5405"_s,
                                u"6101"_s, u"6102"_s, u"6104"_s, u"6401"_s, u"6403"_s, u"6404"_s};
    const QStringList devolucoes = {u"1202"_s, u"1411"_s, u"2202"_s, u"2411"_s};
    QMap<QString, QString> descriptionOf;
    for (const QStringList& p : m->server().query(u"SELECT codfabr, descricao FROM produtos"_s))
        descriptionOf[p[0]] = p[1];
    QMap<QString, QString> vendedorDaNota;
    for (const QStringList& n : m->server().query(u"SELECT nrnf, SerieNF, CodVendedor FROM nfsaida"_s))
        vendedorDaNota[n[0] + u'/' + n[1]] = n[2];
    struct Somas {
        qint64 pao = 0;
        qint64 outros = 0;
        qint64 trocas = 0;
    };
    QMap<QString, Somas> bySeller;
    for (const QStringList& l : m->server().query(u"SELECT nr_nf, serienf, dataemissao, entrsai, "
                                                  u"cancelado, cfop, codigo, descricao, totalvenda FROM "
                                                  "movsaient"_s)) {
        const QString vendedor = vendedorDaNota.value(l[0] + u'/' + l[1]);
        if (l[2] < inicio || l[2] > fim || l[4] != u"N" || vendedor.toInt() <= 0)
            continue;
        qint64 valor = cents(l[8]);
        if (l[3] == u"E" && devolucoes.contains(l[5]))
            valor = -valor;
        else if (l[3] != u"S" || !vendas.contains(l[5]))
            continue;
        Somas& somas = bySeller[vendedor];
        (isBread(descriptionOf.value(l[6], l[7])) ? somas.pao : somas.outros) += valor;
    }
    QMap<QString, qint64> trocas;
    for (const QStringList& t : m->server().query(
             u"SELECT Vendedor, quantidade, pcfabrica, situacaoorc, databaixa FROM Orcamento_Troca"_s))
        if (t[3] == u"B" && t[4] >= inicio && t[4] <= fim)
            trocas[t[0]] += QString(t[1]).remove(u'.').toLongLong() * cents(t[2]);
    for (auto t = trocas.cbegin(); t != trocas.cend(); ++t)
        bySeller[t.key()].trocas = centsOfHundredThousandths(t.value());

    QMap<QString, QStringList> cadastro;
    for (const QStringList& v :
         m->server().query(u"SELECT codigovend, vendedor, ComissEsp1, ComissEsp2 FROM vendedores"_s))
        cadastro[v[0]] = v;
    QMap<QString, QStringList> byName;
    std::array<qint64, 13> soma = {};
    for (auto v = bySeller.cbegin(); v != bySeller.cend(); ++v) {
        const QStringList data = cadastro.value(v.key(), {v.key(), QString(), QString(), QString()});
        const QString porcPao = percentage(data[2]);
        const QString porcOutros = percentage(data[3]);
        const qint64 comissaoPao = proportion(v->pao, tenths(porcPao), 1000);
        const qint64 comissaoOutros = proportion(v->outros, tenths(porcOutros), 1000);
        const qint64 vendido = v->pao + v->outros;
        byName.insert(data[1] + u'/' + v.key(),
                      {v.key(), data[1], onScreen(v->pao), porcPao, onScreen(comissaoPao),
                       onScreen(v->outros), porcOutros, onScreen(comissaoOutros), onScreen(vendido),
                       onScreen(comissaoPao + comissaoOutros), onScreen(v->trocas),
                       onScreen(proportion(v->trocas, 10000, vendido)), QString()});
        soma[2] += v->pao;
        soma[4] += comissaoPao;
        soma[5] += v->outros;
        soma[7] += comissaoOutros;
        soma[8] += vendido;
        soma[9] += comissaoPao + comissaoOutros;
        soma[10] += v->trocas;
    }
    QList<QStringList> all = byName.values();
    if (all.isEmpty())
        return all;
    all.append(QStringList(13, QString()));
    QStringList totais(13, QString());
    totais[1] = u"***TOTAL-***"_s;
    for (const int column : {2, 4, 5, 7, 8, 9, 10})
        totais[column] = onScreen(soma[static_cast<size_t>(column)]);
    totais[11] = onScreen(proportion(soma[10], 10000, soma[8]));
    all.append(totais);
    return all;
}

void TstComissao::opensWithThePreviousMonth_data() {
    QTest::addColumn<QDate>("today");
    QTest::addColumn<QString>("inicio");
    QTest::addColumn<QString>("fim");
    QTest::newRow("1 March, leap year") << QDate(2024, 3, 1) << u"01/02/2024"_s << u"29/02/2024"_s;
    QTest::newRow("1 March") << QDate(2023, 3, 1) << u"01/02/2023"_s << u"28/02/2023"_s;
    QTest::newRow("January") << QDate(2024, 1, 20) << u"01/12/2023"_s << u"31/12/2023"_s;
}

void TstComissao::opensWithThePreviousMonth() {
    QFETCH(QDate, today);
    const QDateTime before = clock::now();
    clock::fix(QDateTime(today, QTime(8, 0)));
    screen = std::make_unique<Comissao>();
    clock::fix(before);
    QTEST(control<DateBox>(screen.get(), "DataIni")->text(), "inicio");
    QTEST(control<DateBox>(screen.get(), "DataFin")->text(), "fim");
}

void TstComissao::captionsWidthsAndNames() {
    QCOMPARE(screen->windowTitle(), u" Comissão dos Vendedores"_s);
    QCOMPARE(control<QPushButton>(screen.get(), "Command4")->text(), u"&Gerar Relatório"_s);
    QCOMPARE(imprime()->text(), u"&Imprime"_s);
    QVERIFY(!imprime()->isEnabled());
    QCOMPARE(control<QLabel>(screen.get(), "Label3")->text(), u"AGUARDE...."_s);
    QVERIFY(control<QLabel>(screen.get(), "Label3")->isHidden());
    QCOMPARE(control<QLabel>(screen.get(), "Label2")->text(), u"PERÍODO"_s);
    QVERIFY(control<QLineEdit>(screen.get(), "TextGrid")->isHidden());
    QVERIFY(!control<QLabel>(screen.get(), "Image1")->pixmap().isNull());
    QCOMPARE(cells(grid(), 0),
             QStringList({u"CÓDIGO"_s, u"VENDEDOR"_s, u"R$ TOTAL PÃO"_s, u"% COMISÃO"_s, u"R$ COMISSÃO"_s,
                          u"R$ TOTAL OUTROS"_s, u"% COMISSÃO"_s, u"R$ COMISSÃO"_s, u"R$ TOTAL VENDAS"_s,
                          u"R$ TOTAL COMISSÃO"_s, u"R$ DEVOLUÇÕES"_s, u"% DEVOLUÇÕES"_s, u"IMPRIME"_s}));
    QCOMPARE(columnWidths(grid()),
             QList<int>({800, 1300, 1400, 1400, 1400, 1600, 1400, 1400, 1600, 1600, 1400, 1400, 920}));
    QCOMPARE(alignments(grid()), u"><>>>>>>>>>>^"_s);
    for (int column = 0; column < grid()->columns(); ++column)
        QVERIFY(grid()->isBold(0, column));
    QCOMPARE(grid()->rows(), 1);
    QCOMPARE(m->statements(), QStringList());
}

void TstComissao::refusesBadPeriods_data() {
    QTest::addColumn<QString>("inicio");
    QTest::addColumn<QString>("fim");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("focus");
    const QString good = u"01/02/2024"_s;
    QTest::newRow("31/02") << u"31/02/2024"_s << good << u"Data inicial inválida. Verifique!!!"_s
                           << u"DataIni"_s;
    QTest::newRow("both, the start first")
        << u"31/02/2024"_s << u"29/02/2023"_s << u"Data inicial inválida. Verifique!!!"_s << u"DataIni"_s;
    QTest::newRow("half typed") << u"1"_s << good << u"Data inicial inválida. Verifique!!!"_s << u"DataIni"_s;
    QTest::newRow("zeros") << u"00/00/0000"_s << good << u"Data inicial inválida. Verifique!!!"_s
                           << u"DataIni"_s;
    QTest::newRow("no end") << good << QString() << u"Data final inválida. Verifique!!!"_s << u"DataFin"_s;
    QTest::newRow("end 29/02/2023") << good << u"29/02/2023"_s << u"Data final inválida. Verifique!!!"_s
                                    << u"DataFin"_s;
    QTest::newRow("inverted") << u"02/02/2024"_s << good
                              << u"Data inicial superior a data final. Verifique!!!"_s << u"DataIni"_s;
}

void TstComissao::refusesBadPeriods() {
    QFETCH(QString, inicio);
    QFETCH(QString, fim);
    QFETCH(QString, message);
    QFETCH(QString, focus);
    periodo(inicio, fim);
    ModalHelper modal;
    modal.expect(message, QMessageBox::Ok);
    run();
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(modal.boxes()[0].title, u"Atenção!!!"_s);
    QCOMPARE(screen->focusWidget()->objectName(), focus);
    QCOMPARE(m->statements(), QStringList());
}

void TstComissao::refusedPeriodLeavesTheGrid() {
    venda(1, u"10.00"_s, u"BOLO"_s);
    run();
    const QList<QStringList> before = allCells(grid());
    QCOMPARE(before.size(), 3);
    for (const auto& [inicio, fim] :
         {std::pair(u"31/02/2024"_s, u"29/02/2024"_s), std::pair(u"01/02/2024"_s, u"30/02/2024"_s),
          std::pair(u"02/02/2024"_s, u"01/02/2024"_s)}) {
        periodo(inicio, fim);
        m->mark();
        ModalHelper modal;
        modal.expectContaining(u"Verifique!!!"_s, QMessageBox::Ok);
        run();
        QCOMPARE(modal.problem(), QString());
        QCOMPARE(allCells(grid()), before);
        QVERIFY(imprime()->isEnabled());
        QCOMPARE(m->statements(), QStringList());
    }
}

void TstComissao::sendsTheStatementsInTheirOrder() {
    venda(1, u"10.00"_s, u"BOLO"_s);
    m->mark();
    run();
    const QString inicio =
        u"INSERT INTO relat2 (CODIGO1, TEXTO1, CODIGO2, valor1, DATA1, TEXTO3) SELECT m.codigo, m.descricao, "
        "n.CodVendedor, "_s;
    const QString middle =
        u", m.dataemissao, 'OUTROS' AS Outros FROM movsaient AS m Inner JOIN nfsaida AS n ON "
        "m.nr_nf=n.nrnf AND m.serienf=n.SerieNF WHERE m.dataemissao>='2024-02-01' AND "
        "m.dataemissao<='2024-02-29' AND m.entrsai="_s;
    const QStringList expected = {
        u"TRUNCATE relat2"_s,
        inicio + u"m.totalvenda"_s + middle +
            u"'S' AND n.CodVendedor>0 AND m.cancelado='N' and m.cfop in "
            "('5101','5102','5104','5401','5403','5405','6101','6102','6104','6401','6403','6404')"_s,
        inicio + u"-1 * m.totalvenda"_s + middle +
            u"'E' AND n.CodVendedor>0 AND m.cancelado='N' and m.cfop in ('1202','1411','2202','2411')"_s,
        u"INSERT INTO relat2 (CODIGO1, CODIGO2, valor1, TEXTO3) SELECT '***DEVOLUÇÃO', Vendedor, "
        "ifnull(SUM(quantidade*pcfabrica),0) as TotalPed, '***DEVOLUÇÃO' AS Devolucao FROM Orcamento_Troca "
        "WHERE situacaoorc='B' AND databaixa BETWEEN '2024-02-01' AND '2024-02-29' Group By vendedor"_s,
        u"UPDATE relat2 AS r, produtos AS p SET r.TEXTO1=p.descricao WHERE r.CODIGO1=p.codfabr"_s,
        u"UPDATE relat2 AS r, vendedores AS v SET r.TEXTO2=v.vendedor WHERE r.CODIGO2=v.codigovend"_s,
        u"UPDATE relat2 SET TEXTO3='PÃO' WHERE TEXTO1 LIKE '%PÃO%' OR TEXTO1 LIKE '%PAO%'"_s,
        u"SELECT r.codigo2, r.texto2, r.texto3, SUM(r.valor1) as TotVenda, v.ComissEsp1, v.ComissEsp2 FROM "
        "relat2 as r left join vendedores as v on r.codigo2=v.codigovend GROUP BY r.codigo2,r.texto3 ORDER "
        "BY "
        "r.TEXTO2, r.texto2"_s};
    QCOMPARE(m->statements(), StatementLog::expected(expected));
}

void TstComissao::figuresOfARandomMonth_data() {
    QTest::addColumn<quint32>("seed");
    QTest::addColumn<QString>("inicio");
    QTest::addColumn<QString>("fim");
    QTest::newRow("february") << 11u << u"2024-02-01"_s << u"2024-02-29"_s;
    QTest::newRow("another february") << 12u << u"2024-02-01"_s << u"2024-02-29"_s;
    QTest::newRow("one day") << 13u << u"2024-02-20"_s << u"2024-02-20"_s;
}

void TstComissao::figuresOfARandomMonth() {
    QFETCH(quint32, seed);
    QFETCH(QString, inicio);
    QFETCH(QString, fim);
    m->shop().movimento(seed);
    periodo(TextoTela(QDate::fromString(inicio, Qt::ISODate)),
            TextoTela(QDate::fromString(fim, Qt::ISODate)));
    run();
    const QList<QStringList> all = expectedRows(inicio, fim);
    QVERIFY(all.size() > 8);
    QCOMPARE(allCells(grid()), all);
    QVERIFY(imprime()->isEnabled());
}

void TstComissao::coloursBoldAndPictures() {
    m->shop().vendedor(1, u"ANA"_s, u"3"_s, u"1.5"_s);
    m->shop().vendedor(2, u"BETO"_s, u"3"_s, u"1.5"_s);
    venda(1, u"10.00"_s, u"BOLO"_s);
    venda(2, u"10.00"_s, u"PAO"_s);
    run();
    QCOMPARE(grid()->rows(), 5);
    for (int row = 1; row < grid()->rows(); ++row)
        for (int column = 0; column < grid()->columns(); ++column) {
            const QColor colour = column >= 2 && column <= 4   ? yellow
                                  : column >= 5 && column <= 7 ? green
                                                               : QColor();
            QCOMPARE(grid()->backColor(row, column), colour);
            QCOMPARE(grid()->isBold(row, column), row == 4);
            QCOMPARE(grid()->hasPicture(row, column), column == 12 && row <= 2);
        }
}

void TstComissao::breadByTheWordInTheDescription_data() {
    QTest::addColumn<QString>("descricao");
    QTest::addColumn<bool>("pao");
    QTest::newRow("PAO FRANCES") << u"PAO FRANCES"_s << true;
    QTest::newRow("PÃO DE QUEIJO") << u"PÃO DE QUEIJO"_s << true;
    QTest::newRow("PAOZINHO") << u"PAOZINHO"_s << true;
    QTest::newRow("inside the text") << u"FARINHA DE PÃO 1KG"_s << true;
    QTest::newRow("other") << u"BOLO"_s << false;
    QTest::newRow("two words") << u"PA O"_s << false;
}

void TstComissao::breadByTheWordInTheDescription() {
    QFETCH(QString, descricao);
    QFETCH(bool, pao);
    venda(1, u"10.00"_s, descricao);
    run();
    QCOMPARE(grid()->text(1, 2), pao ? u"10,00"_s : u"0,00"_s);
    QCOMPARE(grid()->text(1, 5), pao ? u"0,00"_s : u"10,00"_s);
    QCOMPARE(m->server().query(u"SELECT Texto3 FROM relat2"_s)[0][0], pao ? u"PÃO"_s : u"OUTROS"_s);
}

void TstComissao::currentDescriptionReplacesTheInvoices() {
    m->shop().produto(u"SEM CADASTRO"_s, u"PÃO NOVO"_s);
    venda(1, u"10.00"_s, u"BOLO"_s);
    run();
    QCOMPARE(grid()->text(1, 2), u"10,00"_s);
}

void TstComissao::returnedBreadLowersBread() {
    m->shop().vendedor(1, u"ANA"_s, u"10"_s, u"1"_s);
    venda(1, u"100.00"_s, u"PÃO"_s);
    venda(1, u"50.00"_s, u"BOLO"_s);
    venda(1, u"30.00"_s, u"PÃO"_s, u"1202"_s);
    run();
    QCOMPARE(cells(grid(), 1),
             QStringList({u"1"_s, u"ANA"_s, u"70,00"_s, u"10,0"_s, u"7,00"_s, u"50,00"_s, u"1,0"_s, u"0,50"_s,
                          u"120,00"_s, u"7,50"_s, u"0,00"_s, u"0,00"_s, QString()}));
}

void TstComissao::counterExchangesAreReturns() {
    m->shop().vendedor(1, u"ANA"_s, u"10"_s, u"1"_s);
    venda(1, u"100.00"_s, u"PÃO"_s);
    m->shop().devolucao({.vendedor = 1,
                         .produto = u"P1"_s,
                         .quantidade = u"2.500"_s,
                         .baixa = u"2024-02-10"_s,
                         .cliente = u"C1"_s,
                         .custo = u"3.33"_s}); // 8.325, half up in the staging row
    m->shop().devolucao({.vendedor = 1,
                         .produto = u"P1"_s,
                         .quantidade = u"1"_s,
                         .baixa = u"2024-02-10"_s,
                         .situacao = u"A"_s,
                         .cliente = u"C1"_s,
                         .custo = u"9.00"_s});
    run();
    QCOMPARE(grid()->text(1, 10), u"8,33"_s);
    QCOMPARE(grid()->text(1, 11), u"8,33"_s);
    QCOMPARE(grid()->text(1, 8), u"100,00"_s);
}

void TstComissao::sellerWithoutARow() {
    venda(77, u"100.00"_s, u"PÃO"_s);
    run();
    QCOMPARE(cells(grid(), 1),
             QStringList({u"77"_s, QString(), u"100,00"_s, QString(), u"0,00"_s, u"0,00"_s, QString(),
                          u"0,00"_s, u"100,00"_s, u"0,00"_s, u"0,00"_s, u"0,00"_s, QString()}));
    QVERIFY(imprime()->isEnabled());
}

void TstComissao::nullPercentages() {
    m->shop().vendedor(1, u"ANA"_s, std::nullopt, u"2.55"_s);
    venda(1, u"100.00"_s, u"PÃO"_s);
    venda(1, u"100.00"_s, u"BOLO"_s);
    run();
    QCOMPARE(grid()->text(1, 3), QString());
    QCOMPARE(grid()->text(1, 4), u"0,00"_s);
    QCOMPARE(grid()->text(1, 6), u"2,6"_s); // the shown percentage counts
    QCOMPARE(grid()->text(1, 7), u"2,60"_s);
}

void TstComissao::twoSellersOfOneName() {
    m->shop().vendedor(1, u"ANA"_s, u"1"_s, u"1"_s);
    m->shop().vendedor(2, u"ANA"_s, u"2"_s, u"2"_s);
    for (const int vendedor : {1, 2, 31, 32}) { // the last two have no row, so no name either
        venda(vendedor, u"100.00"_s, u"PÃO"_s);
        venda(vendedor, u"200.00"_s, u"BOLO"_s);
        m->shop().devolucao({.vendedor = vendedor,
                             .produto = u"P1"_s,
                             .quantidade = u"1"_s,
                             .baixa = u"2024-02-10"_s,
                             .cliente = u"C1"_s,
                             .custo = u"30.00"_s});
    }
    run();
    QCOMPARE(grid()->rows(), 7);
    QSet<QString> codes;
    for (int row = 1; row <= 4; ++row) {
        codes.insert(grid()->text(row, 0));
        QCOMPARE(grid()->text(row, 2), u"100,00"_s);
        QCOMPARE(grid()->text(row, 5), u"200,00"_s);
        QCOMPARE(grid()->text(row, 10), u"30,00"_s);
        QCOMPARE(grid()->text(row, 11), u"10,00"_s);
    }
    QCOMPARE(codes, QSet<QString>({u"1"_s, u"2"_s, u"31"_s, u"32"_s}));
}

void TstComissao::invoicesWithoutSellerAreLeftOut() {
    venda(0, u"100.00"_s, u"PÃO"_s);
    venda(1, u"5.00"_s, u"PÃO"_s);
    run();
    QCOMPARE(grid()->rows(), 4);
    QCOMPARE(grid()->text(3, 8), u"5,00"_s);
}

void TstComissao::seriesMustMatch() {
    m->shop().nota(1, 1, u"CLIENTE"_s, u"1"_s);
    m->shop().nota(1, 2, u"CLIENTE"_s, u"2"_s);
    LinhaFiscal l;
    l.serie = u"2"_s;
    m->shop().linhaFiscal(l);
    run();
    QCOMPARE(grid()->rows(), 4);
    QCOMPARE(grid()->text(1, 0), u"2"_s);
}

void TstComissao::oneDayPeriod() {
    const QStringList dias = {u"2024-02-09"_s, u"2024-02-10"_s, u"2024-02-11"_s};
    const QStringList values = {u"1000.00"_s, u"20.00"_s, u"300.00"_s};
    for (int i = 0; i < dias.size(); ++i) {
        m->shop().nota(i + 1, 1, u"CLIENTE"_s);
        LinhaFiscal l;
        l.nota = i + 1;
        l.data = dias[i];
        l.totalVenda = values[i];
        m->shop().linhaFiscal(l);
        m->shop().devolucao({.vendedor = 1,
                             .produto = u"P1"_s,
                             .quantidade = u"1"_s,
                             .baixa = dias[i],
                             .cliente = u"C1"_s,
                             .custo = u"%1.00"_s.arg(i + 1)});
    }
    periodo(u"10/02/2024"_s, u"10/02/2024"_s);
    run();
    QCOMPARE(grid()->text(1, 8), u"20,00"_s);
    QCOMPARE(grid()->text(1, 10), u"2,00"_s);
}

void TstComissao::rowCounts_data() {
    QTest::addColumn<int>("vendedores");
    for (const int vendedores : {1, 22, 23, 24, 10000})
        QTest::addRow("%d", vendedores) << vendedores;
}

// Seller n sells n times 1.37 of bread at 1.5 % and n times 0.41 of other goods at 2.5 %.
void TstComissao::rowCounts() {
    QFETCH(int, vendedores);
    m->server().execute(
        u"INSERT INTO vendedores (codigovend, vendedor, ComissEsp1, ComissEsp2) SELECT seq, CONCAT('V', "
        "LPAD(seq, 5, '0')), 1.5, 2.5 FROM seq_1_to_%1; INSERT INTO nfsaida (nrnf, SerieNF, CodVendedor, "
        "razsoc) SELECT seq, '1', seq, 'CLIENTE' FROM seq_1_to_%1; INSERT INTO movsaient (nr_nf, serienf, "
        "dataemissao, entrsai, cancelado, cfop, codigo, descricao, totalvenda) SELECT seq, '1', "
        "'2024-02-10', "
        "'S', 'N', '5102', 'X', 'PÃO', seq * 1.37 FROM seq_1_to_%1; INSERT INTO movsaient (nr_nf, serienf, "
        "dataemissao, entrsai, cancelado, cfop, codigo, descricao, totalvenda) SELECT seq, '1', "
        "'2024-02-10', "
        "'S', 'N', '5102', 'X', 'BOLO', seq * 0.41 FROM seq_1_to_%1"_s.arg(vendedores));
    run();
    QCOMPARE(grid()->rows(), vendedores + 3);
    qint64 pao = 0;
    qint64 outros = 0;
    qint64 comissaoPao = 0;
    qint64 comissaoOutros = 0;
    for (int n = 1; n <= vendedores; ++n) {
        const qint64 oneBread = n * qint64(137);
        const qint64 oneOther = n * qint64(41);
        const qint64 oneBreadCommission = proportion(oneBread, 15, 1000);
        const qint64 oneOtherCommission = proportion(oneOther, 25, 1000);
        QCOMPARE(cells(grid(), n),
                 QStringList({QString::number(n), u"V"_s + QString::number(n).rightJustified(5, u'0'),
                              onScreen(oneBread), u"1,5"_s, onScreen(oneBreadCommission), onScreen(oneOther),
                              u"2,5"_s, onScreen(oneOtherCommission), onScreen(oneBread + oneOther),
                              onScreen(oneBreadCommission + oneOtherCommission), u"0,00"_s, u"0,00"_s,
                              QString()}));
        pao += oneBread;
        outros += oneOther;
        comissaoPao += oneBreadCommission;
        comissaoOutros += oneOtherCommission;
    }
    QCOMPARE(cells(grid(), vendedores + 1), QStringList(13, QString()));
    QCOMPARE(cells(grid(), vendedores + 2),
             QStringList({QString(), u"***TOTAL-***"_s, onScreen(pao), QString(), onScreen(comissaoPao),
                          onScreen(outros), QString(), onScreen(comissaoOutros), onScreen(pao + outros),
                          onScreen(comissaoPao + comissaoOutros), u"0,00"_s, u"0,00"_s, QString()}));
    QCOMPARE(columnWidths(grid()),
             QList<int>({800, 1300, 1400, 1400, 1400, 1600, 1400, 1400, 1600, 1600, 1400, 1400, 920}));
    QCOMPARE(alignments(grid()), u"><>>>>>>>>>>^"_s);
    QVERIFY(imprime()->isEnabled());
}

void TstComissao::nothingInThePeriod() {
    ModalHelper modal;
    run();
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(grid()->rows(), 1);
    QVERIFY(!imprime()->isEnabled());
    QVERIFY(control<QLabel>(screen.get(), "Label3")->isHidden());
}

void TstComissao::onlyExchangesIsADivisionByZero() {
    m->shop().vendedor(1, u"ANA"_s, u"1"_s, u"1"_s);
    m->shop().vendedor(2, u"BETO"_s, u"1"_s, u"1"_s);
    m->shop().vendedor(3, u"CARLA"_s, u"1"_s, u"1"_s);
    venda(1, u"100.00"_s, u"PÃO"_s);
    venda(3, u"100.00"_s, u"PÃO"_s);
    m->shop().devolucao({.vendedor = 2,
                         .produto = u"P1"_s,
                         .quantidade = u"1"_s,
                         .baixa = u"2024-02-10"_s,
                         .cliente = u"C1"_s,
                         .custo = u"30.00"_s});
    ModalHelper modal;
    modal.expectContaining(u"Vendedor 2 - BETO: Divisão por zero."_s, QMessageBox::Ok);
    run();
    QCOMPARE(modal.problem(), QString());
    QVERIFY(!imprime()->isEnabled());
    QVERIFY(control<QLabel>(screen.get(), "Label3")->isHidden());
    // The seller before him as the run had listed her.
    QCOMPARE(allCells(grid()),
             QList<QStringList>({{u"1"_s, u"ANA"_s, u"100,00"_s, u"1,0"_s, u"0,00"_s, u"0,00"_s, u"1,0"_s,
                                  u"0,00"_s, u"100,00"_s, u"0,00"_s, u"0,00"_s, u"0,00"_s, QString()}}));
    QVERIFY(grid()->hasPicture(1, 12));
    // The staging table as far as it was filled.
    QCOMPARE(m->server().query(u"SELECT COUNT(*) FROM relat2"_s)[0][0], u"3"_s);
    m->server().execute(u"DELETE FROM Orcamento_Troca"_s);
    run();
    QCOMPARE(grid()->rows(), 5);
    QVERIFY(imprime()->isEnabled());
}

// There is no row of totals to write into.
void TstComissao::sellersLeftByAnErrorCanBeEdited() {
    m->shop().vendedor(1, u"ANA"_s, u"1"_s, u"1"_s);
    m->shop().vendedor(2, u"BETO"_s, u"1"_s, u"1"_s);
    venda(1, u"100.00"_s, u"PÃO"_s);
    m->shop().devolucao({.vendedor = 2,
                         .produto = u"P1"_s,
                         .quantidade = u"1"_s,
                         .baixa = u"2024-02-10"_s,
                         .cliente = u"C1"_s,
                         .custo = u"30.00"_s});
    ModalHelper modal;
    modal.expectContaining(u"Vendedor 2 - BETO"_s, QMessageBox::Ok);
    run();
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(grid()->rows(), 2);
    const Hands hands(screen.get());
    hands.click(1, 3);
    hands.type(u"5"_s);
    hands.key(Qt::Key_Return);
    QCOMPARE(allCells(grid()),
             QList<QStringList>({{u"1"_s, u"ANA"_s, u"100,00"_s, u"5,0"_s, u"5,00"_s, u"0,00"_s, u"1,0"_s,
                                  u"0,00"_s, u"100,00"_s, u"5,00"_s, u"0,00"_s, u"0,00"_s, QString()}}));
}

void TstComissao::totalSalesOfZeroIsADivisionByZero() {
    m->shop().vendedor(1, u"ANA"_s, u"1"_s, u"1"_s);
    m->shop().vendedor(2, u"BETO"_s, u"1"_s, u"1"_s);
    venda(1, u"100.00"_s, u"PÃO"_s);
    venda(2, u"100.00"_s, u"PÃO"_s, u"1411"_s);
    ModalHelper modal;
    modal.expectContaining(u"Divisão por zero."_s, QMessageBox::Ok);
    run();
    QCOMPARE(modal.problem(), QString());
    QVERIFY(!imprime()->isEnabled());
    QCOMPARE(grid()->text(1, 8), u"100,00"_s);
    QCOMPARE(grid()->text(2, 8), u"-100,00"_s);
}

void TstComissao::percentagesAreExact() {
    // 0.33 at 1.5 % is 0.00495: four places would make 0.0050 of it, and two of those 0.01.
    m->shop().vendedor(1, u"ANA"_s, u"1.5"_s, u"1.5"_s);
    venda(1, u"0.33"_s, u"PÃO"_s);
    venda(1, u"1.00"_s, u"BOLO"_s); // 0.015
    m->shop().devolucao({.vendedor = 1,
                         .produto = u"P1"_s,
                         .quantidade = u"1"_s,
                         .baixa = u"2024-02-10"_s,
                         .cliente = u"C1"_s,
                         .custo = u"0.01"_s});
    run();
    QCOMPARE(grid()->text(1, 4), u"0,00"_s);
    QCOMPARE(grid()->text(1, 7), u"0,02"_s);
    QCOMPARE(grid()->text(1, 11), u"0,75"_s); // 0.7518...
}

void TstComissao::failingStatementLeavesTheScreenUsable() {
    venda(1, u"10.00"_s, u"BOLO"_s);
    run();
    QVERIFY(imprime()->isEnabled());
    m->server().execute(u"RENAME TABLE Orcamento_Troca TO guardada"_s);
    ModalHelper modal;
    modal.expectContaining(u"Orcamento_Troca"_s, QMessageBox::Ok);
    run();
    m->server().execute(u"RENAME TABLE guardada TO Orcamento_Troca"_s);
    QCOMPARE(modal.problem(), QString());
    QVERIFY(control<QLabel>(screen.get(), "Label3")->isHidden());
    QVERIFY(!imprime()->isEnabled());
    QCOMPARE(grid()->rows(), 1);
    QCOMPARE(m->server().query(u"SELECT TEXTO3 FROM relat2"_s), QList<QStringList>({{u"OUTROS"_s}}));
    run();
    QCOMPARE(grid()->rows(), 4);
    QVERIFY(imprime()->isEnabled());
}

void TstComissao::busyLabelIsSeenWhileRunning() {
    venda(1, u"10.00"_s, u"BOLO"_s);
    run();
    QCOMPARE(grid()->rows(), 4);
    m->mark();
    auto* label = control<QLabel>(screen.get(), "Label3");
    struct Moment {
        qsizetype statements; // that the server had received
        int rows;
        bool busyPointer;
        bool operator==(const Moment&) const = default;
    };
    const auto now = [this] {
        const QCursor* pointer = QApplication::overrideCursor();
        return Moment{m->texts().size(), grid()->rows(), pointer && pointer->shape() == Qt::WaitCursor};
    };
    QList<Moment> painted;
    QList<Moment> hidden;
    const EventWatcher watcher(label, [&](QEvent::Type event) {
        if (event == QEvent::Paint)
            painted.append(now());
        else if (event == QEvent::Hide)
            hidden.append(now());
    });
    control<QPushButton>(screen.get(), "Command4")->click(); // without letting the event loop run
    // The last run's rows are there when the label comes, the sellers but no totals when it goes.
    QCOMPARE(painted, QList<Moment>({{0, 4, true}}));
    QCOMPARE(hidden, QList<Moment>({{8, 2, true}}));
    QVERIFY(label->isHidden());
    QVERIFY(!QApplication::overrideCursor());
    QCOMPARE(grid()->rows(), 4);
}

// Amounts have points for the thousands, a seller's percentages have not.
void TstComissao::masksFromAThousandOn() {
    m->shop().vendedor(1, u"ANA"_s, u"999.99"_s, u"999.99"_s);
    venda(1, u"1234.50"_s, u"PÃO"_s);
    venda(1, u"2345.60"_s, u"BOLO"_s);
    m->shop().devolucao({.vendedor = 1,
                         .produto = u"P1"_s,
                         .quantidade = u"1"_s,
                         .baixa = u"2024-02-10"_s,
                         .cliente = u"C1"_s,
                         .custo = u"50000.00"_s});
    run();
    QCOMPARE(cells(grid(), 1), QStringList({u"1"_s, u"ANA"_s, u"1.234,50"_s, u"1000,0"_s, u"12.345,00"_s,
                                            u"2.345,60"_s, u"1000,0"_s, u"23.456,00"_s, u"3.580,10"_s,
                                            u"35.801,00"_s, u"50.000,00"_s, u"1396,61"_s, QString()}));
    QCOMPARE(cells(grid(), 3),
             QStringList({QString(), u"***TOTAL-***"_s, u"1.234,50"_s, QString(), u"12.345,00"_s,
                          u"2.345,60"_s, QString(), u"23.456,00"_s, u"3.580,10"_s, u"35.801,00"_s,
                          u"50.000,00"_s, u"1.396,61"_s, QString()}));
}

void TstComissao::refusedDatesAreTypedOver_data() {
    QTest::addColumn<QString>("caixa");
    QTest::addColumn<QString>("refused");
    QTest::addColumn<QString>("message");
    QTest::newRow("start") << u"DataIni"_s << u"31/02/2024"_s << u"Data inicial inválida. Verifique!!!"_s;
    QTest::newRow("end") << u"DataFin"_s << u"31/04/2024"_s << u"Data final inválida. Verifique!!!"_s;
    QTest::newRow("order") << u"DataIni"_s << u"01/03/2024"_s
                           << u"Data inicial superior a data final. Verifique!!!"_s;
}

void TstComissao::refusedDatesAreTypedOver() {
    QFETCH(QString, caixa);
    QFETCH(QString, refused);
    QFETCH(QString, message);
    auto* box = control<DateBox>(screen.get(), qPrintable(caixa));
    const Hands hands(screen.get());
    for (const bool inTheDate : {false, true}) {
        box->setText(refused);
        ModalHelper modal;
        modal.expect(message, QMessageBox::Ok);
        if (inTheDate) {
            box->setFocus();
            box->deselect();
            hands.key(Qt::Key_G, Qt::AltModifier);
        } else {
            hands.press(u"Command4"_s);
        }
        QTRY_COMPARE(modal.boxes().size(), 1); // the button shows itself pressed for a moment
        QTRY_COMPARE(Hands::focus(), caixa);
        QCOMPARE(modal.problem(), QString());
        hands.type(u"15022024"_s);
        QCOMPARE(box->text(), u"15/02/2024"_s);
    }
}

void TstComissao::altKeysAreTold() {
    QCOMPARE(control<QPushButton>(screen.get(), "Command4")->toolTip(), u"Tecla de atalho: Alt+G"_s);
    QCOMPARE(imprime()->toolTip(), u"Tecla de atalho: Alt+I"_s);
}

void TstComissao::runsAgainFromEmpty() {
    venda(1, u"100.00"_s, u"PÃO"_s);
    run();
    run();
    QCOMPARE(grid()->rows(), 4);
    QCOMPARE(m->server().query(u"SELECT COUNT(*) FROM relat2"_s)[0][0], u"1"_s);
    periodo(u"01/01/2024"_s, u"31/01/2024"_s);
    run();
    QCOMPARE(grid()->rows(), 1);
    QVERIFY(!imprime()->isEnabled());
}

// They leave the focus, and so the typed text, in the date.
void TstComissao::altKeysTakeADateWithSingleDigits() {
    venda(1, u"100.00"_s, u"PÃO"_s);
    const auto type = [this](const char* name, const QString& text, Qt::Key key) {
        auto* box = control<DateBox>(screen.get(), name);
        box->setFocus();
        QTest::keyClicks(box, text);
        m->mark();
        QTest::keyClick(box, key, Qt::AltModifier);
        QVERIFY(box->hasFocus());
    };
    type("DataFin", u"1/3/2024"_s, Qt::Key_G);
    QTRY_COMPARE(grid()->rows(), 4); // the button shows itself pressed for a moment
    QVERIFY(m->texts().value(1).contains(u"m.dataemissao<='2024-03-01'"_s));
    type("DataIni", u"2/1/2024"_s, Qt::Key_I);
    QTRY_COMPARE(CRW->formula(0), u"Titulo='PERÍODO DE 02/01/2024 À 01/03/2024'"_s);
    QTRY_VERIFY(openPreview());
    QCOMPARE(m->closePreviews(), 1);
}

void TstComissao::byKeyboardAlone() {
    venda(1, u"100.00"_s, u"PÃO"_s);
    const auto teclaNoFoco = [](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
        QCoreApplication::processEvents();
    };
    control<DateBox>(screen.get(), "DataIni")->setFocus();
    teclaNoFoco(Qt::Key_Return);
    QCOMPARE(QApplication::focusWidget()->objectName(), u"DataFin"_s);
    for (const Qt::Key key :
         {Qt::Key_1, Qt::Key_Slash, Qt::Key_3, Qt::Key_Slash, Qt::Key_2, Qt::Key_0, Qt::Key_2, Qt::Key_4})
        teclaNoFoco(key);
    QCOMPARE(control<DateBox>(screen.get(), "DataFin")->text(), u"01/03/2024"_s);
    teclaNoFoco(Qt::Key_Return);
    QCOMPARE(QApplication::focusWidget()->objectName(), u"Command4"_s);
    teclaNoFoco(Qt::Key_Space);
    QCOMPARE(grid()->rows(), 4);
    teclaNoFoco(Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget()->objectName(), u"Grid1"_s);
    teclaNoFoco(Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget()->objectName(), u"Command1"_s);
    teclaNoFoco(Qt::Key_Escape);
    QVERIFY(!screen->isVisible());
}

QTEST_MAIN(TstComissao)
#include "tst_comissao.moc"
