#include "support/FaultProxy.h"
#include "support/ModalHelper.h"
#include "support/StatementLog.h"
#include "targets/MetasQuadro.h"
#include "targets/MetasQuadroColumns.h"
#include "targets/TargetsBench.h"
#include "ui/grid/Grid.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTabWidget>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

/// Editing a target's quantity in its cell.
class TstMetasEdicao : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { b = std::make_unique<TargetsBench>(); }
    void cleanupTestCase() { b.reset(); }
    void init() {
        b->reset();
        b->shop().basicoDasMetas();
        b->shop().meta(1, u"P1"_s, u"1234.5"_s);
        b->shop().meta(1, u"P2"_s, u"20"_s);
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
    void failingUpdate();
    void connectionLost();

  private:
    void abreEditor(const QString& codigo = u"P1"_s);
    void deixaEditor(const QString& como, ModalHelper& boxes);
    /// What the server receives for this quantity of P1: the update, and the record read back.
    QStringList sent(const QString& number);
    void checkClosed(const QString& cell);
    int targetRow() const { return b->rowOf(u"Grid1"_s, u"P1"_s); }

    std::unique_ptr<TargetsBench> b;
};

void TstMetasEdicao::abreEditor(const QString& codigo) {
    if (!b->screen())
        b->open();
    b->choose(u"Vendedores"_s, u"ANA"_s);
    b->click(u"Grid1"_s, b->rowOf(u"Grid1"_s, codigo), metasquadro::grid1::Quantidade);
    QVERIFY(b->box(u"TextGrid"_s)->isVisible());
}

QStringList TstMetasEdicao::sent(const QString& number) {
    const QString id = b->row(u"Grid1"_s, targetRow())[metasquadro::grid1::Id];
    return {u"Update metavendedoritem Set Quantidade="_s + number + u" Where ID="_s + id};
}

// The editor is gone, the cell shows this, the grid can be used and has the focus.
void TstMetasEdicao::checkClosed(const QString& cell) {
    QVERIFY(!b->box(u"TextGrid"_s)->isVisible());
    QVERIFY(b->grid(u"Grid1"_s)->isEnabled());
    QCOMPARE(b->focus(), u"Grid1"_s);
    QCOMPARE(b->row(u"Grid1"_s, targetRow())[metasquadro::grid1::Quantidade], cell);
}

void TstMetasEdicao::opensOverTheCell() {
    abreEditor();
    const QLineEdit* editor = b->box(u"TextGrid"_s);
    Grid* grid = b->grid(u"Grid1"_s);
    QCOMPARE(editor->text(), u"1.234,500"_s);
    QCOMPARE(editor->selectedText(), editor->text());
    QCOMPARE(b->focus(), u"TextGrid"_s);
    QVERIFY(!grid->isEnabled());
    const QRect cell = grid->cellRect(targetRow(), metasquadro::grid1::Quantidade);
    QCOMPARE(QRect(editor->mapTo(b->screen(), QPoint()), editor->size()),
             QRect(grid->mapTo(b->screen(), cell.topLeft()), cell.size()));
}

void TstMetasEdicao::followsTheScrolledGrid() {
    b->server().execute(u"INSERT INTO produtos (codfabr, descricao, ativo) SELECT CONCAT('Q', seq), "
                        "CONCAT('PRODUTO ', seq), 'S' FROM seq_1_to_100"_s);
    b->server().execute(u"INSERT INTO metavendedoritem (CodVendedor, CodigoProduto, Quantidade) SELECT 1, "
                        "CONCAT('Q', seq), seq FROM seq_1_to_100"_s);
    abreEditor(u"Q50"_s);
    Grid* grid = b->grid(u"Grid1"_s);
    QScrollBar* scrollBar = grid->verticalScrollBar();
    scrollBar->setValue(scrollBar->value() + (scrollBar->value() < scrollBar->maximum() ? 2 : -2));
    b->settle();
    const QRect cell = grid->cellRect(b->rowOf(u"Grid1"_s, u"Q50"_s), metasquadro::grid1::Quantidade);
    const QLineEdit* editor = b->box(u"TextGrid"_s);
    QCOMPARE(editor->mapTo(b->screen(), QPoint()), grid->mapTo(b->screen(), cell.topLeft()));
}

