#include "support/ModalHelper.h"
#include "ui/FieldLeave.h"
#include "ui/MessageBoxes.h"
#include "ui/grid/CellEditor.h"
#include "ui/grid/Grid.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

struct Form : QWidget {
    Form() {
        grid->setGeometry(20, 40, 400, 200);
        outro->setGeometry(20, 5, 100, 25);
        lista->setGeometry(130, 5, 100, 25);
        lista->addItems({u"DINHEIRO"_s, u"BOLETO"_s});
        botao->setGeometry(240, 5, 100, 25);
        grid->setFormat(u"A|B|C"_s);
        for (int coluna = 0; coluna < 3; ++coluna)
            grid->setColumnTwips(coluna, 2500);
        const Grid::Fill preenchimento(grid);
        for (int linha = 1; linha <= 100; ++linha)
            grid->addItem(u"%1\tb\tc"_s.arg(linha));
        resize(450, 260);
    }

    Grid* grid = new Grid(this);
    QLineEdit* caixa = new QLineEdit(this);
    QLineEdit* outro = new QLineEdit(this);
    QComboBox* lista = new QComboBox(this);
    QPushButton* botao = new QPushButton(u"Ok"_s, this);
    CellEditor* editor = new CellEditor(grid, caixa);

    /// Where the cell lies in the form, cut to what of the grid's cells is in sight.
    QRect celula(int linha, int coluna) const {
        const QRect celulas(grid->viewport()->mapTo(this, QPoint()), grid->viewport()->size());
        QRect retangulo = grid->cellRect(linha, coluna);
        retangulo.moveTopLeft(grid->mapTo(this, retangulo.topLeft()));
        return retangulo & celulas;
    }
};

} // namespace

/// Controls over a grid's cells, and what counts as leaving a field.
class TstCellEditor : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void openCoversTheCellAndTakesTheFocus();
    void closedUntilOpened();
    void closeGivesTheFocusBackAndTellsNothing();
    void closingTwiceDoesNothing();
    void openingElsewhereMovesIt();
    void followsTheScrolling();
    void scrolledOutOfSightItKeepsTextAndFocus();
    void followsWidthsAndSizeOfTheGrid();
    void isCutToTheCellsInSight();
    void leftOnceByKey();
    void leftOnceByMouse();
    void menuBarKeepsTheFocusUntilItIsLeft();
    void openPaintsAtOnce();
    void clickOnAnotherCellLeavesIt();
    void notLeftWhenClosed();
    void messageBoxIsNoLeaving();
    void messageBoxShownOnLeavingDoesNotRepeatIt();
    void anotherWindowIsNoLeaving();
    void closingTheFormIsNoLeaving();
    void hidingTheFormIsNoLeaving();
    void dropDownOfTheFieldIsNoLeaving();
    void contextMenuIsNoLeaving();
    void partOfTheFieldIsTheField();
    void leavingComesBackForTheNextVisit();
    void watchEndsWithItsField();

  private:
    /// Makes the form the active window again, as a window manager does when a window above it goes.
    bool volta() {
        m_form->activateWindow();
        return QTest::qWaitForWindowActive(m_form.get());
    }

    std::unique_ptr<Form> m_form;
};

void TstCellEditor::init() {
    m_form = std::make_unique<Form>();
    m_form->show();
    QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
    m_form->grid->setFocus();
}

void TstCellEditor::cleanup() {
    m_form.reset();
}

void TstCellEditor::openCoversTheCellAndTakesTheFocus() {
    m_form->editor->open(3, 1);
    QVERIFY(m_form->editor->isOpen());
    QCOMPARE(m_form->editor->row(), 3);
    QCOMPARE(m_form->editor->column(), 1);
    QVERIFY(m_form->caixa->isVisible());
    QVERIFY(m_form->caixa->hasFocus());
    QVERIFY(!m_form->celula(3, 1).isEmpty());
    QCOMPARE(m_form->caixa->geometry(), m_form->celula(3, 1));
    // On top of the grid.
    QCOMPARE(m_form->childAt(m_form->celula(3, 1).center()), m_form->caixa);
}

void TstCellEditor::closedUntilOpened() {
    QVERIFY(!m_form->editor->isOpen());
    QVERIFY(!m_form->caixa->isVisible());
    m_form->grid->setTopRow(10);
    QVERIFY(!m_form->caixa->isVisible());
}

