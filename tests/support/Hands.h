#pragma once

#include <QList>
#include <QPoint>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <functional>

class QComboBox;
class QLineEdit;
class QPushButton;

namespace tarvessa {
class Grid;
}

namespace tarvessa::test {

/// The hands and eyes of an operator in front of one window. Controls are named by their object names; a name
/// that the window does not have ends the test program. Rows of a grid count from 1, row 0 is the header.
class Hands {
  public:
    explicit Hands(QWidget* window = nullptr) : m_window(window) {}

    /// The window in front; null for none.
    QWidget* window() const { return m_window; }

    // What the operator sees

    template <typename Control = QWidget>
    Control* control(const QString& name) const {
        auto* found = m_window->findChild<Control*>(name);
        if (!found)
            noControl(name);
        return found;
    }
    QLineEdit* box(const QString& name) const;
    QComboBox* list(const QString& name) const;
    QPushButton* button(const QString& name) const;
    Grid* grid(const QString& name = QStringLiteral("Grid1")) const;

    /// The name of the control that has the focus; empty for none.
    static QString focus();

    // What the operator does; each returns when all that is under way has happened.

    /// Clicks go through the window to whatever lies under the pointer. The cell is scrolled into view first.
    void click(Grid* grid, int row, int column) const;
    void click(int row, int column) const { click(grid(), row, column); }
    void click(const QString& grid, int row, int column) const { click(this->grid(grid), row, column); }
    void clickTwice(Grid* grid, int row, int column) const;
    void clickTwice(int row, int column) const { clickTwice(grid(), row, column); }

    /// A click on a button; a disabled one fails the test.
    void press(const QString& button) const;

    /// A key to the control that has the focus.
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const;

    /// Types a text into the control that has the focus, one key a character.
    void type(const QString& text) const;

    /// Puts a text in the place of the focused box's own, by the clipboard.
    void paste(const QString& text) const;

    /// Gives the box the focus and types a text in the place of its own.
    void fill(const QString& box, const QString& text) const;

    /// Chooses the item of the list that begins with `start`, by key.
    void choose(const QString& list, const QString& start) const;

    /// Lets everything happen that is under way; a box that closed gives the window back its activity, as the
    /// desktop would do.
    void settle() const;

  protected:
    void setWindow(QWidget* window) { m_window = window; }

  private:
    [[noreturn]] static void noControl(const QString& name);
    QPoint place(Grid* grid, int row, int column) const;
    void clickAt(const QWidget* widget, const QPoint& point) const;

    QWidget* m_window;
};

/// A control of a form by its name; the test program ends when there is none.
template <typename Control>
Control* control(QWidget* form, const char* name) {
    return Hands(form).control<Control>(QString::fromUtf8(name));
}

/// Puts a text into a control where its cursor stands, by the clipboard.
void pasteInto(QWidget* control, const QString& text);

/// Shows a form and gives it the focus as a window manager would; false when it does not get it.
bool showActive(QWidget* form);

/// Texts of one row, the header being row 0; of all data rows; of one column over all data rows.
QStringList cells(const Grid* grid, int row);
QList<QStringList> allCells(const Grid* grid);
QStringList columnCells(const Grid* grid, int column);

/// The first data row with this text in the column; 0 for none.
int rowOf(const Grid* grid, int column, const QString& text);

/// Widths of all columns in twips.
QList<int> columnWidths(const Grid* grid);

/// How the captions stand, one mark per column as in the grid's format: "<" left, ">" right, "^" centre.
/// Where there are rows the cells of the first one must stand alike; "?" for a column where they do not.
QString alignments(const Grid* grid);

/// Runs it inside the program's own event loop; gives the code with which that ended, -1 when nothing ended
/// it.
int runInEventLoop(const std::function<void()>& action);

} // namespace tarvessa::test
