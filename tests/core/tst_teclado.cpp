#include "core/AcessoDados.h"
#include "core/Teclado.h"
#include "support/ModalHelper.h"
#include "ui/Guard.h"
#include "ui/MessageBoxes.h"
#include "ui/TextBox.h"

#include <QAbstractItemView>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QGuiApplication>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QShortcut>
#include <QTest>
#include <QVBoxLayout>

#include <memory>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

/// A form with one control of each kind.
class EntryForm : public QMainWindow {
  public:
    EntryForm() {
        auto* centre = new QWidget(this);
        auto* layout = new QVBoxLayout(centre);
        text = new TextBox(centre);
        simple = new QLineEdit(centre);
        lista = new QComboBox(centre);
        lista->addItems({u"DINHEIRO"_s, u"BOLETO"_s, u"CHEQUE"_s});
        button = new QPushButton(u"&Ok"_s, centre);
        for (QWidget* control : std::initializer_list<QWidget*>{text, simple, lista, button})
            layout->addWidget(control);
        setCentralWidget(centre);
        menu = menuBar()->addMenu(u"&Relatórios"_s);
        action = menu->addAction(u"Comissão"_s);
        teclado = new Teclado(this, [this] { ++escapes; });
        show();
        QApplication::setActiveWindow(this);
    }

    QWidget* focused() const { return focusWidget(); }

    TextBox* text;
    QLineEdit* simple;
    QComboBox* lista;
    QPushButton* button;
    QMenu* menu;
    QAction* action;
    Teclado* teclado;
    int escapes = 0;
};

/// Presses and releases a key as the window system tells it, so that popups get what is theirs.
void key(QWidget* popup, Qt::Key which, Qt::KeyboardModifiers together = Qt::NoModifier) {
    QTest::keyClick(popup->windowHandle(), which, together);
}

/// Types the characters of a text, each with a key of no name.
void type(QWidget* control, const QString& text, Qt::KeyboardModifiers together = Qt::NoModifier) {
    for (const QChar c : text)
        QTest::sendKeyEvent(QTest::Click, control, Qt::Key_unknown, QString(c), together);
}

} // namespace

/// The keyboard convention of a form.
class TstTeclado : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void enterMovesToTheNextControl();
    void enterOnAButtonDoesNotPressIt();
    void enterInADialogPressesNoDefaultButton();
    void apostropheIsTypedAsAcute_data();
    void apostropheIsTypedAsAcute();
    void lettersAreTypedInUpperCase_data();
    void lettersAreTypedInUpperCase();
    void escapeRunsTheActionOnce();
    void heldEscapeClosesOneWindow();
    void wheelLeavesAListWithItsDropDownClosed();
    void combinationsWithCtrlAreLeftAlone();
    void combinationsWithAltAreLeftAlone();
    void altGrTypesItsCharacter();
    void hookSwallowsKeysFirst();
    void hookSeesTheControlAndTheKey();
    void errorInTheHookEndsTheKeyThere();
    void errorInTheEscapeActionIsReported();
    void messageBoxKeepsItsKeys();
    void dropDownListKeepsItsKeys();
    void enterChoosesInADropDownList();
    void menuBarKeepsItsKeys();
    void openMenuKeepsItsKeys();
    void otherFormsAreNotServed();
    void closedFormServesNoMore();
    void onlyTheTabKeystrokeIsSent();

  private:
    std::unique_ptr<EntryForm> m_form;
};

void TstTeclado::init() {
    Shell = std::make_unique<ShellHost>();
    m_form = std::make_unique<EntryForm>();
    QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
    m_form->text->setFocus();
}

void TstTeclado::cleanup() {
    m_form.reset();
    Shell.reset();
}

