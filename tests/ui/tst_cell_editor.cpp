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

struct EditorForm : QWidget {
    EditorForm() {
        grid->setGeometry(20, 40, 400, 200);
        other->setGeometry(20, 5, 100, 25);
        lista->setGeometry(130, 5, 100, 25);
        lista->addItems({u"DINHEIRO"_s, u"BOLETO"_s});
        button->setGeometry(240, 5, 100, 25);
        grid->setFormat(u"A|B|C"_s);
        for (int column = 0; column < 3; ++column)
            grid->setColumnTwips(column, 2500);
        const Grid::Fill filling(grid);
        for (int row = 1; row <= 100; ++row)
            grid->addItem(u"%1\tb\tc"_s.arg(row));
        resize(450, 260);
    }

    Grid* grid = new Grid(this);
    QLineEdit* box = new QLineEdit(this);
    QLineEdit* other = new QLineEdit(this);
    QComboBox* lista = new QComboBox(this);
    QPushButton* button = new QPushButton(u"Ok"_s, this);
    CellEditor* editor = new CellEditor(grid, box);

    /// Where the cell lies in the form, cut to what of the grid's cells is in sight.
    QRect cell(int row, int column) const {
        const QRect cells(grid->viewport()->mapTo(this, QPoint()), grid->viewport()->size());
        QRect rectangle = grid->cellRect(row, column);
        rectangle.moveTopLeft(grid->mapTo(this, rectangle.topLeft()));
        return rectangle & cells;
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
    bool back() {
        m_form->activateWindow();
        return QTest::qWaitForWindowActive(m_form.get());
    }

    std::unique_ptr<EditorForm> m_form;
};

void TstCellEditor::init() {
    m_form = std::make_unique<EditorForm>();
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
    QVERIFY(m_form->box->isVisible());
    QVERIFY(m_form->box->hasFocus());
    QVERIFY(!m_form->cell(3, 1).isEmpty());
    QCOMPARE(m_form->box->geometry(), m_form->cell(3, 1));
    // On top of the grid.
    QCOMPARE(m_form->childAt(m_form->cell(3, 1).center()), m_form->box);
}

void TstCellEditor::closedUntilOpened() {
    QVERIFY(!m_form->editor->isOpen());
    QVERIFY(!m_form->box->isVisible());
    m_form->grid->setTopRow(10);
    QVERIFY(!m_form->box->isVisible());
}

void TstCellEditor::closeGivesTheFocusBackAndTellsNothing() {
    QSignalSpy outputs(m_form->editor, &CellEditor::left);
    m_form->editor->open(3, 1);
    m_form->editor->close();
    QVERIFY(!m_form->editor->isOpen());
    QVERIFY(!m_form->box->isVisible());
    QVERIFY(m_form->grid->hasFocus());
    QCOMPARE(outputs.size(), 0);
}

void TstCellEditor::closingTwiceDoesNothing() {
    m_form->editor->open(3, 1);
    m_form->editor->close();
    m_form->other->setFocus();
    m_form->editor->close();
    QVERIFY(m_form->other->hasFocus());
}

void TstCellEditor::openingElsewhereMovesIt() {
    QSignalSpy outputs(m_form->editor, &CellEditor::left);
    m_form->editor->open(3, 1);
    m_form->editor->open(4, 0);
    QCOMPARE(m_form->box->geometry(), m_form->cell(4, 0));
    QCOMPARE(m_form->editor->row(), 4);
    QVERIFY(m_form->box->hasFocus());
    QCOMPARE(outputs.size(), 0);
}

void TstCellEditor::followsTheScrolling() {
    m_form->editor->open(5, 1);
    const QRect before = m_form->box->geometry();
    m_form->grid->setTopRow(3);
    QCOMPARE(m_form->box->geometry(), m_form->cell(5, 1));
    QCOMPARE(before.top() - m_form->box->geometry().top(), 2 * m_form->grid->rowHeight(0));
    m_form->grid->horizontalScrollBar()->setValue(30);
    QCOMPARE(m_form->box->geometry(), m_form->cell(5, 1));
    QCOMPARE(before.left() - m_form->box->geometry().left(), 30);
}

void TstCellEditor::scrolledOutOfSightItKeepsTextAndFocus() {
    QSignalSpy outputs(m_form->editor, &CellEditor::left);
    m_form->editor->open(2, 1);
    m_form->box->setText(u"EM CURSO"_s);
    m_form->grid->setTopRow(60);
    QVERIFY(m_form->box->size().isEmpty());
    QVERIFY(m_form->box->hasFocus());
    QVERIFY(m_form->editor->isOpen());
    m_form->grid->setTopRow(1);
    QCOMPARE(m_form->box->geometry(), m_form->cell(2, 1));
    QVERIFY(!m_form->box->size().isEmpty());
    QCOMPARE(m_form->box->text(), u"EM CURSO"_s);
    QCOMPARE(outputs.size(), 0);
}

void TstCellEditor::followsWidthsAndSizeOfTheGrid() {
    m_form->editor->open(3, 1);
    m_form->grid->setColumnTwips(0, 1000);
    QCOMPARE(m_form->box->geometry(), m_form->cell(3, 1));
    m_form->grid->setColumnTwips(1, 1000);
    QCOMPARE(m_form->box->geometry(), m_form->cell(3, 1));
    m_form->grid->setRowHeights({{1, 900}});
    QCOMPARE(m_form->box->geometry(), m_form->cell(3, 1));
    m_form->grid->resize(200, 150);
    QCOMPARE(m_form->box->geometry(), m_form->cell(3, 1));
}

void TstCellEditor::isCutToTheCellsInSight() {
    const int wide = m_form->grid->columnWidth(0);
    m_form->editor->open(1, 2);
    QCOMPARE(m_form->box->geometry(), m_form->cell(1, 2));
    QVERIFY(m_form->box->width() < wide - 1);
    m_form->editor->open(1, 0);
    m_form->grid->horizontalScrollBar()->setValue(m_form->grid->horizontalScrollBar()->maximum());
    const int scrolled = m_form->grid->horizontalScrollBar()->value();
    QVERIFY(scrolled > 0);
    QVERIFY(scrolled < wide);
    QCOMPARE(m_form->box->geometry(), m_form->cell(1, 0));
    QCOMPARE(m_form->box->width(), wide - 1 - scrolled);
    // Never over the header or outside the grid.
    const QRect cells(m_form->grid->viewport()->mapTo(m_form.get(), QPoint()),
                      m_form->grid->viewport()->size());
    QVERIFY(cells.contains(m_form->box->geometry()));
}

void TstCellEditor::leftOnceByKey() {
    QSignalSpy outputs(m_form->editor, &CellEditor::left);
    m_form->editor->open(3, 1);
    QTest::keyClick(m_form->box, Qt::Key_Tab);
    QCOMPARE(outputs.size(), 1);
    m_form->button->setFocus();
    m_form->other->setFocus();
    QCOMPARE(outputs.size(), 1);
}

void TstCellEditor::leftOnceByMouse() {
    QSignalSpy outputs(m_form->editor, &CellEditor::left);
    m_form->editor->open(3, 1);
    m_form->button->setFocusPolicy(Qt::StrongFocus);
    QTest::mouseClick(m_form->windowHandle(), Qt::LeftButton, {}, m_form->button->geometry().center());
    QVERIFY(m_form->button->hasFocus());
    QCOMPARE(outputs.size(), 1);
}

void TstCellEditor::menuBarKeepsTheFocusUntilItIsLeft() {
    auto* bar = new QMenuBar(m_form.get());
    bar->addMenu(u"&Menu"_s)->addAction(u"Ação"_s);
    bar->setGeometry(0, 0, 450, 20);
    bar->show();
    connect(m_form->editor, &CellEditor::left, m_form->editor, &CellEditor::close);
    QSignalSpy left(m_form->editor, &CellEditor::left);
    m_form->editor->open(3, 1);
    QTest::keyClick(m_form->box, Qt::Key_Alt);
    QTRY_COMPARE(m_form->focusWidget(), bar);
    QCOMPARE(left.size(), 1);
    QVERIFY(!m_form->editor->isOpen());
    QVERIFY(!m_form->box->isVisible());
    QTest::keyClick(bar, Qt::Key_Escape);
    QTRY_COMPARE(m_form->focusWidget(), m_form->grid);
    QVERIFY(m_form->isVisible());
    // The control takes the focus itself when it is opened next.
    m_form->editor->open(4, 1);
    QVERIFY(m_form->box->hasFocus());
}

void TstCellEditor::openPaintsAtOnce() {
    struct Paints : QObject {
        bool eventFilter(QObject*, QEvent* event) override {
            count += event->type() == QEvent::Paint ? 1 : 0;
            return false;
        }
        int count = 0;
    } paints;
    m_form->box->installEventFilter(&paints);
    m_form->editor->open(3, 1);
    QVERIFY(paints.count > 0);
}

void TstCellEditor::clickOnAnotherCellLeavesIt() {
    QSignalSpy outputs(m_form->editor, &CellEditor::left);
    m_form->editor->open(3, 1);
    QTest::mouseClick(m_form->windowHandle(), Qt::LeftButton, {}, m_form->cell(5, 0).center());
    QCOMPARE(outputs.size(), 1);
}

void TstCellEditor::notLeftWhenClosed() {
    QSignalSpy outputs(m_form->editor, &CellEditor::left);
    m_form->box->show();
    m_form->box->setFocus();
    m_form->other->setFocus();
    QCOMPARE(outputs.size(), 0);
}

void TstCellEditor::messageBoxIsNoLeaving() {
    QSignalSpy outputs(m_form->editor, &CellEditor::left);
    m_form->editor->open(3, 1);
    ModalHelper modal;
    modal.expect(u"Verifique!!!"_s, QMessageBox::Ok);
    boxes::inform(m_form.get(), u"Verifique!!!"_s);
    modal.expect(u"Confirma?"_s, QMessageBox::NoButton);
    boxes::ask(nullptr, u"Confirma?"_s, QMessageBox::Question);
    QCOMPARE(modal.problem(), QString());
    QVERIFY(back());
    QTRY_VERIFY(m_form->box->hasFocus());
    QCOMPARE(outputs.size(), 0);
    m_form->other->setFocus();
    QCOMPARE(outputs.size(), 1);
}

void TstCellEditor::messageBoxShownOnLeavingDoesNotRepeatIt() {
    int outputs = 0;
    connect(m_form->editor, &CellEditor::left, this, [&] {
        ++outputs;
        boxes::inform(m_form.get(), u"Verifique!!!"_s);
        m_form->box->setFocus();
    });
    ModalHelper modal;
    modal.expect(u"Verifique!!!"_s, QMessageBox::Ok);
    m_form->editor->open(3, 1);
    m_form->other->setFocus();
    QVERIFY(back());
    QCOMPARE(outputs, 1);
    QCOMPARE(modal.problem(), QString());
    QTRY_VERIFY(m_form->box->hasFocus());
}

void TstCellEditor::anotherWindowIsNoLeaving() {
    QSignalSpy outputs(m_form->editor, &CellEditor::left);
    m_form->editor->open(3, 1);
    QLineEdit otherWindow;
    otherWindow.show();
    otherWindow.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&otherWindow));
    otherWindow.setFocus();
    QVERIFY(!m_form->box->hasFocus());
    QCOMPARE(outputs.size(), 0);
    otherWindow.close();
    QVERIFY(back());
    QTRY_VERIFY(m_form->box->hasFocus());
    QCOMPARE(outputs.size(), 0);
}

