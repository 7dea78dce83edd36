#include "base/Datas.h"
#include "reports/Comissao.h"
#include "reports/ExtratoVendedor.h"
#include "support/Amounts.h"
#include "support/Bench.h"
#include "support/ModalHelper.h"
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

const QStringList boxes = {u"TotGerPao"_s,    u"PorcComissPao"_s,    u"TotalComissaoPao"_s,
                           u"TotGerOutros"_s, u"PorcComissOutros"_s, u"TotalComissaoOutros"_s,
                           u"TotalVendas"_s,  u"TotalComissoes"_s,   u"TotalDevolucoes"_s};

QStringList values(QWidget* screen) {
    QStringList texts;
    for (const QString& caixa : boxes)
        texts.append(control<QLineEdit>(screen, qPrintable(caixa))->text());
    return texts;
}

bool isBread(const QString& descricao) {
    return descricao.toUpper().contains(u"PÃO"_s) || descricao.toUpper().contains(u"PAO"_s);
}

} // namespace

/// The statement of a seller: statement text, control break, boxes.
class TstExtratoVendedor : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { m = std::make_unique<Bench>(); }
    void cleanupTestCase() { m.reset(); }
    void init() { m->resetConnected(); }

    void sendsTheStatement();
    void captionsWidthsAndNames();
    void titleAndBoxes();
    void figuresOfARandomMonth_data();
    void figuresOfARandomMonth();
    void returnedBreadLowersBread();
    void lowerCaseCountsAsBread();
    void saleAndReturnOfOneNumberAreOneRow();
    void sellerWithoutInvoices();
    void emptyPercentagesCountAsZero();
    void commissionsAreAddedAsShown();
    void columnNarrowsWithTheScrollBar_data();
    void columnNarrowsWithTheScrollBar();
    void tenThousandInvoices();
    void opensFromTheCommissionGrid_data();
    void opensFromTheCommissionGrid();
    void isNotOpenedForADayThatDoesNotExist_data();
    void isNotOpenedForADayThatDoesNotExist();
    void invertedPeriodOpensEmpty();
    void oneDayPeriod();
    void escapeCloses();
    void masksFromAThousandOn();
    void altKeyIsTold();

  private:
    /// Opens the statement, looks at it, closes it.
    void load(const std::function<void(QWidget*)>& look, const QString& comissaoPao = u"3,0"_s,
              const QString& comissaoOutros = u"1,5"_s, const QString& devolucao = u"0,00"_s,
              int vendedor = 7);
    QList<QStringList> loaded();
    void venda(int nota, const QString& valor, const QString& descricao, const QString& cfop = u"5102"_s,
               const QString& data = u"2024-02-10"_s);

    std::unique_ptr<Bench> m;
};

void TstExtratoVendedor::load(const std::function<void(QWidget*)>& look, const QString& comissaoPao,
                              const QString& comissaoOutros, const QString& devolucao, int vendedor) {
    ModalHelper modal;
    modal.onOpen([&look](QWidget* screen) {
        look(screen);
        screen->close();
    });
    ExtratoVendedor extrato;
    extrato.Carrega(vendedor, u"ANA & FILHOS"_s, u"01/02/2024"_s, u"29/02/2024"_s, comissaoPao,
                    comissaoOutros, devolucao);
    QCOMPARE(modal.problem(), QString());
}

QList<QStringList> TstExtratoVendedor::loaded() {
    QList<QStringList> seen;
    load([&seen](QWidget* screen) { seen = allCells(control<Grid>(screen, "Grid1")); });
    return seen;
}

void TstExtratoVendedor::venda(int nota, const QString& valor, const QString& descricao, const QString& cfop,
                               const QString& data) {
    if (m->server().query(u"SELECT 1 FROM nfsaida WHERE nrnf=%1"_s.arg(nota)).isEmpty())
        m->shop().nota(nota, 7, u"CLIENTE %1"_s.arg(nota));
    LinhaFiscal l;
    l.nota = nota;
    l.data = data;
    l.entrsai = cfop.startsWith(u'1') ? u"E"_s : u"S"_s;
    l.cfop = cfop;
    l.descricao = descricao;
    l.totalVenda = valor;
    m->shop().linhaFiscal(l);
}