void TstTeclado::enterMovesToTheNextControl() {
    key(m_form.get(), Qt::Key_Return);
    QTRY_COMPARE(m_form->focused(), m_form->simple);
    key(m_form.get(), Qt::Key_Enter, Qt::KeypadModifier);
    QTRY_COMPARE(m_form->focused(), m_form->lista);
    key(m_form.get(), Qt::Key_Return);
    QTRY_COMPARE(m_form->focused(), m_form->button);
    QCOMPARE(m_form->text->text(), QString());
}

void TstTeclado::enterOnAButtonDoesNotPressIt() {
    int clicks = 0;
    connect(m_form->button, &QPushButton::clicked, this, [&] { ++clicks; });
    m_form->button->setFocus();
    key(m_form.get(), Qt::Key_Return);
    QTRY_VERIFY(m_form->focused() != m_form->button);
    QCOMPARE(clicks, 0);
    m_form->button->setFocus();
    key(m_form.get(), Qt::Key_Space);
    QCOMPARE(clicks, 1);
}

void TstTeclado::enterInADialogPressesNoDefaultButton() {
    QDialog dialog;
    auto* layout = new QVBoxLayout(&dialog);
    auto* field = new QLineEdit(&dialog);
    auto* button = new QPushButton(u"Fechar"_s, &dialog);
    layout->addWidget(field);
    layout->addWidget(button);
    int clicks = 0;
    connect(button, &QPushButton::clicked, this, [&] { ++clicks; });
    new Teclado(&dialog, [&] { dialog.reject(); });
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    field->setFocus();
    key(&dialog, Qt::Key_Return);
    QTRY_COMPARE(dialog.focusWidget(), button);
    QCOMPARE(clicks, 0);
    QVERIFY(dialog.isVisible());
}

void TstTeclado::apostropheIsTypedAsAcute_data() {
    QTest::addColumn<bool>("simple");
    QTest::newRow("text box") << false;
    QTest::newRow("plain control") << true;
}

void TstTeclado::apostropheIsTypedAsAcute() {
    QFETCH(bool, simple);
    QLineEdit* control = simple ? m_form->simple : m_form->text;
    control->setFocus();
    type(control, u"D'A'"_s);
    QCOMPARE(control->text(), u"D´A´"_s);
}

void TstTeclado::lettersAreTypedInUpperCase_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("text");
    QTest::newRow("plain") << u"abc"_s << u"ABC"_s;
    QTest::newRow("accents") << u"pão de açúcar ñ"_s << u"PÃO DE AÇÚCAR Ñ"_s;
    QTest::newRow("already upper") << u"PÃO"_s << u"PÃO"_s;
    QTest::newRow("digits and signs") << u"1,5-%/\\\"*."_s << u"1,5-%/\\\"*."_s;
    QTest::newRow("blank") << u" a "_s << u" A "_s;
}

void TstTeclado::lettersAreTypedInUpperCase() {
    QFETCH(QString, typed);
    QFETCH(QString, text);
    for (QLineEdit* control : {static_cast<QLineEdit*>(m_form->text), m_form->simple}) {
        control->setFocus();
        type(control, typed);
        QCOMPARE(control->text(), text);
    }
}

void TstTeclado::escapeRunsTheActionOnce() {
    key(m_form.get(), Qt::Key_Escape);
    QCOMPARE(m_form->escapes, 1);
    m_form->lista->setFocus();
    key(m_form.get(), Qt::Key_Escape);
    QCOMPARE(m_form->escapes, 2);
    QVERIFY(m_form->isVisible());
}

