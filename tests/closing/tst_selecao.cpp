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

const QString desmarcarInicial = u"Desmarcar todos os Registros"_s;
const QString desmarcar = u"Desmarcar todos os registros"_s;
const QString selecionar = u"Seleciona todos os registros"_s;

constexpr int esperaDoFimMs = 5000;

QString nomeAcessivel(QWidget* controle) {
    QAccessibleInterface* acessivel = QAccessible::queryAccessibleInterface(controle);
    return acessivel ? acessivel->text(QAccessible::Name) : QString();
}

/// Runs the program's event loop while `acao` acts; true when the program ended by itself.
bool terminaCom(const std::function<void()>& acao) {
    constexpr int desistiu = 1;
    QTimer limite;
    limite.setSingleShot(true);
    limite.callOnTimeout([] { QCoreApplication::exit(desistiu); });
    limite.start(esperaDoFimMs);
    QTimer::singleShot(0, acao);
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
    QCOMPARE(b->column(colunas::Selecao), (QStringList{u" "_s, u" "_s, u" "_s}));
}

void TstSelecao::clickTogglesTheRow() {
    b->click(2, colunas::Selecao);
    QCOMPARE(b->column(colunas::Selecao), (QStringList{u" "_s, {}, u" "_s}));
    QVERIFY(b->grid()->hasPicture(1, colunas::Selecao));
    QVERIFY(!b->grid()->hasPicture(2, colunas::Selecao));
    QCOMPARE(b->total(), u"1.010,00"_s);

    b->click(2, colunas::Selecao);
    QCOMPARE(b->column(colunas::Selecao), (QStringList{u" "_s, u" "_s, u" "_s}));
    QVERIFY(b->grid()->hasPicture(2, colunas::Selecao));
    QCOMPARE(b->total(), u"1.030,50"_s);
}

void TstSelecao::spaceTogglesTheRow() {
    b->grid()->setFocus();
    b->grid()->setCurrentCell(3, colunas::Selecao);
    QTest::keyClick(b->grid(), Qt::Key_Space);
    QCOMPARE(b->column(colunas::Selecao), (QStringList{u" "_s, u" "_s, {}}));
    QCOMPARE(b->total(), u"30,50"_s);
    QTest::keyClick(b->grid(), Qt::Key_Up);
    QTest::keyClick(b->grid(), Qt::Key_Space);
    QCOMPARE(b->column(colunas::Selecao), (QStringList{u" "_s, {}, {}}));
    QCOMPARE(b->total(), u"10,00"_s);
}

void TstSelecao::tickIsToldToScreenReaders() {
    const auto dito = [this](int linha) {
        QAccessibleInterface* tabela = QAccessible::queryAccessibleInterface(b->grid());
        return tabela->tableInterface()->cellAt(linha, colunas::Selecao)->text(QAccessible::Name);
    };
    QCOMPARE(dito(1), u"Selecionado"_s);
    b->click(2, colunas::Selecao);
    QCOMPARE(dito(1), u"Não selecionado"_s);
}

void TstSelecao::clickOnTheHeaderDoesNothing() {
    for (const int coluna : {int(colunas::Selecao), int(colunas::FormaPagto), int(colunas::Pedido)})
        b->click(0, coluna);
    QCOMPARE(b->column(colunas::Selecao), (QStringList{u" "_s, u" "_s, u" "_s}));
    QCOMPARE(b->column(colunas::Pedido), (QStringList{u"1"_s, u"2"_s, u"3"_s}));
    QCOMPARE(b->total(), u"1.030,50"_s);
}

void TstSelecao::otherColumnsDoNothing_data() {
    QTest::addColumn<int>("coluna");
    for (int coluna = colunas::Pedido; coluna <= colunas::Total; ++coluna)
        QTest::addRow("column %d", coluna) << coluna;
}

void TstSelecao::otherColumnsDoNothing() {
    QFETCH(int, coluna);
    const QStringList antes = b->row(2);
    b->click(2, coluna);
    QTest::keyClick(b->grid(), Qt::Key_Space);
    QCOMPARE(b->row(2), antes);
    QCOMPARE(b->column(colunas::Selecao), (QStringList{u" "_s, u" "_s, u" "_s}));
    QCOMPARE(b->total(), u"1.030,50"_s);
    QVERIFY(!QApplication::activeModalWidget());
}

