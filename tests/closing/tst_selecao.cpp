#include "closing/PainelFechamento.h"
#include "closing/PainelFechamentoColumns.h"
#include "closing/PanelBench.h"
#include "support/ModalHelper.h"
#include "support/StatementLog.h"
#include "ui/Twips.h"
#include "ui/grid/Grid.h"

#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

const QString untickFirst = u"Desmarcar todos os Registros"_s;
const QString untick = u"Desmarcar todos os registros"_s;
const QString selectAllCaption = u"Seleciona todos os registros"_s;

constexpr int esperaDoFimMs = 5000;

QString accessibleName(QWidget* control) {
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(control);
    return accessible ? accessible->text(QAccessible::Name) : QString();
}

/// Runs the program's event loop while `acao` acts; true when the program ended by itself.
bool endsWith(const std::function<void()>& action) {
    constexpr int gaveUp = 1;
    QTimer limit;
    limit.setSingleShot(true);
    limit.callOnTimeout([] { QCoreApplication::exit(gaveUp); });
    limit.start(esperaDoFimMs);
    QTimer::singleShot(0, action);
    return QApplication::exec() == 0;
}

} // namespace

/// Three pre-sales of 10, 20.50 and 1,000, all listed selected.
class TstSelecao : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { b = std::make_unique<PanelBench>(); }
    void cleanupTestCase() { b.reset(); }
    void init();

    void clickTogglesTheRow();
    void spaceTogglesTheRow();
    void tickIsToldToScreenReaders();
    void clickOnTheHeaderDoesNothing();
    void otherColumnsDoNothing_data();
    void otherColumnsDoNothing();
    void selectionSendsNoStatement();
    void toggleAll();
    void toggleAllFollowsTheCaptionNotTheRows();
    void toggleAllWithNoRow();
    void totalFollowsTheTicks();
    void nothingSelectedRefusesToClose();
    void reloadSelectsEverythingAgain();

    void controlsAndTheirNames_data();
    void controlsAndTheirNames();
    void paymentMethodListIsNamed();
    void menus();
    void altKeysPressTheButtons();
    void altKeyOpensTheMenu();
    void tabOrder();
    void enterMovesToTheNextControl();
    void enterDoesNotPressAButton();
    void spacePressesAButton();
    void escapeEndsTheProgram();
    void escapeInABoxOnlyClosesTheBox();
    void closingTheWindowEndsTheProgram();
    void gridGrowsWithTheWindow();
    void sellerTakesTheFreeWidth();

  private:
    std::unique_ptr<PanelBench> b;
};

void TstSelecao::init() {
    b->reset();
    b->shop().basico();
    b->shop().documento({.pedido = 1, .nomeVendedor = u"A"_s});
    b->shop().documento({.pedido = 2, .nomeVendedor = u"B"_s, .linhas = {{.total = u"20.50"_s}}});
    b->shop().documento({.pedido = 3, .nomeVendedor = u"C"_s, .linhas = {{.total = u"1000.00"_s}}});
    QVERIFY(b->open());
    QCOMPARE(b->column(painelfechamento::Selecao), (QStringList{u" "_s, u" "_s, u" "_s}));
}

void TstSelecao::clickTogglesTheRow() {
    b->click(2, painelfechamento::Selecao);
    QCOMPARE(b->column(painelfechamento::Selecao), (QStringList{u" "_s, {}, u" "_s}));
    QVERIFY(b->grid()->hasPicture(1, painelfechamento::Selecao));
    QVERIFY(!b->grid()->hasPicture(2, painelfechamento::Selecao));
    QCOMPARE(b->total(), u"1.010,00"_s);

    b->click(2, painelfechamento::Selecao);
    QCOMPARE(b->column(painelfechamento::Selecao), (QStringList{u" "_s, u" "_s, u" "_s}));
    QVERIFY(b->grid()->hasPicture(2, painelfechamento::Selecao));
    QCOMPARE(b->total(), u"1.030,50"_s);
}