void TstTeclado::heldEscapeClosesOneWindow() {
    QDialog above(m_form.get());
    new Teclado(&above, [&] { above.reject(); });
    above.show();
    QVERIFY(QTest::qWaitForWindowActive(&above));
    const auto escape = [](QWidget* window, bool repeated) {
        QTest::simulateEvent(window, true, Qt::Key_Escape, Qt::NoModifier, QString(), repeated);
    };
    escape(&above, false);
    QVERIFY(!above.isVisible());
    escape(m_form->text, true);
    QCOMPARE(m_form->escapes, 0);
    // A box that no convention serves is no other.
    QMessageBox box(QMessageBox::Information, u"Atenção!!!"_s, u"Verifique!!!"_s, QMessageBox::Ok,
                    m_form.get());
    box.open();
    QVERIFY(QTest::qWaitForWindowActive(&box));
    escape(&box, true);
    QVERIFY(box.isVisible());
    escape(&box, false);
    QVERIFY(!box.isVisible());
    escape(m_form->text, false);
    QCOMPARE(m_form->escapes, 1);
    // Nor is one that closes by a shortcut.
    QDialog byShortcut(m_form.get());
    auto* shortcut = new QShortcut(QKeySequence(Qt::Key_Escape), &byShortcut);
    connect(shortcut, &QShortcut::activated, &byShortcut, &QDialog::reject);
    byShortcut.show();
    QVERIFY(QTest::qWaitForWindowActive(&byShortcut));
    escape(&byShortcut, true);
    QVERIFY(byShortcut.isVisible());
    escape(&byShortcut, false);
    QVERIFY(!byShortcut.isVisible());
}

