#include "closing/PainelFechamento.h"
#include "core/AcessoDados.h"
#include "support/ModalHelper.h"
#include "targets/MetasQuadro.h"
#include "targets/MetasQuadroColumns.h"
#include "targets/TargetsBench.h"
#include "ui/grid/Grid.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

/// Both tabs without a mouse, names for assistive tools, and the way in from the panel.
class TstMetasTeclado : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { b = std::make_unique<TargetsBench>(); }
    void cleanupTestCase() { b.reset(); }
    void init() {
        b->reset();
        b->shop().basicoDasMetas();
    }

    void addEditAndDeleteATarget();
    void computeAndPrint();
    void altKeyTakesADateWithSingleDigits();
    void enterWalksThroughEveryControl();
    void changingTheTabByKey();
    void convention();
    void escapeClosesTheFormOnly();
    void escapeInADropDownClosesTheDropDown();
    void names();
    void openedFromThePanel();
    void panelStaysWhenTheScreenCannotLoad();

  private:
    std::unique_ptr<TargetsBench> b;
};

// From opening to the deleted row: keys alone, each to the control that has the focus.
void TstMetasTeclado::addEditAndDeleteATarget() {
    b->open();
    QCOMPARE(b->focus(), u"Vendedores"_s);
    b->key(Qt::Key_Down);
    b->key(Qt::Key_Return);
    b->type(u"leite"_s);
    b->key(Qt::Key_Return);
    QCOMPARE(b->focus(), u"Quantidade"_s);
    b->type(u"1.5"_s);
    b->key(Qt::Key_Return);
    QCOMPARE(b->focus(), u"Command1"_s);
    b->key(Qt::Key_Space);
    QCOMPARE(b->shop().metas().size(), 1);
    QCOMPARE(b->shop().metas()[0].first(3), QStringList({u"1"_s, u"P3"_s, u"1.500"_s}));
    QCOMPARE(b->focus(), u"Descricao"_s);

    for (int i = 0; i < 3; ++i)
        b->key(Qt::Key_Return);
    QCOMPARE(b->focus(), u"Grid1"_s);
    b->key(Qt::Key_Home);
    b->key(Qt::Key_Right);
    b->key(Qt::Key_Right);
    QCOMPARE(b->grid(u"Grid1"_s)->currentColumn(), static_cast<int>(metasquadro::grid1::Quantidade));
    b->key(Qt::Key_Space);
    QCOMPARE(b->focus(), u"TextGrid"_s);
    b->type(u"20"_s);
    b->key(Qt::Key_Return);
    QCOMPARE(b->shop().metas()[0][2], u"20.000"_s);
    QCOMPARE(b->focus(), u"Grid1"_s);

    b->key(Qt::Key_Right);
    ModalHelper boxes;
    boxes.expect(u"Deseja realmente excluir o produto\nP3?"_s, QMessageBox::Yes);
    b->key(Qt::Key_Space);
    QCOMPARE(boxes.problem(), QString());
    QVERIFY(b->shop().metas().isEmpty());
}

