#include "support/Amounts.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace tarvessa::test {

qint64 cents(const QString& pointForm) {
    if (pointForm.isEmpty())
        return 0;
    const bool negative = pointForm.startsWith(u'-');
    const QStringList parts = (negative ? pointForm.mid(1) : pointForm).split(u'.');
    const qint64 value =
        parts[0].toLongLong() * 100 + (parts.size() > 1 ? parts[1].leftJustified(2, u'0').toLongLong() : 0);
    return negative ? -value : value;
}

qint64 centsOfHundredThousandths(qint64 value) {
    return proportion(value, 1, 1000);
}

qint64 proportion(qint64 a, qint64 b, qint64 c) {
    const bool negative = (a < 0) != (b < 0) ? c > 0 : c < 0;
    const qint64 n = qAbs(a * b);
    const qint64 d = qAbs(c);
    const qint64 magnitude = (2 * n + d) / (2 * d);
    return negative ? -magnitude : magnitude;
}

QString onScreen(qint64 value, int decimals) {
    qint64 unit = 1;
    for (int i = 0; i < decimals; ++i)
        unit *= 10;
    QString whole = QString::number(qAbs(value) / unit);
    for (qsizetype i = whole.size() - 3; i > 0; i -= 3)
        whole.insert(i, u'.');
    return (value < 0 ? u"-"_s : QString()) + whole + u","_s +
           QString::number(qAbs(value) % unit).rightJustified(decimals, u'0');
}

QString inPointForm(qint64 value, int decimals) {
    QString text = onScreen(qAbs(value), decimals).remove(u'.').replace(u',', u'.');
    while (text.endsWith(u'0'))
        text.chop(1);
    if (text.endsWith(u'.'))
        text.chop(1);
    return (value < 0 ? u"-"_s : u" "_s) + text;
}

} // namespace tarvessa::test
