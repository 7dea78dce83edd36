// Days of a shop on the real forms in one process, for so many minutes; see tests/soak.
//
//   soak MINUTES [SEED]
//
// Prints a row of a table every hundred operations. Ends with 1 at the first imbalance of the books, and at
// the end when the memory has grown too much.

#include "closing/endurance/Balance.h"
#include "closing/endurance/Day.h"
#include "closing/endurance/Gauges.h"
#include "support/TestError.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <cstdio>

using namespace Qt::StringLiterals;
using namespace tarvessa::test;

namespace {

constexpr int operationsPerRow = 100;
// Caches and pools fill up at first.
constexpr int warmUp = 1000;
constexpr double mostKbPerThousand = 1024;
constexpr qint64 msPerMinute = 60000;

struct Reading {
    int operations;
    Gauges gauges;
};

void printRow(const Reading& reading, qint64 elapsedMs) {
    const Gauges& g = reading.gauges;
    printf("| %7d | %7.1f | %9.1f | %8.1f | %7d | %7d | %7d | %10d | %11d |\n", reading.operations,
           static_cast<double>(elapsedMs) / msPerMinute, static_cast<double>(g.residentKb) / 1024,
           static_cast<double>(g.heapKb) / 1024, g.handles, g.threads, g.windows, g.serverStatements,
           g.connections);
    fflush(stdout);
}

/// KB per thousand operations, the straight line that fits the readings best.
double growthOf(const QList<Reading>& readings) {
    double n = 0;
    double x = 0;
    double y = 0;
    double xx = 0;
    double xy = 0;
    for (const Reading& reading : readings)
        if (reading.operations >= warmUp) {
            const double thousands = reading.operations / 1000.0;
            const auto kb = static_cast<double>(reading.gauges.residentKb);
            n += 1;
            x += thousands;
            y += kb;
            xx += thousands * thousands;
            xy += thousands * kb;
        }
    const double spread = n * xx - x * x;
    return spread > 0 ? (n * xy - x * y) / spread : 0;
}

/// One run: operations out of an event loop, as they are in the program, so that what they leave to be
/// deleted goes.
class Soak {
  public:
    Soak(double minutes, quint32 seed) : m_minutes(minutes), m_day(seed) {}

    /// The exit code.
    int run() {
        m_clock.start();
        QTimer next;
        QObject::connect(&next, &QTimer::timeout, [this] { step(); });
        next.start(0);
        QApplication::exec();
        next.stop();
        if (!m_isOver)
            m_problem = u"the program has ended by itself"_s;
        if (m_problem.isEmpty())
            printEnd();
        else
            printf("\nafter %d actions: %s\n", m_operations, qPrintable(m_problem));
        return m_problem.isEmpty() && growthOf(m_readings) < mostKbPerThousand ? 0 : 1;
    }

  private:
    void step() {
        try {
            if (m_operations > 0 && m_operations % operationsPerRow == 0 && !m_isRead)
                takeStock();
            else
                doSomething();
        } catch (const std::exception& error) {
            m_problem = QString::fromUtf8(error.what());
        }
        m_isOver = !m_problem.isEmpty() ||
                   (m_isRead && static_cast<double>(m_clock.elapsed()) > m_minutes * msPerMinute);
        if (m_isOver)
            QApplication::quit();
    }

    void doSomething() {
        m_day.doSomething();
        ++m_operations;
        m_isRead = false;
    }

    void takeStock() {
        m_day.tidyUp();
        m_readings.append({m_operations, Gauges::read(m_day.server())});
        printRow(m_readings.last(), m_clock.elapsed());
        const QString imbalance = imbalanceOf(m_day.server(), Day::initialStock);
        if (!imbalance.isEmpty())
            m_problem = u"not balanced: "_s + imbalance;
        m_isRead = true;
    }

    void printEnd() const {
        printf("\nbalanced after every %d actions\n", operationsPerRow);
        for (auto each = m_day.counts().cbegin(); each != m_day.counts().cend(); ++each)
            printf("%7d %s\n", each.value(), qPrintable(each.key()));
        printf("memory: %+.0f KB per 1,000 actions after the first %d\n", growthOf(m_readings), warmUp);
    }

    double m_minutes;
    Day m_day;
    QList<Reading> m_readings;
    QElapsedTimer m_clock;
    QString m_problem;
    int m_operations = 0;
    bool m_isRead = false;
    bool m_isOver = false;
};

} // namespace

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const QStringList arguments = QApplication::arguments();
    const double minutes = arguments.value(1).toDouble();
    const quint32 seed =
        arguments.size() > 2 ? arguments[2].toUInt() : QRandomGenerator::global()->generate();
    if (minutes <= 0) {
        fputs("soak MINUTES [SEED]\n", stderr);
        return 2;
    }
    printf("seed %u\n\n"
           "| actions | minutes | RSS in MB | heap, MB | handles | threads | windows | statements | "
           "connections |\n"
           "| ------- | ------- | --------- | -------- | ------- | ------- | ------- | ---------- | "
           "----------- |\n",
           seed);
    try {
        return Soak(minutes, seed).run();
    } catch (const std::exception& error) {
        printf("\nseed %u: %s\n", seed, error.what());
        return 1;
    }
}
