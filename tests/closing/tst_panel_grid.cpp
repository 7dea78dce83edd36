#include "closing/ConferenciaColumns.h"
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

/// The grids of the panel and of the windows that it opens under the operator's keys: what marks, copies,
/// finds and saves sends no statement and changes no row.
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
    void rehearsalIsSaved();
    void interruptedClosingsAreCopiedFoundAndSaved();

  private:
    QJsonObject saved(ModalHelper& modals, const Hands& hands, const QString& name, QString* proposed);

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

/// What another program reads in the file that Ctrl+S makes in the window of these hands; `modals` attends to
/// what comes up.
QJsonObject TstPanelGrid::saved(ModalHelper& modals, const Hands& hands, const QString& name,
                                QString* proposed) {
    const QString path = m_folder.filePath(name);
    expectSaving(modals, path, proposed);
    hands.key(Qt::Key_S, Qt::ControlModifier);
    return QFile::exists(path) ? readXlsx(path) : QJsonObject();
}

void TstPanelGrid::rehearsalIsSaved() {
    QJsonObject list;
    QJsonObject totals;
    QJsonObject fromElsewhere;
    QStringList names(3);
    ModalHelper modals;
    modals.onOpen([&](QWidget* window) {
        const Hands hands(window);
        QTRY_COMPARE(hands.grid()->rows(), 4);
        list = saved(modals, hands, u"lista.xlsx"_s, &names[0]);
        // The totals are saved while they have the focus; from any other control it is the list.
        hands.grid(u"Totais"_s)->setFocus();
        totals = saved(modals, hands, u"totais.xlsx"_s, &names[1]);
        hands.control(u"Filtro"_s)->setFocus();
        fromElsewhere = saved(modals, hands, u"filtro.xlsx"_s, &names[2]);
        hands.key(Qt::Key_Escape);
    });
    b->key(Qt::Key_F6);
    QCOMPARE(modals.problem(), QString());
    const QString listName = u"Conferência - 2024-03-15.xlsx"_s;
    QCOMPARE(names, (QStringList{listName, u"Totais da conferência - 2024-03-15.xlsx"_s, listName}));
    QCOMPARE(xlsxRow(list, 2),
             (QStringList{u"text:2"_s, u"text:AÇOUGUE SÃO JOSÉ"_s, u"number:20.5"_s, u"text:encerrada"_s,
                          u"text:em aberto, vencimento 14/04/2024, conta 1.05"_s}));
    QCOMPARE(xlsxRow(totals, 1), (QStringList{u"text:Todas"_s, u"number:3"_s, u"number:1030.5"_s}));
    QCOMPARE(fromElsewhere[u"rows"_s], list[u"rows"_s]);
}

void TstPanelGrid::interruptedClosingsAreCopiedFoundAndSaved() {
    // A settled pre-sale with neither receivable nor cash row, and an open one whose stock has begun to move.
    b->server().execute(u"UPDATE orcamento SET situacaoorc='B', databaixa='2024-03-15' WHERE nrpedido=2;"
                        "INSERT INTO logestoque SET data='2024-03-15', hora='10:00:00', usuario='', "
                        "tela='FECHAMENTO DA PV Nº 2', codproduto='P1', qtdLoja=-1;"
                        "INSERT INTO logestoque SET data='2024-03-15', hora='10:01:00', usuario='', "
                        "tela='FECHAMENTO DA PV Nº 3', codproduto='P1', qtdLoja=-1"_s);
    QString copied;
    QJsonObject book;
    QString proposed;
    int found = 0;
    ModalHelper modals;
    modals.onOpen([&](QWidget* window) {
        const Hands hands(window);
        b->mark();
        Grid* grid = hands.grid();
        QCOMPARE(grid->rows(), 3);
        hands.key(Qt::Key_A, Qt::ControlModifier);
        hands.key(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
        copied = QGuiApplication::clipboard()->text();
        grid->setCurrentCell(2, 0);
        hands.key(Qt::Key_F, Qt::ControlModifier);
        hands.type(u"sao jose"_s);
        found = grid->currentRow();
        hands.key(Qt::Key_Escape);
        QVERIFY(window->isVisible());
        QVERIFY(!grid->isFinding());
        book = saved(modals, hands, u"interrompidos.xlsx"_s, &proposed);
        QCOMPARE(b->statements(), QStringList());
        hands.key(Qt::Key_Escape);
    });
    b->key(Qt::Key_F7);
    QCOMPARE(modals.problem(), QString());
    const QStringList lines = copied.split(u'\n');
    QCOMPARE(lines.size(), 3);
    QCOMPARE(lines[0], u"PEDIDO\tCLIENTE\tR$ TOTAL\tFORMA PAGTO\tVENCIMENTO\tJÁ GRAVADO\tFALTA GRAVAR"_s);
    QVERIFY2(lines[1].startsWith(u"0000002\tAÇOUGUE SÃO JOSÉ\t20,50\tBOLETO\t14/04/2024\t"_s),
             qPrintable(lines[1]));
    QCOMPARE(found, 1);
    QCOMPARE(proposed, u"Fechamentos interrompidos - 2024-03-15.xlsx"_s);
    QCOMPARE(xlsxRow(book, 1).first(4), (QStringList{u"text:0000002"_s, u"text:AÇOUGUE SÃO JOSÉ"_s,
                                                     u"number:20.5"_s, u"text:BOLETO"_s}));
    QVERIFY(xlsxCell(book, 1, 4).startsWith(u"date:2024-04-14"_s));
    QCOMPARE(xlsxCell(book, 2, 2), u"number:1000"_s);
}

QTEST_MAIN(TstPanelGrid)
#include "tst_panel_grid.moc"
