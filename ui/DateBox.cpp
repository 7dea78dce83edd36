#include "ui/DateBox.h"

#include "base/Clock.h"
#include "ui/CalendarPopup.h"
#include "ui/Pictures.h"

#include <QAction>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QStyle>

#include <array>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

const QString dateMask = u"00/00/0000;_"_s;
constexpr QChar blank = u'_';
const QString dateFormat = u"dd/MM/yyyy"_s;
// Pixels that QLineEdit keeps free around its text and its picture.
constexpr int paddings = 6;

} // namespace

DateBox::DateBox(QWidget* parent) : QLineEdit(parent) {
    setInputMask(dateMask);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    auto* calendar = addAction(pictures::calendar(), QLineEdit::TrailingPosition);
    calendar->setText(u"Calendário"_s);
    calendar->setToolTip(u"Calendário (Alt+Seta para baixo)"_s);
    connect(this, &QLineEdit::textEdited, this, &DateBox::padParts);
    connect(calendar, &QAction::triggered, this, &DateBox::openCalendar);
}

QDate DateBox::date() const {
    // The text comes without the mask's blanks, so a day or month may have a single digit.
    constexpr qsizetype yearDigits = 4;
    const QStringList parts = text().split(u'/');
    if (parts.size() != 3 || parts[2].size() != yearDigits)
        return {};
    return {parts[2].toInt(), parts[1].toInt(), parts[0].toInt()};
}

void DateBox::setDate(QDate date) {
    setText(date.isValid() ? date.toString(dateFormat) : QString());
}

void DateBox::openCalendar() {
    setFocus(Qt::PopupFocusReason);
    auto* popup = new CalendarPopup(date().isValid() ? date() : clock::today(), this);
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
    else
        QLineEdit::keyPressEvent(event);
}

// The next typed character replaces the date. A half-typed date is not selected when its window becomes
// active again.
void DateBox::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    const Qt::FocusReason reason = event->reason();
    const bool back = reason == Qt::ActiveWindowFocusReason && isModified();
    if (!back && reason != Qt::MouseFocusReason && reason != Qt::PopupFocusReason)
        selectAll();
}

void DateBox::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    if (date().isValid() && text().size() < dateFormat.size())
        setDate(date());
}

// The cursor has left the day or the month with one digit in it.
void DateBox::padParts() {
    constexpr int digits = 2;
    constexpr std::array<int, 2> starts = {0, 3};
    const int cursor = cursorPosition();
    QString padded = displayText();
    for (const int start : starts) {
        QString part = padded.sliced(start, digits);
        part.remove(blank);
        if (cursor > start + digits && part.size() == 1)
            padded.replace(start, digits, u'0' + part);
    }
    if (padded == displayText())
        return;
    setText(padded);
    setModified(true);
    setCursorPosition(cursor);
}

} // namespace tarvessa
