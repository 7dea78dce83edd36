#include "support/FaultProxy.h"
#include "support/ModalHelper.h"
#include "support/StatementLog.h"
#include "targets/BancadaMetas.h"
#include "targets/MetasQuadro.h"
#include "targets/MetasQuadroColumns.h"
#include "ui/grid/Grid.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTabWidget>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::teste;

/// Editing a target's quantity in its cell.
class TstMetasEdicao : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { b = std::make_unique<BancadaMetas>(); }
    void cleanupTestCase() { b.reset(); }
    void init() {
        b->arruma();
        b->basico();
        b->meta(1, u"P1"_s, u"1234.5"_s);
        b->meta(1, u"P2"_s, u"20"_s);
    }

    void opensOverTheCell();
    void followsTheScrolledGrid();
    void enterCommits();
    void unchangedIsWrittenAgain();
    void escapeWritesTheOldOne();
    void typed_data();
    void typed();
    void pasted_data();
    void pasted();
    void leftBy_data();
    void leftBy();
    void leavingWithoutANumber();
    void longestQuantityIsKeptWhole();
    void numberBeyondEverything_data();
    void numberBeyondEverything();
    void clickWaitsForTheProduct();
    void closingTheFormCommitsNothing();
    void boxesAndOtherWindowsAreNoLeaving();
    void deletedByAnotherWorkstation();
    void failingUpdate();
    void connectionLost();

  private:
    void abreEditor(const QString& codigo = u"P1"_s);
    void deixaEditor(const QString& como, ModalHelper& caixas);
    QString sqlUpdate(const QString& numero);
    void confereFechado(const QString& celula);
    int linha() const { return b->linhaDe(u"Grid1"_s, u"P1"_s); }

    std::unique_ptr<BancadaMetas> b;
};

void TstMetasEdicao::abreEditor(const QString& codigo) {
    if (!b->tela())
        b->abre();
    b->escolhe(u"Vendedores"_s, u"ANA"_s);
    b->clica(u"Grid1"_s, b->linhaDe(u"Grid1"_s, codigo), metasquadro::grid1::Quantidade);
    QVERIFY(b->caixa(u"TextGrid"_s)->isVisible());
}

QString TstMetasEdicao::sqlUpdate(const QString& numero) {
    return u"Update metavendedoritem Set Quantidade="_s + numero + u" Where ID="_s +
           b->linha(u"Grid1"_s, linha())[metasquadro::grid1::Id];
}

// The editor is gone, the cell shows this, the grid can be used and has the focus.
void TstMetasEdicao::confereFechado(const QString& celula) {
    QVERIFY(!b->caixa(u"TextGrid"_s)->isVisible());
    QVERIFY(b->grade(u"Grid1"_s)->isEnabled());
    QCOMPARE(b->foco(), u"Grid1"_s);
    QCOMPARE(b->linha(u"Grid1"_s, linha())[metasquadro::grid1::Quantidade], celula);
}

void TstMetasEdicao::opensOverTheCell() {
    abreEditor();
    const QLineEdit* editor = b->caixa(u"TextGrid"_s);
    Grid* grade = b->grade(u"Grid1"_s);
    QCOMPARE(editor->text(), u"1.234,500"_s);
    QCOMPARE(editor->selectedText(), editor->text());
    QCOMPARE(b->foco(), u"TextGrid"_s);
    QVERIFY(!grade->isEnabled());
    const QRect celula = grade->cellRect(linha(), metasquadro::grid1::Quantidade);
    QCOMPARE(QRect(editor->mapTo(b->tela(), QPoint()), editor->size()),
             QRect(grade->mapTo(b->tela(), celula.topLeft()), celula.size()));
}

void TstMetasEdicao::followsTheScrolledGrid() {
    b->servidor().executa(u"INSERT INTO produtos (codfabr, descricao, ativo) SELECT CONCAT('Q', seq), "
                          "CONCAT('PRODUTO ', seq), 'S' FROM seq_1_to_100"_s);
    b->servidor().executa(u"INSERT INTO metavendedoritem (CodVendedor, CodigoProduto, Quantidade) SELECT 1, "
                          "CONCAT('Q', seq), seq FROM seq_1_to_100"_s);
    abreEditor(u"Q50"_s);
    Grid* grade = b->grade(u"Grid1"_s);
    QScrollBar* rolagem = grade->verticalScrollBar();
    rolagem->setValue(rolagem->value() + (rolagem->value() < rolagem->maximum() ? 2 : -2));
    b->processa();
    const QRect celula = grade->cellRect(b->linhaDe(u"Grid1"_s, u"Q50"_s), metasquadro::grid1::Quantidade);
    const QLineEdit* editor = b->caixa(u"TextGrid"_s);
    QCOMPARE(editor->mapTo(b->tela(), QPoint()), grade->mapTo(b->tela(), celula.topLeft()));
}