void TstSelecao::spaceTogglesTheRow() {
    b->grid()->setFocus();
    b->grid()->setCurrentCell(3, painelfechamento::Selecao);
    QTest::keyClick(b->grid(), Qt::Key_Space);
    QCOMPARE(b->column(painelfechamento::Selecao), (QStringList{u" "_s, u" "_s, {}}));
    QCOMPARE(b->total(), u"30,50"_s);
    QTest::keyClick(b->grid(), Qt::Key_Up);
    QTest::keyClick(b->grid(), Qt::Key_Space);
    QCOMPARE(b->column(painelfechamento::Selecao), (QStringList{u" "_s, {}, {}}));
    QCOMPARE(b->total(), u"10,00"_s);
}

void TstSelecao::tickIsToldToScreenReaders() {
    const auto spoken = [this](int row) {
        QAccessibleInterface* table = QAccessible::queryAccessibleInterface(b->grid());
        return table->tableInterface()->cellAt(row, painelfechamento::Selecao)->text(QAccessible::Name);
    };
    QCOMPARE(spoken(1), u"Selecionado"_s);
    b->click(2, painelfechamento::Selecao);
    QCOMPARE(spoken(1), u"Não selecionado"_s);
}

void TstSelecao::clickOnTheHeaderDoesNothing() {
    for (const int column :
         {int(painelfechamento::Selecao), int(painelfechamento::FormaPagto), int(painelfechamento::Pedido)})
        b->click(0, column);
    QCOMPARE(b->column(painelfechamento::Selecao), (QStringList{u" "_s, u" "_s, u" "_s}));
    QCOMPARE(b->column(painelfechamento::Pedido), (QStringList{u"1"_s, u"2"_s, u"3"_s}));
    QCOMPARE(b->total(), u"1.030,50"_s);
}

void TstSelecao::otherColumnsDoNothing_data() {
    QTest::addColumn<int>("column");
    for (int column = painelfechamento::Pedido; column <= painelfechamento::Total; ++column)
        QTest::addRow("column %d", column) << column;
}

void TstSelecao::otherColumnsDoNothing() {
    QFETCH(int, column);
    const QStringList before = b->row(2);
    b->click(2, column);
    QTest::keyClick(b->grid(), Qt::Key_Space);
    QCOMPARE(b->row(2), before);
    QCOMPARE(b->column(painelfechamento::Selecao), (QStringList{u" "_s, u" "_s, u" "_s}));
    QCOMPARE(b->total(), u"1.030,50"_s);
    QVERIFY(!QApplication::activeModalWidget());
}

void TstSelecao::selectionSendsNoStatement() {
    StatementLog log(b->server());
    b->click(1, painelfechamento::Selecao);
    b->press(u"Command1"_s);
    b->press(u"Command1"_s);
    QCOMPARE(log.texts(), QStringList());
}

void TstSelecao::toggleAll() {
    QCOMPARE(b->button(u"Command1"_s)->text(), untickFirst);
    b->press(u"Command1"_s);
    QCOMPARE(b->column(painelfechamento::Selecao), (QStringList{{}, {}, {}}));
    for (int row = 1; row <= 3; ++row)
        QVERIFY(!b->grid()->hasPicture(row, painelfechamento::Selecao));
    QCOMPARE(b->button(u"Command1"_s)->text(), selectAllCaption);
    QCOMPARE(b->total(), u"0,00"_s);

    b->press(u"Command1"_s);
    QCOMPARE(b->column(painelfechamento::Selecao), (QStringList{u" "_s, u" "_s, u" "_s}));
    for (int row = 1; row <= 3; ++row)
        QVERIFY(b->grid()->hasPicture(row, painelfechamento::Selecao));
    QCOMPARE(b->button(u"Command1"_s)->text(), untick);
    QCOMPARE(b->total(), u"1.030,50"_s);

    b->press(u"Command1"_s);
    QCOMPARE(b->button(u"Command1"_s)->text(), selectAllCaption);
    QCOMPARE(b->total(), u"0,00"_s);
}

