#include "base/Datas.h"
#include "reports/ResumoVendas.h"
#include "support/Amounts.h"
#include "support/Bench.h"
#include "support/EventWatcher.h"
#include "support/ModalHelper.h"
#include "ui/DateBox.h"
#include "ui/grid/Grid.h"

#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

const QString erroDeExecucao = u"Divisão por zero."_s;
constexpr int niveis = 4;

/// What a customer's row must hold, in cents.
struct Expected {
    QString nome;
    QString fantasia;
    int nivel = 1;
    qint64 vendas = 0;
    qint64 trocas = 0;

    QStringList row(const QString& documento) const {
        const qint64 part = vendas > 0 && trocas > 0 ? proportion(trocas, 10000, vendas) : 0;
        return {documento, nome, fantasia, onScreen(vendas), onScreen(trocas), onScreen(part)};
    }
};

} // namespace

/// The sales summary: statements, figures, tabs, labels.
class TstResumoVendas : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { m = std::make_unique<Bench>(); }
    void cleanupTestCase() { m.reset(); }
    void init();
    void cleanup() { screen.reset(); }

    void opensWithTheCurrentMonth();
    void controlsAndAccessibleNames();
    void refusesBadPeriods_data();
    void refusesBadPeriods();
    void sendsTheStatementsInTheirOrder();
    void ordersAsChosen_data();
    void ordersAsChosen();
    void figuresOfARandomMonth_data();
    void figuresOfARandomMonth();
    void salesByPrefixAndItemValueReturnsByCodeAndSaleValue();
    void periodBoundsAreInside();
    void oneDayPeriod();
    void returnsOnly();
    void unknownLevelsGoToTheFirstTab_data();
    void unknownLevelsGoToTheFirstTab();
    void documentWithoutCustomer();
    void documentOfTwoCustomers();
    void exchangesWithoutInvoicesAreDropped();
    void documentThatIsNullOrEmpty();
    void nothingSoldIsADivisionByZero();
    void salesEqualToReturnsAreADivisionByZero();
    void columnNarrowsWithTheScrollBar_data();
    void columnNarrowsWithTheScrollBar();
    void tenThousandCustomers();
    void busyLabelIsSeenWhileRunning();
    void masksFromAThousandOn();
    void failedRunLeavesTotalsOfZero();
    void handsTheWholeStatementOver();
    void refusedDatesAreTypedOver_data();
    void refusedDatesAreTypedOver();
    void tabsByKey();
    void runsAgainFromEmpty();
    void failingStatementLeavesTheScreenUsable();
    void altKeyTakesADateWithSingleDigits();
    void byKeyboardAlone();

  private:
    Grid* grid(int n) const { return control<Grid>(screen.get(), qPrintable(u"TabelaPreco(%1)"_s.arg(n))); }
    QString label(int n) const {
        return control<QLabel>(screen.get(), qPrintable(u"Label4(%1)"_s.arg(n)))->text();
    }
    QString geral() const { return control<QLabel>(screen.get(), "Label5")->text(); }
    void periodo(const QString& begin, const QString& end);
    void run() { QTest::mouseClick(control<QPushButton>(screen.get(), "Command4"), Qt::LeftButton); }
    QMap<QString, Expected> expectedRows(const QString& begin, const QString& end);

    std::unique_ptr<Bench> m;
    std::unique_ptr<ResumoVendas> screen;
};

void TstResumoVendas::init() {
    m->resetConnected();
    screen = std::make_unique<ResumoVendas>();
    QVERIFY(showActive(screen.get()));
    periodo(u"01/02/2024"_s, u"29/02/2024"_s);
    m->mark();
}

void TstResumoVendas::periodo(const QString& begin, const QString& end) {
    control<DateBox>(screen.get(), "DataIni")->setText(begin);
    control<DateBox>(screen.get(), "DataFin")->setText(end);
}

// From the raw rows, with the test's own arithmetic. Dates compare as texts.
QMap<QString, Expected> TstResumoVendas::expectedRows(const QString& begin, const QString& end) {
    const QStringList prefixes = {u"510"_s, u"511"_s, u"512"_s, u"610"_s, u"611"_s,
                                  u"612"_s, u"540"_s, u"640"_s, u"565"_s, u"665"_s};
    const QStringList devolucoes = {u"1202"_s, u"1411"_s, u"2202"_s, u"2411"_s};
    QMap<QString, Expected> documentos;
    const auto movimento = m->server().query(
        u"SELECT cnpj_cpf, dataemissao, entrsai, cancelado, cfop, totalvenda, vlr_tot_item FROM movsaient"_s);
    for (const QStringList& l : movimento) {
        if (l[1] < begin || l[1] > end || l[3] != u"N")
            continue;
        if (l[2] == u"S" && prefixes.contains(l[4].left(3)))
            documentos[l[0]].vendas += cents(l[6]);
        else if (l[2] == u"E" && devolucoes.contains(l[4]))
            documentos[l[0]].vendas -= cents(l[5]);
    }
    QMap<QString, QString> documentoDoCliente;
    const auto clientes =
        m->server().query(u"SELECT codigo, nome, fantasia, CNPJ_CPF, colunapreco FROM clientes"_s);
    for (const QStringList& c : clientes) {
        documentoDoCliente[c[0]] = c[3];
        if (!documentos.contains(c[3]))
            continue;
        Expected& e = documentos[c[3]];
        e.nome = c[1];
        e.fantasia = c[2];
        e.nivel = QStringList{u"1"_s, u"2"_s, u"3"_s, u"4"_s}.contains(c[4]) ? c[4].toInt() : 1;
    }
    QMap<QString, qint64> trocasDoCliente;
    const auto trocas = m->server().query(
        u"SELECT codigocli, quantidade, pcfabrica, situacaoorc, databaixa FROM Orcamento_Troca"_s);
    for (const QStringList& t : trocas)
        if (t[3] == u"B" && t[4] >= begin && t[4] <= end)
            trocasDoCliente[t[0]] += QString(t[1]).remove(u'.').toLongLong() * cents(t[2]);
    for (auto t = trocasDoCliente.cbegin(); t != trocasDoCliente.cend(); ++t) {
        const QString documento = documentoDoCliente.value(t.key());
        if (documentos.contains(documento))
            documentos[documento].trocas = centsOfHundredThousandths(t.value());
    }
    return documentos;
}

