#include "ui/TextBox.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QLineEdit>
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
    void shownApostropheIsLookedUpAsTyped();
    void selectsOnFocusOnlyWhenAsked();

  private:
    std::unique_ptr<TextBox> m_box;
};

void TstTextBox::init() {
    m_box = std::make_unique<TextBox>();
    m_box->show();
    QVERIFY(QTest::qWaitForWindowActive(m_box.get()));
    m_box->setFocus();
}

void TstTextBox::cleanup() {
    m_box.reset();
}

// A description of the database may hold what cannot be typed.
void TstTextBox::shownApostropheIsLookedUpAsTyped() {
    m_box->showText(u"D'AGUA"_s);
    QCOMPARE(m_box->text(), u"D'AGUA"_s);
    QCOMPARE(m_box->lookUpText(), u"D´AGUA"_s);
}

void TstTextBox::selectsOnFocusOnlyWhenAsked() {
    for (const bool asked : {false, true}) {
        QWidget form;
        auto* other = new QLineEdit(&form);
        auto* box = new TextBox(&form);
        box->move(0, other->sizeHint().height());
        if (asked)
            box->setSelectsOnFocus();
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        box->showText(u"ABC"_s);
        other->setFocus();
        box->deselect();
        box->setFocus(Qt::OtherFocusReason);
        QCOMPARE(box->selectedText(), asked ? u"ABC"_s : QString());
    }
}

void TstTextBox::texts_data() {
    QTest::addColumn<QString>("entrada");
    QTest::addColumn<QString>("text");
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
    QFETCH(QString, text);
    for (const char32_t c : entrada.toUcs4())
        QTest::sendKeyEvent(QTest::Click, m_box.get(), Qt::Key_unknown, QString::fromUcs4(&c, 1),
                            Qt::NoModifier);
    QCOMPARE(m_box->text(), text);
}

