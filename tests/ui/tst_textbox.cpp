#include "ui/TextBox.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using namespace tarvessa;

/// A text box whose content follows the keyboard convention, whichever way it comes in.
class TstTextBox : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void texts_data();
    void typed_data() { texts_data(); }
    void typed();
    void pasted_data() { texts_data(); }
    void pasted();
    void dropped_data() { texts_data(); }
    void dropped();
    void composed_data() { texts_data(); }
    void composed();
    void setByAnotherProgram_data() { texts_data(); }
    void setByAnotherProgram();
    void conventionalForm_data() { texts_data(); }
    void conventionalForm();
    void compositionInProgressIsShownAsItIs();
    void cursorStaysBehindWhatWasTyped();
    void cursorStaysBehindWhatWasPasted();
    void pastingReplacesTheSelection();
    void undoGivesTheTextBeforeBack();
    void undoNeverBringsAnApostrophe();
    void limitOfLengthHolds();
    void shownTextStaysLetterByLetter();
    void shownTextEditedByHandFollowsTheConvention();
    void changeIsToldOncePerEdit();

  private:
    std::unique_ptr<TextBox> m_caixa;
};

void TstTextBox::init() {
    m_caixa = std::make_unique<TextBox>();
    m_caixa->show();
    QVERIFY(QTest::qWaitForWindowActive(m_caixa.get()));
    m_caixa->setFocus();
}

void TstTextBox::cleanup() {
    m_caixa.reset();
}

void TstTextBox::texts_data() {
    QTest::addColumn<QString>("entrada");
    QTest::addColumn<QString>("texto");
    QTest::newRow("lower case") << u"pão de açúcar"_s << u"PÃO DE AÇÚCAR"_s;
    QTest::newRow("upper case") << u"PÃO"_s << u"PÃO"_s;
    QTest::newRow("apostrophes") << u"d'ávila's"_s << u"D´ÁVILA´S"_s;
    QTest::newRow("only an apostrophe") << u"'"_s << u"´"_s;
    QTest::newRow("double quotes and backslash stay") << u"\"a\" \\ `b`"_s << u"\"A\" \\ `B`"_s;
    QTest::newRow("tab") << u"a\tb"_s << u"AB"_s;
    QTest::newRow("line breaks") << u"um\r\ndois\ntrês"_s << u"UMDOISTRÊS"_s;
    QTest::newRow("line and paragraph separators") << u"a\u2028b\u2029c"_s << u"ABC"_s;
    QTest::newRow("control characters") << u"a\u0001\u001Bb"_s << u"AB"_s;
    QTest::newRow("blanks stay") << u"  a  "_s << u"  A  "_s;
    QTest::newRow("letter of two capitals") << u"groß"_s << u"GROSS"_s;
    QTest::newRow("characters of four bytes")
        << u"\U0001F950 pão \U00010428"_s << u"\U0001F950 PÃO \U00010400"_s;
}

void TstTextBox::typed() {
    QFETCH(QString, entrada);
    QFETCH(QString, texto);
    for (const char32_t c : entrada.toUcs4())
        QTest::sendKeyEvent(QTest::Click, m_caixa.get(), Qt::Key_unknown, QString::fromUcs4(&c, 1),
                            Qt::NoModifier);
    QCOMPARE(m_caixa->text(), texto);
}