void TstResumoVendas::opensWithTheCurrentMonth() {
    const ResumoVendas newOne;
    auto* form = const_cast<ResumoVendas*>(&newOne);
    QCOMPARE(newOne.windowTitle(), u" Resumo de Vendas"_s);
    QCOMPARE(control<DateBox>(form, "DataIni")->text(), u"01/03/2024"_s);
    QCOMPARE(control<DateBox>(form, "DataFin")->text(), u"15/03/2024"_s);
    auto* order = control<QComboBox>(form, "order");
    QCOMPARE(order->count(), 4);
    QCOMPARE(order->itemText(0), u"ALFABÉTICA"_s);
    QCOMPARE(order->itemText(1), u"TOTAL VENDIDO"_s);
    QCOMPARE(order->itemText(2), u"TOTAL DEVOLVIDO"_s);
    QCOMPARE(order->itemText(3), u"% DEVOLVIDA"_s);
    QCOMPARE(order->currentIndex(), 0);
    QCOMPARE(control<QLabel>(form, "Label5")->text(), u"TOTAL R$ 0,00"_s);
    QVERIFY(control<QLabel>(form, "Label3")->isHidden());
    auto* abas = control<QTabWidget>(form, "TabPreco");
    QCOMPARE(abas->count(), niveis);
    for (int n = 1; n <= niveis; ++n) {
        QCOMPARE(abas->tabText(n - 1), u"Preço %1"_s.arg(n));
        const auto* tabela = control<Grid>(form, qPrintable(u"TabelaPreco(%1)"_s.arg(n)));
        QCOMPARE(cells(tabela, 0), QStringList({u"CNPJ"_s, u"RAZÃO SOCIAL"_s, u"FANTASIA"_s, u"R$ TOTAL"_s,
                                                u"R$ DEVOLUÇÃO"_s, u"% DEVOLVIDO"_s}));
        QCOMPARE(alignments(tabela), u"^<<>>>"_s);
        QCOMPARE(tabela->rows(), 1);
        QCOMPARE(columnWidths(tabela), QList<int>({1750, 4900, 3500, 1405, 1405, 1405}));
        for (int column = 0; column < tabela->columns(); ++column)
            QVERIFY(tabela->isBold(0, column));
        QCOMPARE(control<QLabel>(form, qPrintable(u"Label4(%1)"_s.arg(n)))->text(), u"TOTAL R$ 0,00"_s);
    }
    QCOMPARE(m->statements(), QStringList());
}

void TstResumoVendas::controlsAndAccessibleNames() {
    QCOMPARE(control<QPushButton>(screen.get(), "Command4")->text(), u"Gera Relatório"_s);
    QCOMPARE(control<QLabel>(screen.get(), "Label3")->text(), u"AGUARDE..."_s);
    const QMap<QString, QString> names = {
        {u"DataIni"_s, u"PERÍODO (início)"_s}, {u"DataFin"_s, u"PERÍODO (fim)"_s},
        {u"order"_s, u"ORDENAR POR"_s},        {u"TabPreco"_s, u"Níveis de preço"_s},
        {u"TabelaPreco(1)"_s, u"Preço 1"_s},   {u"TabelaPreco(2)"_s, u"Preço 2"_s},
        {u"TabelaPreco(3)"_s, u"Preço 3"_s},   {u"TabelaPreco(4)"_s, u"Preço 4"_s}};
    for (auto nome = names.cbegin(); nome != names.cend(); ++nome)
        QCOMPARE(control<QWidget>(screen.get(), qPrintable(nome.key()))->accessibleName(), nome.value());
    const auto* abas = control<QTabWidget>(screen.get(), "TabPreco");
    QAccessibleInterface* bar = QAccessible::queryAccessibleInterface(abas->tabBar());
    for (int n = 1; n <= niveis; ++n)
        QCOMPARE(bar->child(n - 1)->text(QAccessible::Name), u"Preço %1"_s.arg(n));
}

void TstResumoVendas::refusesBadPeriods_data() {
    QTest::addColumn<QString>("begin");
    QTest::addColumn<QString>("end");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("focus");
    const QString good = u"01/02/2024"_s;
    const QString initial = u"Data inicial inválida. Verifique!!!"_s;
    const QString final = u"Data final inválida. Verifique!!!"_s;
    QTest::newRow("31/02") << u"31/02/2024"_s << good << initial << u"DataIni"_s;
    QTest::newRow("29/02 of 2023") << u"29/02/2023"_s << good << initial << u"DataIni"_s;
    QTest::newRow("zeros") << u"00/00/0000"_s << good << initial << u"DataIni"_s;
    QTest::newRow("half typed") << u"01/02/20"_s << good << initial << u"DataIni"_s;
    QTest::newRow("end 31/04") << good << u"31/04/2024"_s << final << u"DataFin"_s;
    QTest::newRow("no end") << good << QString() << final << u"DataFin"_s;
    QTest::newRow("inverted") << u"02/02/2024"_s << good << u"Data inicial superior a final. Verifique!!!"_s
                              << u"DataIni"_s;
}

void TstResumoVendas::refusesBadPeriods() {
    QFETCH(QString, begin);
    QFETCH(QString, end);
    QFETCH(QString, message);
    QFETCH(QString, focus);
    periodo(begin, end);
    ModalHelper modal;
    modal.expect(message, QMessageBox::Ok);
    run();
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(modal.boxes()[0].title, u"Atenção!!!"_s);
    QCOMPARE(modal.boxes()[0].icon, QMessageBox::Information);
    QCOMPARE(screen->focusWidget()->objectName(), focus);
    QCOMPARE(m->statements(), QStringList());
}

