#include "ui/TextBox.h"

#include <QFocusEvent>
#include <QMouseEvent>
#include <QValidator>

#include <algorithm>

namespace tarvessa {

/// Applies the convention to every text, whichever way it is entered.
class TextBoxValidator : public QValidator {
  public:
    using QValidator::QValidator;

    State validate(QString& input, int& cursor) const override {
        if (m_active) {
            cursor = static_cast<int>(TextBox::conventional(input.first(cursor)).size());
            input = TextBox::conventional(input);
            if (m_decimal)
                putDecimalForm(input, cursor);
        }
        m_before = input;
        return Acceptable;
    }

    void setActive(bool active) { m_active = active; }
    void setDecimal() { m_decimal = true; }

    /// The part that the next entered text replaces. Set after every change of the selection, which Qt
    /// reports after it has validated the text that replaced a selection.
    void setSelection(qsizetype start, qsizetype length) {
        m_selectionStart = start;
        m_selectionLength = length;
    }

  private:
    // Only the new part is converted: a point between thousands must not become a comma when a digit behind
    // it is deleted.
    void putDecimalForm(QString& input, int& cursor) const {
        const qsizetype shorter = std::min(input.size(), m_before.size());
        const bool replaces = m_selectionLength > 0;
        const qsizetype longestHead = replaces ? std::min(shorter, m_selectionStart) : shorter;
        qsizetype head = 0;
        while (head < longestHead && input[head] == m_before[head])
            ++head;
        const qsizetype behind = m_before.size() - m_selectionStart - m_selectionLength;
        const qsizetype longestTail = replaces ? std::min(shorter - head, behind) : shorter - head;
        qsizetype tail = 0;
        while (tail < longestTail && input[input.size() - 1 - tail] == m_before[m_before.size() - 1 - tail])
            ++tail;
        const qsizetype length = input.size() - head - tail;
        const QString piece = TextBox::decimalForm(input.sliced(head, length));
        if (cursor >= head + length)
            cursor += static_cast<int>(piece.size() - length);
        input.replace(head, length, piece);
    }

    bool m_active = true;
    bool m_decimal = false;
    mutable QString m_before;
    qsizetype m_selectionStart = 0;
    qsizetype m_selectionLength = 0;
};

TextBox::TextBox(QWidget* parent) : QLineEdit(parent), m_validator(new TextBoxValidator(this)) {
    setValidator(m_validator);
    connect(this, &QLineEdit::selectionChanged, this,
            [this] { m_validator->setSelection(selectionStart(), selectionEnd() - selectionStart()); });
}

void TextBox::showText(const QString& text) {
    m_validator->setActive(false);
    setText(text);
    m_validator->setActive(true);
}

void TextBox::setDecimal() {
    m_validator->setDecimal();
}

void TextBox::setSelectsOnFocus() {
    m_selectsOnFocus = true;
}

QString TextBox::lookUpText() const {
    return text().replace(u'\'', u'´');
}

QString TextBox::conventional(const QString& text) {
    constexpr char16_t firstPrintable = 0x20;
    const auto breaksLine = [](QChar c) {
        return c == QChar::LineSeparator || c == QChar::ParagraphSeparator;
    };
    QString result;
    result.reserve(text.size());
    for (const QChar c : text.toUpper())
        if (c == u'\'')
            result += QChar(u'´');
        else if (c.unicode() >= firstPrintable && !breaksLine(c))
            result += c;
    return result;
}

QString TextBox::decimalForm(const QString& piece) {
    constexpr qsizetype group = 3;
    const QString number = piece.trimmed();
    const qsizetype point = number.indexOf(u'.');
    if (point < 0 || number.indexOf(u'.', point + 1) >= 0 || number.indexOf(u',', point) >= 0)
        return piece;
    const qsizetype digits = number.startsWith(u'-') || number.startsWith(u'+') ? 1 : 0;
    const qsizetype whole = point - digits;
    const bool thousands = number.size() - point - 1 == group && whole >= 1 && whole <= group &&
                           number[digits] != u'0' && !number.contains(u',');
    if (thousands)
        return piece;
    const auto belongs = [](QChar c) { return (c >= u'0' && c <= u'9') || c == u'.' || c == u','; };
    if (!std::all_of(number.begin() + digits, number.end(), belongs))
        return piece;
    QString form = number;
    form.remove(u',');
    return form.replace(u'.', u',');
}

void TextBox::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    m_focusedByPress = event->reason() == Qt::MouseFocusReason;
    const bool returned =
        event->reason() == Qt::ActiveWindowFocusReason || event->reason() == Qt::PopupFocusReason;
    if (m_selectsOnFocus && !returned)
        selectAll();
}

// The press that gave the focus has also placed the cursor. A drag makes a selection of its own, which stays.
void TextBox::mouseReleaseEvent(QMouseEvent* event) {
    QLineEdit::mouseReleaseEvent(event);
    if (m_selectsOnFocus && m_focusedByPress && !hasSelectedText())
        selectAll();
    m_focusedByPress = false;
}

} // namespace tarvessa
