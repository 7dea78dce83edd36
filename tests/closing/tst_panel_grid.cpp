#include "closing/PainelFechamentoColumns.h"
#include "closing/PanelBench.h"
#include "support/ModalHelper.h"
#include "support/SavedGrid.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QMenu>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

/// The panel's grid and that of the document view under the operator's keys: what marks, copies, finds and
/// saves sends no statement and changes no row.
class TstPanelGrid : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { b = std::make_unique<PanelBench>(); }
    void cleanupTestCase() { b.reset(); }
    void init();

    void markingTicksNothing();
    void markedRowsAreSummedUpInTheStatusBar();
    void copyHasWhatIsSeen();
    void f3IsTheDocumentViewWhileNothingIsSought();
    void escapeClosesTheSearchFirst();
    void searchLeavesNoRowOut();
    void menuOpensFromTheKeyboard();
    void listIsSaved();
    void emptyListSaysWhy();
    void editorIsStoredBeforeASearch();
    void documentViewIsCopied();

  private:
    std::unique_ptr<PanelBench> b;
    QTemporaryDir m_folder;
};

void TstPanelGrid::init() {
    b->reset();
    b->shop().basico();
    b->shop().cliente({.codigo = u"C2"_s, .nome = u"AÇOUGUE SÃO JOSÉ"_s, .cidade = u"ITU"_s});
    b->shop().documento({.pedido = 1, .nomeVendedor = u"A"_s});
    b->shop().documento(
        {.pedido = 2, .cliente = u"C2"_s, .nomeVendedor = u"B"_s, .linhas = {{.total = u"20.50"_s}}});
    b->shop().documento({.pedido = 3, .nomeVendedor = u"C"_s, .linhas = {{.total = u"1000.00"_s}}});
    QVERIFY(b->open(PanelBench::wide));
    b->grid()->setFocus();
    b->grid()->setCurrentCell(1, painelfechamento::Total);
}

void TstPanelGrid::markingTicksNothing() {
    const QStringList ticks = b->column(painelfechamento::Selecao);
    b->key(Qt::Key_Down, Qt::ShiftModifier);
    b->key(Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(b->grid()->markedRows(), (QList<Grid::RowRange>{{1, 3}}));
    QCOMPARE(b->column(painelfechamento::Selecao), ticks);
    QCOMPARE(b->total(), u"1.030,50"_s);
    // A click and Space act on their own row alone.
    b->click(2, painelfechamento::Selecao);
    QCOMPARE(b->column(painelfechamento::Selecao), (QStringList{u" "_s, {}, u" "_s}));
    b->key(Qt::Key_A, Qt::ControlModifier);
    b->key(Qt::Key_Space);
    QCOMPARE(b->column(painelfechamento::Selecao), (QStringList{u" "_s, u" "_s, u" "_s}));
    QCOMPARE(b->statements(), QStringList());
}

void TstPanelGrid::markedRowsAreSummedUpInTheStatusBar() {
    const auto* status = b->control<QLabel>(u"Situacao"_s);
    const QString sum = u" · 3 linhas marcadas · R$ TOTAL: 3 valores, soma 1.030,50 · "_s;
    QVERIFY(!status->text().contains(u"marcadas"_s));
    b->key(Qt::Key_A, Qt::ControlModifier);
    QVERIFY2(status->text().contains(sum), qPrintable(status->text()));
    b->key(Qt::Key_Down);
    QVERIFY(!status->text().contains(u"marcadas"_s));
}

void TstPanelGrid::copyHasWhatIsSeen() {
    b->click(1, painelfechamento::Selecao);
    b->key(Qt::Key_Down, Qt::ShiftModifier);
    b->key(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(),
             u"PEDIDO\tTIPO\tCLIENTE\tVENDEDOR\tCIDADE\tR$ TOTAL\tDIAS VENC\tFORMA PAGTO\tTABELA\tSELEÇÃO\n"
             "1\tP\tPADARIA MODELO\tA\tCAMPINAS\t10,00\t30\tBOLETO\t1\t\n"
             "2\tP\tAÇOUGUE SÃO JOSÉ\tB\tITU\t20,50\t30\tBOLETO\t1\tX"_s);
}

void TstPanelGrid::f3IsTheDocumentViewWhileNothingIsSought() {
    ModalHelper modals;
    int views = 0;
    const auto expectView = [&] {
        modals.onOpen([&views](QWidget* window) {
            views += window->windowTitle().startsWith(u"Visualização"_s) ? 1 : 0;
            window->close();
        });
    };
    expectView();
    b->key(Qt::Key_F3);
    QCOMPARE(views, 1);
    b->key(Qt::Key_F, Qt::ControlModifier);
    b->type(u"padaria"_s);
    b->key(Qt::Key_F3);
    QCOMPARE(b->grid()->currentRow(), 3);
    b->button(u"Command4"_s)->setFocus();
    b->key(Qt::Key_F3);
    QCOMPARE(b->grid()->currentRow(), 1);
    QCOMPARE(views, 1);
    b->grid()->setFocus();
    b->key(Qt::Key_Escape);
    expectView();
    b->key(Qt::Key_F3);
    QCOMPARE(views, 2);
    QCOMPARE(modals.problem(), QString());
}

void TstPanelGrid::escapeClosesTheSearchFirst() {
    b->key(Qt::Key_F, Qt::ControlModifier);
    b->type(u"sao jose"_s);
    QCOMPARE(b->box(u"Localizar"_s)->text(), u"SAO JOSE"_s);
    QCOMPARE(b->grid()->currentRow(), 2);
    b->key(Qt::Key_Return);
    QCOMPARE(Hands::focus(), u"Localizar"_s);
    b->key(Qt::Key_Escape);
    QVERIFY(!b->grid()->isFinding());
    QVERIFY(b->panel()->isVisible());
    QVERIFY(b->gridHasFocus());
    // With the line open Escape in the grid is about the search as well.
    b->key(Qt::Key_F, Qt::ControlModifier);
    b->grid()->setFocus();
    const int code = runInEventLoop([this] { b->key(Qt::Key_Escape); });
    QCOMPARE(code, -1);
    QVERIFY(!b->grid()->isFinding());
}

void TstPanelGrid::searchLeavesNoRowOut() {
    b->key(Qt::Key_F, Qt::ControlModifier);
    b->type(u"jose"_s);
    QCOMPARE(b->grid()->rows(), 4);
    for (int row = 0; row < 3; ++row)
        QVERIFY(!b->grid()->isRowHidden(row));
    QCOMPARE(b->total(), u"1.030,50"_s);
    QCOMPARE(b->statements(), QStringList());
}

void TstPanelGrid::menuOpensFromTheKeyboard() {
    b->grid()->setCurrentCell(2, painelfechamento::Selecao);
    b->key(Qt::Key_F10, Qt::ShiftModifier);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    QVERIFY(menu);
    menu->setActiveAction(b->grid()->findChild<QAction*>(u"AcionarCelula"_s));
    QTest::keyClick(menu, Qt::Key_Return);
    QTRY_VERIFY(!QApplication::activePopupWidget());
    QCOMPARE(b->column(painelfechamento::Selecao), (QStringList{u" "_s, {}, u" "_s}));
    b->settle();
    // The menu's Escape is not the panel's.
    b->key(Qt::Key_Menu);
    QVERIFY(QApplication::activePopupWidget());
    const int code =
        runInEventLoop([] { QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape); });
    QCOMPARE(code, -1);
    QVERIFY(b->panel()->isVisible());
}