void TstMetasEdicao::enterCommits() {
    abreEditor();
    StatementLog log(b->server());
    b->type(u"77,25"_s);
    b->key(Qt::Key_Return);
    QCOMPARE(log.texts(), sent(u"77.25"_s));
    checkClosed(u"77,250"_s);
    QCOMPARE(b->shop().metas()[0][2], u"77.250"_s);
    QCOMPARE(b->shop().metas()[1][2], u"20.000"_s);
    // Nothing follows when the focus goes on.
    b->key(Qt::Key_Return);
    QCOMPARE(log.texts().size(), 1);
}

void TstMetasEdicao::unchangedIsWrittenAgain() {
    abreEditor();
    StatementLog log(b->server());
    b->key(Qt::Key_Enter);
    QCOMPARE(log.texts(), sent(u"1234.5"_s));
    checkClosed(u"1.234,500"_s);
}

void TstMetasEdicao::escapeWritesTheOldOne() {
    abreEditor();
    StatementLog log(b->server());
    b->type(u"99"_s);
    b->key(Qt::Key_Escape);
    QCOMPARE(log.texts(), sent(u"1234.5"_s));
    checkClosed(u"1.234,500"_s);
    // Only the next Escape closes the form.
    QVERIFY(b->screen()->isVisible());
    b->key(Qt::Key_Escape);
    QVERIFY(!b->screen()->isVisible());
}

namespace {

void quantidades() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("number");
    QTest::addColumn<QString>("cell");
    const QString old = u"1234.5"_s;
    const QString oldCell = u"1.234,500"_s;
    QTest::newRow("comma") << u"1,5"_s << u"1.5"_s << u"1,500"_s;
    QTest::newRow("point") << u"1.5"_s << u"1.5"_s << u"1,500"_s;
    QTest::newRow("largest") << u"999999,999"_s << u"999999.999"_s << u"999.999,999"_s;
    QTest::newRow("a million") << u"1000000"_s << u"1000000"_s << u"1.000.000"_s;
    QTest::newRow("zero") << u"0"_s << old << oldCell;
    QTest::newRow("negative") << u"-1"_s << old << oldCell;
    QTest::newRow("letters") << u"abc"_s << old << oldCell;
    QTest::newRow("nothing") << QString() << old << oldCell;
    QTest::newRow("number with letters") << u"12cx"_s << old << oldCell;
}

} // namespace

void TstMetasEdicao::typed_data() {
    quantidades();
    // By key every point is a comma, and two of them are no number.
    QTest::newRow("thousands and comma") << u"1.234,5"_s << u"1234.5"_s << u"1.234,500"_s;
}

void TstMetasEdicao::typed() {
    QFETCH(QString, text);
    QFETCH(QString, number);
    QFETCH(QString, cell);
    abreEditor();
    StatementLog log(b->server());
    b->key(Qt::Key_Delete); // the text is selected
    b->type(text);
    QCOMPARE(b->box(u"TextGrid"_s)->text(), QString(text).replace(u'.', u',').toUpper());
    b->key(Qt::Key_Return);
    QCOMPARE(log.texts(), sent(number));
    checkClosed(cell);
}

void TstMetasEdicao::pasted_data() {
    quantidades();
    QTest::newRow("thousands and comma") << u"2.345,5"_s << u"2345.5"_s << u"2.345,500"_s;
}

void TstMetasEdicao::pasted() {
    QFETCH(QString, text);
    QFETCH(QString, number);
    QFETCH(QString, cell);
    abreEditor();
    StatementLog log(b->server());
    if (text.isEmpty())
        b->key(Qt::Key_X, Qt::ControlModifier);
    else
        b->paste(text);
    b->key(Qt::Key_Return);
    QCOMPARE(log.texts(), sent(number));
    checkClosed(cell);
}