void TstTextBox::pasted() {
    QFETCH(QString, entrada);
    QFETCH(QString, texto);
    QGuiApplication::clipboard()->setText(entrada);
    QTest::keyClick(m_caixa.get(), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(m_caixa->text(), texto);
}

void TstTextBox::dropped() {
    QFETCH(QString, entrada);
    QFETCH(QString, texto);
    QMimeData dados;
    dados.setText(entrada);
    const QPointF ponto = m_caixa->rect().center();
    QDragEnterEvent chegada(ponto.toPoint(), Qt::CopyAction, &dados, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_caixa.get(), &chegada);
    QVERIFY(chegada.isAccepted());
    QDropEvent solta(ponto, Qt::CopyAction, &dados, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_caixa.get(), &solta);
    QCOMPARE(m_caixa->text(), texto);
}

void TstTextBox::composed() {
    QFETCH(QString, entrada);
    QFETCH(QString, texto);
    QInputMethodEvent evento;
    evento.setCommitString(entrada);
    QApplication::sendEvent(m_caixa.get(), &evento);
    QCOMPARE(m_caixa->text(), texto);
}

void TstTextBox::setByAnotherProgram() {
    QFETCH(QString, entrada);
    QFETCH(QString, texto);
    m_caixa->setText(entrada);
    QCOMPARE(m_caixa->text(), texto);
    m_caixa->clear();
    m_caixa->insert(entrada);
    QCOMPARE(m_caixa->text(), texto);
}

void TstTextBox::conventionalForm() {
    QFETCH(QString, entrada);
    QFETCH(QString, texto);
    QCOMPARE(TextBox::conventional(entrada), texto);
    QCOMPARE(TextBox::conventional(texto), texto);
}

void TstTextBox::compositionInProgressIsShownAsItIs() {
    QInputMethodEvent emCurso(u"~"_s, {});
    QApplication::sendEvent(m_caixa.get(), &emCurso);
    QCOMPARE(m_caixa->text(), QString());
    QInputMethodEvent fim;
    fim.setCommitString(u"ã"_s);
    QApplication::sendEvent(m_caixa.get(), &fim);
    QCOMPARE(m_caixa->text(), u"Ã"_s);
    QCOMPARE(m_caixa->cursorPosition(), 1);
}

void TstTextBox::cursorStaysBehindWhatWasTyped() {
    m_caixa->setText(u"PÃO"_s);
    m_caixa->setCursorPosition(1);
    QTest::keyClicks(m_caixa.get(), u"ab"_s);
    QCOMPARE(m_caixa->text(), u"PABÃO"_s);
    QCOMPARE(m_caixa->cursorPosition(), 3);
    QTest::keyClick(m_caixa.get(), Qt::Key_Backspace);
    QCOMPARE(m_caixa->text(), u"PAÃO"_s);
    QCOMPARE(m_caixa->cursorPosition(), 2);
}

void TstTextBox::cursorStaysBehindWhatWasPasted() {
    m_caixa->setText(u"XY"_s);
    m_caixa->setCursorPosition(1);
    QGuiApplication::clipboard()->setText(u"a\r\nb\tß"_s);
    m_caixa->paste();
    QCOMPARE(m_caixa->text(), u"XABSSY"_s);
    QCOMPARE(m_caixa->cursorPosition(), 5);
}

void TstTextBox::pastingReplacesTheSelection() {
    m_caixa->setText(u"UM DOIS TRÊS"_s);
    m_caixa->setSelection(3, 4);
    QGuiApplication::clipboard()->setText(u"d'ois"_s);
    m_caixa->paste();
    QCOMPARE(m_caixa->text(), u"UM D´OIS TRÊS"_s);
    QCOMPARE(m_caixa->cursorPosition(), 8);
    QVERIFY(!m_caixa->hasSelectedText());
}

void TstTextBox::undoGivesTheTextBeforeBack() {
    m_caixa->showText(u"Antes"_s);
    m_caixa->selectAll();
    QTest::keyClicks(m_caixa.get(), u"X"_s);
    QCOMPARE(m_caixa->text(), u"X"_s);
    m_caixa->undo();
    QCOMPARE(m_caixa->text().toUpper(), u"ANTES"_s);
}

void TstTextBox::undoNeverBringsAnApostrophe() {
    QGuiApplication::clipboard()->setText(u"d'água"_s);
    m_caixa->paste();
    for (int vez = 0; vez < 3; ++vez) {
        m_caixa->undo();
        QVERIFY(!m_caixa->text().contains(u'\''));
        m_caixa->redo();
        QVERIFY(!m_caixa->text().contains(u'\''));
    }
}

void TstTextBox::limitOfLengthHolds() {
    m_caixa->setMaxLength(4);
    QGuiApplication::clipboard()->setText(u"a'bcdef"_s);
    m_caixa->paste();
    QCOMPARE(m_caixa->text(), u"A´BC"_s);
    m_caixa->clear();
    QGuiApplication::clipboard()->setText(u"abcß"_s);
    m_caixa->paste();
    QVERIFY(m_caixa->text().size() <= 4);
}

void TstTextBox::shownTextStaysLetterByLetter() {
    for (const QString& texto :
         {u"Pão d'água"_s, u"minúsculas"_s, u"a\tb"_s, u"  "_s, QString(), u"\U0001F950"_s}) {
        m_caixa->showText(texto);
        QCOMPARE(m_caixa->text(), texto);
    }
}

void TstTextBox::shownTextEditedByHandFollowsTheConvention() {
    m_caixa->showText(u"Pão d'água"_s);
    QTest::keyClicks(m_caixa.get(), u"x"_s);
    QCOMPARE(m_caixa->text(), u"PÃO D´ÁGUAX"_s);
}

void TstTextBox::changeIsToldOncePerEdit() {
    QSignalSpy mudou(m_caixa.get(), &QLineEdit::textChanged);
    QSignalSpy editou(m_caixa.get(), &QLineEdit::textEdited);
    QTest::keyClicks(m_caixa.get(), u"a"_s);
    QCOMPARE(mudou.size(), 1);
    QCOMPARE(mudou[0][0].toString(), u"A"_s);
    QCOMPARE(editou.size(), 1);
    m_caixa->showText(u"outro"_s);
    QCOMPARE(editou.size(), 1);
}

QTEST_MAIN(TstTextBox)
#include "tst_textbox.moc"