void TstMetasEdicao::enterCommits() {
    abreEditor();
    StatementLog registro(b->servidor());
    b->digita(u"77,25"_s);
    b->tecla(Qt::Key_Return);
    QCOMPARE(registro.textos(), StatementLog::esperado({sqlUpdate(u" 77.25"_s)}));
    confereFechado(u"77,250"_s);
    QCOMPARE(b->metas()[0][2], u"77.250"_s);
    QCOMPARE(b->metas()[1][2], u"20.000"_s);
    // Nothing follows when the focus goes on.
    b->tecla(Qt::Key_Return);
    QCOMPARE(registro.textos().size(), 1);
}

void TstMetasEdicao::unchangedIsWrittenAgain() {
    abreEditor();
    StatementLog registro(b->servidor());
    b->tecla(Qt::Key_Enter);
    QCOMPARE(registro.textos(), StatementLog::esperado({sqlUpdate(u" 1234.5"_s)}));
    confereFechado(u"1.234,500"_s);
}

void TstMetasEdicao::escapeWritesTheOldOne() {
    abreEditor();
    StatementLog registro(b->servidor());
    b->digita(u"99"_s);
    b->tecla(Qt::Key_Escape);
    QCOMPARE(registro.textos(), StatementLog::esperado({sqlUpdate(u" 1234.5"_s)}));
    confereFechado(u"1.234,500"_s);
    // Only the next Escape closes the form.
    QVERIFY(b->tela()->isVisible());
    b->tecla(Qt::Key_Escape);
    QVERIFY(!b->tela()->isVisible());
}

namespace {

void quantidades() {
    QTest::addColumn<QString>("texto");
    QTest::addColumn<QString>("numero");
    QTest::addColumn<QString>("celula");
    const QString antiga = u" 1234.5"_s;
    const QString celulaAntiga = u"1.234,500"_s;
    QTest::newRow("comma") << u"1,5"_s << u" 1.5"_s << u"1,500"_s;
    QTest::newRow("point") << u"1.5"_s << u" 1.5"_s << u"1,500"_s;
    QTest::newRow("largest") << u"999999,999"_s << u" 999999.999"_s << u"999.999,999"_s;
    QTest::newRow("a million") << u"1000000"_s << u" 1000000"_s << u"1.000.000"_s;
    QTest::newRow("zero") << u"0"_s << antiga << celulaAntiga;
    QTest::newRow("negative") << u"-1"_s << antiga << celulaAntiga;
    QTest::newRow("letters") << u"abc"_s << antiga << celulaAntiga;
    QTest::newRow("nothing") << QString() << antiga << celulaAntiga;
    QTest::newRow("number with letters") << u"12cx"_s << antiga << celulaAntiga;
}

} // namespace

void TstMetasEdicao::typed_data() {
    quantidades();
    // By key every point is a comma, and two of them are no number.
    QTest::newRow("thousands and comma") << u"1.234,5"_s << u" 1234.5"_s << u"1.234,500"_s;
}

void TstMetasEdicao::typed() {
    QFETCH(QString, texto);
    QFETCH(QString, numero);
    QFETCH(QString, celula);
    abreEditor();
    StatementLog registro(b->servidor());
    b->tecla(Qt::Key_Delete); // the text is selected
    b->digita(texto);
    QCOMPARE(b->caixa(u"TextGrid"_s)->text(), QString(texto).replace(u'.', u',').toUpper());
    b->tecla(Qt::Key_Return);
    QCOMPARE(registro.textos(), StatementLog::esperado({sqlUpdate(numero)}));
    confereFechado(celula);
}

void TstMetasEdicao::pasted_data() {
    quantidades();
    QTest::newRow("thousands and comma") << u"2.345,5"_s << u" 2345.5"_s << u"2.345,500"_s;
}

