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
class Formulario : public QMainWindow {
  public:
    Formulario() {
        auto* meio = new QWidget(this);
        auto* disposicao = new QVBoxLayout(meio);
        texto = new TextBox(meio);
        simples = new QLineEdit(meio);
        lista = new QComboBox(meio);
        lista->addItems({u"DINHEIRO"_s, u"BOLETO"_s, u"CHEQUE"_s});
        botao = new QPushButton(u"&Ok"_s, meio);
        for (QWidget* controle : std::initializer_list<QWidget*>{texto, simples, lista, botao})
            disposicao->addWidget(controle);
        setCentralWidget(meio);
        menu = menuBar()->addMenu(u"&Relatórios"_s);
        acao = menu->addAction(u"Comissão"_s);
        teclado = new Teclado(this, [this] { ++escapes; });
        show();
        QApplication::setActiveWindow(this);
    }

    QWidget* focado() const { return focusWidget(); }

    TextBox* texto;
    QLineEdit* simples;
    QComboBox* lista;
    QPushButton* botao;
    QMenu* menu;
    QAction* acao;
    Teclado* teclado;
    int escapes = 0;
};

/// Presses and releases a key as the window system tells it, so that popups get what is theirs.
void tecla(QWidget* janela, Qt::Key qual, Qt::KeyboardModifiers junto = Qt::NoModifier) {
    QTest::keyClick(janela->windowHandle(), qual, junto);
}

/// Types the characters of a text, each with a key of no name.
void digita(QWidget* controle, const QString& texto, Qt::KeyboardModifiers junto = Qt::NoModifier) {
    for (const QChar c : texto)
        QTest::sendKeyEvent(QTest::Click, controle, Qt::Key_unknown, QString(c), junto);
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
    std::unique_ptr<Formulario> m_form;
};

void TstTeclado::init() {
    Shell = std::make_unique<ShellHost>();
    m_form = std::make_unique<Formulario>();
    QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
    m_form->texto->setFocus();
}

void TstTeclado::cleanup() {
    m_form.reset();
    Shell.reset();
}

void TstTeclado::enterMovesToTheNextControl() {
    tecla(m_form.get(), Qt::Key_Return);
    QTRY_COMPARE(m_form->focado(), m_form->simples);
    tecla(m_form.get(), Qt::Key_Enter, Qt::KeypadModifier);
    QTRY_COMPARE(m_form->focado(), m_form->lista);
    tecla(m_form.get(), Qt::Key_Return);
    QTRY_COMPARE(m_form->focado(), m_form->botao);
    QCOMPARE(m_form->texto->text(), QString());
}

void TstTeclado::enterOnAButtonDoesNotPressIt() {
    int cliques = 0;
    connect(m_form->botao, &QPushButton::clicked, this, [&] { ++cliques; });
    m_form->botao->setFocus();
    tecla(m_form.get(), Qt::Key_Return);
    QTRY_VERIFY(m_form->focado() != m_form->botao);
    QCOMPARE(cliques, 0);
    m_form->botao->setFocus();
    tecla(m_form.get(), Qt::Key_Space);
    QCOMPARE(cliques, 1);
}

void TstTeclado::enterInADialogPressesNoDefaultButton() {
    QDialog dialogo;
    auto* disposicao = new QVBoxLayout(&dialogo);
    auto* campo = new QLineEdit(&dialogo);
    auto* botao = new QPushButton(u"Fechar"_s, &dialogo);
    disposicao->addWidget(campo);
    disposicao->addWidget(botao);
    int cliques = 0;
    connect(botao, &QPushButton::clicked, this, [&] { ++cliques; });
    new Teclado(&dialogo, [&] { dialogo.reject(); });
    dialogo.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialogo));
    campo->setFocus();
    tecla(&dialogo, Qt::Key_Return);
    QTRY_COMPARE(dialogo.focusWidget(), botao);
    QCOMPARE(cliques, 0);
    QVERIFY(dialogo.isVisible());
}