void TstCellEditor::closeGivesTheFocusBackAndTellsNothing() {
    QSignalSpy saidas(m_form->editor, &CellEditor::left);
    m_form->editor->open(3, 1);
    m_form->editor->close();
    QVERIFY(!m_form->editor->isOpen());
    QVERIFY(!m_form->caixa->isVisible());
    QVERIFY(m_form->grid->hasFocus());
    QCOMPARE(saidas.size(), 0);
}

void TstCellEditor::closingTwiceDoesNothing() {
    m_form->editor->open(3, 1);
    m_form->editor->close();
    m_form->outro->setFocus();
    m_form->editor->close();
    QVERIFY(m_form->outro->hasFocus());
}

void TstCellEditor::openingElsewhereMovesIt() {
    QSignalSpy saidas(m_form->editor, &CellEditor::left);
    m_form->editor->open(3, 1);
    m_form->editor->open(4, 0);
    QCOMPARE(m_form->caixa->geometry(), m_form->celula(4, 0));
    QCOMPARE(m_form->editor->row(), 4);
    QVERIFY(m_form->caixa->hasFocus());
    QCOMPARE(saidas.size(), 0);
}

void TstCellEditor::followsTheScrolling() {
    m_form->editor->open(5, 1);
    const QRect antes = m_form->caixa->geometry();
    m_form->grid->setTopRow(3);
    QCOMPARE(m_form->caixa->geometry(), m_form->celula(5, 1));
    QCOMPARE(antes.top() - m_form->caixa->geometry().top(), 2 * m_form->grid->rowHeight(0));
    m_form->grid->horizontalScrollBar()->setValue(30);
    QCOMPARE(m_form->caixa->geometry(), m_form->celula(5, 1));
    QCOMPARE(antes.left() - m_form->caixa->geometry().left(), 30);
}

void TstCellEditor::scrolledOutOfSightItKeepsTextAndFocus() {
    QSignalSpy saidas(m_form->editor, &CellEditor::left);
    m_form->editor->open(2, 1);
    m_form->caixa->setText(u"EM CURSO"_s);
    m_form->grid->setTopRow(60);
    QVERIFY(m_form->caixa->size().isEmpty());
    QVERIFY(m_form->caixa->hasFocus());
    QVERIFY(m_form->editor->isOpen());
    m_form->grid->setTopRow(1);
    QCOMPARE(m_form->caixa->geometry(), m_form->celula(2, 1));
    QVERIFY(!m_form->caixa->size().isEmpty());
    QCOMPARE(m_form->caixa->text(), u"EM CURSO"_s);
    QCOMPARE(saidas.size(), 0);
}

void TstCellEditor::followsWidthsAndSizeOfTheGrid() {
    m_form->editor->open(3, 1);
    m_form->grid->setColumnTwips(0, 1000);
    QCOMPARE(m_form->caixa->geometry(), m_form->celula(3, 1));
    m_form->grid->setColumnTwips(1, 1000);
    QCOMPARE(m_form->caixa->geometry(), m_form->celula(3, 1));
    m_form->grid->setRowTwips(1, 900);
    QCOMPARE(m_form->caixa->geometry(), m_form->celula(3, 1));
    m_form->grid->resize(200, 150);
    QCOMPARE(m_form->caixa->geometry(), m_form->celula(3, 1));
}

void TstCellEditor::isCutToTheCellsInSight() {
    const int larga = m_form->grid->columnWidth(0);
    m_form->editor->open(1, 2);
    QCOMPARE(m_form->caixa->geometry(), m_form->celula(1, 2));
    QVERIFY(m_form->caixa->width() < larga - 1);
    m_form->editor->open(1, 0);
    m_form->grid->horizontalScrollBar()->setValue(m_form->grid->horizontalScrollBar()->maximum());
    const int rolado = m_form->grid->horizontalScrollBar()->value();
    QVERIFY(rolado > 0);
    QVERIFY(rolado < larga);
    QCOMPARE(m_form->caixa->geometry(), m_form->celula(1, 0));
    QCOMPARE(m_form->caixa->width(), larga - 1 - rolado);
    // Never over the header or outside the grid.
    const QRect celulas(m_form->grid->viewport()->mapTo(m_form.get(), QPoint()),
                        m_form->grid->viewport()->size());
    QVERIFY(celulas.contains(m_form->caixa->geometry()));
}

