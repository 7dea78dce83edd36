#include "ui/CalendarPopup.h"
#include "ui/DateBox.h"

#include <QAction>
#include <QApplication>
#include <QCalendarWidget>
#include <QClipboard>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace tarvessa;

/// The date box by keyboard, mouse and clipboard.
class TstDateBox : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void dateOfTheText_data();
    void dateOfTheText();
    void typedDigits_data();
    void typedDigits();
    void pastedDate_data();
    void pastedDate();
    void focusSelectsTheDate();
    void oneDigitIsPaddedOnLeaving();
    void correctedDigitKeepsItsPlace();
    void arrowsChangeNothing();
    void calendarByKeyboard();
    void calendarEscapeChangesNothing();
    void calendarByMouse();
    void calendarOpensOnTodayWithoutADate();
    void wholeDateFits();

  private:
    CalendarPopup* openedCalendar() const;

    std::unique_ptr<QWidget> m_form;
    DateBox* m_box = nullptr;
    QPushButton* m_other = nullptr;
};

void TstDateBox::init() {
    m_form = std::make_unique<QWidget>();
    auto* page = new QVBoxLayout(m_form.get());
    m_other = new QPushButton(u"Outro"_s);
    m_box = new DateBox;
    page->addWidget(m_other);
    page->addWidget(m_box);
    m_form->show();
    m_form->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
    m_box->setFocus();
}

void TstDateBox::cleanup() {
    m_form.reset();
}

CalendarPopup* TstDateBox::openedCalendar() const {
    return qobject_cast<CalendarPopup*>(QApplication::activePopupWidget());
}

void TstDateBox::dateOfTheText_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QDate>("date");
    QTest::newRow("a day") << u"05/03/2024"_s << QDate(2024, 3, 5);
    QTest::newRow("leap day") << u"29/02/2024"_s << QDate(2024, 2, 29);
    QTest::newRow("no leap day") << u"29/02/2023"_s << QDate();
    QTest::newRow("no such day") << u"31/02/2024"_s << QDate();
    QTest::newRow("zeros") << u"00/00/0000"_s << QDate();
    QTest::newRow("no such month") << u"01/13/2024"_s << QDate();
    QTest::newRow("nothing") << QString() << QDate();
    QTest::newRow("half a date") << u"05/03/20"_s << QDate();
    QTest::newRow("day only") << u"05"_s << QDate();
    QTest::newRow("one digit of the day") << u"5/03/2024"_s << QDate(2024, 3, 5);
    QTest::newRow("one digit each") << u"5/3/2024"_s << QDate(2024, 3, 5);
    QTest::newRow("no day") << u"/03/2024"_s << QDate();
    QTest::newRow("year of two digits") << u"05/03/24"_s << QDate();
}

void TstDateBox::dateOfTheText() {
    QFETCH(QString, text);
    m_box->setText(text);
    QTEST(m_box->date(), "date");
}

void TstDateBox::typedDigits_data() {
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("shown");
    QTest::newRow("digits alone") << u"05032024"_s << u"05/03/2024"_s;
    QTest::newRow("with slashes") << u"05/03/2024"_s << u"05/03/2024"_s;
    QTest::newRow("letters are refused") << u"a0b5c0d3-2+0'2 4"_s << u"05/03/2024"_s;
    QTest::newRow("no more than eight") << u"050320249"_s << u"05/03/2024"_s;
    QTest::newRow("any digits") << u"99999999"_s << u"99/99/9999"_s;
    QTest::newRow("one digit each") << u"1/2/2026"_s << u"01/02/2026"_s;
    QTest::newRow("one digit of the day") << u"1/12/2026"_s << u"01/12/2026"_s;
    QTest::newRow("one digit of the month") << u"11/2/2026"_s << u"11/02/2026"_s;
    QTest::newRow("half") << u"0503"_s << u"05/03/____"_s;
}

void TstDateBox::typedDigits() {
    QFETCH(QString, keys);
    QTest::keyClicks(m_box, keys);
    QTEST(m_box->displayText(), "shown");
}

void TstDateBox::pastedDate_data() {
    QTest::addColumn<QString>("pasted");
    QTest::newRow("date") << u"05/03/2024"_s;
    QTest::newRow("digits") << u"05032024"_s;
    QTest::newRow("one digit each") << u"5/3/2024"_s;
}

void TstDateBox::pastedDate() {
    QFETCH(QString, pasted);
    m_box->setDate(QDate(1999, 12, 31));
    m_box->selectAll();
    QApplication::clipboard()->setText(pasted);
    m_box->paste();
    QCOMPARE(m_box->date(), QDate(2024, 3, 5));
    QCOMPARE(m_box->displayText(), u"05/03/2024"_s);
}

void TstDateBox::focusSelectsTheDate() {
    m_box->setDate(QDate(2024, 3, 5));
    m_other->setFocus();
    QTest::keyClick(m_other, Qt::Key_Tab);
    QVERIFY(m_box->hasFocus());
    QCOMPARE(m_box->selectedText(), u"05/03/2024"_s);
    QTest::keyClicks(m_box, u"01042023"_s);
    QCOMPARE(m_box->date(), QDate(2023, 4, 1));
}

