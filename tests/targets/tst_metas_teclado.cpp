#include "closing/PainelFechamento.h"
#include "core/AcessoDados.h"
#include "support/ModalHelper.h"
#include "targets/BancadaMetas.h"
#include "targets/MetasQuadro.h"
#include "targets/MetasQuadroColumns.h"
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
using namespace tarvessa::teste;

/// Both tabs without a mouse, names for assistive tools, and the way in from the panel.
class TstMetasTeclado : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { b = std::make_unique<BancadaMetas>(); }
    void cleanupTestCase() { b.reset(); }
    void init() {
        b->arruma();
        b->basico();
    }

    void addEditAndDeleteATarget();
    void computeAndPrint();
    void enterWalksThroughEveryControl();
    void changingTheTabByKey();
    void convention();
    void escapeClosesTheFormOnly();
    void escapeInADropDownClosesTheDropDown();
    void names();
    void openedFromThePanel();
    void panelStaysWhenTheScreenCannotLoad();

  private:
    std::unique_ptr<BancadaMetas> b;
};

// From opening to the deleted row: keys alone, each to the control that has the focus.
void TstMetasTeclado::addEditAndDeleteATarget() {
    b->abre();
    QCOMPARE(b->foco(), u"Vendedores"_s);
    b->tecla(Qt::Key_Down);
    b->tecla(Qt::Key_Return);
    b->digita(u"leite"_s);
    b->tecla(Qt::Key_Return);
    QCOMPARE(b->foco(), u"Quantidade"_s);
    b->digita(u"1.5"_s);
    b->tecla(Qt::Key_Return);
    QCOMPARE(b->foco(), u"Command1"_s);
    b->tecla(Qt::Key_Space);
    QCOMPARE(b->metas().size(), 1);
    QCOMPARE(b->metas()[0].first(3), QStringList({u"1"_s, u"P3"_s, u"1.500"_s}));
    QCOMPARE(b->foco(), u"Descricao"_s);

    for (int i = 0; i < 3; ++i)
        b->tecla(Qt::Key_Return);
    QCOMPARE(b->foco(), u"Grid1"_s);
    b->tecla(Qt::Key_Home);
    b->tecla(Qt::Key_Right);
    b->tecla(Qt::Key_Right);
    QCOMPARE(b->grade(u"Grid1"_s)->currentColumn(), static_cast<int>(metasquadro::grid1::Quantidade));
    b->tecla(Qt::Key_Space);
    QCOMPARE(b->foco(), u"TextGrid"_s);
    b->digita(u"20"_s);
    b->tecla(Qt::Key_Return);
    QCOMPARE(b->metas()[0][2], u"20.000"_s);
    QCOMPARE(b->foco(), u"Grid1"_s);

    b->tecla(Qt::Key_Right);
    ModalHelper caixas;
    caixas.espera(u"Deseja realmente excluir o produto\nP3?"_s, QMessageBox::Yes);
    b->tecla(Qt::Key_Space);
    QCOMPARE(caixas.confere(), QString());
    QVERIFY(b->metas().isEmpty());
}