void TstTeclado::wheelLeavesAListWithItsDropDownClosed() {
    m_form->lista->setFocus();
    const QPoint middle = m_form->lista->rect().center();
    const auto turn = [&](QWidget* under) {
        QWheelEvent event(middle, under->mapToGlobal(middle), QPoint(), QPoint(0, -120), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(under, &event);
    };
    turn(m_form->lista);
    QCOMPARE(m_form->lista->currentText(), u"DINHEIRO"_s);
    key(m_form.get(), Qt::Key_Down);
    QCOMPARE(m_form->lista->currentText(), u"BOLETO"_s);
    // Outside the form it still turns lists.
    QComboBox other;
    other.addItems({u"A"_s, u"B"_s});
    other.show();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    turn(&other);
    QCOMPARE(other.currentText(), u"B"_s);
}

void TstTeclado::combinationsWithCtrlAreLeftAlone() {
    m_form->simple->setFocus();
    m_form->simple->setText(u"abc"_s);
    key(m_form.get(), Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(m_form->simple->selectedText(), u"abc"_s);
    key(m_form.get(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), u"abc"_s);
    m_form->text->setFocus();
    key(m_form.get(), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(m_form->text->text(), u"ABC"_s);
    type(m_form->simple, u"x"_s, Qt::ControlModifier);
    QCOMPARE(m_form->simple->text(), u"abc"_s);
}

void TstTeclado::combinationsWithAltAreLeftAlone() {
    int clicks = 0;
    connect(m_form->button, &QPushButton::clicked, this, [&] { ++clicks; });
    key(m_form.get(), Qt::Key_O, Qt::AltModifier);
    QTRY_COMPARE(clicks, 1);
    QCOMPARE(m_form->text->text(), QString());
}

void TstTeclado::altGrTypesItsCharacter() {
    m_form->simple->setFocus();
    type(m_form->simple, u"§ªº"_s, Qt::ControlModifier | Qt::AltModifier);
    type(m_form->simple, u"ã'"_s, Qt::ControlModifier | Qt::AltModifier);
    QCOMPARE(m_form->simple->text(), u"§ªºÃ´"_s);
}

void TstTeclado::hookSwallowsKeysFirst() {
    m_form->teclado->setKeyFilter([this](QWidget* control, int which) {
        return control == m_form->text && (which == Qt::Key_Return || which == Qt::Key_Escape);
    });
    key(m_form.get(), Qt::Key_Return);
    key(m_form.get(), Qt::Key_Escape);
    QCoreApplication::processEvents();
    QCOMPARE(m_form->focused(), m_form->text);
    QCOMPARE(m_form->escapes, 0);
    type(m_form->text, u"a"_s);
    QCOMPARE(m_form->text->text(), u"A"_s);
    m_form->simple->setFocus();
    key(m_form.get(), Qt::Key_Escape);
    QCOMPARE(m_form->escapes, 1);
    key(m_form.get(), Qt::Key_Return);
    QTRY_COMPARE(m_form->focused(), m_form->lista);
}

void TstTeclado::hookSeesTheControlAndTheKey() {
    QList<QPair<QWidget*, int>> seen;
    m_form->teclado->setKeyFilter([&](QWidget* control, int which) {
        seen.append({control, which});
        return true;
    });
    key(m_form.get(), Qt::Key_A);
    m_form->simple->setFocus();
    key(m_form.get(), Qt::Key_Return);
    QCOMPARE(seen,
             (QList<QPair<QWidget*, int>>{{m_form->text, Qt::Key_A}, {m_form->simple, Qt::Key_Return}}));
    QCOMPARE(m_form->text->text(), QString());
}

void TstTeclado::errorInTheHookEndsTheKeyThere() {
    int calls = 0;
    m_form->teclado->setKeyFilter([&](QWidget*, int) -> bool {
        ++calls;
        throw RuntimeError(ErrorNumber::DivisionByZero, u"Divisão por zero."_s);
    });
    ModalHelper errorBoxes;
    errorBoxes.expectContaining(u"Divisão por zero."_s, QMessageBox::Ok);
    key(m_form.get(), Qt::Key_Return);
    QCoreApplication::processEvents();
    QCOMPARE(errorBoxes.problem(), QString());
    QCOMPARE(calls, 1);
    QCOMPARE(m_form->focused(), m_form->text);

    errorBoxes.expectContaining(u"Divisão por zero."_s, QMessageBox::Ok);
    key(m_form.get(), Qt::Key_Escape);
    QCOMPARE(errorBoxes.problem(), QString());
    QCOMPARE(m_form->escapes, 0);
}

void TstTeclado::errorInTheEscapeActionIsReported() {
    QDialog dialog;
    new Teclado(&dialog, [] { throw RuntimeError(ErrorNumber::Overflow, u"Estouro."_s); });
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    ModalHelper errorBoxes;
    errorBoxes.expectContaining(u"Estouro."_s, QMessageBox::Ok);
    key(&dialog, Qt::Key_Escape);
    QCOMPARE(errorBoxes.problem(), QString());
    QVERIFY(dialog.isVisible());
}

void TstTeclado::messageBoxKeepsItsKeys() {
    ModalHelper errorBoxes;
    // Answered by the keys themselves, first Escape, then Enter on the button that has the focus.
    errorBoxes.expect(u"Confirma?"_s, QMessageBox::NoButton);
    QVERIFY(!boxes::ask(m_form.get(), u"Confirma?"_s, QMessageBox::Question));
    QCOMPARE(m_form->escapes, 0);

    QMessageBox messageBox(QMessageBox::Information, u"Atenção!!!"_s, u"Verifique!!!"_s, QMessageBox::Ok,
                           m_form.get());
    messageBox.open();
    QVERIFY(QTest::qWaitForWindowActive(&messageBox));
    key(&messageBox, Qt::Key_Return);
    QVERIFY(!messageBox.isVisible());
    QCOMPARE(m_form->escapes, 0);
    QCOMPARE(m_form->focused(), m_form->text);
}

void TstTeclado::dropDownListKeepsItsKeys() {
    m_form->lista->setFocus();
    m_form->lista->showPopup();
    QWidget* popup = m_form->lista->view()->window();
    QVERIFY(QTest::qWaitForWindowExposed(popup));
    key(popup, Qt::Key_Escape);
    QTRY_VERIFY(!popup->isVisible());
    QCOMPARE(m_form->escapes, 0);
    QVERIFY(m_form->isVisible());
    QCOMPARE(m_form->lista->currentText(), u"DINHEIRO"_s);
}

void TstTeclado::enterChoosesInADropDownList() {
    m_form->lista->setFocus();
    m_form->lista->showPopup();
    QWidget* popup = m_form->lista->view()->window();
    QVERIFY(QTest::qWaitForWindowExposed(popup));
    key(popup, Qt::Key_Down);
    key(popup, Qt::Key_Return);
    QTRY_VERIFY(!popup->isVisible());
    QCOMPARE(m_form->lista->currentText(), u"BOLETO"_s);
    QCoreApplication::processEvents();
    QCOMPARE(m_form->focused(), m_form->lista);
}

// Reached by Alt, the bar itself has the focus while no menu is open.
void TstTeclado::menuBarKeepsItsKeys() {
    QTest::keyClick(m_form.get(), Qt::Key_Alt);
    QTRY_COMPARE(m_form->focused(), m_form->menuBar());
    key(m_form.get(), Qt::Key_Escape);
    QCOMPARE(m_form->escapes, 0);
    QCOMPARE(m_form->focused(), m_form->text);

    QTest::keyClick(m_form.get(), Qt::Key_Alt);
    QTRY_COMPARE(m_form->focused(), m_form->menuBar());
    key(m_form.get(), Qt::Key_Return);
    QTRY_VERIFY(m_form->menu->isVisible());
    key(m_form->menu, Qt::Key_Escape);
    QTRY_VERIFY(!m_form->menu->isVisible());
    QCOMPARE(m_form->escapes, 0);
}

void TstTeclado::openMenuKeepsItsKeys() {
    int choices = 0;
    connect(m_form->action, &QAction::triggered, this, [&] { ++choices; });
    m_form->menu->popup(m_form->mapToGlobal(QPoint(0, 0)));
    QVERIFY(QTest::qWaitForWindowExposed(m_form->menu));
    key(m_form->menu, Qt::Key_Escape);
    QTRY_VERIFY(!m_form->menu->isVisible());
    QCOMPARE(m_form->escapes, 0);

    m_form->menu->popup(m_form->mapToGlobal(QPoint(0, 0)));
    QVERIFY(QTest::qWaitForWindowExposed(m_form->menu));
    key(m_form->menu, Qt::Key_Down);
    key(m_form->menu, Qt::Key_Return);
    QTRY_COMPARE(choices, 1);
}

void TstTeclado::otherFormsAreNotServed() {
    QDialog otherDialog;
    auto* field = new QLineEdit(&otherDialog);
    auto* second = new QLineEdit(&otherDialog);
    second->move(0, 40);
    otherDialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&otherDialog));
    field->setFocus();
    type(field, u"d'a"_s);
    key(&otherDialog, Qt::Key_Return);
    QCoreApplication::processEvents();
    QCOMPARE(field->text(), u"d'a"_s);
    QCOMPARE(otherDialog.focusWidget(), field);
    key(&otherDialog, Qt::Key_Escape);
    QVERIFY(!otherDialog.isVisible());
    QCOMPARE(m_form->escapes, 0);
}

void TstTeclado::closedFormServesNoMore() {
    m_form.reset();
    QLineEdit field;
    field.show();
    QVERIFY(QTest::qWaitForWindowActive(&field));
    type(&field, u"a'"_s);
    QCOMPARE(field.text(), u"a'"_s);
}

void TstTeclado::onlyTheTabKeystrokeIsSent() {
    Shell->sendKeys(u"{ENTER}"_s);
    Shell->sendKeys(u"a"_s);
    QCoreApplication::processEvents();
    QCOMPARE(m_form->focused(), m_form->text);
    QCOMPARE(m_form->text->text(), QString());
    Shell->sendKeys(u"{TAB}"_s);
    // As if typed: it comes after what is already waiting.
    QCOMPARE(m_form->focused(), m_form->text);
    QTRY_COMPARE(m_form->focused(), m_form->simple);
}

QTEST_MAIN(TstTeclado)
#include "tst_teclado.moc"