void TstExtratoVendedor::sendsTheStatement() {
    m->mark();
    load([](QWidget*) {});
    const QString inicio = u" AS m Inner JOIN nfsaida AS n ON m.nr_nf=n.nrnf AND m.serienf=n.SerieNF WHERE "
                           "m.dataemissao>='2024-02-01' AND m.dataemissao<='2024-02-29' AND m.entrsai="_s;
    QCOMPARE(
        m->statements(),
        QStringList({u"SELECT m.nr_nf, m.descricao, n.razsoc, m.totalvenda, m.dataemissao FROM movsaient"_s +
                     inicio +
                     u"'S' AND n.CodVendedor=7 AND m.cancelado='N' and m.cfop in "
                     "('5101','5102','5104','5401','5403','5405','6101','6102','6104','6401','6403','6404') "
                     "Union All SELECT m.nr_nf, m.descricao, n.razsoc, -1 * m.totalvenda, m.dataemissao FROM "
                     "movsaient"_s +
                     inicio +
                     u"'E' AND n.CodVendedor=7 AND m.cancelado='N' and m.cfop in "
                     "('1202','1411','2202','2411') order by nr_nf"_s}));
}

void TstExtratoVendedor::captionsWidthsAndNames() {
    load([](QWidget* screen) {
        QCOMPARE(screen->windowTitle(), u" Extrato do Vendedor"_s);
        const auto* grid = control<Grid>(screen, "Grid1");
        QCOMPARE(cells(grid, 0), QStringList({u"DATA"_s, u"Nº NF"_s, u"CLIENTE"_s, u"R$ TOTAL PÃO"_s,
                                              u"R$ TOT.OUTROS"_s, u"R$ TOTAL NF"_s}));
        QCOMPARE(alignments(grid), u"^><>>>"_s);
        QCOMPARE(columnWidths(grid), QList<int>({1200, 1000, 5100, 1500, 1500, 1500}));
        QCOMPARE(control<QPushButton>(screen, "Command1")->text(), u"&Imprime"_s);
        const QStringList labels = {
            u"R$ TOTAL VENDA DE PÃO"_s, u"% COMISSÃO PÃO"_s,     u"R$ TOTAL COMISSÃO PÃO"_s,
            u"R$ TOTAL VENDA OUTROS"_s, u"% COMISSÃO OUTROS"_s,  u"R$ TOTAL COMISSÃO OUTROS"_s,
            u"R$ TOTAL VENDAS"_s,       u"R$ TOTAL COMISSÕES"_s, u"R$ TOTAL DEVOLUÇÕES"_s};
        for (int i = 0; i < boxes.size(); ++i) {
            const auto* caixa = control<QLineEdit>(screen, qPrintable(boxes[i]));
            QVERIFY(caixa->isReadOnly());
            QCOMPARE(caixa->accessibleName(), labels[i]);
            QCOMPARE(control<QLabel>(screen, qPrintable(u"Label"_s + boxes[i]))->text(), labels[i]);
        }
    });
}

void TstExtratoVendedor::titleAndBoxes() {
    venda(1, u"1234.50"_s, u"PÃO"_s);
    venda(1, u"100.25"_s, u"BOLO"_s);
    load(
        [](QWidget* screen) {
            QCOMPARE(control<QLabel>(screen, "Label1")->text(),
                     u"7 - ANA & FILHOS    -   PERÍODO DE 01/02/2024 A 29/02/2024"_s);
            QCOMPARE(values(screen),
                     QStringList({u"1.234,50"_s, u"3,0"_s, u"37,04"_s, u"100,25"_s, u"12,345"_s, u"12,38"_s,
                                  u"1.334,75"_s, u"49,42"_s, u"1.060,00"_s}));
            QCOMPARE(allCells(control<Grid>(screen, "Grid1")),
                     QList<QStringList>({{u"10/02/2024"_s, u"1"_s, u"CLIENTE 1"_s, u"1.234,50"_s, u"100,25"_s,
                                          u"1.334,75"_s}}));
        },
        u"3,0"_s, u"12,345"_s, u"1.060,00"_s);
}

void TstExtratoVendedor::figuresOfARandomMonth_data() {
    QTest::addColumn<quint32>("seed");
    QTest::newRow("a month") << 21u;
    QTest::newRow("another") << 22u;
}

