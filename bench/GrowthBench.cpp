#include "bench/GrowthBench.h"

#include "bench/Screens.h"
#include "bench/support/BareOdbc.h"
#include "bench/support/GrowthChart.h"
#include "bench/support/Measure.h"
#include "bench/support/Recorded.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace tarvessa::bench {

namespace {

constexpr double goal = 1.05;
constexpr int mostRounds = 7;
constexpr double enoughSeconds = 4; // by the clock; longer work has fewer rounds

// What is left of two processor times that are nearly the same is noise below this.
constexpr double leastSeconds = 0.5e-3;

/// The least processor time of some rounds, of which `first` has been done already.
double leastOwn(const Taken& first, const std::function<Taken()>& work) {
    double least = first.own;
    double elapsed = first.elapsed;
    for (int round = 1; round < mostRounds && elapsed < enoughSeconds; ++round) {
        const Taken taken = work();
        elapsed += taken.elapsed;
        least = std::min(least, taken.own);
    }
    return least;
}

/// What the program itself takes at one size, in seconds.
double ownShare(test::PrivateServer& server, const Screen& screen, int size) {
    screen.load(size);
    std::unique_ptr<Stage> stage = screen.open(size);
    Taken recorded;
    const QByteArrayList statements =
        recordedStatements(server, {}, [&] { recorded = takenBy([&] { stage->run(); }); });
    const double ours = leastOwn(recorded, [&] {
        if (screen.changesData) {
            stage.reset();
            screen.load(size);
            stage = screen.open(size);
        }
        return takenBy([&] { stage->run(); });
    });
    stage.reset();
    BareOdbc odbc;
    const auto loop = [&] {
        if (screen.changesData)
            screen.load(size);
        return takenBy([&] {
            for (const QByteArray& statement : statements)
                odbc.readInBlocks(statement);
        });
    };
    const double bare = leastOwn(loop(), loop);
    return std::max(ours - bare, leastSeconds);
}

/// The exponent of the power of the size that comes nearest to all points, least squares of the logarithms.
double exponentOf(const QList<QPointF>& points) {
    double sumX = 0;
    double sumY = 0;
    for (const QPointF& point : points) {
        sumX += std::log(point.x());
        sumY += std::log(point.y());
    }
    const auto count = static_cast<double>(points.size());
    double covariance = 0;
    double variance = 0;
    for (const QPointF& point : points) {
        const double x = std::log(point.x()) - sumX / count;
        covariance += x * (std::log(point.y()) - sumY / count);
        variance += x * x;
    }
    return covariance / variance;
}

Row rowOf(const QString& what, const QList<QPointF>& points, double exponent) {
    // Constant parts hide what begins at a large size from the fit through all of them.
    const double lastStep = exponentOf(points.last(2));
    QStringList sizes;
    QStringList times;
    for (const QPointF& point : points) {
        sizes.append(countText(std::llround(point.x())));
        times.append(timeText(point.y()));
    }
    return {u"growth: "_s + what.arg(sizes.join(u" / "_s)),
            times.join(u" / "_s),
            {},
            u"exponent %1, last step %2"_s.arg(ratioText(exponent), ratioText(lastStep)),
            u"exponent at most 1.05"_s,
            std::max(exponent, lastStep) <= goal};
}

} // namespace

Growth growth(test::PrivateServer& server, const Workload& workload) {
    Growth found;
    QList<Curve> curves;
    for (const Screen& screen : allScreens(server, workload)) {
        if (screen.growth.isEmpty())
            continue;
        QList<QPointF> points;
        for (const int size : screen.growth)
            points.append({static_cast<double>(size), ownShare(server, screen, size)});
        const double exponent = exponentOf(points);
        found.rows.append(rowOf(screen.what, points, exponent));
        curves.append({u"%1: %2"_s.arg(QString(screen.what).remove(u"%1 "_s), ratioText(exponent)), points});
    }
    found.chart = growthChart(u"Processor time of the program itself, by the size of its work"_s, curves);
    return found;
}

} // namespace tarvessa::bench