void TstMetasEdicao::pasted() {
    QFETCH(QString, texto);
    QFETCH(QString, numero);
    QFETCH(QString, celula);
    abreEditor();
    StatementLog registro(b->servidor());
    if (texto.isEmpty())
        b->tecla(Qt::Key_X, Qt::ControlModifier);
    else
        b->cola(texto);
    b->tecla(Qt::Key_Return);
    QCOMPARE(registro.textos(), StatementLog::esperado({sqlUpdate(numero)}));
    confereFechado(celula);
}

void TstMetasEdicao::leftBy_data() {
    QTest::addColumn<QString>("como");
    for (const char* como : {"Tab", "Backtab", "mouse", "shortcut", "tab page"})
        QTest::newRow(como) << QString::fromLatin1(como);
}

void TstMetasEdicao::deixaEditor(const QString& como, ModalHelper& caixas) {
    if (como == u"Tab") {
        b->tecla(Qt::Key_Tab);
    } else if (como == u"Backtab") {
        b->tecla(Qt::Key_Backtab, Qt::ShiftModifier);
    } else if (como == u"mouse") {
        QTest::mouseClick(b->caixa(u"Quantidade"_s), Qt::LeftButton);
        b->processa();
    } else if (como == u"shortcut") {
        caixas.espera(u"Produto não selecionado corretamente. Verifique!!!"_s, QMessageBox::Ok);
        b->tecla(Qt::Key_A, Qt::AltModifier);
    } else {
        b->tecla(Qt::Key_2, Qt::AltModifier);
    }
}

// However the editor is left, the quantity is written once.
void TstMetasEdicao::leftBy() {
    QFETCH(QString, como);
    abreEditor();
    StatementLog registro(b->servidor());
    ModalHelper caixas;
    b->digita(u"8"_s);
    deixaEditor(como, caixas);
    QCOMPARE(caixas.confere(), QString());
    QCOMPARE(registro.textos(), StatementLog::esperado({sqlUpdate(u" 8"_s)}));
    if (como == u"tab page") {
        QCOMPARE(b->controle<QTabWidget>(u"SSTab1"_s)->currentIndex(), 1);
        QCOMPARE(b->foco(), u"DataIni"_s);
        b->vaiParaAba(0);
    } else if (como == u"shortcut") {
        QCOMPARE(b->foco(), u"Descricao"_s);
    } else {
        QCOMPARE(b->foco(), u"Grid1"_s);
    }
    QVERIFY(!b->caixa(u"TextGrid"_s)->isVisible());
    QVERIFY(b->grade(u"Grid1"_s)->isEnabled());
    QCOMPARE(b->linha(u"Grid1"_s, linha())[metasquadro::grid1::Quantidade], u"8"_s);
}

void TstMetasEdicao::leavingWithoutANumber() {
    abreEditor();
    StatementLog registro(b->servidor());
    b->digita(u"x"_s);
    b->tecla(Qt::Key_Tab);
    QCOMPARE(registro.textos(), StatementLog::esperado({sqlUpdate(u" 1234.5"_s)}));
    confereFechado(u"1.234,500"_s);
}

// As long as the column takes it, fifteen characters on the screen.
void TstMetasEdicao::longestQuantityIsKeptWhole() {
    b->servidor().executa(
        u"UPDATE metavendedoritem SET Quantidade = 999999999.999 WHERE CodigoProduto = 'P1'"_s);
    abreEditor();
    StatementLog registro(b->servidor());
    QCOMPARE(b->caixa(u"TextGrid"_s)->text(), u"999.999.999,999"_s);
    b->digita(u"7"_s);
    b->tecla(Qt::Key_Escape);
    QCOMPARE(registro.textos(), StatementLog::esperado({sqlUpdate(u" 999999999.999"_s)}));
    confereFechado(u"999.999.999,999"_s);
    QCOMPARE(b->metas()[0][2], u"999999999.999"_s);
}

void TstMetasEdicao::numberBeyondEverything_data() {
    leftBy_data();
}

// The number is refused once, nothing is written, and the screen goes on.
void TstMetasEdicao::numberBeyondEverything() {
    QFETCH(QString, como);
    abreEditor();
    StatementLog registro(b->servidor());
    ModalHelper caixas;
    caixas.esperaContendo(u"Estouro"_s, QMessageBox::Ok);
    b->digita(u"99999999999999999999"_s);
    deixaEditor(como, caixas);
    if (como == u"tab page")
        b->vaiParaAba(0);
    QCOMPARE(caixas.confere(), QString());
    QCOMPARE(registro.textos().filter(u"Update"_s), QStringList());
    QVERIFY(!b->caixa(u"TextGrid"_s)->isVisible());
    QVERIFY(b->grade(u"Grid1"_s)->isEnabled());
    QCOMPARE(b->linha(u"Grid1"_s, linha())[metasquadro::grid1::Quantidade], u"1.234,500"_s);
}