void TstResumoVendas::sendsTheStatementsInTheirOrder() {
    m->shop().cliente({.codigo = u"C1"_s,
                       .nome = u"UM"_s,
                       .colunaPreco = u"2"_s,
                       .cnpjCpf = u"11"_s,
                       .fantasia = u"F UM"_s});
    m->shop().linhaFiscal({});
    run();
    const QStringList expected = {
        u"TRUNCATE relat2"_s,
        u"INSERT INTO relat2 (Codigo1,Valor1) SELECT cnpj_cpf, SUM(vlr_tot_item) AS totalVenda FROM "
        u"movsaient "
        "WHERE dataemissao>='2024-02-01' AND dataemissao<='2024-02-29' AND cancelado='N' AND entrsai='S' and "
        "left(cfop,3) in ('510','511','512','610','611','612','540','640','565','665') GROUP BY cnpj_cpf "
        "UNION "
        "ALL SELECT cnpj_cpf, -1*SUM(totalvenda) AS totalVenda FROM movsaient WHERE "
        "dataemissao>='2024-02-01' "
        "AND dataemissao<='2024-02-29' AND cancelado='N' AND entrsai='E' and cfop IN "
        "('1202','1411','2202','2411') GROUP BY cnpj_cpf "_s,
        u"TRUNCATE relat"_s,
        u"INSERT INTO relat (codigo1,valor1) SELECT codigo1, SUM(valor1) AS valor1 FROM relat2 GROUP BY "
        "codigo1"_s,
        u"UPDATE relat AS r, clientes AS c SET r.TEXTO1=c.nome, r.TEXTO2=c.fantasia, r.TEXTO3=c.colunapreco "
        "WHERE r.codigo1=c.cnpj_cpf"_s,
        u"UPDATE relat SET TEXTO3='1' WHERE not texto3 in ('1','2','3','4')"_s,
        u"Truncate relat2"_s,
        u"INSERT INTO relat2 (CODIGO1, valor1) SELECT codigocli, ifnull(SUM(quantidade*pcfabrica),0) as "
        "TotalPed FROM Orcamento_Troca WHERE situacaoorc='B' AND databaixa BETWEEN '2024-02-01' AND "
        "'2024-02-29' Group By CodigoCli"_s,
        u"UPDATE relat2 AS r, clientes AS c SET r.CODIGO1=c.cnpj_cpf WHERE r.CODIGO1=c.codigo"_s,
        u"UPDATE relat2 AS r2, relat AS r1 SET r1.valor2=r2.valor1 WHERE r2.CODIGO1=r1.codigo1"_s,
        u"UPDATE relat SET valor3=round(valor2*100/valor1,2) WHERE valor1>0 and valor2>0"_s,
        u"Select * From Relat Order By Texto1"_s,
        u"Select sum(Valor1) as Valor1, Texto3 From relat group by Texto3"_s};
    QCOMPARE(m->statements(), StatementLog::expected(expected));
}

void TstResumoVendas::ordersAsChosen_data() {
    QTest::addColumn<int>("item");
    QTest::addColumn<QString>("ordering");
    QTest::addColumn<QStringList>("documentos");
    QTest::newRow("alphabetic") << 0 << u"Texto1"_s << QStringList({u"33"_s, u"22"_s, u"11"_s});
    QTest::newRow("sold") << 1 << u"valor1 desc"_s << QStringList({u"22"_s, u"33"_s, u"11"_s});
    QTest::newRow("returned") << 2 << u"valor2 desc"_s << QStringList({u"33"_s, u"22"_s, u"11"_s});
    QTest::newRow("share") << 3 << u"valor3 desc"_s << QStringList({u"11"_s, u"33"_s, u"22"_s});
}

void TstResumoVendas::ordersAsChosen() {
    QFETCH(int, item);
    QFETCH(QStringList, documentos);
    const auto vende = [this](const QString& codigo, const QString& nome, const QString& documento,
                              const QString& valor, const QString& troca) {
        m->shop().cliente({.codigo = codigo,
                           .nome = nome,
                           .colunaPreco = u"3"_s,
                           .cnpjCpf = documento,
                           .fantasia = u"F "_s + nome});
        LinhaFiscal l;
        l.cnpj = documento;
        l.valorItem = valor;
        m->shop().linhaFiscal(l);
        m->shop().devolucao({.vendedor = 1,
                             .produto = u"P1"_s,
                             .quantidade = u"1"_s,
                             .baixa = u"2024-02-10"_s,
                             .cliente = codigo,
                             .custo = troca});
    };
    vende(u"C1"_s, u"CARLOS"_s, u"11"_s, u"10.00"_s, u"9.00"_s);
    vende(u"C2"_s, u"BRUNA"_s, u"22"_s, u"1000.00"_s, u"20.00"_s);
    vende(u"C3"_s, u"ANA"_s, u"33"_s, u"100.00"_s, u"30.00"_s);
    control<QComboBox>(screen.get(), "order")->setCurrentIndex(item);
    m->mark();
    run();
    QFETCH(QString, ordering);
    QVERIFY(m->statements().contains(u"Select * From Relat Order By "_s + ordering));
    QStringList shownDocuments;
    for (const QStringList& linha : allCells(grid(3)))
        shownDocuments.append(linha[0]);
    QCOMPARE(shownDocuments, documentos);
}

void TstResumoVendas::figuresOfARandomMonth_data() {
    QTest::addColumn<quint32>("seed");
    QTest::addColumn<QString>("begin");
    QTest::addColumn<QString>("end");
    QTest::newRow("february") << 1u << u"2024-02-01"_s << u"2024-02-29"_s;
    QTest::newRow("one day") << 2u << u"2024-02-15"_s << u"2024-02-15"_s;
    QTest::newRow("everything") << 3u << u"2023-01-01"_s << u"2024-12-31"_s;
}