void TstSelecao::selectionSendsNoStatement() {
    StatementLog registro(b->server());
    b->click(1, colunas::Selecao);
    b->press(u"Command1"_s);
    b->press(u"Command1"_s);
    QCOMPARE(registro.texts(), QStringList());
}

void TstSelecao::toggleAll() {
    QCOMPARE(b->button(u"Command1"_s)->text(), desmarcarInicial);
    b->press(u"Command1"_s);
    QCOMPARE(b->column(colunas::Selecao), (QStringList{{}, {}, {}}));
    for (int linha = 1; linha <= 3; ++linha)
        QVERIFY(!b->grid()->hasPicture(linha, colunas::Selecao));
    QCOMPARE(b->button(u"Command1"_s)->text(), selecionar);
    QCOMPARE(b->total(), u"0,00"_s);

    b->press(u"Command1"_s);
    QCOMPARE(b->column(colunas::Selecao), (QStringList{u" "_s, u" "_s, u" "_s}));
    for (int linha = 1; linha <= 3; ++linha)
        QVERIFY(b->grid()->hasPicture(linha, colunas::Selecao));
    QCOMPARE(b->button(u"Command1"_s)->text(), desmarcar);
    QCOMPARE(b->total(), u"1.030,50"_s);

    b->press(u"Command1"_s);
    QCOMPARE(b->button(u"Command1"_s)->text(), selecionar);
    QCOMPARE(b->total(), u"0,00"_s);
}

void TstSelecao::toggleAllFollowsTheCaptionNotTheRows() {
    for (int linha = 1; linha <= 3; ++linha)
        b->click(linha, colunas::Selecao);
    QCOMPARE(b->button(u"Command1"_s)->text(), desmarcarInicial);
    b->press(u"Command1"_s);
    QCOMPARE(b->column(colunas::Selecao), (QStringList{{}, {}, {}}));
    QCOMPARE(b->button(u"Command1"_s)->text(), selecionar);
    b->click(2, colunas::Selecao);
    b->press(u"Command1"_s);
    QCOMPARE(b->column(colunas::Selecao), (QStringList{u" "_s, u" "_s, u" "_s}));
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
    QCOMPARE(b->button(u"Command1"_s)->text(), desmarcarInicial);
}

void TstSelecao::totalFollowsTheTicks() {
    b->server().execute(u"UPDATE orcamento SET totalped = -5.05 WHERE nrpedido = 1; "
                        "UPDATE orcamento SET totalped = NULL WHERE nrpedido = 2"_s);
    QVERIFY(b->open());
    QCOMPARE(b->column(colunas::Total), (QStringList{u"-5,05"_s, u"0,00"_s, u"1.000,00"_s}));
    QCOMPARE(b->total(), u"994,95"_s);
    b->click(3, colunas::Selecao);
    QCOMPARE(b->total(), u"-5,05"_s);
    b->click(1, colunas::Selecao);
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
    b->click(1, colunas::Selecao);
    b->click(2, colunas::Selecao);
    ModalHelper modal;
    modal.expect(mensagens::lembrete, QMessageBox::Ok);
    modal.expect(mensagens::comErros, QMessageBox::Ok);
    b->press(u"Command4"_s);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(b->column(colunas::Selecao), (QStringList{u" "_s, u" "_s, u" "_s}));
    QCOMPARE(b->total(), u"1.030,50"_s);
}

void TstSelecao::controlsAndTheirNames_data() {
    QTest::addColumn<QString>("controle");
    QTest::addColumn<QString>("nome");
    QTest::newRow("grid") << u"Grid1"_s << u"Documentos"_s;
    QTest::newRow("toggle") << u"Command1"_s << desmarcarInicial;
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
    QFETCH(QString, controle);
    QFETCH(QString, nome);
    auto* alvo = b->panel()->findChild<QWidget*>(controle);
    QVERIFY(alvo);
    QCOMPARE(nomeAcessivel(alvo), nome);
    if (const auto* botao = qobject_cast<QPushButton*>(alvo))
        QCOMPARE(botao->text(), nome);
    if (const auto* rotulo = qobject_cast<QLabel*>(alvo))
        QCOMPARE(rotulo->text(), nome);
}

// A screen reader hears a drop-down list's value and looks for its name where the list keeps it.
void TstSelecao::paymentMethodListIsNamed() {
    QCOMPARE(b->methods()->accessibleName(), u"FORMA PAGTO"_s);
}

