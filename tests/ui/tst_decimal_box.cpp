#include "ui/TextBox.h"

#include <QApplication>
#include <QClipboard>
#include <QTest>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace tarvessa;

/// The text box for decimal numbers, and the one that selects its text when it gets the focus.
class TstDecimalBox : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup() { m_form.reset(); }

    void typedText_data();
    void typedText();
    void pastedText_data();
    void pastedText();
    void pastedIntoText_data();
    void pastedIntoText();
    void cursorStandsBehindWhatWasPutIn();
    void deletingKeepsThePointsBetweenThousands();
    void shownTextIsLeftAlone();
    void otherBoxesKeepThePoint();
    void focusSelectsTheText();
    void returningFocusKeepsTheCursor();

  private:
    void paste(const QString& text) {
        QGuiApplication::clipboard()->setText(text);
        QTest::keyClick(m_box, Qt::Key_V, Qt::ControlModifier);
    }

    std::unique_ptr<QWidget> m_form;
    QLineEdit* m_other = nullptr;
    TextBox* m_box = nullptr;
};

void TstDecimalBox::init() {
    m_form = std::make_unique<QWidget>();
    auto* layout = new QVBoxLayout(m_form.get());
    m_other = new QLineEdit;
    m_box = new TextBox;
    m_box->setDecimal();
    layout->addWidget(m_other);
    layout->addWidget(m_box);
    m_form->show();
    QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
    m_box->setFocus();
}

void TstDecimalBox::typedText_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    QTest::newRow("digits") << u"12"_s << u"12"_s;
    QTest::newRow("point") << u"12.5"_s << u"12,5"_s;
    QTest::newRow("comma") << u"12,5"_s << u"12,5"_s;
    QTest::newRow("point alone") << u"."_s << u","_s;
    QTest::newRow("point and three digits") << u"1.234"_s << u"1,234"_s;
    QTest::newRow("two points") << u"1.2.3"_s << u"1,2,3"_s;
    QTest::newRow("letters") << u"ab.c"_s << u"AB,C"_s;
    QTest::newRow("minus") << u"-3.5"_s << u"-3,5"_s;
}

void TstDecimalBox::typedText() {
    QFETCH(QString, typed);
    QTest::keyClicks(m_box, typed);
    QTEST(m_box->text(), "shown");
}

void TstDecimalBox::pastedText_data() {
    QTest::addColumn<QString>("pasted");
    QTest::addColumn<QString>("shown");
    QTest::newRow("Brazilian form") << u"1.234,56"_s << u"1.234,56"_s;
    QTest::newRow("point form") << u"1234.56"_s << u"1234,56"_s;
    QTest::newRow("point form with thousands") << u"1,234.56"_s << u"1234,56"_s;
    QTest::newRow("several thousands, point form") << u"1,234,567.89"_s << u"1234567,89"_s;
    QTest::newRow("several thousands, Brazilian form") << u"1.234.567,89"_s << u"1.234.567,89"_s;
    QTest::newRow("thousands point") << u"1.234"_s << u"1.234"_s;
    QTest::newRow("more digits than thousands have") << u"1234.567"_s << u"1234,567"_s;
    QTest::newRow("no thousands begin with zero") << u"0.125"_s << u"0,125"_s;
    QTest::newRow("one decimal") << u"12.5"_s << u"12,5"_s;
    QTest::newRow("four decimals") << u"1.2345"_s << u"1,2345"_s;
    QTest::newRow("point first") << u".5"_s << u",5"_s;
    QTest::newRow("point first, three decimals") << u".125"_s << u",125"_s;
    QTest::newRow("point last") << u"12."_s << u"12,"_s;
    QTest::newRow("negative point form") << u"-1234.56"_s << u"-1234,56"_s;
    QTest::newRow("negative thousands") << u"-1.234"_s << u"-1.234"_s;
    QTest::newRow("blanks around") << u" 12.5 "_s << u"12,5"_s;
    QTest::newRow("a point alone") << u"."_s << u","_s;
    QTest::newRow("words") << u"abc. d"_s << u"ABC. D"_s;
    QTest::newRow("a date") << u"1.2.2024"_s << u"1.2.2024"_s;
}