void TstResumoVendas::figuresOfARandomMonth() {
    QFETCH(quint32, seed);
    QFETCH(QString, begin);
    QFETCH(QString, end);
    m->shop().movimento(seed);
    periodo(TextoTela(QDate::fromString(begin, Qt::ISODate)), TextoTela(QDate::fromString(end, Qt::ISODate)));
    run();
    const auto documentos = expectedRows(begin, end);
    QVERIFY(documentos.size() > 5);
    qint64 total = 0;
    QMap<int, qint64> totalDoNivel;
    QMap<int, QMap<QString, QStringList>> linhasDoNivel;
    for (auto d = documentos.cbegin(); d != documentos.cend(); ++d) {
        total += d->vendas;
        totalDoNivel[d->nivel] += d->vendas;
        linhasDoNivel[d->nivel].insert(d.key(), d->row(d.key()));
    }
    for (int n = 1; n <= niveis; ++n) {
        QMap<QString, QStringList> shownRows;
        QString previous;
        for (const QStringList& linha : allCells(grid(n))) {
            shownRows.insert(linha[0], linha);
            QVERIFY2(linha[1] >= previous, "not in alphabetic order");
            previous = linha[1];
        }
        QCOMPARE(grid(n)->rows() - 1, shownRows.size());
        QCOMPARE(shownRows, linhasDoNivel[n]);
        QCOMPARE(label(n), u"("_s + onScreen(proportion(totalDoNivel[n], 100000, total), 3) +
                               u"%)   -   TOTAL R$ "_s + onScreen(totalDoNivel[n]));
    }
    QCOMPARE(geral(), u"TOTAL GERAL R$ "_s + onScreen(total));
}

void TstResumoVendas::salesByPrefixAndItemValueReturnsByCodeAndSaleValue() {
    m->shop().cliente({.codigo = u"C1"_s,
                       .nome = u"UM"_s,
                       .colunaPreco = u"1"_s,
                       .cnpjCpf = u"11"_s,
                       .fantasia = u"F UM"_s});
    const auto linha = [this](const QString& entrsai, const QString& cfop,
                              const QString& cancelado = u"N"_s) {
        LinhaFiscal l;
        l.entrsai = entrsai;
        l.cfop = cfop;
        l.cancelado = cancelado;
        l.totalVenda = u"1.00"_s;
        l.valorItem = u"100.00"_s;
        m->shop().linhaFiscal(l);
    };
    linha(u"S"_s, u"5109"_s); // by prefix, not by the full codes of the other reports
    linha(u"S"_s, u"5910"_s);
    linha(u"S"_s, u"5102"_s, u"S"_s);
    linha(u"E"_s, u"1202"_s);
    linha(u"E"_s, u"1201"_s);
    linha(u"E"_s, u"5102"_s);
    linha(u"S"_s, u"1202"_s);
    run();
    QCOMPARE(allCells(grid(1)),
             QList<QStringList>({{u"11"_s, u"UM"_s, u"F UM"_s, u"99,00"_s, u"0,00"_s, u"0,00"_s}}));
    QCOMPARE(label(1), u"(100,000%)   -   TOTAL R$ 99,00"_s);
    QCOMPARE(label(2), u"(0,000%)   -   TOTAL R$ 0,00"_s);
    QCOMPARE(geral(), u"TOTAL GERAL R$ 99,00"_s);
}

void TstResumoVendas::periodBoundsAreInside() {
    m->shop().cliente({.codigo = u"C1"_s,
                       .nome = u"UM"_s,
                       .colunaPreco = u"1"_s,
                       .cnpjCpf = u"11"_s,
                       .fantasia = u"F UM"_s});
    const QStringList dias = {u"2024-01-31"_s, u"2024-02-01"_s, u"2024-02-29"_s, u"2024-03-01"_s};
    const QStringList values = {u"1000.00"_s, u"1.00"_s, u"10.00"_s, u"100.00"_s};
    for (int i = 0; i < dias.size(); ++i) {
        LinhaFiscal l;
        l.data = dias[i];
        l.valorItem = values[i];
        m->shop().linhaFiscal(l);
        m->shop().devolucao({.vendedor = 1,
                             .produto = u"P1"_s,
                             .quantidade = u"1"_s,
                             .baixa = dias[i],
                             .cliente = u"C1"_s,
                             .custo = values[i]});
    }
    run();
    QCOMPARE(allCells(grid(1)).value(0).mid(3), QStringList({u"11,00"_s, u"11,00"_s, u"100,00"_s}));
}

void TstResumoVendas::oneDayPeriod() {
    m->shop().linhaFiscal({});
    periodo(u"10/02/2024"_s, u"10/02/2024"_s);
    run();
    QCOMPARE(grid(1)->rows(), 2);
}

void TstResumoVendas::returnsOnly() {
    m->shop().cliente({.codigo = u"C1"_s,
                       .nome = u"UM"_s,
                       .colunaPreco = u"4"_s,
                       .cnpjCpf = u"11"_s,
                       .fantasia = u"F UM"_s});
    m->shop().cliente({.codigo = u"C2"_s,
                       .nome = u"DOIS"_s,
                       .colunaPreco = u"4"_s,
                       .cnpjCpf = u"22"_s,
                       .fantasia = u"F DOIS"_s});
    LinhaFiscal devolvida;
    devolvida.entrsai = u"E"_s;
    devolvida.cfop = u"1411"_s;
    devolvida.totalVenda = u"40.00"_s;
    m->shop().linhaFiscal(devolvida);
    LinhaFiscal venda;
    venda.cnpj = u"22"_s;
    venda.valorItem = u"1240.00"_s;
    m->shop().linhaFiscal(venda);
    m->shop().devolucao({.vendedor = 1,
                         .produto = u"P1"_s,
                         .quantidade = u"2"_s,
                         .baixa = u"2024-02-10"_s,
                         .cliente = u"C1"_s,
                         .custo = u"5.00"_s});
    run();
    QCOMPARE(allCells(grid(4)),
             QList<QStringList>({{u"22"_s, u"DOIS"_s, u"F DOIS"_s, u"1.240,00"_s, u"0,00"_s, u"0,00"_s},
                                 {u"11"_s, u"UM"_s, u"F UM"_s, u"-40,00"_s, u"10,00"_s, u"0,00"_s}}));
    QCOMPARE(geral(), u"TOTAL GERAL R$ 1.200,00"_s);
}

void TstResumoVendas::unknownLevelsGoToTheFirstTab_data() {
    QTest::addColumn<QString>("nivel");
    QTest::newRow("0") << u"0"_s;
    QTest::newRow("5") << u"5"_s;
    QTest::newRow("blank") << QString();
    QTest::newRow("a letter") << u"X"_s;
    QTest::newRow("NULL") << u"NULL"_s;
}

