#include "bench/support/GrowthChart.h"

#include "bench/support/Table.h"

#include <QRectF>

#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace tarvessa::bench {

namespace {

constexpr int width = 960;
constexpr int height = 560;
constexpr QRectF plot(80, 60, 560, 430);
constexpr double tickLength = 5;
constexpr double legendX = 664;
constexpr double legendY = 76;
constexpr double legendStep = 26;
constexpr double textDrop = 4; // from the middle of a line of text to its baseline

// Told apart by dark and light as well, on white.
constexpr std::array<const char*, 10> colours = {"#1b4f91", "#c23b22", "#2e7d32", "#7b3fa0", "#b8860b",
                                                 "#00838f", "#ad1457", "#4e342e", "#5c6bc0", "#546e7a"};

/// The whole powers of ten around what is shown on an axis.
struct Decades {
    int first;
    int last;

    double part(double value) const { return (std::log10(value) - first) / (last - first); }
};

template <typename Value>
Decades decadesOf(const QList<Curve>& curves, Value value) {
    double least = value(curves.first().points.first());
    double most = least;
    for (const Curve& curve : curves)
        for (const QPointF& point : curve.points) {
            least = std::min(least, value(point));
            most = std::max(most, value(point));
        }
    const int first = static_cast<int>(std::floor(std::log10(least)));
    return {first, std::max(first + 1, static_cast<int>(std::ceil(std::log10(most))))};
}

QString number(double value) {
    return QString::number(value, 'f', 1);
}

QString text(QPointF place, const QString& anchor, const QString& words) {
    return u"<text x=\"%1\" y=\"%2\" text-anchor=\"%3\">%4</text>\n"_s.arg(
        number(place.x()), number(place.y()), anchor, words.toHtmlEscaped());
}

QString line(QPointF from, QPointF to, const QString& colour) {
    return u"<line x1=\"%1\" y1=\"%2\" x2=\"%3\" y2=\"%4\" stroke=\"%5\"/>\n"_s.arg(
        number(from.x()), number(from.y()), number(to.x()), number(to.y()), colour);
}

const QString gridColour = u"#dddddd"_s;

QString sizeAxis(const Decades& sizes) {
    QString svg;
    for (int decade = sizes.first; decade <= sizes.last; ++decade) {
        const double size = std::pow(10, decade);
        const double x = plot.left() + plot.width() * sizes.part(size);
        svg += line({x, plot.top()}, {x, plot.bottom() + tickLength}, gridColour);
        svg += text({x, plot.bottom() + 20}, u"middle"_s, countText(std::llround(size)));
    }
    return svg + text({plot.center().x(), plot.bottom() + 45}, u"middle"_s,
                      u"documents, customers, products or fiscal lines"_s);
}

QString timeAxis(const Decades& times) {
    QString svg;
    for (int decade = times.first; decade <= times.last; ++decade) {
        const double seconds = std::pow(10, decade);
        const double y = plot.bottom() - plot.height() * times.part(seconds);
        svg += line({plot.left() - tickLength, y}, {plot.right(), y}, gridColour);
        const QString label = decade < 0 ? QString::number(std::pow(10, decade + 3)) + u" ms"_s
                                         : QString::number(seconds) + u" s"_s;
        svg += text({plot.left() - 10, y + textDrop}, u"end"_s, label);
    }
    return svg;
}

} // namespace

QString growthChart(const QString& title, const QList<Curve>& curves) {
    const Decades sizes = decadesOf(curves, [](QPointF point) { return point.x(); });
    const Decades times = decadesOf(curves, [](QPointF point) { return point.y(); });
    QString svg = u"<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%1\" height=\"%2\" "
                  "viewBox=\"0 0 %1 %2\" font-family=\"sans-serif\" font-size=\"13\" fill=\"#222222\">\n"
                  "<title>%3</title>\n<rect width=\"%1\" height=\"%2\" fill=\"#ffffff\"/>\n"
                  "<text x=\"%4\" y=\"32\" font-size=\"17\">%3</text>\n"_s.arg(width)
                      .arg(height)
                      .arg(title.toHtmlEscaped())
                      .arg(plot.left());
    svg += sizeAxis(sizes) + timeAxis(times);
    double y = legendY;
    for (qsizetype i = 0; i < curves.size(); ++i) {
        const QString colour = QString::fromLatin1(colours.at(static_cast<size_t>(i) % colours.size()));
        QString places;
        QString marks;
        for (const QPointF& point : curves[i].points) {
            const QString x = number(plot.left() + plot.width() * sizes.part(point.x()));
            const QString top = number(plot.bottom() - plot.height() * times.part(point.y()));
            places += x + u',' + top + u' ';
            marks += u"<circle cx=\"%1\" cy=\"%2\" r=\"3.5\" fill=\"%3\"/>\n"_s.arg(x, top, colour);
        }
        svg += u"<polyline points=\"%1\" fill=\"none\" stroke=\"%2\" stroke-width=\"2\"/>\n"_s.arg(
            places.trimmed(), colour);
        svg += marks;
        svg += u"<rect x=\"%1\" y=\"%2\" width=\"18\" height=\"4\" fill=\"%3\"/>\n"_s.arg(
            number(legendX), number(y - 2), colour);
        svg += text({legendX + 26, y + textDrop}, u"start"_s, curves[i].name);
        y += legendStep;
    }
    return svg + u"</svg>\n"_s;
}

} // namespace tarvessa::bench