void TstMetasTeclado::computeAndPrint() {
    b->shop().meta(1, u"P1"_s, u"100"_s);
    b->open();
    b->key(Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(b->focus(), u"DataIni"_s);
    b->type(u"01032024"_s);
    b->key(Qt::Key_Return);
    QCOMPARE(b->focus(), u"DataFin"_s);
    b->key(Qt::Key_Return);
    QCOMPARE(b->focus(), u"Command4"_s);
    b->key(Qt::Key_Space);
    QCOMPARE(b->grid(u"Grid2"_s)->rows(), 1 + 4);
    b->key(Qt::Key_Return);
    QCOMPARE(b->focus(), u"Grid2"_s);
    b->key(Qt::Key_Return);
    QCOMPARE(b->focus(), u"Command2"_s);
    b->key(Qt::Key_Space);
    QCOMPARE(b->shop().estagio().size(), 3);
}

void TstMetasTeclado::altKeyTakesADateWithSingleDigits() {
    b->shop().meta(1, u"P1"_s, u"100"_s);
    b->open();
    b->key(Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(b->focus(), u"DataIni"_s);
    b->type(u"1/2/2024"_s);
    b->mark();
    b->key(Qt::Key_G, Qt::AltModifier);
    QTRY_COMPARE(b->grid(u"Grid2"_s)->rows(), 1 + 4); // the button shows itself pressed for a moment
    QVERIFY(!b->texts().filter(u"'2024-02-01'"_s).isEmpty());
}

void TstMetasTeclado::enterWalksThroughEveryControl() {
    b->open();
    const auto walk = [this](int steps) {
        QStringList order;
        for (int i = 0; i < steps; ++i) {
            order.append(b->focus());
            b->key(Qt::Key_Return);
        }
        return order;
    };
    QCOMPARE(walk(5),
             QStringList({u"Vendedores"_s, u"Descricao"_s, u"Quantidade"_s, u"Command1"_s, u"Grid1"_s}));
    QVERIFY(qobject_cast<QTabBar*>(QApplication::focusWidget()));
    b->goToTab(1);
    QCOMPARE(walk(4), QStringList({u"DataIni"_s, u"DataFin"_s, u"Command4"_s, u"Grid2"_s}));
    QVERIFY(qobject_cast<QTabBar*>(QApplication::focusWidget()));
    b->key(Qt::Key_Return);
    QCOMPARE(walk(3), QStringList({u"Vendedores2"_s, u"Descricao2"_s, u"DataIni"_s}));
}

void TstMetasTeclado::changingTheTabByKey() {
    b->open();
    const auto* abas = b->control<QTabWidget>(u"SSTab1"_s);
    b->key(Qt::Key_2, Qt::AltModifier);
    QCOMPARE(abas->currentIndex(), 1);
    b->key(Qt::Key_1, Qt::AltModifier);
    QCOMPARE(abas->currentIndex(), 0);
    b->key(Qt::Key_Backtab, Qt::ShiftModifier);
    QVERIFY(qobject_cast<QTabBar*>(QApplication::focusWidget()));
    b->key(Qt::Key_Right);
    QCOMPARE(abas->currentIndex(), 1);
    QCOMPARE(b->focus(), u"DataIni"_s);
    b->key(Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(abas->currentIndex(), 0);
    QCOMPARE(b->focus(), u"Vendedores"_s);
    b->key(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(abas->currentIndex(), 1);
}

void TstMetasTeclado::convention() {
    b->open();
    for (const auto& name : {u"Descricao"_s, u"Quantidade"_s}) {
        b->box(name)->setFocus();
        b->type(u"d'agua"_s);
        QCOMPARE(b->box(name)->text(), u"D´AGUA"_s);
        b->box(name)->clear();
    }
}

void TstMetasTeclado::escapeClosesTheFormOnly() {
    b->open();
    b->goToTab(1);
    b->key(Qt::Key_Escape);
    QVERIFY(!b->screen()->isVisible());
}

void TstMetasTeclado::escapeInADropDownClosesTheDropDown() {
    b->open();
    QComboBox* lista = b->list(u"Vendedores"_s);
    b->key(Qt::Key_F4);
    QVERIFY(lista->view()->isVisible());
    QTest::keyClick(lista->view(), Qt::Key_Escape);
    b->settle();
    QVERIFY(!lista->view()->isVisible());
    QVERIFY(b->screen()->isVisible());
    QCOMPARE(b->grid(u"Grid1"_s)->rows(), 1);
}

void TstMetasTeclado::names() {
    b->open();
    const QList<std::pair<QString, QString>> expectedRows{
        {u"Vendedores"_s, u"VENDEDOR(A)"_s},   {u"Descricao"_s, u"DESCRIÇÃO"_s},
        {u"Quantidade"_s, u"QUANTIDADE"_s},    {u"TextGrid"_s, u"QUANTIDADE"_s},
        {u"Grid1"_s, u"Metas do vendedor"_s},  {u"Vendedores2"_s, u"VENDEDOR(A)"_s},
        {u"Descricao2"_s, u"DESCRIÇÃO"_s},     {u"DataIni"_s, u"PERÍODO DE (início)"_s},
        {u"DataFin"_s, u"PERÍODO DE (fim)"_s}, {u"Grid2"_s, u"Andamento das metas"_s},
        {u"Frame1"_s, u"CONFIGURA METAS"_s},   {u"Frame2"_s, u"CONSULTA METAS"_s},
        {u"SSTab1"_s, u"Metas de vendas"_s}};
    for (const auto& [name, accessible] : expectedRows)
        QCOMPARE(b->control(name)->accessibleName(), accessible);
    // Those without a name of their own are called by what they say.
    const QList<std::pair<QString, QString>> byCaption{
        {u"Command1"_s, u"Adicionar"_s},
        {u"Command2"_s, u"Imprimir"_s},
        {u"Command4"_s, u"Gerar Relatório"_s},
        {u"Label4"_s, u"CLIQUE NA COLUNA QUANTIDADE PARA ALTERAR O VALOR DESTE CAMPO."_s},
        {u"Label7"_s, u"AGUARDE..."_s}};
    for (const auto& [name, caption] : byCaption) {
        const QAccessibleInterface* access = QAccessible::queryAccessibleInterface(b->control(name));
        QVERIFY2(access, qPrintable(name));
        QCOMPARE(access->text(QAccessible::Name), caption);
    }
    // Each tab has a Label1 of its own.
    QCOMPARE(b->control(u"Frame1"_s)->findChildren<QWidget*>(u"Label1"_s).size(), 1);
    QCOMPARE(b->control(u"Frame2"_s)->findChildren<QWidget*>(u"Label1"_s).size(), 1);
}

void TstMetasTeclado::openedFromThePanel() {
    PainelFechamento painel;
    QVERIFY(painel.Form_Load());
    painel.show();
    QVERIFY(QTest::qWaitForWindowActive(&painel));
    ModalHelper windows;
    bool modal = false;
    QString title;
    windows.onOpen([&](QWidget* screen) {
        modal = screen->isModal();
        title = screen->windowTitle();
        QTest::keyClick(screen->focusWidget(), Qt::Key_Escape);
    });
    QTest::keyClick(&painel, Qt::Key_M, Qt::AltModifier);
    QCOMPARE(windows.problem(), QString());
    QVERIFY(modal);
    QCOMPARE(title, u" Metas de vendas"_s);
    QVERIFY(painel.isVisible());
}

void TstMetasTeclado::panelStaysWhenTheScreenCannotLoad() {
    PainelFechamento painel;
    QVERIFY(painel.Form_Load());
    painel.show();
    QVERIFY(QTest::qWaitForWindowActive(&painel));
    b->server().execute(u"RENAME TABLE vendedores TO guardada"_s);
    ModalHelper windows;
    windows.expectContaining(u"Erro em tempo de execução"_s, QMessageBox::Ok);
    painel.findChild<QAction*>(u"Metas"_s)->trigger();
    QCOMPARE(windows.problem(), QString());
    QVERIFY(painel.isVisible());
}

QTEST_MAIN(TstMetasTeclado)
#include "tst_metas_teclado.moc"
