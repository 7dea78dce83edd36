#include "platform/TextBox.h"

#include <QValidator>

namespace tarvessa {

namespace {

class ConventionValidator : public QValidator {
  public:
    using QValidator::QValidator;

    State validate(QString& input, int& cursor) const override {
        if (!m_active)
            return Acceptable;
        cursor = static_cast<int>(TextBox::conventional(input.first(cursor)).size());
        input = TextBox::conventional(input);
        return Acceptable;
    }

    void setActive(bool active) { m_active = active; }

  private:
    bool m_active = true;
};

} // namespace

TextBox::TextBox(QWidget* parent) : QLineEdit(parent) {
    setValidator(new ConventionValidator(this));
}

void TextBox::showText(const QString& text) {
    auto* validator = static_cast<ConventionValidator*>(const_cast<QValidator*>(this->validator()));
    validator->setActive(false);
    setText(text);
    validator->setActive(true);
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

} // namespace tarvessa