void TstCellEditor::closingTheFormIsNoLeaving() {
    QSignalSpy outputs(m_form->editor, &CellEditor::left);
    m_form->editor->open(3, 1);
    m_form->close();
    QCoreApplication::processEvents();
    QCOMPARE(outputs.size(), 0);
    m_form.reset();
    QCOMPARE(outputs.size(), 0);
}

void TstCellEditor::hidingTheFormIsNoLeaving() {
    QSignalSpy outputs(m_form->editor, &CellEditor::left);
    m_form->editor->open(3, 1);
    m_form->hide();
    QCoreApplication::processEvents();
    QCOMPARE(outputs.size(), 0);
}

void TstCellEditor::dropDownOfTheFieldIsNoLeaving() {
    QSignalSpy outputs(new FieldLeave(m_form->lista), &FieldLeave::left);
    m_form->lista->setFocus();
    m_form->lista->showPopup();
    QWidget* window = m_form->lista->view()->window();
    QVERIFY(QTest::qWaitForWindowExposed(window));
    QTest::keyClick(window->windowHandle(), Qt::Key_Down);
    QTest::keyClick(window->windowHandle(), Qt::Key_Return);
    QTRY_VERIFY(!window->isVisible());
    QCOMPARE(m_form->lista->currentText(), u"BOLETO"_s);
    QVERIFY(m_form->lista->hasFocus());
    QCOMPARE(outputs.size(), 0);
    m_form->other->setFocus();
    QCOMPARE(outputs.size(), 1);
}

