#include "bench/support/Table.h"

#include <QLocale>
#include <QStringList>

#include <cmath>

using namespace Qt::StringLiterals;

namespace tarvessa::bench {

namespace {

QString significant(double value) {
    constexpr double threeDigits = 100;
    constexpr double twoDigits = 10;
    const double size = std::abs(value);
    return QString::number(value, 'f', size >= threeDigits ? 0 : size >= twoDigits ? 1 : 2);
}

QString line(const QStringList& cells, const QList<qsizetype>& widths, QChar filler) {
    QString text = u"|"_s;
    for (qsizetype i = 0; i < cells.size(); ++i)
        text += u' ' + cells[i].leftJustified(widths[i], filler) + u" |"_s;
    return text + u'\n';
}

} // namespace

QString timeText(double seconds) {
    constexpr double milliseconds = 1000;
    constexpr double microseconds = 1e6;
    constexpr double fewMicroseconds = 1e-4;
    if (std::abs(seconds) < fewMicroseconds)
        return significant(seconds * microseconds) + u" µs"_s;
    return seconds >= 1 ? significant(seconds) + u" s"_s : significant(seconds * milliseconds) + u" ms"_s;
}

QString ratioText(double ratio) {
    return QString::number(ratio, 'f', 2);
}

QString countText(qint64 count) {
    return QLocale(QLocale::English).toString(count);
}

QString tableText(const QList<Row>& rows) {
    QList<QStringList> lines{{u"What"_s, u"Ours"_s, u"The other"_s, u"Ratio"_s, u"Goal"_s, u"Met"_s}};
    for (const Row& row : rows)
        lines.append({row.what, row.ours, row.other, row.ratio, row.goal,
                      row.goal.isEmpty()  ? QString()
                      : row.met           ? u"yes"_s
                      : row.why.isEmpty() ? u"NO"_s
                                          : u"NO: "_s + row.why});
    QList<qsizetype> widths(lines.first().size(), 0);
    for (const QStringList& cells : lines)
        for (qsizetype i = 0; i < cells.size(); ++i)
            widths[i] = qMax(widths[i], cells[i].size());

    QString text = line(lines.takeFirst(), widths, u' ');
    text += line(QStringList(widths.size(), QString()), widths, u'-');
    for (const QStringList& cells : lines)
        text += line(cells, widths, u' ');
    return text;
}

} // namespace tarvessa::bench