void TstExtratoVendedor::figuresOfARandomMonth() {
    QFETCH(quint32, seed);
    m->shop().movimento(seed);
    const QStringList vendas = {u"5101"_s, u"5102"_s, u"5104"_s, u"5401"_s, u"5403"_s, u"5405"_s,
                                u"6101"_s, u"6102"_s, u"6104"_s, u"6401"_s, u"6403"_s, u"6404"_s};
    const QStringList devolucoes = {u"1202"_s, u"1411"_s, u"2202"_s, u"2411"_s};
    for (const int vendedor : {3, 9}) {
        struct Nota {
            QSet<QString> dates;
            QSet<QString> clientes;
            qint64 pao = 0;
            qint64 outros = 0;
        };
        QMap<int, Nota> notas;
        QMap<QString, QStringList> headers;
        for (const QStringList& n :
             m->server().query(u"SELECT nrnf, SerieNF, CodVendedor, razsoc FROM nfsaida"_s))
            headers[n[0] + u'/' + n[1]] = n;
        for (const QStringList& l :
             m->server().query(u"SELECT nr_nf, serienf, dataemissao, entrsai, cancelado, cfop, descricao, "
                               "totalvenda FROM movsaient"_s)) {
            const QStringList header = headers.value(l[0] + u'/' + l[1]);
            const bool leave = l[3] == u"S" && vendas.contains(l[5]);
            const bool back = l[3] == u"E" && devolucoes.contains(l[5]);
            if (header.value(2).toInt() != vendedor || l[2] < u"2024-02-01" || l[2] > u"2024-02-29" ||
                l[4] != u"N" || (!leave && !back))
                continue;
            Nota& nota = notas[l[0].toInt()];
            nota.dates.insert(TextoTela(QDate::fromString(l[2], Qt::ISODate)));
            nota.clientes.insert(header[3]);
            (isBread(l[6]) ? nota.pao : nota.outros) += leave ? cents(l[7]) : -cents(l[7]);
        }
        QVERIFY(notas.size() > 2);
        load(
            [&notas](QWidget* screen) {
                const QList<QStringList> seen = allCells(control<Grid>(screen, "Grid1"));
                QCOMPARE(seen.size(), notas.size());
                qint64 pao = 0;
                qint64 outros = 0;
                int linha = 0;
                for (auto n = notas.cbegin(); n != notas.cend(); ++n, ++linha) {
                    QVERIFY(n->dates.contains(seen[linha][0]));
                    QVERIFY(n->clientes.contains(seen[linha][2]));
                    QCOMPARE(seen[linha][1], QString::number(n.key()));
                    QCOMPARE(seen[linha].mid(3), QStringList({onScreen(n->pao), onScreen(n->outros),
                                                              onScreen(n->pao + n->outros)}));
                    pao += n->pao;
                    outros += n->outros;
                }
                const qint64 comissaoPao = proportion(pao, 30, 1000);
                const qint64 comissaoOutros = proportion(outros, 15, 1000);
                QCOMPARE(values(screen),
                         QStringList({onScreen(pao), u"3,0"_s, onScreen(comissaoPao), onScreen(outros),
                                      u"1,5"_s, onScreen(comissaoOutros), onScreen(pao + outros),
                                      onScreen(comissaoPao + comissaoOutros), u"0,00"_s}));
            },
            u"3,0"_s, u"1,5"_s, u"0,00"_s, vendedor);
    }
}

void TstExtratoVendedor::returnedBreadLowersBread() {
    venda(1, u"100.00"_s, u"PÃO"_s);
    venda(2, u"30.00"_s, u"PAO DE FORMA"_s, u"1202"_s);
    load([](QWidget* screen) {
        QCOMPARE(control<QLineEdit>(screen, "TotGerPao")->text(), u"70,00"_s);
        QCOMPARE(control<Grid>(screen, "Grid1")->text(2, 3), u"-30,00"_s);
        QCOMPARE(control<Grid>(screen, "Grid1")->text(2, 5), u"-30,00"_s);
    });
}

void TstExtratoVendedor::lowerCaseCountsAsBread() {
    venda(1, u"10.00"_s, u"pão caseiro"_s);
    venda(2, u"20.00"_s, u"mini pao"_s);
    venda(3, u"40.00"_s, u"bolo"_s);
    const QList<QStringList> seen = loaded();
    QCOMPARE(seen.value(0).mid(3), QStringList({u"10,00"_s, u"0,00"_s, u"10,00"_s}));
    QCOMPARE(seen.value(1).mid(3), QStringList({u"20,00"_s, u"0,00"_s, u"20,00"_s}));
    QCOMPARE(seen.value(2).mid(3), QStringList({u"0,00"_s, u"40,00"_s, u"40,00"_s}));
}

