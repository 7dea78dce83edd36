#include "core/FieldText.h"

#include "base/Formata.h"

#include <QDate>
#include <QStringBuilder>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

// -1 for a text that is not all digits. Quicker than the library's reading of a date, which takes longer than
// everything else in a row of a long search.
int wholeNumber(QStringView digits) {
    int number = 0;
    for (const QChar digit : digits) {
        if (digit < u'0' || digit > u'9')
            return -1;
        number = 10 * number + digit.unicode() - u'0';
    }
    return number;
}

} // namespace

QString maskedText(const odbc::Field& field, QStringView mask) {
    return field.isNull() ? QString() : Formata(field.decimal(), mask);
}

QString shortDateText(const odbc::Field& field) {
    constexpr int yearOfNoDate = 1901;
    constexpr qsizetype length = 10; // "yyyy-mm-dd"; the time of a date-time column follows it
    const QStringView text = QStringView(field.text()).left(length);
    if (text.size() < length || text[4] != u'-' || text[7] != u'-')
        return {};
    const QDate date(wholeNumber(text.first(4)), wholeNumber(text.sliced(5, 2)),
                     wholeNumber(text.sliced(8, 2)));
    if (!date.isValid() || date.year() < 1 || date.year() == yearOfNoDate)
        return {};
    return text.sliced(8, 2) % u'/' % text.sliced(5, 2) % u'/' % text.sliced(2, 2);
}

} // namespace tarvessa
