#include "reports/Comissao.h"
#include "reports/ExtratoVendedor.h"
#include "reports/ResumoVendas.h"
#include "support/Bench.h"
#include "support/SavedGrid.h"
#include "ui/DateBox.h"
#include "ui/grid/Grid.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

/// The grids of the reports under the operator's keys: marking, copying, finding, saving, ordering, and what
/// an empty one says.
class TstReportGrids : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { m = std::make_unique<Bench>(); }
    void cleanupTestCase() { m.reset(); }
    void init() { m->resetConnected(); }
    void cleanup() { m_screen.reset(); }

    void summaryOfNoSalesSaysSo();
    void summaryIsOrderedByItsCaptions();
    void summaryIsCopiedAndSummedUp();
    void summaryIsSaved();
    void commissionOfNoSalesSaysSo();
    void commissionIsMarkedWithoutEditing();
    void commissionIsSaved();
    void statementSaysWhenItIsEmpty();
    void statementIsSearchedAndSaved();

  private:
    template <typename Screen>
    void open() {
        m_screen = std::make_unique<Screen>();
        QVERIFY(showActive(m_screen.get()));
        control<DateBox>(m_screen.get(), "DataIni")->setText(u"01/02/2024"_s);
        control<DateBox>(m_screen.get(), "DataFin")->setText(u"29/02/2024"_s);
    }
    void run() { QTest::mouseClick(control<QPushButton>(m_screen.get(), "Command4"), Qt::LeftButton); }
    Grid* grid(const char* name = "Grid1") const { return control<Grid>(m_screen.get(), name); }
    void customer(const QString& code, const QString& name, const QString& document, const QString& value) {
        m->shop().cliente({.codigo = code,
                           .nome = name,
                           .colunaPreco = u"1"_s,
                           .cnpjCpf = document,
                           .fantasia = u"F "_s + name});
        LinhaFiscal line;
        line.cnpj = document;
        line.valorItem = value;
        m->shop().linhaFiscal(line);
    }
    void threeCustomers() {
        customer(u"C1"_s, u"ÁUREA"_s, u"00012345678901"_s, u"9.00"_s);
        customer(u"C2"_s, u"BRUNA"_s, u"22"_s, u"1000.00"_s);
        customer(u"C3"_s, u"CARLOS"_s, u"33"_s, u"100.50"_s);
    }
    void sale(int invoice, int seller, const QString& value) {
        m->shop().nota(invoice, seller, u"CLIENTE %1"_s.arg(invoice));
        LinhaFiscal line;
        line.nota = invoice;
        line.totalVenda = value;
        m->shop().linhaFiscal(line);
    }
    QString savedAs(Grid* grid, const QString& name) {
        const QString path = m_folder.filePath(name);
        ModalHelper modals;
        QString proposed;
        expectSaving(modals, path, &proposed);
        QTest::keyClick(grid, Qt::Key_S, Qt::ControlModifier);
        return modals.problem().isEmpty() ? proposed : modals.problem();
    }

    std::unique_ptr<Bench> m;
    std::unique_ptr<QWidget> m_screen;
    QTemporaryDir m_folder;
};

void TstReportGrids::summaryOfNoSalesSaysSo() {
    open<ResumoVendas>();
    for (const char* name : {"TabelaPreco(1)", "TabelaPreco(4)"})
        QCOMPARE(grid(name)->accessibleDescription(), u"O relatório ainda não foi gerado"_s);
    ModalHelper modals;
    modals.expectContaining(u"Divisão por zero."_s, QMessageBox::Ok);
    run();
    QCOMPARE(modals.problem(), QString());
    for (const char* name : {"TabelaPreco(1)", "TabelaPreco(4)"}) {
        QCOMPARE(grid(name)->accessibleDescription(), u"Nenhuma venda no período"_s);
        QCOMPARE(grid(name)->rows(), 1);
    }
    threeCustomers();
    run();
    QCOMPARE(grid("TabelaPreco(1)")->accessibleDescription(), QString());
    QCOMPARE(grid("TabelaPreco(2)")->accessibleDescription(), u"Nenhuma venda no período"_s);
}