void TstResumoVendas::unknownLevelsGoToTheFirstTab() {
    QFETCH(QString, nivel);
    m->shop().cliente({.codigo = u"C1"_s,
                       .nome = u"UM"_s,
                       .colunaPreco = nivel,
                       .cnpjCpf = u"11"_s,
                       .fantasia = u"F UM"_s});
    m->shop().linhaFiscal({});
    run();
    QCOMPARE(grid(1)->rows(), 2);
    for (int n = 2; n <= niveis; ++n)
        QCOMPARE(grid(n)->rows(), 1);
    QCOMPARE(label(1), u"(100,000%)   -   TOTAL R$ 10,00"_s);
}

void TstResumoVendas::documentWithoutCustomer() {
    m->shop().cliente({.codigo = u"C1"_s,
                       .nome = u"UM"_s,
                       .colunaPreco = u"2"_s,
                       .cnpjCpf = u"11"_s,
                       .fantasia = u"F UM"_s});
    m->shop().linhaFiscal({});
    LinhaFiscal withoutRecord;
    withoutRecord.cnpj = u"99"_s;
    withoutRecord.valorItem = u"30.00"_s;
    m->shop().linhaFiscal(withoutRecord);
    run();
    QCOMPARE(allCells(grid(1)),
             QList<QStringList>({{u"99"_s, QString(), QString(), u"30,00"_s, u"0,00"_s, u"0,00"_s}}));
    QCOMPARE(label(1), u"(75,000%)   -   TOTAL R$ 30,00"_s);
    QCOMPARE(label(2), u"(25,000%)   -   TOTAL R$ 10,00"_s);
    QCOMPARE(geral(), u"TOTAL GERAL R$ 40,00"_s);
}

void TstResumoVendas::documentOfTwoCustomers() {
    m->shop().cliente({.codigo = u"C1"_s,
                       .nome = u"UM"_s,
                       .colunaPreco = u"2"_s,
                       .cnpjCpf = u"11"_s,
                       .fantasia = u"F UM"_s});
    m->shop().cliente({.codigo = u"C2"_s,
                       .nome = u"OUTRO"_s,
                       .colunaPreco = u"2"_s,
                       .cnpjCpf = u"11"_s,
                       .fantasia = u"F OUTRO"_s});
    m->shop().linhaFiscal({});
    m->shop().devolucao({.vendedor = 1,
                         .produto = u"P1"_s,
                         .quantidade = u"1"_s,
                         .baixa = u"2024-02-10"_s,
                         .cliente = u"C1"_s,
                         .custo = u"1.00"_s});
    m->shop().devolucao({.vendedor = 1,
                         .produto = u"P1"_s,
                         .quantidade = u"1"_s,
                         .baixa = u"2024-02-10"_s,
                         .cliente = u"C2"_s,
                         .custo = u"2.00"_s});
    run();
    QCOMPARE(grid(2)->rows(), 2);
    const QStringList linha = cells(grid(2), 1);
    QVERIFY(QStringList({u"UM"_s, u"OUTRO"_s}).contains(linha[1]));
    QCOMPARE(linha[2], u"F "_s + linha[1]);
    QCOMPARE(linha[3], u"10,00"_s);
    QVERIFY(QStringList({u"1,00"_s, u"2,00"_s}).contains(linha[4]));
    QCOMPARE(geral(), u"TOTAL GERAL R$ 10,00"_s);
}

void TstResumoVendas::exchangesWithoutInvoicesAreDropped() {
    m->shop().cliente({.codigo = u"C1"_s,
                       .nome = u"UM"_s,
                       .colunaPreco = u"1"_s,
                       .cnpjCpf = u"11"_s,
                       .fantasia = u"F UM"_s});
    m->shop().cliente({.codigo = u"C2"_s,
                       .nome = u"DOIS"_s,
                       .colunaPreco = u"1"_s,
                       .cnpjCpf = u"22"_s,
                       .fantasia = u"F DOIS"_s});
    m->shop().linhaFiscal({});
    m->shop().devolucao({.vendedor = 1,
                         .produto = u"P1"_s,
                         .quantidade = u"1"_s,
                         .baixa = u"2024-02-10"_s,
                         .cliente = u"C2"_s,
                         .custo = u"5.00"_s});
    m->shop().devolucao({.vendedor = 1,
                         .produto = u"P1"_s,
                         .quantidade = u"1"_s,
                         .baixa = u"2024-02-10"_s,
                         .situacao = u"A"_s,
                         .cliente = u"C1"_s,
                         .custo = u"5.00"_s});
    run();
    QCOMPARE(allCells(grid(1)),
             QList<QStringList>({{u"11"_s, u"UM"_s, u"F UM"_s, u"10,00"_s, u"0,00"_s, u"0,00"_s}}));
}

// Neither is anybody's: never lost from the totals, and shown with the first level.
void TstResumoVendas::documentThatIsNullOrEmpty() {
    m->shop().cliente({.codigo = u"C1"_s,
                       .nome = u"UM"_s,
                       .colunaPreco = u"2"_s,
                       .cnpjCpf = u"11"_s,
                       .fantasia = u"F UM"_s});
    m->shop().cliente({.codigo = u"C2"_s,
                       .nome = u"SEM DOCUMENTO"_s,
                       .colunaPreco = u"2"_s,
                       .cnpjCpf = u"apagado"_s,
                       .fantasia = u"F SEM DOCUMENTO"_s});
    m->server().execute(u"UPDATE clientes SET CNPJ_CPF=NULL WHERE codigo='C2'"_s);
    m->shop().linhaFiscal({});
    const auto venda = [this](const QString& documento, const QString& valor) {
        LinhaFiscal l;
        l.cnpj = documento;
        l.valorItem = valor;
        m->shop().linhaFiscal(l);
    };
    venda(u"nulo"_s, u"20.00"_s);
    venda(u"nulo"_s, u"5.00"_s);
    venda(QString(), u"7.50"_s);
    m->server().execute(u"UPDATE movsaient SET cnpj_cpf=NULL WHERE cnpj_cpf='nulo'"_s);
    run();
    QList<QStringList> withoutCustomer = allCells(grid(1));
    std::sort(withoutCustomer.begin(), withoutCustomer.end());
    QCOMPARE(withoutCustomer,
             QList<QStringList>({{QString(), QString(), QString(), u"25,00"_s, u"0,00"_s, u"0,00"_s},
                                 {QString(), QString(), QString(), u"7,50"_s, u"0,00"_s, u"0,00"_s}}));
    QCOMPARE(label(1), u"(76,471%)   -   TOTAL R$ 32,50"_s);
    QCOMPARE(label(2), u"(23,529%)   -   TOTAL R$ 10,00"_s);
    QCOMPARE(geral(), u"TOTAL GERAL R$ 42,50"_s);
}