void TstMetasEdicao::leftBy_data() {
    QTest::addColumn<QString>("como");
    for (const char* como : {"Tab", "Backtab", "mouse", "shortcut", "tab page"})
        QTest::newRow(como) << QString::fromLatin1(como);
}

void TstMetasEdicao::deixaEditor(const QString& como, ModalHelper& boxes) {
    if (como == u"Tab") {
        b->key(Qt::Key_Tab);
    } else if (como == u"Backtab") {
        b->key(Qt::Key_Backtab, Qt::ShiftModifier);
    } else if (como == u"mouse") {
        QTest::mouseClick(b->box(u"Quantidade"_s), Qt::LeftButton);
        b->settle();
    } else if (como == u"shortcut") {
        boxes.expect(u"Produto não selecionado corretamente. Verifique!!!"_s, QMessageBox::Ok);
        b->key(Qt::Key_A, Qt::AltModifier);
    } else {
        b->key(Qt::Key_2, Qt::AltModifier);
    }
}

// However the editor is left, the quantity is written once.
void TstMetasEdicao::leftBy() {
    QFETCH(QString, como);
    abreEditor();
    StatementLog log(b->server());
    ModalHelper boxes;
    b->type(u"8"_s);
    deixaEditor(como, boxes);
    QCOMPARE(boxes.problem(), QString());
    QCOMPARE(log.texts(), sent(u"8"_s));
    if (como == u"tab page") {
        QCOMPARE(b->control<QTabWidget>(u"SSTab1"_s)->currentIndex(), 1);
        QCOMPARE(b->focus(), u"DataIni"_s);
        b->goToTab(0);
    } else if (como == u"shortcut") {
        QCOMPARE(b->focus(), u"Descricao"_s);
    } else {
        QCOMPARE(b->focus(), u"Grid1"_s);
    }
    QVERIFY(!b->box(u"TextGrid"_s)->isVisible());
    QVERIFY(b->grid(u"Grid1"_s)->isEnabled());
    QCOMPARE(b->row(u"Grid1"_s, targetRow())[metasquadro::grid1::Quantidade], u"8"_s);
}

void TstMetasEdicao::leavingWithoutANumber() {
    abreEditor();
    StatementLog log(b->server());
    b->type(u"x"_s);
    b->key(Qt::Key_Tab);
    QCOMPARE(log.texts(), sent(u"1234.5"_s));
    checkClosed(u"1.234,500"_s);
}

// As long as the column takes it, fifteen characters on the screen.
void TstMetasEdicao::longestQuantityIsKeptWhole() {
    b->server().execute(
        u"UPDATE metavendedoritem SET Quantidade = 999999999.999 WHERE CodigoProduto = 'P1'"_s);
    abreEditor();
    StatementLog log(b->server());
    QCOMPARE(b->box(u"TextGrid"_s)->text(), u"999.999.999,999"_s);
    b->type(u"7"_s);
    b->key(Qt::Key_Escape);
    QCOMPARE(log.texts(), sent(u"999999999.999"_s));
    checkClosed(u"999.999.999,999"_s);
    QCOMPARE(b->shop().metas()[0][2], u"999999999.999"_s);
}

void TstMetasEdicao::numberBeyondEverything_data() {
    leftBy_data();
}