void TstExtratoVendedor::saleAndReturnOfOneNumberAreOneRow() {
    venda(5, u"100.00"_s, u"PÃO"_s);
    venda(5, u"30.00"_s, u"PÃO"_s, u"1202"_s);
    m->shop().nota(5, 7, u"OUTRA SÉRIE"_s, u"2"_s);
    LinhaFiscal l;
    l.nota = 5;
    l.serie = u"2"_s;
    l.totalVenda = u"7.00"_s;
    m->shop().linhaFiscal(l);
    const QList<QStringList> seen = loaded();
    QCOMPARE(seen.size(), 1);
    QCOMPARE(seen[0][3], u"77,00"_s);
}

void TstExtratoVendedor::sellerWithoutInvoices() {
    load([](QWidget* screen) {
        QCOMPARE(control<Grid>(screen, "Grid1")->rows(), 1);
        QCOMPARE(values(screen), QStringList({u"0,00"_s, u"3,0"_s, u"0,00"_s, u"0,00"_s, u"1,5"_s, u"0,00"_s,
                                              u"0,00"_s, u"0,00"_s, u"0,00"_s}));
    });
}

void TstExtratoVendedor::emptyPercentagesCountAsZero() {
    venda(1, u"100.00"_s, u"PÃO"_s);
    load(
        [](QWidget* screen) {
            QCOMPARE(values(screen), QStringList({u"100,00"_s, u"0,0"_s, u"0,00"_s, u"0,00"_s, u"0,0"_s,
                                                  u"0,00"_s, u"100,00"_s, u"0,00"_s, u"0,00"_s}));
        },
        QString(), QString(), QString());
}

void TstExtratoVendedor::commissionsAreAddedAsShown() {
    venda(1, u"0.15"_s, u"PÃO"_s);
    venda(1, u"0.15"_s, u"BOLO"_s);
    load( // 0.0045 each, shown as 0.00, although together they are nearly a cent
        [](QWidget* screen) { QCOMPARE(control<QLineEdit>(screen, "TotalComissoes")->text(), u"0,00"_s); },
        u"3,0"_s, u"3,0"_s);
    load( // 0.0075 each
        [](QWidget* screen) { QCOMPARE(control<QLineEdit>(screen, "TotalComissoes")->text(), u"0,02"_s); },
        u"5,0"_s, u"5,0"_s);
}

void TstExtratoVendedor::columnNarrowsWithTheScrollBar_data() {
    QTest::addColumn<int>("notas");
    QTest::addColumn<int>("width");
    QTest::newRow("22 invoices, 23 rows") << 22 << 5100;
    QTest::newRow("23 invoices, 24 rows") << 23 << 4850;
    QTest::newRow("24 invoices") << 24 << 4850;
}

void TstExtratoVendedor::columnNarrowsWithTheScrollBar() {
    QFETCH(int, notas);
    QFETCH(int, width);
    for (int i = 1; i <= notas; ++i)
        venda(i, u"1.00"_s, u"PÃO"_s);
    load([&](QWidget* screen) {
        QCOMPARE(control<Grid>(screen, "Grid1")->rows(), notas + 1);
        QCOMPARE(control<Grid>(screen, "Grid1")->columnTwips(2), width);
    });
}

// Invoice n has n times 1.37 of bread and n times 0.41 of other goods.
void TstExtratoVendedor::tenThousandInvoices() {
    constexpr int notas = 10000;
    m->server().execute(
        u"INSERT INTO nfsaida (nrnf, SerieNF, CodVendedor, razsoc) SELECT seq, '1', 7, CONCAT('CLIENTE ', "
        u"seq) "
        "FROM seq_1_to_%1; INSERT INTO movsaient (nr_nf, serienf, dataemissao, entrsai, cancelado, cfop, "
        "codigo, "
        "descricao, totalvenda) SELECT seq, '1', '2024-02-10', 'S', 'N', '5102', 'X', 'PÃO', seq * 1.37 FROM "
        "seq_1_to_%1; INSERT INTO movsaient (nr_nf, serienf, dataemissao, entrsai, cancelado, cfop, codigo, "
        "descricao, totalvenda) SELECT seq, '1', '2024-02-10', 'S', 'N', '5102', 'X', 'BOLO', seq * 0.41 "
        "FROM "
        "seq_1_to_%1"_s.arg(notas));
    load([](QWidget* screen) {
        const auto* grid = control<Grid>(screen, "Grid1");
        QCOMPARE(grid->rows(), notas + 1);
        for (int n = 1; n <= notas; ++n)
            QCOMPARE(cells(grid, n), QStringList({u"10/02/2024"_s, QString::number(n), u"CLIENTE %1"_s.arg(n),
                                                  onScreen(n * qint64(137)), onScreen(n * qint64(41)),
                                                  onScreen(n * qint64(178))}));
        constexpr qint64 soma = qint64(notas) * (notas + 1) / 2;
        const qint64 comissaoPao = proportion(soma * 137, 30, 1000);
        const qint64 comissaoOutros = proportion(soma * 41, 15, 1000);
        QCOMPARE(values(screen),
                 QStringList({onScreen(soma * 137), u"3,0"_s, onScreen(comissaoPao), onScreen(soma * 41),
                              u"1,5"_s, onScreen(comissaoOutros), onScreen(soma * 178),
                              onScreen(comissaoPao + comissaoOutros), u"0,00"_s}));
        QCOMPARE(grid->columnTwips(2), 4850);
    });
}

