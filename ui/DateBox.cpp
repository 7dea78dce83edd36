#include "ui/DateBox.h"

#include "ui/CalendarPopup.h"
#include "ui/Pictures.h"

#include <QAction>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QStyle>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

const QString dateMask = u"00/00/0000;_"_s;
const QString dateFormat = u"dd/MM/yyyy"_s;
// What the line edit itself keeps free around its text and its picture.
constexpr int paddings = 6;

} // namespace

DateBox::DateBox(QWidget* parent) : QLineEdit(parent) {
    setInputMask(dateMask);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    auto* calendar = addAction(pictures::calendar(), QLineEdit::TrailingPosition);
    calendar->setText(u"Calendário"_s);
    calendar->setToolTip(u"Calendário (Alt+Seta para baixo)"_s);
    connect(calendar, &QAction::triggered, this, &DateBox::openCalendar);
}

QDate DateBox::date() const {
    // The mask drops blanks from the text; only all ten characters make a date.
    const QString typed = text();
    return typed.size() == dateFormat.size() ? QDate::fromString(typed, dateFormat) : QDate();
}

void DateBox::setDate(QDate date) {
    setText(date.isValid() ? date.toString(dateFormat) : QString());
}

void DateBox::openCalendar() {
    setFocus(Qt::PopupFocusReason);
    auto* popup = new CalendarPopup(date().isValid() ? date() : QDate::currentDate(), this);
    connect(popup, &CalendarPopup::chosen, this, [this](QDate chosen) {
        setDate(chosen);
        selectAll();
    });
    popup->showBelow(this);
}

QSize DateBox::sizeHint() const {
    const int picture = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    const int digits = fontMetrics().horizontalAdvance(u"00/00/0000_"_s);
    return {digits + picture + 2 * paddings + picture / 2, QLineEdit::sizeHint().height()};
}

void DateBox::keyPressEvent(QKeyEvent* event) {
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    if (event->key() == Qt::Key_Down && modifiers == Qt::AltModifier)
        openCalendar();
    else if (event->key() == Qt::Key_Up && modifiers == Qt::NoModifier)
        stepDay(1);
    else if (event->key() == Qt::Key_Down && modifiers == Qt::NoModifier)
        stepDay(-1);
    else
        QLineEdit::keyPressEvent(event);
}

// What is typed next replaces the date, as in any other box; coming back to the window leaves half a date as
// it was.
void DateBox::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    const Qt::FocusReason reason = event->reason();
    const bool back = reason == Qt::ActiveWindowFocusReason && isModified();
    if (!back && reason != Qt::MouseFocusReason && reason != Qt::PopupFocusReason)
        selectAll();
}

void DateBox::stepDay(int days) {
    const QDate stepped = date().addDays(days);
    constexpr int lastYear = 9999; // four digits
    if (!stepped.isValid() || stepped.year() < 1 || stepped.year() > lastYear)
        return;
    setDate(stepped);
    selectAll();
}

} // namespace tarvessa