// The number is refused once, nothing is written, and the screen goes on.
void TstMetasEdicao::numberBeyondEverything() {
    QFETCH(QString, como);
    abreEditor();
    StatementLog log(b->server());
    ModalHelper boxes;
    boxes.expectContaining(u"Estouro"_s, QMessageBox::Ok);
    b->type(u"99999999999999999999"_s);
    if (como == u"shortcut") {
        // Nothing is added after it.
        b->key(Qt::Key_A, Qt::AltModifier);
        QTRY_COMPARE(boxes.boxes().size(), 1);
    } else {
        deixaEditor(como, boxes);
    }
    if (como == u"tab page")
        b->goToTab(0);
    QCOMPARE(boxes.problem(), QString());
    QCOMPARE(log.texts().filter(u"Update"_s), QStringList());
    QVERIFY(!b->box(u"TextGrid"_s)->isVisible());
    QVERIFY(b->grid(u"Grid1"_s)->isEnabled());
    QCOMPARE(b->row(u"Grid1"_s, targetRow())[metasquadro::grid1::Quantidade], u"1.234,500"_s);
}

// A product that is still to be searched says so before the clicked cell does anything, not over it.
void TstMetasEdicao::clickWaitsForTheProduct() {
    b->open();
    b->choose(u"Vendedores"_s, u"ANA"_s);
    for (const int column : {int(metasquadro::grid1::Excluir), int(metasquadro::grid1::Quantidade)}) {
        b->box(u"Descricao"_s)->setFocus();
        b->type(u"NADA IGUAL"_s);
        ModalHelper boxes;
        boxes.expectContaining(u"Descrição não cadastrada"_s, QMessageBox::Ok);
        boxes.expect(u"Descricao inexistente. Verifique!!!"_s, QMessageBox::Ok);
        b->click(u"Grid1"_s, targetRow(), column);
        QCOMPARE(boxes.problem(), QString());
        QVERIFY(!b->box(u"TextGrid"_s)->isVisible());
    }
    QCOMPARE(b->shop().metas().size(), 2);
}

void TstMetasEdicao::closingTheFormCommitsNothing() {
    abreEditor();
    StatementLog log(b->server());
    b->type(u"8"_s);
    b->screen()->close();
    b->settle();
    QCOMPARE(log.texts(), QStringList());
    QCOMPARE(b->shop().metas()[0][2], u"1234.500"_s);
}

void TstMetasEdicao::boxesAndOtherWindowsAreNoLeaving() {
    abreEditor();
    StatementLog log(b->server());
    b->type(u"8"_s);
    QLineEdit other;
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    b->settle();
    QCOMPARE(log.texts(), QStringList());
    QVERIFY(b->box(u"TextGrid"_s)->isVisible());
    b->screen()->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(b->screen()));
    QCOMPARE(b->focus(), u"TextGrid"_s);
    b->key(Qt::Key_Return);
    QCOMPARE(log.texts(), sent(u"8"_s));
}

void TstMetasEdicao::failingUpdate() {
    abreEditor();
    b->server().execute(u"RENAME TABLE metavendedoritem TO guardada"_s);
    StatementLog log(b->server());
    ModalHelper boxes;
    boxes.expectContaining(u"Erro em tempo de execução"_s, QMessageBox::Ok);
    b->type(u"8"_s);
    b->key(Qt::Key_Tab);
    QCOMPARE(boxes.problem(), QString());
    checkClosed(u"1.234,500"_s);
    b->server().execute(u"RENAME TABLE guardada TO metavendedoritem"_s);
    abreEditor();
    b->type(u"9"_s);
    b->key(Qt::Key_Return);
    checkClosed(u"9"_s);
}

void TstMetasEdicao::connectionLost() {
    FaultProxy proxy(b->server().socket());
    b->server().useSocket(proxy.socket());
    abreEditor();
    proxy.cutBefore(1);
    ModalHelper boxes;
    boxes.expectContaining(u"a próxima operação tentará abri-la novamente"_s, QMessageBox::Ok);
    b->type(u"8"_s);
    b->key(Qt::Key_Return);
    QCOMPARE(boxes.problem(), QString());
    checkClosed(u"1.234,500"_s);
    QCOMPARE(b->shop().metas()[0][2], u"1234.500"_s);
    // Escape always gets out.
    b->key(Qt::Key_Escape);
    QVERIFY(!b->screen()->isVisible());
}

QTEST_MAIN(TstMetasEdicao)
#include "tst_metas_edicao.moc"
