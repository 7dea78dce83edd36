#include "ui/CalendarPopup.h"

#include <QCalendarWidget>
#include <QKeyEvent>
#include <QLocale>
#include <QScreen>
#include <QTableView>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tarvessa {

CalendarPopup::CalendarPopup(QDate date, QWidget* parent)
    : QFrame(parent, Qt::Popup), m_calendar(new QCalendarWidget(this)) {
    setAttribute(Qt::WA_DeleteOnClose);
    setFrameShape(QFrame::StyledPanel);
    setAccessibleName(u"Calendário"_s);
    auto* page = new QVBoxLayout(this);
    page->setContentsMargins(1, 1, 1, 1);
    page->addWidget(m_calendar);
    m_calendar->setLocale(QLocale(QLocale::Portuguese, QLocale::Brazil));
    m_calendar->setFirstDayOfWeek(Qt::Sunday);
    m_calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    m_calendar->setGridVisible(true);
    // Dates are typed in the box, not in the calendar.
    m_calendar->setDateEditEnabled(false);
    m_calendar->setMinimumDate(QDate(1, 1, 1));
    m_calendar->setSelectedDate(date);
    m_calendar->setAccessibleName(u"Calendário"_s);
    connect(m_calendar, &QCalendarWidget::clicked, this, &CalendarPopup::take);
    connect(m_calendar, &QCalendarWidget::activated, this, &CalendarPopup::take);
    for (auto* view : m_calendar->findChildren<QTableView*>()) {
        view->installEventFilter(this);
        setFocusProxy(view);
    }
}

void CalendarPopup::showBelow(const QWidget* box) {
    adjustSize();
    const QRect screen = box->screen()->availableGeometry();
    QPoint place = box->mapToGlobal(QPoint(0, box->height()));
    if (place.y() + height() > screen.bottom())
        place.setY(box->mapToGlobal(QPoint()).y() - height());
    place.setX(qMax(screen.left(), qMin(place.x(), screen.right() - width())));
    move(place);
    show();
    setFocus();
}

// QCalendarWidget uses Escape to undo a choice; here it closes the popup.
bool CalendarPopup::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || static_cast<QKeyEvent*>(event)->key() != Qt::Key_Escape)
        return QFrame::eventFilter(watched, event);
    close();
    return true;
}

// A double click sends both signals; the first has already closed the popup.
void CalendarPopup::take(QDate date) {
    if (!isVisible())
        return;
    close();
    Q_EMIT chosen(date);
}

} // namespace tarvessa
