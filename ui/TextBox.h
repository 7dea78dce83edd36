#pragma once

#include <QLineEdit>

namespace tarvessa {

class TextBoxValidator;

/// A one-line text box in which whatever comes in by hand (typed, pasted, dropped, composed, set by an
/// assistive tool) follows the keyboard convention: upper case, "´" for an apostrophe, no control characters.
class TextBox : public QLineEdit {
    Q_OBJECT

  public:
    explicit TextBox(QWidget* parent = nullptr);

    /// Shows a text of the program's own, such as a stored description, letter by letter.
    void showText(const QString& text);

    /// The text without apostrophes, "´" in their place, for a look-up: a shown text may hold some.
    QString lookUpText() const;

    /// Makes the box one for decimal numbers: what is put in by hand takes the comma as its decimal separator
    /// (see decimalForm). What was in the box before is left as it is; no other text is refused.
    void setDecimal();

    /// Makes the box select its whole text when the focus comes by key, by mouse or from the program.
    void setSelectsOnFocus();

    /// The text as the convention has it.
    static QString conventional(const QString& text);

    /// A text put into a decimal box in one go: a lone point becomes a comma, a number in point form
    /// ("1234.56", "1,234.56", "0.125") its comma form ("1234,56", "1234,56", "0,125"). A number that reads
    /// in Brazilian form
    /// ("1.234,56", "1.234", "12,5") and what is no number stay.
    static QString decimalForm(const QString& piece);

  protected:
    void focusInEvent(QFocusEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    TextBoxValidator* m_validator;
    bool m_selectsOnFocus = false;
    bool m_focusedByPress = false;
};

} // namespace tarvessa