void TstCellEditor::leftOnceByKey() {
    QSignalSpy saidas(m_form->editor, &CellEditor::left);
    m_form->editor->open(3, 1);
    QTest::keyClick(m_form->caixa, Qt::Key_Tab);
    QCOMPARE(saidas.size(), 1);
    m_form->botao->setFocus();
    m_form->outro->setFocus();
    QCOMPARE(saidas.size(), 1);
}

void TstCellEditor::leftOnceByMouse() {
    QSignalSpy saidas(m_form->editor, &CellEditor::left);
    m_form->editor->open(3, 1);
    m_form->botao->setFocusPolicy(Qt::StrongFocus);
    QTest::mouseClick(m_form->windowHandle(), Qt::LeftButton, {}, m_form->botao->geometry().center());
    QVERIFY(m_form->botao->hasFocus());
    QCOMPARE(saidas.size(), 1);
}

void TstCellEditor::menuBarKeepsTheFocusUntilItIsLeft() {
    auto* bar = new QMenuBar(m_form.get());
    bar->addMenu(u"&Menu"_s)->addAction(u"Ação"_s);
    bar->setGeometry(0, 0, 450, 20);
    bar->show();
    connect(m_form->editor, &CellEditor::left, m_form->editor, &CellEditor::close);
    QSignalSpy left(m_form->editor, &CellEditor::left);
    m_form->editor->open(3, 1);
    QTest::keyClick(m_form->caixa, Qt::Key_Alt);
    QTRY_COMPARE(m_form->focusWidget(), bar);
    QCOMPARE(left.size(), 1);
    QVERIFY(!m_form->editor->isOpen());
    QVERIFY(!m_form->caixa->isVisible());
    QTest::keyClick(bar, Qt::Key_Escape);
    QTRY_COMPARE(m_form->focusWidget(), m_form->grid);
    QVERIFY(m_form->isVisible());
    // The control takes the focus itself when it is opened next.
    m_form->editor->open(4, 1);
    QVERIFY(m_form->caixa->hasFocus());
}

void TstCellEditor::openPaintsAtOnce() {
    struct Paints : QObject {
        bool eventFilter(QObject*, QEvent* event) override {
            count += event->type() == QEvent::Paint ? 1 : 0;
            return false;
        }
        int count = 0;
    } paints;
    m_form->caixa->installEventFilter(&paints);
    m_form->editor->open(3, 1);
    QVERIFY(paints.count > 0);
}

void TstCellEditor::clickOnAnotherCellLeavesIt() {
    QSignalSpy saidas(m_form->editor, &CellEditor::left);
    m_form->editor->open(3, 1);
    QTest::mouseClick(m_form->windowHandle(), Qt::LeftButton, {}, m_form->celula(5, 0).center());
    QCOMPARE(saidas.size(), 1);
}

void TstCellEditor::notLeftWhenClosed() {
    QSignalSpy saidas(m_form->editor, &CellEditor::left);
    m_form->caixa->show();
    m_form->caixa->setFocus();
    m_form->outro->setFocus();
    QCOMPARE(saidas.size(), 0);
}

void TstCellEditor::messageBoxIsNoLeaving() {
    QSignalSpy saidas(m_form->editor, &CellEditor::left);
    m_form->editor->open(3, 1);
    ModalHelper caixas;
    caixas.expect(u"Verifique!!!"_s, QMessageBox::Ok);
    boxes::inform(m_form.get(), u"Verifique!!!"_s);
    caixas.expect(u"Confirma?"_s, QMessageBox::NoButton);
    boxes::ask(nullptr, u"Confirma?"_s, QMessageBox::Question);
    QCOMPARE(caixas.problem(), QString());
    QVERIFY(volta());
    QTRY_VERIFY(m_form->caixa->hasFocus());
    QCOMPARE(saidas.size(), 0);
    m_form->outro->setFocus();
    QCOMPARE(saidas.size(), 1);
}

void TstCellEditor::messageBoxShownOnLeavingDoesNotRepeatIt() {
    int saidas = 0;
    connect(m_form->editor, &CellEditor::left, this, [&] {
        ++saidas;
        boxes::inform(m_form.get(), u"Verifique!!!"_s);
        m_form->caixa->setFocus();
    });
    ModalHelper caixas;
    caixas.expect(u"Verifique!!!"_s, QMessageBox::Ok);
    m_form->editor->open(3, 1);
    m_form->outro->setFocus();
    QVERIFY(volta());
    QCOMPARE(saidas, 1);
    QCOMPARE(caixas.problem(), QString());
    QTRY_VERIFY(m_form->caixa->hasFocus());
}