void TstResumoVendas::nothingSoldIsADivisionByZero() {
    ModalHelper modal;
    modal.expectContaining(erroDeExecucao, QMessageBox::Ok);
    run();
    QCOMPARE(modal.problem(), QString());
    QVERIFY(control<QLabel>(screen.get(), "Label3")->isHidden());
    m->shop().linhaFiscal({});
    run();
    QCOMPARE(geral(), u"TOTAL GERAL R$ 10,00"_s);
}

void TstResumoVendas::salesEqualToReturnsAreADivisionByZero() {
    m->shop().cliente({.codigo = u"C1"_s,
                       .nome = u"UM"_s,
                       .colunaPreco = u"2"_s,
                       .cnpjCpf = u"11"_s,
                       .fantasia = u"F UM"_s});
    m->shop().cliente({.codigo = u"C2"_s,
                       .nome = u"DOIS"_s,
                       .colunaPreco = u"3"_s,
                       .cnpjCpf = u"22"_s,
                       .fantasia = u"F DOIS"_s});
    m->shop().linhaFiscal({});
    LinhaFiscal devolvida;
    devolvida.entrsai = u"E"_s;
    devolvida.cfop = u"1202"_s;
    devolvida.cnpj = u"22"_s;
    m->shop().linhaFiscal(devolvida);
    control<QLabel>(screen.get(), "Label5")->setText(u"DE ANTES"_s);
    ModalHelper modal;
    modal.expectContaining(erroDeExecucao, QMessageBox::Ok);
    run();
    QCOMPARE(modal.problem(), QString());
    // As far as it came: the customers and the grand total.
    QCOMPARE(allCells(grid(2)),
             QList<QStringList>({{u"11"_s, u"UM"_s, u"F UM"_s, u"10,00"_s, u"0,00"_s, u"0,00"_s}}));
    QCOMPARE(allCells(grid(3)),
             QList<QStringList>({{u"22"_s, u"DOIS"_s, u"F DOIS"_s, u"-10,00"_s, u"0,00"_s, u"0,00"_s}}));
    QCOMPARE(geral(), u"TOTAL GERAL R$ 0,00"_s);
    for (int n = 1; n <= niveis; ++n)
        QCOMPARE(label(n), u"TOTAL R$ 0,00"_s);
    QVERIFY(control<QLabel>(screen.get(), "Label3")->isHidden());
}

void TstResumoVendas::columnNarrowsWithTheScrollBar_data() {
    QTest::addColumn<int>("clientes");
    QTest::addColumn<int>("largura");
    QTest::addColumn<int>("nivel");
    for (int n = 1; n <= niveis; ++n) {
        QTest::addRow("1 row on tab %d", n) << 1 << 4900 << n;
        QTest::addRow("22 rows on tab %d", n) << 22 << 4900 << n;
        QTest::addRow("23 rows on tab %d", n) << 23 << 4650 << n;
        QTest::addRow("24 rows on tab %d", n) << 24 << 4650 << n;
    }
}

void TstResumoVendas::columnNarrowsWithTheScrollBar() {
    QFETCH(int, clientes);
    QFETCH(int, nivel);
    for (int i = 1; i <= clientes; ++i) {
        m->shop().cliente({.codigo = u"C%1"_s.arg(i),
                           .nome = u"CLIENTE"_s,
                           .colunaPreco = QString::number(nivel),
                           .cnpjCpf = QString::number(i),
                           .fantasia = u"F CLIENTE"_s});
        LinhaFiscal l;
        l.cnpj = QString::number(i);
        m->shop().linhaFiscal(l);
    }
    run();
    QCOMPARE(grid(nivel)->rows(), clientes + 1);
    QCOMPARE(alignments(grid(nivel)), u"^<<>>>"_s);
    QTEST(grid(nivel)->columnTwips(1), "largura");
    for (int n = 1; n <= niveis; ++n)
        if (n != nivel)
            QCOMPARE(grid(n)->columnTwips(1), 4900);
    m->server().execute(u"DELETE FROM movsaient WHERE cnpj_cpf<>'1'"_s);
    run();
    QCOMPARE(grid(nivel)->columnTwips(1), 4900);
}

