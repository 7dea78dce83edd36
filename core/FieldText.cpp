#include "core/FieldText.h"

#include "base/Formata.h"

#include <QDate>

using namespace Qt::StringLiterals;

namespace tarvessa {

QString maskedText(const odbc::Field& field, QStringView mask) {
    return field.isNull() ? QString() : Formata(field.decimal(), mask);
}

QString shortDateText(const odbc::Field& field) {
    constexpr int yearOfNoDate = 1901;
    constexpr qsizetype length = 10; // "yyyy-mm-dd"; the time of a date-time column follows it
    const QString text = field.text().left(length);
    const QDate date = QDate::fromString(text, Qt::ISODate);
    if (!date.isValid() || date.year() == yearOfNoDate)
        return {};
    return text.sliced(8, 2) + u'/' + text.sliced(5, 2) + u'/' + text.sliced(2, 2);
}

} // namespace tarvessa
