#include "printing/pages/NumberMask.h"

#include "base/Formata.h"
#include "base/RuntimeError.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace tarvessa::report {

QString numberByMask(const QString& text, const QString& mask) {
    const bool isPercentage = text.endsWith(u'%');
    const QStringView number = QStringView(text).chopped(isPercentage ? 1 : 0).trimmed();
    if (number.isEmpty())
        return text;
    try {
        return Formata(Dinheiro::dePonto(number), mask) + (isPercentage ? u"%"_s : QString());
    } catch (const RuntimeError&) {
        static const QRegularExpression tooLarge(u"^[+-]?[0-9]+(\\.[0-9]*)?$"_s);
        return tooLarge.match(number).hasMatch() ? text.trimmed().replace(u'.', u',') : text;
    }
}

} // namespace tarvessa::report
