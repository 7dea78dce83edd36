#include "printing/pages/DateMask.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace tarvessa::report {

QString dateByMask(const QString& text, const QString& mask) {
    static const QRegularExpression form(u"^([0-9]{4})-([0-9]{2})-([0-9]{2})( .*)?$"_s);
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch())
        return text;
    if (match.captured(1) == "0000"_L1 && match.captured(2) == "00"_L1 && match.captured(3) == "00"_L1)
        return {};
    QString result = mask;
    result.replace("yyyy"_L1, match.captured(1));
    result.replace("yy"_L1, match.captured(1).last(2));
    result.replace("mm"_L1, match.captured(2));
    result.replace("dd"_L1, match.captured(3));
    return result;
}

} // namespace tarvessa::report