void TstSelecao::toggleAllFollowsTheCaptionNotTheRows() {
    for (int row = 1; row <= 3; ++row)
        b->click(row, painelfechamento::Selecao);
    QCOMPARE(b->button(u"Command1"_s)->text(), untickFirst);
    b->press(u"Command1"_s);
    QCOMPARE(b->column(painelfechamento::Selecao), (QStringList{{}, {}, {}}));
    QCOMPARE(b->button(u"Command1"_s)->text(), selectAllCaption);
    b->click(2, painelfechamento::Selecao);
    b->press(u"Command1"_s);
    QCOMPARE(b->column(painelfechamento::Selecao), (QStringList{u" "_s, u" "_s, u" "_s}));
}

void TstSelecao::toggleAllWithNoRow() {
    b->server().execute(u"TRUNCATE TABLE orcamento"_s);
    QVERIFY(b->open());
    ModalHelper modal;
    modal.expect(mensagens::semRegistro, QMessageBox::Ok);
    b->press(u"Command1"_s);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(modal.boxes()[0].title, u"Atenção!!!"_s);
    QCOMPARE(modal.boxes()[0].icon, QMessageBox::Information);
    QCOMPARE(modal.boxes()[0].buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(b->button(u"Command1"_s)->text(), untickFirst);
}

void TstSelecao::totalFollowsTheTicks() {
    b->server().execute(u"UPDATE orcamento SET totalped = -5.05 WHERE nrpedido = 1; "
                        "UPDATE orcamento SET totalped = NULL WHERE nrpedido = 2"_s);
    QVERIFY(b->open());
    QCOMPARE(b->column(painelfechamento::Total), (QStringList{u"-5,05"_s, u"0,00"_s, u"1.000,00"_s}));
    QCOMPARE(b->total(), u"994,95"_s);
    b->click(3, painelfechamento::Selecao);
    QCOMPARE(b->total(), u"-5,05"_s);
    b->click(1, painelfechamento::Selecao);
    QCOMPARE(b->total(), u"0,00"_s);
}

void TstSelecao::nothingSelectedRefusesToClose() {
    b->press(u"Command1"_s);
    QCOMPARE(b->total(), u"0,00"_s);
    ModalHelper modal;
    modal.expect(mensagens::nadaSelecionado, QMessageBox::Ok);
    b->press(u"Command4"_s);
    QCOMPARE(modal.problem(), QString());
}

void TstSelecao::reloadSelectsEverythingAgain() {
    b->server().execute(u"UPDATE produtos SET quantidade = 0"_s);
    b->click(1, painelfechamento::Selecao);
    b->click(2, painelfechamento::Selecao);
    ModalHelper modal;
    modal.expect(mensagens::lembrete, QMessageBox::Ok);
    modal.expect(mensagens::comErros, QMessageBox::Ok);
    b->press(u"Command4"_s);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(b->column(painelfechamento::Selecao), (QStringList{u" "_s, u" "_s, u" "_s}));
    QCOMPARE(b->total(), u"1.030,50"_s);
}

void TstSelecao::controlsAndTheirNames_data() {
    QTest::addColumn<QString>("control");
    QTest::addColumn<QString>("name");
    QTest::newRow("grid") << u"Grid1"_s << u"Documentos"_s;
    QTest::newRow("toggle") << u"Command1"_s << untickFirst;
    QTest::newRow("conversion") << u"Command2"_s << u"Tranformar os DAV´s em PV´s"_s;
    QTest::newRow("listing") << u"Command3"_s << u"Carregar as Pré-Vendas"_s;
    QTest::newRow("closing") << u"Command4"_s << u"Encerrar as Pré-Vendas"_s;
    QTest::newRow("prices") << u"Command5"_s << u"Analisa tabela de preço das PRÉ-VENDAS"_s;
    QTest::newRow("promotion") << u"Command6"_s << u"Define os preços promocionais para os clientes"_s;
    QTest::newRow("total's label") << u"Label1"_s << u"TOTAL SELEÇÃO R$"_s;
    QTest::newRow("total") << u"Text1"_s << u"TOTAL SELEÇÃO R$"_s;
    QTest::newRow("caption") << u"LabelVisualiza"_s
                             << u"DUPLO CLIQUE NA LINHA DO PEDIDO ABRE A VISUALIZAÇÃO..."_s;
}

void TstSelecao::controlsAndTheirNames() {
    QFETCH(QString, control);
    QFETCH(QString, name);
    auto* target = b->panel()->findChild<QWidget*>(control);
    QVERIFY(target);
    QCOMPARE(accessibleName(target), name);
    if (const auto* button = qobject_cast<QPushButton*>(target))
        QCOMPARE(button->text(), name);
    if (const auto* label = qobject_cast<QLabel*>(target))
        QCOMPARE(label->text(), name);
}

// A screen reader hears a drop-down list's value and looks for its name where the list keeps it.
void TstSelecao::paymentMethodListIsNamed() {
    QCOMPARE(b->methods()->accessibleName(), u"FORMA PAGTO"_s);
}

void TstSelecao::menus() {
    const auto* bar = b->panel()->findChild<QMenuBar*>();
    QVERIFY(bar);
    QCOMPARE(bar->actions().size(), 2);
    auto* report = b->panel()->findChild<QMenu*>(u"MnRelatorio"_s);
    QVERIFY(report);
    QCOMPARE(bar->actions()[0], report->menuAction());
    QCOMPARE(report->title().remove(u'&'), u"Relatório"_s);
    QCOMPARE(bar->actions()[1]->objectName(), u"Metas"_s);
    QCOMPARE(bar->actions()[1]->text().remove(u'&'), u"Metas"_s);
    QStringList items;
    for (const QAction* item : report->actions()) {
        QVERIFY2(item->isEnabled(), qPrintable(item->objectName()));
        items.append(item->objectName() + u'=' + item->text().remove(u'&'));
    }
    QCOMPARE(items, (QStringList{u"MnResumoVendas=Resumo de Vendas"_s,
                                 u"MnrelAlfaNivel=Relação alfabética de Nível de Preços"_s,
                                 u"MnComissao=Comissão"_s}));

    for (const QString& image : {u"picSucesso"_s, u"picErro"_s}) {
        const auto* label = b->panel()->findChild<QLabel*>(image);
        QVERIFY2(label, qPrintable(image));
        QVERIFY2(!label->pixmap().isNull(), qPrintable(image));
        QVERIFY2(!label->isVisible(), qPrintable(image));
    }
}

// The toggle's caption changes, which takes a shortcut away unless it is set again.
void TstSelecao::altKeysPressTheButtons() {
    for (const QString& total : {u"0,00"_s, u"1.030,50"_s, u"0,00"_s}) {
        QTest::keyClick(b->grid(), Qt::Key_S, Qt::AltModifier);
        QTRY_COMPARE(b->total(), total);
        QTRY_VERIFY(!b->button(u"Command1"_s)->isDown());
    }
    ModalHelper modal;
    modal.expect(mensagens::nadaSelecionado, QMessageBox::Ok);
    QTest::keyClick(b->grid(), Qt::Key_E, Qt::AltModifier);
    QTRY_COMPARE(modal.problem(), QString());
}

void TstSelecao::altKeyOpensTheMenu() {
    const auto* report = b->panel()->findChild<QMenu*>(u"MnRelatorio"_s);
    QTest::keyClick(b->grid(), Qt::Key_R, Qt::AltModifier);
    QTRY_VERIFY(report->isVisible());
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
    QTRY_VERIFY(!report->isVisible());
    QVERIFY(b->panel()->isVisible());
}

void TstSelecao::tabOrder() {
    for (const QString& name : {u"Command2"_s, u"Command3"_s, u"Command5"_s, u"Command6"_s})
        b->button(name)->setEnabled(true);
    b->grid()->setFocus();
    QStringList visited;
    for (int i = 0; i < 7; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        visited.append(QApplication::focusWidget()->objectName());
    }
    const QStringList order{u"Command1"_s, u"Command2"_s, u"Command3"_s, u"Command6"_s,
                            u"Command5"_s, u"Command4"_s, u"Grid1"_s};
    QCOMPARE(visited, order);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
    QCOMPARE(QApplication::focusWidget()->objectName(), u"Command4"_s);
}

void TstSelecao::enterMovesToTheNextControl() {
    b->grid()->setFocus();
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        b->grid()->setFocus();
        QTest::keyClick(b->grid(), key);
        QTRY_COMPARE(QApplication::focusWidget(), b->button(u"Command1"_s));
    }
    QCOMPARE(b->column(painelfechamento::Selecao), (QStringList{u" "_s, u" "_s, u" "_s}));
}