// A product that is still to be searched says so before the clicked cell does anything, not over it.
void TstMetasEdicao::clickWaitsForTheProduct() {
    b->abre();
    b->escolhe(u"Vendedores"_s, u"ANA"_s);
    for (const int coluna : {int(metasquadro::grid1::Excluir), int(metasquadro::grid1::Quantidade)}) {
        b->caixa(u"Descricao"_s)->setFocus();
        b->digita(u"NADA IGUAL"_s);
        ModalHelper caixas;
        caixas.esperaContendo(u"Descrição não cadastrada"_s, QMessageBox::Ok);
        caixas.espera(u"Descricao inexistente. Verifique!!!"_s, QMessageBox::Ok);
        b->clica(u"Grid1"_s, linha(), coluna);
        QCOMPARE(caixas.confere(), QString());
        QVERIFY(!b->caixa(u"TextGrid"_s)->isVisible());
    }
    QCOMPARE(b->metas().size(), 2);
}

void TstMetasEdicao::closingTheFormCommitsNothing() {
    abreEditor();
    StatementLog registro(b->servidor());
    b->digita(u"8"_s);
    b->tela()->close();
    b->processa();
    QCOMPARE(registro.textos(), QStringList());
    QCOMPARE(b->metas()[0][2], u"1234.500"_s);
}

void TstMetasEdicao::boxesAndOtherWindowsAreNoLeaving() {
    abreEditor();
    StatementLog registro(b->servidor());
    b->digita(u"8"_s);
    QLineEdit outra;
    outra.show();
    outra.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&outra));
    b->processa();
    QCOMPARE(registro.textos(), QStringList());
    QVERIFY(b->caixa(u"TextGrid"_s)->isVisible());
    b->tela()->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(b->tela()));
    QCOMPARE(b->foco(), u"TextGrid"_s);
    b->tecla(Qt::Key_Return);
    QCOMPARE(registro.textos(), StatementLog::esperado({sqlUpdate(u" 8"_s)}));
}

void TstMetasEdicao::deletedByAnotherWorkstation() {
    abreEditor();
    b->servidor().executa(u"DELETE FROM metavendedoritem WHERE CodigoProduto = 'P1'"_s);
    ModalHelper caixas;
    b->digita(u"8"_s);
    b->tecla(Qt::Key_Return);
    QCOMPARE(caixas.confere(), QString());
    confereFechado(u"8"_s);
    QCOMPARE(b->metas().size(), 1);
}

void TstMetasEdicao::failingUpdate() {
    abreEditor();
    b->servidor().executa(u"RENAME TABLE metavendedoritem TO guardada"_s);
    StatementLog registro(b->servidor());
    ModalHelper caixas;
    caixas.esperaContendo(u"Erro em tempo de execução"_s, QMessageBox::Ok);
    b->digita(u"8"_s);
    b->tecla(Qt::Key_Tab);
    QCOMPARE(caixas.confere(), QString());
    confereFechado(u"1.234,500"_s);
    b->servidor().executa(u"RENAME TABLE guardada TO metavendedoritem"_s);
    abreEditor();
    b->digita(u"9"_s);
    b->tecla(Qt::Key_Return);
    confereFechado(u"9"_s);
}

void TstMetasEdicao::connectionLost() {
    FaultProxy proxy(b->servidor().socket());
    b->servidor().usaSocket(proxy.socket());
    abreEditor();
    proxy.cortaAntesDe(1);
    ModalHelper caixas;
    caixas.esperaContendo(u"feche o programa e inicie-o novamente"_s, QMessageBox::Ok);
    b->digita(u"8"_s);
    b->tecla(Qt::Key_Return);
    QCOMPARE(caixas.confere(), QString());
    confereFechado(u"1.234,500"_s);
    QCOMPARE(b->metas()[0][2], u"1234.500"_s);
    // Escape always gets out.
    b->tecla(Qt::Key_Escape);
    QVERIFY(!b->tela()->isVisible());
}

QTEST_MAIN(TstMetasEdicao)
#include "tst_metas_edicao.moc"
