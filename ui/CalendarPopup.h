#pragma once

#include <QDate>
#include <QFrame>

class QCalendarWidget;

namespace tarvessa {

/// A month's calendar that drops down from a box: arrows and the mouse choose a day, Page Up and Page Down
/// turn the month, Enter or a click takes the day, Escape and a click elsewhere take none. Frees itself when
/// closed.
class CalendarPopup : public QFrame {
    Q_OBJECT

  public:
    CalendarPopup(QDate date, QWidget* parent);

    /// Opens below `box`, or above it where the screen ends.
    void showBelow(const QWidget* box);

  Q_SIGNALS:
    void chosen(QDate date);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void take(QDate date);

    QCalendarWidget* m_calendar;
};

} // namespace tarvessa