void TstCellEditor::anotherWindowIsNoLeaving() {
    QSignalSpy saidas(m_form->editor, &CellEditor::left);
    m_form->editor->open(3, 1);
    QLineEdit outraJanela;
    outraJanela.show();
    outraJanela.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&outraJanela));
    outraJanela.setFocus();
    QVERIFY(!m_form->caixa->hasFocus());
    QCOMPARE(saidas.size(), 0);
    outraJanela.close();
    QVERIFY(volta());
    QTRY_VERIFY(m_form->caixa->hasFocus());
    QCOMPARE(saidas.size(), 0);
}

void TstCellEditor::closingTheFormIsNoLeaving() {
    QSignalSpy saidas(m_form->editor, &CellEditor::left);
    m_form->editor->open(3, 1);
    m_form->close();
    QCoreApplication::processEvents();
    QCOMPARE(saidas.size(), 0);
    m_form.reset();
    QCOMPARE(saidas.size(), 0);
}

void TstCellEditor::hidingTheFormIsNoLeaving() {
    QSignalSpy saidas(m_form->editor, &CellEditor::left);
    m_form->editor->open(3, 1);
    m_form->hide();
    QCoreApplication::processEvents();
    QCOMPARE(saidas.size(), 0);
}

void TstCellEditor::dropDownOfTheFieldIsNoLeaving() {
    QSignalSpy saidas(new FieldLeave(m_form->lista), &FieldLeave::left);
    m_form->lista->setFocus();
    m_form->lista->showPopup();
    QWidget* janela = m_form->lista->view()->window();
    QVERIFY(QTest::qWaitForWindowExposed(janela));
    QTest::keyClick(janela->windowHandle(), Qt::Key_Down);
    QTest::keyClick(janela->windowHandle(), Qt::Key_Return);
    QTRY_VERIFY(!janela->isVisible());
    QCOMPARE(m_form->lista->currentText(), u"BOLETO"_s);
    QVERIFY(m_form->lista->hasFocus());
    QCOMPARE(saidas.size(), 0);
    m_form->outro->setFocus();
    QCOMPARE(saidas.size(), 1);
}

void TstCellEditor::contextMenuIsNoLeaving() {
    QSignalSpy saidas(m_form->editor, &CellEditor::left);
    m_form->editor->open(3, 1);
    QContextMenuEvent pedido(QContextMenuEvent::Keyboard, QPoint(2, 2),
                             m_form->caixa->mapToGlobal(QPoint(2, 2)));
    QApplication::sendEvent(m_form->caixa, &pedido);
    QTRY_VERIFY(QApplication::activePopupWidget());
    QWidget* menu = QApplication::activePopupWidget();
    QTest::keyClick(menu, Qt::Key_Escape);
    QTRY_VERIFY(!QApplication::activePopupWidget());
    QCOMPARE(saidas.size(), 0);
    QVERIFY(m_form->editor->isOpen());
}

void TstCellEditor::partOfTheFieldIsTheField() {
    m_form->lista->setEditable(true);
    QSignalSpy saidas(new FieldLeave(m_form->lista), &FieldLeave::left);
    m_form->lista->setFocus();
    m_form->lista->lineEdit()->setFocus();
    m_form->lista->setFocus();
    QCOMPARE(saidas.size(), 0);
    m_form->outro->setFocus();
    QCOMPARE(saidas.size(), 1);
}

void TstCellEditor::leavingComesBackForTheNextVisit() {
    QSignalSpy saidas(new FieldLeave(m_form->outro), &FieldLeave::left);
    for (int visita = 1; visita <= 3; ++visita) {
        m_form->outro->setFocus();
        m_form->botao->setFocus();
        QCOMPARE(saidas.size(), visita);
    }
}

void TstCellEditor::watchEndsWithItsField() {
    auto* campo = new QLineEdit(m_form.get());
    campo->show();
    QSignalSpy saidas(new FieldLeave(campo), &FieldLeave::left);
    campo->setFocus();
    delete campo;
    m_form->outro->setFocus();
    QCOMPARE(saidas.size(), 0);
}

QTEST_MAIN(TstCellEditor)
#include "tst_cell_editor.moc"
