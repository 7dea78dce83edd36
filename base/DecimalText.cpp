#include "base/DecimalText.h"

namespace tarvessa {

namespace {

// Beyond the range of a double, so that an absurd exponent costs no memory.
constexpr int largestExponent = 400;

qsizetype endOfDigits(QStringView text, qsizetype at) {
    while (at < text.size() && text[at] >= u'0' && text[at] <= u'9')
        ++at;
    return at;
}

qsizetype afterSign(QStringView text, qsizetype at) {
    return at < text.size() && (text[at] == u'-' || text[at] == u'+') ? at + 1 : at;
}

int exponentOf(QStringView signedDigits) {
    const qsizetype first = afterSign(signedDigits, 0);
    int value = 0;
    for (const QChar digit : signedDigits.sliced(first))
        value = qMin(value * 10 + (digit.unicode() - u'0'), largestExponent);
    return signedDigits[0] == u'-' ? -value : value;
}

} // namespace

QString withoutExponent(QStringView text) {
    const QStringView number = text.trimmed();
    const qsizetype start = afterSign(number, 0);
    const qsizetype point = endOfDigits(number, start);
    const bool hasPoint = point < number.size() && number[point] == u'.';
    const qsizetype mark = hasPoint ? endOfDigits(number, point + 1) : point;
    const qsizetype digitCount = mark - start - (hasPoint ? 1 : 0);
    if (digitCount == 0 || mark == number.size() || number[mark].toLower() != u'e')
        return text.toString();
    const qsizetype firstOfExponent = afterSign(number, mark + 1);
    if (firstOfExponent == number.size() || endOfDigits(number, firstOfExponent) != number.size())
        return text.toString();

    QString digits = number.sliced(start, point - start).toString();
    if (hasPoint)
        digits += number.sliced(point + 1, mark - point - 1);
    qsizetype wholeDigits = point - start + exponentOf(number.sliced(mark + 1));
    if (wholeDigits < 1) {
        digits.prepend(QString(1 - wholeDigits, u'0'));
        wholeDigits = 1;
    }
    if (wholeDigits >= digits.size())
        digits += QString(wholeDigits - digits.size(), u'0');
    else
        digits.insert(wholeDigits, u'.');
    return number.first(start).toString() + digits;
}

} // namespace tarvessa
