#include "sheets/CsvText.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace tarvessa::sheet {

QString withoutFormula(const QString& text) {
    constexpr QStringView beginnings = u"=+-@\t\r\n";
    if (text.isEmpty() || !beginnings.contains(text[0]))
        return text;
    static const QRegularExpression number(u"\\A[+-][0-9]+(\\.[0-9]{3})*([.,][0-9]+)?%?\\z"_s);
    return number.match(text).hasMatch() ? text : u'\'' + text;
}

} // namespace tarvessa::sheet