void TstSelecao::enterDoesNotPressAButton() {
    b->button(u"Command1"_s)->setFocus();
    QTest::keyClick(b->button(u"Command1"_s), Qt::Key_Return);
    QTRY_VERIFY(QApplication::focusWidget() != b->button(u"Command1"_s));
    QCOMPARE(b->total(), u"1.030,50"_s);
}

void TstSelecao::spacePressesAButton() {
    b->button(u"Command1"_s)->setFocus();
    QTest::keyClick(b->button(u"Command1"_s), Qt::Key_Space);
    QCOMPARE(b->total(), u"0,00"_s);
}

void TstSelecao::escapeEndsTheProgram() {
    QVERIFY(endsWith([this] { QTest::keyClick(b->grid(), Qt::Key_Escape); }));
}

void TstSelecao::escapeInABoxOnlyClosesTheBox() {
    QVERIFY(endsWith([this] {
        ModalHelper modal;
        modal.expect(mensagens::lembrete, QMessageBox::NoButton);
        modal.expect(mensagens::sucesso, QMessageBox::NoButton);
        b->press(u"Command4"_s);
        QCOMPARE(modal.problem(), QString());
        QCOMPARE(b->grid()->rows(), 1);
        QVERIFY(b->panel()->isVisible());
        QTimer::singleShot(0, b->panel(),
                           [this] { QTest::keyClick(b->button(u"Command1"_s), Qt::Key_Escape); });
    }));
}