void TstTeclado::apostropheIsTypedAsAcute_data() {
    QTest::addColumn<bool>("simples");
    QTest::newRow("text box") << false;
    QTest::newRow("plain control") << true;
}

void TstTeclado::apostropheIsTypedAsAcute() {
    QFETCH(bool, simples);
    QLineEdit* controle = simples ? m_form->simples : m_form->texto;
    controle->setFocus();
    digita(controle, u"D'A'"_s);
    QCOMPARE(controle->text(), u"D´A´"_s);
}

void TstTeclado::lettersAreTypedInUpperCase_data() {
    QTest::addColumn<QString>("digitado");
    QTest::addColumn<QString>("texto");
    QTest::newRow("plain") << u"abc"_s << u"ABC"_s;
    QTest::newRow("accents") << u"pão de açúcar ñ"_s << u"PÃO DE AÇÚCAR Ñ"_s;
    QTest::newRow("already upper") << u"PÃO"_s << u"PÃO"_s;
    QTest::newRow("digits and signs") << u"1,5-%/\\\"*."_s << u"1,5-%/\\\"*."_s;
    QTest::newRow("blank") << u" a "_s << u" A "_s;
}

void TstTeclado::lettersAreTypedInUpperCase() {
    QFETCH(QString, digitado);
    QFETCH(QString, texto);
    for (QLineEdit* controle : {static_cast<QLineEdit*>(m_form->texto), m_form->simples}) {
        controle->setFocus();
        digita(controle, digitado);
        QCOMPARE(controle->text(), texto);
    }
}

void TstTeclado::escapeRunsTheActionOnce() {
    tecla(m_form.get(), Qt::Key_Escape);
    QCOMPARE(m_form->escapes, 1);
    m_form->lista->setFocus();
    tecla(m_form.get(), Qt::Key_Escape);
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
    escape(m_form->texto, true);
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
    escape(m_form->texto, false);
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
    tecla(m_form.get(), Qt::Key_Down);
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
    m_form->simples->setFocus();
    m_form->simples->setText(u"abc"_s);
    tecla(m_form.get(), Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(m_form->simples->selectedText(), u"abc"_s);
    tecla(m_form.get(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), u"abc"_s);
    m_form->texto->setFocus();
    tecla(m_form.get(), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(m_form->texto->text(), u"ABC"_s);
    digita(m_form->simples, u"x"_s, Qt::ControlModifier);
    QCOMPARE(m_form->simples->text(), u"abc"_s);
}

void TstTeclado::combinationsWithAltAreLeftAlone() {
    int cliques = 0;
    connect(m_form->botao, &QPushButton::clicked, this, [&] { ++cliques; });
    tecla(m_form.get(), Qt::Key_O, Qt::AltModifier);
    QTRY_COMPARE(cliques, 1);
    QCOMPARE(m_form->texto->text(), QString());
}

void TstTeclado::altGrTypesItsCharacter() {
    m_form->simples->setFocus();
    digita(m_form->simples, u"§ªº"_s, Qt::ControlModifier | Qt::AltModifier);
    digita(m_form->simples, u"ã'"_s, Qt::ControlModifier | Qt::AltModifier);
    QCOMPARE(m_form->simples->text(), u"§ªºÃ´"_s);
}

void TstTeclado::hookSwallowsKeysFirst() {
    m_form->teclado->setKeyFilter([this](QWidget* controle, int qual) {
        return controle == m_form->texto && (qual == Qt::Key_Return || qual == Qt::Key_Escape);
    });
    tecla(m_form.get(), Qt::Key_Return);
    tecla(m_form.get(), Qt::Key_Escape);
    QCoreApplication::processEvents();
    QCOMPARE(m_form->focado(), m_form->texto);
    QCOMPARE(m_form->escapes, 0);
    digita(m_form->texto, u"a"_s);
    QCOMPARE(m_form->texto->text(), u"A"_s);
    m_form->simples->setFocus();
    tecla(m_form.get(), Qt::Key_Escape);
    QCOMPARE(m_form->escapes, 1);
    tecla(m_form.get(), Qt::Key_Return);
    QTRY_COMPARE(m_form->focado(), m_form->lista);
}

void TstTeclado::hookSeesTheControlAndTheKey() {
    QList<QPair<QWidget*, int>> vistos;
    m_form->teclado->setKeyFilter([&](QWidget* controle, int qual) {
        vistos.append({controle, qual});
        return true;
    });
    tecla(m_form.get(), Qt::Key_A);
    m_form->simples->setFocus();
    tecla(m_form.get(), Qt::Key_Return);
    QCOMPARE(vistos,
             (QList<QPair<QWidget*, int>>{{m_form->texto, Qt::Key_A}, {m_form->simples, Qt::Key_Return}}));
    QCOMPARE(m_form->texto->text(), QString());
}

void TstTeclado::errorInTheHookEndsTheKeyThere() {
    int chamadas = 0;
    m_form->teclado->setKeyFilter([&](QWidget*, int) -> bool {
        ++chamadas;
        throw RuntimeError(ErrorNumber::DivisionByZero, u"Divisão por zero."_s);
    });
    ModalHelper caixas;
    caixas.expectContaining(u"Divisão por zero."_s, QMessageBox::Ok);
    tecla(m_form.get(), Qt::Key_Return);
    QCoreApplication::processEvents();
    QCOMPARE(caixas.problem(), QString());
    QCOMPARE(chamadas, 1);
    QCOMPARE(m_form->focado(), m_form->texto);

    caixas.expectContaining(u"Divisão por zero."_s, QMessageBox::Ok);
    tecla(m_form.get(), Qt::Key_Escape);
    QCOMPARE(caixas.problem(), QString());
    QCOMPARE(m_form->escapes, 0);
}

void TstTeclado::errorInTheEscapeActionIsReported() {
    QDialog dialogo;
    new Teclado(&dialogo, [] { throw RuntimeError(ErrorNumber::Overflow, u"Estouro."_s); });
    dialogo.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialogo));
    ModalHelper caixas;
    caixas.expectContaining(u"Estouro."_s, QMessageBox::Ok);
    tecla(&dialogo, Qt::Key_Escape);
    QCOMPARE(caixas.problem(), QString());
    QVERIFY(dialogo.isVisible());
}

