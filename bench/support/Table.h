#pragma once

#include <QList>
#include <QString>

namespace tarvessa::bench {

/// One measurement against its goal, ready to print.
struct Row {
    QString what;
    QString ours;
    QString other; ///< empty when there is nothing to compare with
    QString ratio;
    QString goal; ///< empty when the row only explains another; `met` then says nothing
    bool met = false;
    QString why{}; ///< why a goal is out of reach, in one sentence; printed beside a "NO"
};

/// "1.23 s", "4.56 ms", "0.52 µs": three significant digits, from seconds.
QString timeText(double seconds);

/// A ratio with two places.
QString ratioText(double ratio);

/// A count with commas between the thousands.
QString countText(qint64 count);

/// The rows as a Markdown table with aligned columns; reads as well on a terminal.
QString tableText(const QList<Row>& rows);

} // namespace tarvessa::bench