void TstPanelGrid::listIsSaved() {
    const QString path = m_folder.filePath(u"painel.xlsx"_s);
    ModalHelper modals;
    QString proposed;
    expectSaving(modals, path, &proposed);
    b->click(1, painelfechamento::Selecao);
    b->key(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(modals.problem(), QString());
    QCOMPARE(proposed, u"Pré-vendas - 2024-03-15.xlsx"_s);
    const QJsonObject book = readXlsx(path);
    QCOMPARE(xlsxRow(book, 1),
             (QStringList{u"text:1"_s, u"text:P"_s, u"text:PADARIA MODELO"_s, u"text:A"_s, u"text:CAMPINAS"_s,
                          u"number:10"_s, u"number:30"_s, u"text:BOLETO"_s, u"text:1"_s, QString()}));
    QCOMPARE(xlsxCell(book, 2, painelfechamento::Selecao), u"text:X"_s);
    QCOMPARE(b->statements(), QStringList());
}

void TstPanelGrid::emptyListSaysWhy() {
    QCOMPARE(b->grid()->accessibleDescription(), QString());
    b->reset();
    b->shop().basico();
    QVERIFY(b->open(PanelBench::wide));
    QCOMPARE(b->grid()->rows(), 1);
    QCOMPARE(b->grid()->accessibleDescription(), u"Nenhuma pré-venda em aberto nos últimos sete dias"_s);
}

void TstPanelGrid::editorIsStoredBeforeASearch() {
    b->click(1, painelfechamento::DiasVenc);
    QVERIFY(b->editor()->isVisible());
    b->type(u"45"_s);
    b->key(Qt::Key_F, Qt::ControlModifier);
    QVERIFY(!b->editor()->isVisible());
    QCOMPARE(b->cell(1, painelfechamento::DiasVenc), u"45"_s);
    QCOMPARE(b->valor(u"SELECT prazo FROM clientes WHERE codigo='C1'"_s), u"45"_s);
    QVERIFY(b->panel()->focusWidget() && b->panel()->focusWidget()->inherits("QLineEdit"));
}

void TstPanelGrid::documentViewIsCopied() {
    ModalHelper modals;
    QString copied;
    modals.onOpen([&copied](QWidget* window) {
        auto* items = control<Grid>(window, "GridItens");
        QTest::keyClick(items, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(items, Qt::Key_C, Qt::ControlModifier);
        copied = QGuiApplication::clipboard()->text();
        window->close();
    });
    b->key(Qt::Key_F3);
    QCOMPARE(modals.problem(), QString());
    QVERIFY2(copied.startsWith(u"P1\t"_s) && copied.endsWith(u"10,00"_s), qPrintable(copied));
}

QTEST_MAIN(TstPanelGrid)
#include "tst_panel_grid.moc"