void TstReportGrids::summaryIsOrderedByItsCaptions() {
    threeCustomers();
    open<ResumoVendas>();
    run();
    Grid* table = grid("TabelaPreco(1)");
    const QStringList prescribed = {u"ÁUREA"_s, u"BRUNA"_s, u"CARLOS"_s};
    QCOMPARE(columnCells(table, 1), prescribed);
    m->mark();
    QHeaderView* header = table->horizontalHeader();
    const auto click = [header](int column) {
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                          {header->sectionViewportPosition(column) + 20, header->height() / 2});
    };
    click(3);
    QCOMPARE(columnCells(table, 1), (QStringList{u"ÁUREA"_s, u"CARLOS"_s, u"BRUNA"_s}));
    click(3);
    QCOMPARE(columnCells(table, 1), (QStringList{u"BRUNA"_s, u"CARLOS"_s, u"ÁUREA"_s}));
    QCOMPARE(m->statements(), QStringList());
    // What is done with a row is done with the one seen.
    table->setFocus();
    table->setCurrentCell(1, 0);
    QTest::keyClick(table, Qt::Key_C, Qt::ControlModifier);
    QVERIFY(QGuiApplication::clipboard()->text().startsWith(u"22\tBRUNA\t"_s));
    run();
    QCOMPARE(columnCells(table, 1), prescribed);
    QCOMPARE(header->sortIndicatorSection(), -1);
}