void TstCellEditor::contextMenuIsNoLeaving() {
    QSignalSpy outputs(m_form->editor, &CellEditor::left);
    m_form->editor->open(3, 1);
    QContextMenuEvent pedido(QContextMenuEvent::Keyboard, QPoint(2, 2),
                             m_form->box->mapToGlobal(QPoint(2, 2)));
    QApplication::sendEvent(m_form->box, &pedido);
    QTRY_VERIFY(QApplication::activePopupWidget());
    QWidget* menu = QApplication::activePopupWidget();
    QTest::keyClick(menu, Qt::Key_Escape);
    QTRY_VERIFY(!QApplication::activePopupWidget());
    QCOMPARE(outputs.size(), 0);
    QVERIFY(m_form->editor->isOpen());
}

void TstCellEditor::partOfTheFieldIsTheField() {
    m_form->lista->setEditable(true);
    QSignalSpy outputs(new FieldLeave(m_form->lista), &FieldLeave::left);
    m_form->lista->setFocus();
    m_form->lista->lineEdit()->setFocus();
    m_form->lista->setFocus();
    QCOMPARE(outputs.size(), 0);
    m_form->other->setFocus();
    QCOMPARE(outputs.size(), 1);
}

void TstCellEditor::leavingComesBackForTheNextVisit() {
    QSignalSpy outputs(new FieldLeave(m_form->other), &FieldLeave::left);
    for (int visit = 1; visit <= 3; ++visit) {
        m_form->other->setFocus();
        m_form->button->setFocus();
        QCOMPARE(outputs.size(), visit);
    }
}

void TstCellEditor::watchEndsWithItsField() {
    auto* field = new QLineEdit(m_form.get());
    field->show();
    QSignalSpy outputs(new FieldLeave(field), &FieldLeave::left);
    field->setFocus();
    delete field;
    m_form->other->setFocus();
    QCOMPARE(outputs.size(), 0);
}

QTEST_MAIN(TstCellEditor)
#include "tst_cell_editor.moc"