void TstSelecao::menus() {
    const auto* barra = b->panel()->findChild<QMenuBar*>();
    QVERIFY(barra);
    QCOMPARE(barra->actions().size(), 2);
    auto* relatorio = b->panel()->findChild<QMenu*>(u"MnRelatorio"_s);
    QVERIFY(relatorio);
    QCOMPARE(barra->actions()[0], relatorio->menuAction());
    QCOMPARE(relatorio->title().remove(u'&'), u"Relatório"_s);
    QCOMPARE(barra->actions()[1]->objectName(), u"Metas"_s);
    QCOMPARE(barra->actions()[1]->text().remove(u'&'), u"Metas"_s);
    QStringList itens;
    for (const QAction* item : relatorio->actions()) {
        QVERIFY2(item->isEnabled(), qPrintable(item->objectName()));
        itens.append(item->objectName() + u'=' + item->text().remove(u'&'));
    }
    QCOMPARE(itens, (QStringList{u"MnResumoVendas=Resumo de Vendas"_s,
                                 u"MnrelAlfaNivel=Relação alfabética de Nível de Preços"_s,
                                 u"MnComissao=Comissão"_s}));

    for (const QString& imagem : {u"picSucesso"_s, u"picErro"_s}) {
        const auto* rotulo = b->panel()->findChild<QLabel*>(imagem);
        QVERIFY2(rotulo, qPrintable(imagem));
        QVERIFY2(!rotulo->pixmap().isNull(), qPrintable(imagem));
        QVERIFY2(!rotulo->isVisible(), qPrintable(imagem));
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
    const auto* relatorio = b->panel()->findChild<QMenu*>(u"MnRelatorio"_s);
    QTest::keyClick(b->grid(), Qt::Key_R, Qt::AltModifier);
    QTRY_VERIFY(relatorio->isVisible());
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
    QTRY_VERIFY(!relatorio->isVisible());
    QVERIFY(b->panel()->isVisible());
}

void TstSelecao::tabOrder() {
    for (const QString& nome : {u"Command2"_s, u"Command3"_s, u"Command5"_s, u"Command6"_s})
        b->button(nome)->setEnabled(true);
    b->grid()->setFocus();
    QStringList visitados;
    for (int i = 0; i < 7; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        visitados.append(QApplication::focusWidget()->objectName());
    }
    const QStringList ordem{u"Command1"_s, u"Command2"_s, u"Command3"_s, u"Command6"_s,
                            u"Command5"_s, u"Command4"_s, u"Grid1"_s};
    QCOMPARE(visitados, ordem);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
    QCOMPARE(QApplication::focusWidget()->objectName(), u"Command4"_s);
}

void TstSelecao::enterMovesToTheNextControl() {
    b->grid()->setFocus();
    for (const Qt::Key tecla : {Qt::Key_Return, Qt::Key_Enter}) {
        b->grid()->setFocus();
        QTest::keyClick(b->grid(), tecla);
        QTRY_COMPARE(QApplication::focusWidget(), b->button(u"Command1"_s));
    }
    QCOMPARE(b->column(colunas::Selecao), (QStringList{u" "_s, u" "_s, u" "_s}));
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
    QVERIFY(terminaCom([this] { QTest::keyClick(b->grid(), Qt::Key_Escape); }));
}

void TstSelecao::escapeInABoxOnlyClosesTheBox() {
    QVERIFY(terminaCom([this] {
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
    QWidget outra;
    outra.show();
    QVERIFY(terminaCom([this] { b->panel()->close(); }));
}

void TstSelecao::gridGrowsWithTheWindow() {
    const QSize antes = b->grid()->size();
    const int larguraDaColuna = b->grid()->columnWidth(colunas::Cliente);
    b->panel()->resize(b->panel()->size() + QSize(200, 150));
    QTRY_COMPARE(b->grid()->size(), antes + QSize(200, 150));
    QCOMPARE(b->grid()->columnWidth(colunas::Cliente), larguraDaColuna);
}

void TstSelecao::sellerTakesTheFreeWidth() {
    const int own = twipsToPixels(b->grid(), b->grid()->columnTwips(colunas::Vendedor));
    b->panel()->resize(1300, b->panel()->height());
    QTRY_VERIFY(b->grid()->columnWidth(colunas::Vendedor) > own);
    QCOMPARE(b->grid()->horizontalHeader()->length(), b->grid()->viewport()->width());
    b->panel()->resize(700, b->panel()->height());
    QTRY_COMPARE(b->grid()->columnWidth(colunas::Vendedor), own);
}

QTEST_MAIN(TstSelecao)
#include "tst_selecao.moc"