// More rows than come in one fetch, on each tab; figures of the test's own formula.
void TstResumoVendas::tenThousandCustomers() {
    constexpr int clientes = 10000;
    m->server().execute(
        u"INSERT INTO clientes (codigo, nome, fantasia, CNPJ_CPF, colunapreco) SELECT CONCAT('C', seq), "
        "CONCAT('CLIENTE ', LPAD(seq, 5, '0')), CONCAT('F ', seq), LPAD(seq, 14, '0'), seq % 4 + 1 FROM "
        "seq_1_to_%1; INSERT INTO movsaient (nr_nf, serienf, dataemissao, entrsai, cancelado, cfop, "
        "vlr_tot_item, cnpj_cpf) SELECT seq, '1', '2024-02-10', 'S', 'N', '5102', seq * 1.37, "
        "LPAD(seq, 14, '0') FROM seq_1_to_%1; INSERT INTO Orcamento_Troca (codigo, codigocli, Vendedor, "
        "quantidade, pcfabrica, situacaoorc, databaixa) SELECT 'P', CONCAT('C', seq), 1, 1, seq % 100 / 100, "
        "'B', '2024-02-11' FROM seq_1_to_%1"_s.arg(clientes));
    run();
    std::array<qint64, niveis> somas = {};
    std::array<int, niveis> shownRows = {};
    qint64 total = 0;
    for (int i = 1; i <= clientes; ++i) {
        const auto n = static_cast<size_t>(i % niveis);
        const qint64 vendas = i * qint64(137);
        const qint64 trocas = i % 100;
        somas[n] += vendas;
        total += vendas;
        const QString numero = QString::number(i);
        QCOMPARE(cells(grid(static_cast<int>(n) + 1), ++shownRows[n]),
                 QStringList({numero.rightJustified(14, u'0'), u"CLIENTE "_s + numero.rightJustified(5, u'0'),
                              u"F "_s + numero, onScreen(vendas), onScreen(trocas),
                              onScreen(trocas > 0 ? proportion(trocas, 10000, vendas) : 0)}));
    }
    for (int n = 1; n <= niveis; ++n) {
        QCOMPARE(grid(n)->rows(), clientes / niveis + 1);
        const qint64 soma = somas[static_cast<size_t>(n - 1)];
        QCOMPARE(label(n), u"("_s + onScreen(proportion(soma, 100000, total), 3) + u"%)   -   TOTAL R$ "_s +
                               onScreen(soma));
    }
    QCOMPARE(geral(), u"TOTAL GERAL R$ "_s + onScreen(total));
}

void TstResumoVendas::busyLabelIsSeenWhileRunning() {
    m->shop().linhaFiscal({});
    run();
    QCOMPARE(grid(1)->rows(), 2);
    m->mark();
    auto* waitingLabel = control<QLabel>(screen.get(), "Label3");
    struct BusyMoment {
        qsizetype statements; // that the server had received
        int rows;
        bool busyPointer;
        bool operator==(const BusyMoment&) const = default;
    };
    const auto now = [this] {
        const QCursor* pointer = QApplication::overrideCursor();
        return BusyMoment{m->texts().size(), grid(1)->rows(), pointer && pointer->shape() == Qt::WaitCursor};
    };
    QList<BusyMoment> painted;
    QList<BusyMoment> hidden;
    const EventWatcher watcher(waitingLabel, [&](QEvent::Type event) {
        if (event == QEvent::Paint)
            painted.append(now());
        else if (event == QEvent::Hide)
            hidden.append(now());
    });
    // Another result than the last run's, so that its rows can be told from this one's.
    m->shop().linhaFiscal({.cnpj = u"22"_s});
    m->mark();
    control<QPushButton>(screen.get(), "Command4")->click(); // without letting the event loop run
    QCOMPARE(painted, QList<BusyMoment>({{0, 2, true}}));
    QCOMPARE(hidden, QList<BusyMoment>({{13, 3, true}}));
    QVERIFY(waitingLabel->isHidden());
    QVERIFY(!QApplication::overrideCursor());
}

// A level's share has no points for the thousands, everything else has.
void TstResumoVendas::masksFromAThousandOn() {
    m->shop().cliente({.codigo = u"C1"_s, .nome = u"UM"_s, .colunaPreco = u"1"_s, .cnpjCpf = u"11"_s});
    m->shop().cliente({.codigo = u"C2"_s, .nome = u"DOIS"_s, .colunaPreco = u"2"_s, .cnpjCpf = u"22"_s});
    m->shop().linhaFiscal({.valorItem = u"5000.00"_s, .cnpj = u"11"_s});
    m->shop().linhaFiscal(
        {.entrsai = u"E"_s, .cfop = u"1202"_s, .totalVenda = u"4900.00"_s, .cnpj = u"22"_s});
    m->shop().devolucao({.vendedor = 1,
                         .produto = u"P1"_s,
                         .quantidade = u"1"_s,
                         .baixa = u"2024-02-10"_s,
                         .cliente = u"C1"_s,
                         .custo = u"61728.00"_s});
    run();
    QCOMPARE(cells(grid(1), 1).mid(3), QStringList({u"5.000,00"_s, u"61.728,00"_s, u"1.234,56"_s}));
    QCOMPARE(cells(grid(2), 1).mid(3), QStringList({u"-4.900,00"_s, u"0,00"_s, u"0,00"_s}));
    QCOMPARE(label(1), u"(5000,000%)   -   TOTAL R$ 5.000,00"_s);
    QCOMPARE(label(2), u"(-4900,000%)   -   TOTAL R$ -4.900,00"_s);
    m->shop().linhaFiscal({.valorItem = u"1134.50"_s, .cnpj = u"33"_s});
    run();
    QCOMPARE(geral(), u"TOTAL GERAL R$ 1.234,50"_s);
}

void TstResumoVendas::failedRunLeavesTotalsOfZero() {
    m->shop().linhaFiscal({});
    run();
    QCOMPARE(label(1), u"(100,000%)   -   TOTAL R$ 10,00"_s);
    m->server().execute(u"RENAME TABLE Orcamento_Troca TO guardada"_s);
    ModalHelper modal;
    modal.expectContaining(u"Orcamento_Troca"_s, QMessageBox::Ok);
    run();
    m->server().execute(u"RENAME TABLE guardada TO Orcamento_Troca"_s);
    QCOMPARE(modal.problem(), QString());
    for (int n = 1; n <= niveis; ++n) {
        QCOMPARE(label(n), u"TOTAL R$ 0,00"_s);
        QCOMPARE(grid(n)->rows(), 1);
    }
    QCOMPARE(geral(), u"TOTAL R$ 0,00"_s);
    QVERIFY(!QApplication::overrideCursor());
}

// The server's log trims the blanks at a statement's end; the error report shows it as it was sent.
void TstResumoVendas::handsTheWholeStatementOver() {
    m->server().execute(u"RENAME TABLE movsaient TO guardada"_s);
    ModalHelper modal;
    modal.expectContaining(u"movsaient"_s, QMessageBox::Ok);
    run();
    m->server().execute(u"RENAME TABLE guardada TO movsaient"_s);
    QCOMPARE(modal.problem(), QString());
    QVERIFY(modal.boxes()[0].details.endsWith(u"('1202','1411','2202','2411') GROUP BY cnpj_cpf "));
}

