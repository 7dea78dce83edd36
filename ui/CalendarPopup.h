#pragma once

#include <QDate>
#include <QFrame>

class QCalendarWidget;

namespace tarvessa {

/// A calendar that drops down from a box. The arrow keys move between days, Page Up and Page Down between
/// months; Enter or a click chooses a day, Escape or a click elsewhere closes it without a choice. It deletes
/// itself when closed.
class CalendarPopup : public QFrame {
    Q_OBJECT

  public:
    /// Opens on `date`, which must be valid.
    CalendarPopup(QDate date, QWidget* parent);

    /// Shows the popup below `box`, or above it when there is no room below, and gives it the focus.
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
