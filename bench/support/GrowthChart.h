#pragma once

#include <QList>
#include <QPointF>
#include <QString>

namespace tarvessa::bench {

/// One line of a chart.
struct Curve {
    QString name;
    QList<QPointF> points; ///< size of the work and seconds, both above 0, by size
};

/// The text of an SVG file with the curves on logarithmic axes and a legend; at least one curve.
QString growthChart(const QString& title, const QList<Curve>& curves);

} // namespace tarvessa::bench
