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

    /// Shows a text that the program supplies, such as a stored description, unchanged.
    void showText(const QString& text);

    /// The text with "´" for each apostrophe, for a look-up: a text given to showText may hold apostrophes.
    QString lookUpText() const;

    /// Makes the box one for decimal numbers: what the operator enters takes the comma as its decimal
    /// separator (see decimalForm). Text that is already in the box stays unchanged, and no text is refused.
    void setDecimal();

    /// Makes the box select its whole text when the focus comes by key, by mouse or from the program.
    void setSelectsOnFocus();

    /// A text in upper case, with "´" for apostrophes and without control characters or line breaks.
    static QString conventional(const QString& text);

    /// A text that is put into a decimal box in one go. A lone point becomes a comma, and a number in point
    /// form
    /// ("1234.56", "1,234.56", "0.125") takes comma form ("1234,56", "1234,56", "0,125"). A number that is
    /// already in Brazilian form ("1.234,56", "1.234", "12,5") and any text that is not a number stay
    /// unchanged.
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
