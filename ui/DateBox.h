#pragma once

#include <QDate>
#include <QLineEdit>

namespace tarvessa {

/// A date typed as dd/mm/yyyy into the places "__/__/____"; a day or month typed with one digit gets its
/// zero. Alt+Down or the picture at its end offers a calendar.
class DateBox : public QLineEdit {
    Q_OBJECT

  public:
    explicit DateBox(QWidget* parent = nullptr);

    /// The date shown; invalid while nothing, half a date, a year of less than four digits or a day that does
    /// not exist stands there.
    QDate date() const;

    /// Shows a date; an invalid one empties the box.
    void setDate(QDate date);

    /// Opens the calendar below the box, on the date shown or else today. What is chosen there goes into the
    /// box; Escape changes nothing.
    void openCalendar();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    void padParts();
};

} // namespace tarvessa