void TstExtratoVendedor::opensFromTheCommissionGrid_data() {
    QTest::addColumn<bool>("byKey");
    QTest::newRow("mouse") << false;
    QTest::newRow("Space") << true;
}

void TstExtratoVendedor::opensFromTheCommissionGrid() {
    QFETCH(bool, byKey);
    m->shop().vendedor(7, u"ANA"_s, u"3"_s, u"1.5"_s);
    venda(1, u"1000.00"_s, u"PÃO"_s);
    m->shop().devolucao({.vendedor = 7,
                         .produto = u"P1"_s,
                         .quantidade = u"1"_s,
                         .baixa = u"2024-02-10"_s,
                         .cliente = u"C1"_s,
                         .custo = u"60.00"_s});
    Comissao comissao;
    QVERIFY(showActive(&comissao));
    QTest::mouseClick(control<QPushButton>(&comissao, "Command4"), Qt::LeftButton);
    auto* grid = control<Grid>(&comissao, "Grid1");
    m->click(grid, 1, 3); // the statement takes the percentages as they stand in the grid
    QTest::keyClicks(control<QLineEdit>(&comissao, "TextGrid"), u"5"_s);
    QTest::keyClick(control<QLineEdit>(&comissao, "TextGrid"), Qt::Key_Return);
    ModalHelper modal;
    modal.onOpen([](QWidget* screen) {
        QCOMPARE(screen->objectName(), u"ExtratoVendedor"_s);
        QCOMPARE(control<QLabel>(screen, "Label1")->text(),
                 u"7 - ANA    -   PERÍODO DE 01/02/2024 A 29/02/2024"_s);
        QCOMPARE(values(screen), QStringList({u"1.000,00"_s, u"5,0"_s, u"50,00"_s, u"0,00"_s, u"1,5"_s,
                                              u"0,00"_s, u"1.000,00"_s, u"50,00"_s, u"60,00"_s}));
        screen->close();
    });
    if (byKey) {
        grid->setCurrentCell(1, 12);
        QTest::keyClick(grid, Qt::Key_Space);
    } else {
        m->click(grid, 1, 12);
    }
    QCOMPARE(modal.problem(), QString());
}

void TstExtratoVendedor::isNotOpenedForADayThatDoesNotExist_data() {
    QTest::addColumn<QString>("caixa");
    QTest::addColumn<QString>("message");
    QTest::newRow("start") << u"DataIni"_s << u"Data inicial inválida. Verifique!!!"_s;
    QTest::newRow("end") << u"DataFin"_s << u"Data final inválida. Verifique!!!"_s;
}

void TstExtratoVendedor::isNotOpenedForADayThatDoesNotExist() {
    QFETCH(QString, caixa);
    QFETCH(QString, message);
    venda(1, u"1000.00"_s, u"PÃO"_s);
    Comissao comissao;
    QVERIFY(showActive(&comissao));
    QTest::mouseClick(control<QPushButton>(&comissao, "Command4"), Qt::LeftButton);
    control<DateBox>(&comissao, qPrintable(caixa))->setText(u"31/02/2024"_s);
    m->mark();
    ModalHelper modal;
    modal.expect(message, QMessageBox::Ok);
    m->click(control<Grid>(&comissao, "Grid1"), 1, 12);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(comissao.focusWidget()->objectName(), caixa);
    QCOMPARE(m->statements(), QStringList());
}