void TstResumoVendas::refusedDatesAreTypedOver_data() {
    QTest::addColumn<QString>("caixa");
    QTest::addColumn<QString>("refused");
    QTest::addColumn<QString>("message");
    QTest::newRow("start") << u"DataIni"_s << u"31/02/2024"_s << u"Data inicial inválida. Verifique!!!"_s;
    QTest::newRow("end") << u"DataFin"_s << u"31/04/2024"_s << u"Data final inválida. Verifique!!!"_s;
    QTest::newRow("order") << u"DataIni"_s << u"01/03/2024"_s
                           << u"Data inicial superior a final. Verifique!!!"_s;
}

void TstResumoVendas::refusedDatesAreTypedOver() {
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

void TstResumoVendas::tabsByKey() {
    QCOMPARE(control<QPushButton>(screen.get(), "Command4")->toolTip(), u"Tecla de atalho: Alt+G"_s);
    auto* tabs = control<QTabWidget>(screen.get(), "TabPreco");
    for (int n = 1; n <= niveis; ++n)
        QCOMPARE(tabs->tabToolTip(n - 1), u"Tecla de atalho: Alt+%1"_s.arg(n));
    const Hands hands(screen.get());
    for (const QString& from : {u"DataIni"_s, u"order"_s, u"Command4"_s, u"TabelaPreco(1)"_s}) {
        tabs->setCurrentIndex(0);
        hands.control(from)->setFocus();
        hands.key(Qt::Key_4, Qt::AltModifier);
        QCOMPARE(tabs->currentIndex(), 3);
        hands.key(Qt::Key_Tab, Qt::ControlModifier);
        QCOMPARE(tabs->currentIndex(), 0);
        hands.key(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(tabs->currentIndex(), 3);
    }
}

void TstResumoVendas::runsAgainFromEmpty() {
    m->shop().cliente({.codigo = u"C1"_s,
                       .nome = u"UM"_s,
                       .colunaPreco = u"2"_s,
                       .cnpjCpf = u"11"_s,
                       .fantasia = u"F UM"_s});
    m->shop().linhaFiscal({});
    run();
    run();
    QCOMPARE(grid(2)->rows(), 2);
    m->server().execute(u"UPDATE clientes SET colunapreco='3'"_s);
    run();
    QCOMPARE(grid(2)->rows(), 1);
    QCOMPARE(grid(3)->rows(), 2);
    QCOMPARE(m->server().query(u"SELECT COUNT(*) FROM relat"_s)[0][0], u"1"_s);
}

void TstResumoVendas::failingStatementLeavesTheScreenUsable() {
    m->shop().linhaFiscal({});
    m->server().execute(u"RENAME TABLE Orcamento_Troca TO guardada"_s);
    ModalHelper modal;
    modal.expectContaining(u"Orcamento_Troca"_s, QMessageBox::Ok);
    run();
    m->server().execute(u"RENAME TABLE guardada TO Orcamento_Troca"_s);
    QCOMPARE(modal.problem(), QString());
    // As far as it was filled.
    QCOMPARE(m->server().query(u"SELECT COUNT(*) FROM relat"_s)[0][0], u"1"_s);
    QVERIFY(control<QLabel>(screen.get(), "Label3")->isHidden());
    run();
    QCOMPARE(geral(), u"TOTAL GERAL R$ 10,00"_s);
}

// It leaves the focus, and so the typed text, in the date.
void TstResumoVendas::altKeyTakesADateWithSingleDigits() {
    m->shop().linhaFiscal({});
    auto* start = control<DateBox>(screen.get(), "DataIni");
    start->setFocus();
    QTest::keyClicks(start, u"1/2/2024"_s);
    m->mark();
    QTest::keyClick(start, Qt::Key_G, Qt::AltModifier);
    QVERIFY(start->hasFocus());
    QTRY_COMPARE(geral(), u"TOTAL GERAL R$ 10,00"_s); // the button shows itself pressed for a moment
    QVERIFY(m->texts().value(1).contains(u"dataemissao>='2024-02-01'"_s));
}

void TstResumoVendas::byKeyboardAlone() {
    m->shop().cliente({.codigo = u"C1"_s,
                       .nome = u"UM"_s,
                       .colunaPreco = u"2"_s,
                       .cnpjCpf = u"11"_s,
                       .fantasia = u"F UM"_s});
    m->shop().linhaFiscal({});
    const auto teclaNoFoco = [](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
        QCoreApplication::processEvents();
    };
    auto* dataIni = control<DateBox>(screen.get(), "DataIni");
    dataIni->setFocus();
    QTest::keyClicks(dataIni, u"01022024"_s);
    teclaNoFoco(Qt::Key_Return);
    QCOMPARE(QApplication::focusWidget()->objectName(), u"DataFin"_s);
    QTest::keyClicks(QApplication::focusWidget(), u"29022024"_s);
    teclaNoFoco(Qt::Key_Enter);
    QCOMPARE(QApplication::focusWidget()->objectName(), u"order"_s);
    teclaNoFoco(Qt::Key_Down);
    QCOMPARE(control<QComboBox>(screen.get(), "order")->currentIndex(), 1);
    teclaNoFoco(Qt::Key_Return);
    QCOMPARE(QApplication::focusWidget()->objectName(), u"Command4"_s);
    teclaNoFoco(Qt::Key_Space);
    QCOMPARE(geral(), u"TOTAL GERAL R$ 10,00"_s);
    teclaNoFoco(Qt::Key_Tab);
    teclaNoFoco(Qt::Key_Right); // on the tabs' bar
    auto* abas = control<QTabWidget>(screen.get(), "TabPreco");
    QCOMPARE(abas->currentIndex(), 1);
    teclaNoFoco(Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget()->objectName(), u"TabelaPreco(2)"_s);
    teclaNoFoco(Qt::Key_Escape);
    QVERIFY(!screen->isVisible());
}

QTEST_MAIN(TstResumoVendas)
#include "tst_resumo_vendas.moc"