void TstTeclado::messageBoxKeepsItsKeys() {
    ModalHelper caixas;
    // Answered by the keys themselves, first Escape, then Enter on the button that has the focus.
    caixas.expect(u"Confirma?"_s, QMessageBox::NoButton);
    QVERIFY(!boxes::ask(m_form.get(), u"Confirma?"_s, QMessageBox::Question));
    QCOMPARE(m_form->escapes, 0);

    QMessageBox caixa(QMessageBox::Information, u"Atenção!!!"_s, u"Verifique!!!"_s, QMessageBox::Ok,
                      m_form.get());
    caixa.open();
    QVERIFY(QTest::qWaitForWindowActive(&caixa));
    tecla(&caixa, Qt::Key_Return);
    QVERIFY(!caixa.isVisible());
    QCOMPARE(m_form->escapes, 0);
    QCOMPARE(m_form->focado(), m_form->texto);
}

void TstTeclado::dropDownListKeepsItsKeys() {
    m_form->lista->setFocus();
    m_form->lista->showPopup();
    QWidget* janela = m_form->lista->view()->window();
    QVERIFY(QTest::qWaitForWindowExposed(janela));
    tecla(janela, Qt::Key_Escape);
    QTRY_VERIFY(!janela->isVisible());
    QCOMPARE(m_form->escapes, 0);
    QVERIFY(m_form->isVisible());
    QCOMPARE(m_form->lista->currentText(), u"DINHEIRO"_s);
}