void TstDecimalBox::pastedText() {
    QFETCH(QString, pasted);
    paste(pasted);
    QTEST(m_box->text(), "shown");
}

void TstDecimalBox::pastedIntoText_data() {
    QTest::addColumn<QString>("before");
    QTest::addColumn<int>("cursor");
    QTest::addColumn<QString>("pasted");
    QTest::addColumn<QString>("shown");
    QTest::newRow("at the end") << u"1"_s << 1 << u"2.5"_s << u"12,5"_s;
    QTest::newRow("at the start") << u"5"_s << 0 << u"2."_s << u"2,5"_s;
    QTest::newRow("in the middle") << u"1.234"_s << 5 << u"5.5"_s << u"1.2345,5"_s;
    QTest::newRow("same digits") << u"11"_s << 1 << u"1.1"_s << u"11,11"_s;
}

void TstDecimalBox::pastedIntoText() {
    QFETCH(QString, before);
    QFETCH(int, cursor);
    QFETCH(QString, pasted);
    m_box->showText(before);
    m_box->setCursorPosition(cursor);
    paste(pasted);
    QTEST(m_box->text(), "shown");
}

void TstDecimalBox::cursorStandsBehindWhatWasPutIn() {
    m_box->showText(u"9"_s);
    m_box->setCursorPosition(0);
    paste(u"1,234.5"_s);
    QCOMPARE(m_box->text(), u"1234,59"_s);
    QCOMPARE(m_box->cursorPosition(), 6);
    QTest::keyClicks(m_box, u"0"_s);
    QCOMPARE(m_box->text(), u"1234,509"_s);
}

// "1.23" on the way from "1.234,56" to "1.239" is no 1,23.
void TstDecimalBox::deletingKeepsThePointsBetweenThousands() {
    m_box->showText(u"1.234,56"_s);
    for (const QString& left : {u"1.234,5"_s, u"1.234,"_s, u"1.234"_s, u"1.23"_s, u"1.2"_s, u"1."_s}) {
        QTest::keyClick(m_box, Qt::Key_Backspace);
        QCOMPARE(m_box->text(), left);
    }
    QTest::keyClicks(m_box, u"239"_s);
    QCOMPARE(m_box->text(), u"1.239"_s);
}

void TstDecimalBox::shownTextIsLeftAlone() {
    m_box->showText(u"12.5"_s);
    QCOMPARE(m_box->text(), u"12.5"_s);
}

void TstDecimalBox::otherBoxesKeepThePoint() {
    TextBox box;
    QTest::keyClicks(&box, u"1.5l"_s);
    QCOMPARE(box.text(), u"1.5L"_s);
}

void TstDecimalBox::focusSelectsTheText() {
    m_box->setSelectsOnFocus();
    m_box->showText(u"12,50"_s);
    m_other->setFocus();
    QTest::keyClick(m_other, Qt::Key_Tab);
    QCOMPARE(m_box->selectedText(), u"12,50"_s);
    m_other->setFocus();
    QTest::mouseClick(m_box, Qt::LeftButton, {}, m_box->rect().center());
    QCOMPARE(m_box->selectedText(), u"12,50"_s);
    QTest::mouseClick(m_box, Qt::LeftButton, {}, m_box->rect().center());
    QCOMPARE(m_box->selectedText(), QString()); // a second click places the cursor
    m_other->setFocus();
    m_box->setFocus();
    QCOMPARE(m_box->selectedText(), u"12,50"_s);
}

void TstDecimalBox::returningFocusKeepsTheCursor() {
    m_box->setSelectsOnFocus();
    m_box->showText(u"12,50"_s);
    m_box->setCursorPosition(2);
    QWidget window;
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    m_form->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
    QVERIFY(m_box->hasFocus());
    QCOMPARE(m_box->selectedText(), QString());
    QCOMPARE(m_box->cursorPosition(), 2);
}

QTEST_MAIN(TstDecimalBox)
#include "tst_decimal_box.moc"