void TstReportGrids::summaryIsCopiedAndSummedUp() {
    threeCustomers();
    open<ResumoVendas>();
    run();
    Grid* table = grid("TabelaPreco(1)");
    table->setFocus();
    table->setCurrentCell(1, 3);
    QTest::keyClick(table, Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(table->parentWidget()->findChild<QLabel*>(u"Soma"_s)->text(),
             u"2 linhas marcadas · R$ TOTAL: 2 valores, soma 1.009,00"_s);
    QTest::keyClick(table, Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(),
             u"CNPJ\tRAZÃO SOCIAL\tFANTASIA\tR$ TOTAL\tR$ DEVOLUÇÃO\t% DEVOLVIDO\n"
             "00012345678901\tÁUREA\tF ÁUREA\t9,00\t0,00\t0,00\n"
             "22\tBRUNA\tF BRUNA\t1.000,00\t0,00\t0,00"_s);
}

void TstReportGrids::summaryIsSaved() {
    threeCustomers();
    open<ResumoVendas>();
    run();
    QCOMPARE(savedAs(grid("TabelaPreco(1)"), u"resumo.xlsx"_s),
             u"Resumo de vendas - Preço 1 - 2024-02.xlsx"_s);
    const QJsonObject book = readXlsx(m_folder.filePath(u"resumo.xlsx"_s));
    QCOMPARE(xlsxRow(book, 1), (QStringList{u"text:00012345678901"_s, u"text:ÁUREA"_s, u"text:F ÁUREA"_s,
                                            u"number:9"_s, u"number:0"_s, u"number:0"_s}));
    QCOMPARE(book["rows"_L1].toArray().size(), 4);
}

void TstReportGrids::commissionOfNoSalesSaysSo() {
    open<Comissao>();
    QCOMPARE(grid()->accessibleDescription(), u"O relatório ainda não foi gerado"_s);
    run();
    QCOMPARE(grid()->accessibleDescription(), u"Nenhuma venda no período"_s);
    QCOMPARE(grid()->rows(), 1);
}

void TstReportGrids::commissionIsMarkedWithoutEditing() {
    m->shop().vendedor(7, u"ANA"_s, u"2"_s, u"3"_s);
    m->shop().vendedor(8, u"BRUNO"_s, u"2"_s, u"3"_s);
    sale(1, 7, u"10.00"_s);
    sale(2, 8, u"20.00"_s);
    open<Comissao>();
    run();
    m->mark();
    grid()->setFocus();
    grid()->setCurrentCell(1, 2);
    QTest::keyClick(grid(), Qt::Key_Down, Qt::ShiftModifier);
    QVERIFY(control<QWidget>(m_screen.get(), "TextGrid")->isHidden());
    const auto* sum = control<QLabel>(m_screen.get(), "Soma");
    QCOMPARE(sum->text(), u"2 linhas marcadas · R$ TOTAL PÃO: 2 valores, soma 30,00"_s);
    // As wide as the form is on a usual display.
    m_screen->resize(1200, m_screen->height());
    QCoreApplication::processEvents();
    QVERIFY(sum->width() >= sum->fontMetrics().horizontalAdvance(sum->text()));
    // Space edits the current cell, as before, and no other.
    grid()->setCurrentCell(1, 3);
    QTest::keyClick(grid(), Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(grid(), Qt::Key_Space);
    QVERIFY(control<QWidget>(m_screen.get(), "TextGrid")->isVisible());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QVERIFY(m_screen->isVisible());
}

void TstReportGrids::commissionIsSaved() {
    m->shop().vendedor(7, u"ANA"_s, u"2.5"_s, u"3"_s);
    sale(1, 7, u"1000.00"_s);
    open<Comissao>();
    run();
    QCOMPARE(savedAs(grid(), u"comissao.xlsx"_s), u"Comissão - 2024-02.xlsx"_s);
    const QJsonObject book = readXlsx(m_folder.filePath(u"comissao.xlsx"_s));
    QCOMPARE(xlsxRow(book, 1), (QStringList{u"text:7"_s, u"text:ANA"_s, u"number:1000"_s, u"number:2.5"_s,
                                            u"number:25"_s, u"number:0"_s, u"number:3"_s, u"number:0"_s,
                                            u"number:1000"_s, u"number:25"_s, u"number:0"_s, u"number:0"_s}));
    QCOMPARE(xlsxCell(book, 3, 1), u"text:***TOTAL-***"_s);
}

void TstReportGrids::statementSaysWhenItIsEmpty() {
    ModalHelper modals;
    modals.onOpen([](QWidget* screen) {
        QCOMPARE(control<Grid>(screen, "Grid1")->accessibleDescription(), u"Nenhuma nota no período"_s);
        screen->close();
    });
    ExtratoVendedor statement;
    statement.Carrega(7, u"ANA"_s, u"01/02/2024"_s, u"29/02/2024"_s, u"3,0"_s, u"1,5"_s, u"0,00"_s);
    QCOMPARE(modals.problem(), QString());
}

void TstReportGrids::statementIsSearchedAndSaved() {
    sale(11, 7, u"10.00"_s);
    sale(12, 7, u"20.50"_s);
    const QString path = m_folder.filePath(u"extrato.xlsx"_s);
    QString proposed;
    ModalHelper modals;
    modals.onOpen([&](QWidget* screen) {
        auto* grid = control<Grid>(screen, "Grid1");
        grid->setFocus();
        QTest::keyClick(grid, Qt::Key_F, Qt::ControlModifier);
        auto* box = control<QLineEdit>(screen, "Localizar");
        QTest::keyClicks(box, u"cliente 12"_s);
        QCOMPARE(grid->currentRow(), 2);
        QTest::keyClick(box, Qt::Key_Escape);
        QVERIFY(screen->isVisible());
        expectSaving(modals, path, &proposed);
        QTest::keyClick(grid, Qt::Key_S, Qt::ControlModifier);
        screen->close();
    });
    ExtratoVendedor statement;
    statement.Carrega(7, u"ANA"_s, u"01/02/2024"_s, u"29/02/2024"_s, u"3,0"_s, u"1,5"_s, u"0,00"_s);
    QCOMPARE(modals.problem(), QString());
    QCOMPARE(proposed, u"Extrato - ANA - 2024-02.xlsx"_s);
    QCOMPARE(xlsxRow(readXlsx(path), 2),
             (QStringList{u"date:2024-02-10 00:00:00"_s, u"text:12"_s, u"text:CLIENTE 12"_s, u"number:20.5"_s,
                          u"number:0"_s, u"number:20.5"_s}));
}

QTEST_MAIN(TstReportGrids)
#include "tst_report_grids.moc"
