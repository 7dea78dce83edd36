#include "odbc/Field.h"

#include "base/DecimalText.h"
#include "base/RuntimeError.h"

using namespace Qt::StringLiterals;

namespace tarvessa::odbc {

qint64 Field::integer() const {
    qsizetype end = 0;
    const QString plain = hasExponentLetter(m_text) ? withoutExponent(m_text) : m_text;
    const QStringView text = QStringView(plain).trimmed();
    if (end < text.size() && (text[end] == u'-' || text[end] == u'+'))
        ++end;
    const qsizetype firstDigit = end;
    while (end < text.size() && text[end] >= u'0' && text[end] <= u'9')
        ++end;
    if (end == firstDigit)
        return 0;
    bool fits = false;
    const qint64 value = text.first(end).toLongLong(&fits);
    if (!fits)
        throw RuntimeError(ErrorNumber::Overflow, u"Estouro: o número %1 é grande demais."_s.arg(m_text));
    return value;
}

} // namespace tarvessa::odbc