void TstExtratoVendedor::invertedPeriodOpensEmpty() {
    m->shop().vendedor(7, u"ANA"_s, u"3"_s, u"1.5"_s);
    venda(1, u"1000.00"_s, u"PÃO"_s);
    m->shop().devolucao({.vendedor = 7,
                         .produto = u"P1"_s,
                         .quantidade = u"1"_s,
                         .baixa = u"2024-02-10"_s,
                         .cliente = u"C1"_s,
                         .custo = u"60.00"_s});
    Comissao comissao;
    QVERIFY(showActive(&comissao));
    QTest::mouseClick(control<QPushButton>(&comissao, "Command4"), Qt::LeftButton);
    control<DateBox>(&comissao, "DataIni")->setText(u"29/02/2024"_s);
    control<DateBox>(&comissao, "DataFin")->setText(u"01/02/2024"_s);
    ModalHelper modal;
    modal.onOpen([](QWidget* screen) {
        QCOMPARE(control<QLabel>(screen, "Label1")->text(),
                 u"7 - ANA    -   PERÍODO DE 29/02/2024 A 01/02/2024"_s);
        QCOMPARE(control<Grid>(screen, "Grid1")->rows(), 1);
        QCOMPARE(values(screen), QStringList({u"0,00"_s, u"3,0"_s, u"0,00"_s, u"0,00"_s, u"1,5"_s, u"0,00"_s,
                                              u"0,00"_s, u"0,00"_s, u"60,00"_s}));
        screen->close();
    });
    m->click(control<Grid>(&comissao, "Grid1"), 1, 12);
    QCOMPARE(modal.problem(), QString());
}

void TstExtratoVendedor::oneDayPeriod() {
    venda(1, u"1.00"_s, u"PÃO"_s, u"5102"_s, u"2024-02-09"_s);
    venda(2, u"20.00"_s, u"PÃO"_s, u"5102"_s, u"2024-02-10"_s);
    venda(3, u"300.00"_s, u"PÃO"_s, u"5102"_s, u"2024-02-11"_s);
    ModalHelper modal;
    modal.onOpen([](QWidget* screen) {
        QCOMPARE(allCells(control<Grid>(screen, "Grid1")),
                 QList<QStringList>(
                     {{u"10/02/2024"_s, u"2"_s, u"CLIENTE 2"_s, u"20,00"_s, u"0,00"_s, u"20,00"_s}}));
        QCOMPARE(alignments(control<Grid>(screen, "Grid1")), u"^><>>>"_s);
        screen->close();
    });
    ExtratoVendedor extrato;
    extrato.Carrega(7, u"ANA"_s, u"10/02/2024"_s, u"10/02/2024"_s, u"3,0"_s, u"1,5"_s, u"0,00"_s);
    QCOMPARE(modal.problem(), QString());
}

void TstExtratoVendedor::escapeCloses() {
    ModalHelper modal;
    modal.onOpen([](QWidget* screen) { QTest::keyClick(screen, Qt::Key_Escape); });
    ExtratoVendedor extrato;
    extrato.Carrega(1, u"ANA"_s, u"01/02/2024"_s, u"29/02/2024"_s, u"3,0"_s, u"1,5"_s, u"0,00"_s);
    QCOMPARE(modal.problem(), QString());
    QVERIFY(!extrato.isVisible());
}

void TstExtratoVendedor::masksFromAThousandOn() {
    venda(1234567, u"1234.50"_s, u"PÃO"_s);
    venda(1234567, u"2345.60"_s, u"BOLO"_s);
    load(
        [](QWidget* screen) {
            QCOMPARE(cells(control<Grid>(screen, "Grid1"), 1),
                     QStringList({u"10/02/2024"_s, u"1234567"_s, u"CLIENTE 1234567"_s, u"1.234,50"_s,
                                  u"2.345,60"_s, u"3.580,10"_s}));
            QCOMPARE(values(screen),
                     QStringList({u"1.234,50"_s, u"1.000,0"_s, u"12.345,00"_s, u"2.345,60"_s, u"1.000,125"_s,
                                  u"23.458,93"_s, u"3.580,10"_s, u"35.803,93"_s, u"50.000,00"_s}));
        },
        u"1000,0"_s, u"1000,125"_s, u"50.000,00"_s);
}

void TstExtratoVendedor::altKeyIsTold() {
    load([](QWidget* screen) {
        QCOMPARE(control<QPushButton>(screen, "Command1")->toolTip(), u"Tecla de atalho: Alt+I"_s);
    });
}

QTEST_MAIN(TstExtratoVendedor)
#include "tst_extrato_vendedor.moc"