void TstMetasTeclado::computeAndPrint() {
    b->meta(1, u"P1"_s, u"100"_s);
    b->abre();
    b->tecla(Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(b->foco(), u"DataIni"_s);
    b->digita(u"01032024"_s);
    b->tecla(Qt::Key_Return);
    QCOMPARE(b->foco(), u"DataFin"_s);
    b->tecla(Qt::Key_Return);
    QCOMPARE(b->foco(), u"Command4"_s);
    b->tecla(Qt::Key_Space);
    QCOMPARE(b->grade(u"Grid2"_s)->rows(), 1 + 4);
    b->tecla(Qt::Key_Return);
    QCOMPARE(b->foco(), u"Grid2"_s);
    b->tecla(Qt::Key_Return);
    QCOMPARE(b->foco(), u"Command2"_s);
    b->tecla(Qt::Key_Space);
    QCOMPARE(b->estagio().size(), 3);
}

void TstMetasTeclado::enterWalksThroughEveryControl() {
    b->abre();
    const auto percorre = [this](int passos) {
        QStringList nomes;
        for (int i = 0; i < passos; ++i) {
            nomes.append(b->foco());
            b->tecla(Qt::Key_Return);
        }
        return nomes;
    };
    QCOMPARE(percorre(5),
             QStringList({u"Vendedores"_s, u"Descricao"_s, u"Quantidade"_s, u"Command1"_s, u"Grid1"_s}));
    QVERIFY(qobject_cast<QTabBar*>(QApplication::focusWidget()));
    b->vaiParaAba(1);
    QCOMPARE(percorre(4), QStringList({u"DataIni"_s, u"DataFin"_s, u"Command4"_s, u"Grid2"_s}));
    QVERIFY(qobject_cast<QTabBar*>(QApplication::focusWidget()));
    b->tecla(Qt::Key_Return);
    QCOMPARE(percorre(3), QStringList({u"Vendedores2"_s, u"Descricao2"_s, u"DataIni"_s}));
}

void TstMetasTeclado::changingTheTabByKey() {
    b->abre();
    const auto* abas = b->controle<QTabWidget>(u"SSTab1"_s);
    b->tecla(Qt::Key_2, Qt::AltModifier);
    QCOMPARE(abas->currentIndex(), 1);
    b->tecla(Qt::Key_1, Qt::AltModifier);
    QCOMPARE(abas->currentIndex(), 0);
    b->tecla(Qt::Key_Backtab, Qt::ShiftModifier);
    QVERIFY(qobject_cast<QTabBar*>(QApplication::focusWidget()));
    b->tecla(Qt::Key_Right);
    QCOMPARE(abas->currentIndex(), 1);
    QCOMPARE(b->foco(), u"DataIni"_s);
    b->tecla(Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(abas->currentIndex(), 0);
    QCOMPARE(b->foco(), u"Vendedores"_s);
    b->tecla(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(abas->currentIndex(), 1);
}

void TstMetasTeclado::convention() {
    b->abre();
    for (const auto& nome : {u"Descricao"_s, u"Quantidade"_s}) {
        b->caixa(nome)->setFocus();
        b->digita(u"d'agua"_s);
        QCOMPARE(b->caixa(nome)->text(), u"D´AGUA"_s);
        b->caixa(nome)->clear();
    }
}

void TstMetasTeclado::escapeClosesTheFormOnly() {
    b->abre();
    b->vaiParaAba(1);
    b->tecla(Qt::Key_Escape);
    QVERIFY(!b->tela()->isVisible());
}

void TstMetasTeclado::escapeInADropDownClosesTheDropDown() {
    b->abre();
    QComboBox* lista = b->lista(u"Vendedores"_s);
    b->tecla(Qt::Key_F4);
    QVERIFY(lista->view()->isVisible());
    QTest::keyClick(lista->view(), Qt::Key_Escape);
    b->processa();
    QVERIFY(!lista->view()->isVisible());
    QVERIFY(b->tela()->isVisible());
    QCOMPARE(b->grade(u"Grid1"_s)->rows(), 1);
}

void TstMetasTeclado::names() {
    b->abre();
    const QList<std::pair<QString, QString>> esperados{
        {u"Vendedores"_s, u"VENDEDOR(A)"_s},   {u"Descricao"_s, u"DESCRIÇÃO"_s},
        {u"Quantidade"_s, u"QUANTIDADE"_s},    {u"TextGrid"_s, u"QUANTIDADE"_s},
        {u"Grid1"_s, u"Metas do vendedor"_s},  {u"Vendedores2"_s, u"VENDEDOR(A)"_s},
        {u"Descricao2"_s, u"DESCRIÇÃO"_s},     {u"DataIni"_s, u"PERÍODO DE (início)"_s},
        {u"DataFin"_s, u"PERÍODO DE (fim)"_s}, {u"Grid2"_s, u"Andamento das metas"_s},
        {u"Frame1"_s, u"CONFIGURA METAS"_s},   {u"Frame2"_s, u"CONSULTA METAS"_s},
        {u"SSTab1"_s, u"Metas de vendas"_s}};
    for (const auto& [nome, acessivel] : esperados)
        QCOMPARE(b->controle(nome)->accessibleName(), acessivel);
    // Those without a name of their own are called by what they say.
    const QList<std::pair<QString, QString>> pelaLegenda{
        {u"Command1"_s, u"Adicionar"_s},
        {u"Command2"_s, u"Imprimir"_s},
        {u"Command4"_s, u"Gerar Relatório"_s},
        {u"Label4"_s, u"CLIQUE NA COLUNA QUANTIDADE PARA ALTERAR O VALOR DESTE CAMPO."_s},
        {u"Label7"_s, u"AGUARDE..."_s}};
    for (const auto& [nome, legenda] : pelaLegenda) {
        const QAccessibleInterface* acesso = QAccessible::queryAccessibleInterface(b->controle(nome));
        QVERIFY2(acesso, qPrintable(nome));
        QCOMPARE(acesso->text(QAccessible::Name), legenda);
    }
    // Each tab has a Label1 of its own.
    QCOMPARE(b->controle(u"Frame1"_s)->findChildren<QWidget*>(u"Label1"_s).size(), 1);
    QCOMPARE(b->controle(u"Frame2"_s)->findChildren<QWidget*>(u"Label1"_s).size(), 1);
}

void TstMetasTeclado::openedFromThePanel() {
    PainelFechamento painel;
    QVERIFY(painel.Form_Load());
    painel.show();
    QVERIFY(QTest::qWaitForWindowActive(&painel));
    ModalHelper janelas;
    bool modal = false;
    QString titulo;
    janelas.aoAbrir([&](QWidget* tela) {
        modal = tela->isModal();
        titulo = tela->windowTitle();
        QTest::keyClick(tela->focusWidget(), Qt::Key_Escape);
    });
    QTest::keyClick(&painel, Qt::Key_M, Qt::AltModifier);
    QCOMPARE(janelas.confere(), QString());
    QVERIFY(modal);
    QCOMPARE(titulo, u" Metas de vendas"_s);
    QVERIFY(painel.isVisible());
}

void TstMetasTeclado::panelStaysWhenTheScreenCannotLoad() {
    PainelFechamento painel;
    QVERIFY(painel.Form_Load());
    painel.show();
    QVERIFY(QTest::qWaitForWindowActive(&painel));
    b->servidor().executa(u"RENAME TABLE vendedores TO guardada"_s);
    ModalHelper janelas;
    janelas.esperaContendo(u"Erro em tempo de execução"_s, QMessageBox::Ok);
    painel.findChild<QAction*>(u"Metas"_s)->trigger();
    QCOMPARE(janelas.confere(), QString());
    QVERIFY(painel.isVisible());
}

QTEST_MAIN(TstMetasTeclado)
#include "tst_metas_teclado.moc"