void TstTeclado::enterChoosesInADropDownList() {
    m_form->lista->setFocus();
    m_form->lista->showPopup();
    QWidget* janela = m_form->lista->view()->window();
    QVERIFY(QTest::qWaitForWindowExposed(janela));
    tecla(janela, Qt::Key_Down);
    tecla(janela, Qt::Key_Return);
    QTRY_VERIFY(!janela->isVisible());
    QCOMPARE(m_form->lista->currentText(), u"BOLETO"_s);
    QCoreApplication::processEvents();
    QCOMPARE(m_form->focado(), m_form->lista);
}

// Reached by Alt, the bar itself has the focus while no menu is open.
void TstTeclado::menuBarKeepsItsKeys() {
    QTest::keyClick(m_form.get(), Qt::Key_Alt);
    QTRY_COMPARE(m_form->focado(), m_form->menuBar());
    tecla(m_form.get(), Qt::Key_Escape);
    QCOMPARE(m_form->escapes, 0);
    QCOMPARE(m_form->focado(), m_form->texto);

    QTest::keyClick(m_form.get(), Qt::Key_Alt);
    QTRY_COMPARE(m_form->focado(), m_form->menuBar());
    tecla(m_form.get(), Qt::Key_Return);
    QTRY_VERIFY(m_form->menu->isVisible());
    tecla(m_form->menu, Qt::Key_Escape);
    QTRY_VERIFY(!m_form->menu->isVisible());
    QCOMPARE(m_form->escapes, 0);
}

void TstTeclado::openMenuKeepsItsKeys() {
    int escolhas = 0;
    connect(m_form->acao, &QAction::triggered, this, [&] { ++escolhas; });
    m_form->menu->popup(m_form->mapToGlobal(QPoint(0, 0)));
    QVERIFY(QTest::qWaitForWindowExposed(m_form->menu));
    tecla(m_form->menu, Qt::Key_Escape);
    QTRY_VERIFY(!m_form->menu->isVisible());
    QCOMPARE(m_form->escapes, 0);

    m_form->menu->popup(m_form->mapToGlobal(QPoint(0, 0)));
    QVERIFY(QTest::qWaitForWindowExposed(m_form->menu));
    tecla(m_form->menu, Qt::Key_Down);
    tecla(m_form->menu, Qt::Key_Return);
    QTRY_COMPARE(escolhas, 1);
}

void TstTeclado::otherFormsAreNotServed() {
    QDialog outra;
    auto* campo = new QLineEdit(&outra);
    auto* segundo = new QLineEdit(&outra);
    segundo->move(0, 40);
    outra.show();
    QVERIFY(QTest::qWaitForWindowActive(&outra));
    campo->setFocus();
    digita(campo, u"d'a"_s);
    tecla(&outra, Qt::Key_Return);
    QCoreApplication::processEvents();
    QCOMPARE(campo->text(), u"d'a"_s);
    QCOMPARE(outra.focusWidget(), campo);
    tecla(&outra, Qt::Key_Escape);
    QVERIFY(!outra.isVisible());
    QCOMPARE(m_form->escapes, 0);
}

void TstTeclado::closedFormServesNoMore() {
    m_form.reset();
    QLineEdit campo;
    campo.show();
    QVERIFY(QTest::qWaitForWindowActive(&campo));
    digita(&campo, u"a'"_s);
    QCOMPARE(campo.text(), u"a'"_s);
}

void TstTeclado::onlyTheTabKeystrokeIsSent() {
    Shell->sendKeys(u"{ENTER}"_s);
    Shell->sendKeys(u"a"_s);
    QCoreApplication::processEvents();
    QCOMPARE(m_form->focado(), m_form->texto);
    QCOMPARE(m_form->texto->text(), QString());
    Shell->sendKeys(u"{TAB}"_s);
    // As if typed: it comes after what is already waiting.
    QCOMPARE(m_form->focado(), m_form->texto);
    QTRY_COMPARE(m_form->focado(), m_form->simples);
}

QTEST_MAIN(TstTeclado)
#include "tst_teclado.moc"