void TstDateBox::oneDigitIsPaddedOnLeaving() {
    m_box->setFocus();
    m_box->setText(u"5/03/2024"_s);
    QTest::keyClick(m_box, Qt::Key_Tab);
    QVERIFY(!m_box->hasFocus());
    QCOMPARE(m_box->displayText(), u"05/03/2024"_s);
}

void TstDateBox::correctedDigitKeepsItsPlace() {
    m_box->setDate(QDate(2024, 3, 15));
    m_box->setCursorPosition(1);
    QTest::keyClick(m_box, Qt::Key_Backspace);
    QCOMPARE(m_box->date(), QDate(2024, 3, 5));
    QTest::keyClicks(m_box, u"2"_s);
    QCOMPARE(m_box->date(), QDate(2024, 3, 25));
}

void TstDateBox::arrowsChangeNothing() {
    m_box->setDate(QDate(2024, 3, 5));
    for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down}) {
        QTest::keyClick(m_box, key);
        QCOMPARE(m_box->date(), QDate(2024, 3, 5));
        QVERIFY(m_box->hasFocus());
    }
}

void TstDateBox::calendarByKeyboard() {
    m_box->setDate(QDate(2024, 2, 28));
    QTest::keyClick(m_box, Qt::Key_Down, Qt::AltModifier);
    CalendarPopup* popup = openedCalendar();
    QVERIFY(popup);
    QCOMPARE(popup->findChild<QCalendarWidget*>()->selectedDate(), QDate(2024, 2, 28));
    QWidget* days = popup->focusWidget();
    QVERIFY(days);
    QTest::keyClick(days, Qt::Key_Right);
    QTest::keyClick(days, Qt::Key_Right);
    QTest::keyClick(days, Qt::Key_Return);
    QTRY_VERIFY(!openedCalendar());
    QCOMPARE(m_box->date(), QDate(2024, 3, 1));
    QVERIFY(m_box->hasFocus());
    QTest::keyClicks(m_box, u"05032024"_s);
    QCOMPARE(m_box->date(), QDate(2024, 3, 5));
}

void TstDateBox::calendarEscapeChangesNothing() {
    m_box->setDate(QDate(2024, 2, 28));
    QTest::keyClick(m_box, Qt::Key_Down, Qt::AltModifier);
    QVERIFY(openedCalendar());
    QTest::keyClick(openedCalendar()->focusWidget(), Qt::Key_Right);
    QTest::keyClick(openedCalendar()->focusWidget(), Qt::Key_Escape);
    QTRY_VERIFY(!openedCalendar());
    QCOMPARE(m_box->date(), QDate(2024, 2, 28));
    QVERIFY(m_form->isVisible());
    QVERIFY(m_box->hasFocus());
}

void TstDateBox::calendarByMouse() {
    m_box->setDate(QDate(2024, 2, 28));
    m_other->setFocus();
    m_box->actions().first()->trigger();
    CalendarPopup* popup = openedCalendar();
    QVERIFY(popup);
    auto* days = popup->findChild<QTableView*>();
    for (int row = 0; row < days->model()->rowCount(); ++row)
        for (int column = 0; column < days->model()->columnCount(); ++column) {
            const QModelIndex cell = days->model()->index(row, column);
            if (row > 1 && cell.data().toString() == u"15" && openedCalendar())
                QTest::mouseClick(days->viewport(), Qt::LeftButton, {}, days->visualRect(cell).center());
        }
    QTRY_VERIFY(!openedCalendar());
    QCOMPARE(m_box->date(), QDate(2024, 2, 15));
    QVERIFY(m_box->hasFocus());
}

void TstDateBox::calendarOpensOnTodayWithoutADate() {
    m_box->setText(u"31/02/2024"_s);
    m_box->openCalendar();
    QVERIFY(openedCalendar());
    QCOMPARE(openedCalendar()->findChild<QCalendarWidget*>()->selectedDate(), QDate::currentDate());
    QTest::keyClick(openedCalendar()->focusWidget(), Qt::Key_Escape);
    QCOMPARE(m_box->displayText(), u"31/02/2024"_s);
}

void TstDateBox::wholeDateFits() {
    m_box->setDate(QDate(2028, 8, 28));
    const auto cursorAt = [this](int position) {
        m_box->setCursorPosition(position);
        return m_box->inputMethodQuery(Qt::ImCursorRectangle).toRect().left();
    };
    // Were the text scrolled, its end would stand less than its width from where it starts.
    const int start = cursorAt(0);
    QVERIFY(cursorAt(static_cast<int>(m_box->text().size())) - start >=
            m_box->fontMetrics().horizontalAdvance(m_box->text()) - 1);
}

QTEST_MAIN(TstDateBox)
#include "tst_datebox.moc"