void TstSelecao::closingTheWindowEndsTheProgram() {
    // A text viewer left open must not keep the program alive.
    QWidget other;
    other.show();
    QVERIFY(endsWith([this] { b->panel()->close(); }));
}

void TstSelecao::gridGrowsWithTheWindow() {
    const QSize before = b->grid()->size();
    const int columnWidth = b->grid()->columnWidth(painelfechamento::Cliente);
    b->panel()->resize(b->panel()->size() + QSize(200, 150));
    QTRY_COMPARE(b->grid()->size(), before + QSize(200, 150));
    QCOMPARE(b->grid()->columnWidth(painelfechamento::Cliente), columnWidth);
}

void TstSelecao::sellerTakesTheFreeWidth() {
    const int own = twipsToPixels(b->grid(), b->grid()->columnTwips(painelfechamento::Vendedor));
    b->panel()->resize(1300, b->panel()->height());
    QTRY_VERIFY(b->grid()->columnWidth(painelfechamento::Vendedor) > own);
    QCOMPARE(b->grid()->horizontalHeader()->length(), b->grid()->viewport()->width());
    b->panel()->resize(700, b->panel()->height());
    QTRY_COMPARE(b->grid()->columnWidth(painelfechamento::Vendedor), own);
}

QTEST_MAIN(TstSelecao)
#include "tst_selecao.moc"