void TstTextBox::pasted() {
    QFETCH(QString, entrada);
    QFETCH(QString, text);
    QGuiApplication::clipboard()->setText(entrada);
    QTest::keyClick(m_box.get(), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(m_box->text(), text);
}

void TstTextBox::dropped() {
    QFETCH(QString, entrada);
    QFETCH(QString, text);
    QMimeData data;
    data.setText(entrada);
    const QPointF ponto = m_box->rect().center();
    QDragEnterEvent arrival(ponto.toPoint(), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_box.get(), &arrival);
    QVERIFY(arrival.isAccepted());
    QDropEvent release(ponto, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_box.get(), &release);
    QCOMPARE(m_box->text(), text);
}

void TstTextBox::composed() {
    QFETCH(QString, entrada);
    QFETCH(QString, text);
    QInputMethodEvent event;
    event.setCommitString(entrada);
    QApplication::sendEvent(m_box.get(), &event);
    QCOMPARE(m_box->text(), text);
}

void TstTextBox::setByAnotherProgram() {
    QFETCH(QString, entrada);
    QFETCH(QString, text);
    m_box->setText(entrada);
    QCOMPARE(m_box->text(), text);
    m_box->clear();
    m_box->insert(entrada);
    QCOMPARE(m_box->text(), text);
}

void TstTextBox::conventionalForm() {
    QFETCH(QString, entrada);
    QFETCH(QString, text);
    QCOMPARE(TextBox::conventional(entrada), text);
    QCOMPARE(TextBox::conventional(text), text);
}

void TstTextBox::compositionInProgressIsShownAsItIs() {
    QInputMethodEvent inProgress(u"~"_s, {});
    QApplication::sendEvent(m_box.get(), &inProgress);
    QCOMPARE(m_box->text(), QString());
    QInputMethodEvent end;
    end.setCommitString(u"ã"_s);
    QApplication::sendEvent(m_box.get(), &end);
    QCOMPARE(m_box->text(), u"Ã"_s);
    QCOMPARE(m_box->cursorPosition(), 1);
}

void TstTextBox::cursorStaysBehindWhatWasTyped() {
    m_box->setText(u"PÃO"_s);
    m_box->setCursorPosition(1);
    QTest::keyClicks(m_box.get(), u"ab"_s);
    QCOMPARE(m_box->text(), u"PABÃO"_s);
    QCOMPARE(m_box->cursorPosition(), 3);
    QTest::keyClick(m_box.get(), Qt::Key_Backspace);
    QCOMPARE(m_box->text(), u"PAÃO"_s);
    QCOMPARE(m_box->cursorPosition(), 2);
}

void TstTextBox::cursorStaysBehindWhatWasPasted() {
    m_box->setText(u"XY"_s);
    m_box->setCursorPosition(1);
    QGuiApplication::clipboard()->setText(u"a\r\nb\tß"_s);
    m_box->paste();
    QCOMPARE(m_box->text(), u"XABSSY"_s);
    QCOMPARE(m_box->cursorPosition(), 5);
}

void TstTextBox::pastingReplacesTheSelection() {
    m_box->setText(u"UM DOIS TRÊS"_s);
    m_box->setSelection(3, 4);
    QGuiApplication::clipboard()->setText(u"d'ois"_s);
    m_box->paste();
    QCOMPARE(m_box->text(), u"UM D´OIS TRÊS"_s);
    QCOMPARE(m_box->cursorPosition(), 8);
    QVERIFY(!m_box->hasSelectedText());
}

void TstTextBox::undoGivesTheTextBeforeBack() {
    m_box->showText(u"Antes"_s);
    m_box->selectAll();
    QTest::keyClicks(m_box.get(), u"X"_s);
    QCOMPARE(m_box->text(), u"X"_s);
    m_box->undo();
    QCOMPARE(m_box->text().toUpper(), u"ANTES"_s);
}

void TstTextBox::undoNeverBringsAnApostrophe() {
    QGuiApplication::clipboard()->setText(u"d'água"_s);
    m_box->paste();
    for (int attempt = 0; attempt < 3; ++attempt) {
        m_box->undo();
        QVERIFY(!m_box->text().contains(u'\''));
        m_box->redo();
        QVERIFY(!m_box->text().contains(u'\''));
    }
}

void TstTextBox::limitOfLengthHolds() {
    m_box->setMaxLength(4);
    QGuiApplication::clipboard()->setText(u"a'bcdef"_s);
    m_box->paste();
    QCOMPARE(m_box->text(), u"A´BC"_s);
    m_box->clear();
    QGuiApplication::clipboard()->setText(u"abcß"_s);
    m_box->paste();
    QVERIFY(m_box->text().size() <= 4);
}

void TstTextBox::shownTextStaysLetterByLetter() {
    for (const QString& text :
         {u"Pão d'água"_s, u"minúsculas"_s, u"a\tb"_s, u"  "_s, QString(), u"\U0001F950"_s}) {
        m_box->showText(text);
        QCOMPARE(m_box->text(), text);
    }
}

void TstTextBox::shownTextEditedByHandFollowsTheConvention() {
    m_box->showText(u"Pão d'água"_s);
    QTest::keyClicks(m_box.get(), u"x"_s);
    QCOMPARE(m_box->text(), u"PÃO D´ÁGUAX"_s);
}

void TstTextBox::changeIsToldOncePerEdit() {
    QSignalSpy changed(m_box.get(), &QLineEdit::textChanged);
    QSignalSpy edited(m_box.get(), &QLineEdit::textEdited);
    QTest::keyClicks(m_box.get(), u"a"_s);
    QCOMPARE(changed.size(), 1);
    QCOMPARE(changed[0][0].toString(), u"A"_s);
    QCOMPARE(edited.size(), 1);
    m_box->showText(u"outro"_s);
    QCOMPARE(edited.size(), 1);
}

QTEST_MAIN(TstTextBox)
#include "tst_textbox.moc"
