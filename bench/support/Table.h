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
};

/// "0.123 s", "4.56 ms": three significant digits, from seconds.
QString timeText(double seconds);

/// A ratio with two places.
QString ratioText(double ratio);

/// A count with commas between the thousands.
QString countText(qint64 count);

/// The rows as a Markdown table with aligned columns; reads as well on a terminal.
QString tableText(const QList<Row>& rows);

} // namespace tarvessa::bench
