#pragma once

#include <QLineEdit>

namespace tarvessa {

/// A one-line text box in which whatever comes in by hand (typed, pasted, dropped, composed, set by an
/// assistive tool) follows the keyboard convention: upper case, "´" for an apostrophe, no control characters.
class TextBox : public QLineEdit {
    Q_OBJECT

  public:
    explicit TextBox(QWidget* parent = nullptr);

    /// Shows a text of the program's own, such as a stored description, letter by letter.
    void showText(const QString& text);

    /// The text as the convention has it.
    static QString conventional(const QString& text);
};

} // namespace tarvessa
