// Several stations, each a process of its own, that close the same pre-sales at the same moment.
//
// Three of them on 60 pre-sales under ./test; tests/stations sets TARVESSA_STATIONS, TARVESSA_PRESALES and
// TARVESSA_ROUNDS.

#include "base/Clock.h"
#include "closing/PanelBench.h"
#include "closing/Recovery.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

class TstStations : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void eachPreSaleIsClosedOnce();

  private:
    static int setting(const char* name, int otherwise) {
        const int value = qEnvironmentVariableIntValue(name);
        return value > 0 ? value : otherwise;
    }
};

void TstStations::eachPreSaleIsClosedOnce() {
    const int stations = setting("TARVESSA_STATIONS", 3);
    const int preSales = setting("TARVESSA_PRESALES", 60);
    const int rounds = setting("TARVESSA_ROUNDS", 1);
    constexpr int startMs = 60000;
    constexpr int closeMs = 600000;
    PanelBench bench;
    const auto close = [&](int count) {
        const QTemporaryDir folders;
        std::vector<std::unique_ptr<QProcess>> running;
        for (int i = 0; i < count; ++i) {
            const QString folder = folders.filePath(QString::number(i));
            QDir().mkpath(folder);
            running.push_back(std::make_unique<QProcess>());
            running.back()->setProcessChannelMode(QProcess::ForwardedErrorChannel);
            running.back()->start(closerProgram(),
                                  {clock::now().toString(Qt::ISODate), folder, u"ask-not"_s});
        }
        for (const auto& each : running) {
            QVERIFY(QTest::qWaitFor([&] { return each->canReadLine(); }, startMs));
            QCOMPARE(each->readLine().trimmed().toInt(), preSales);
        }
        for (const auto& each : running)
            each->write("\n");
        for (const auto& each : running) {
            QVERIFY(each->waitForFinished(closeMs));
            QCOMPARE(each->exitCode(), 0);
        }
    };
    const auto prepare = [&] {
        bench.reset();
        writeMixedPreSales(bench.shop(), preSales);
    };
    prepare();
    close(1);
    const Books once = booksOf(bench.server());
    QCOMPARE(once[u"areceber"_s].size(), preSales);
    QCOMPARE(once[u"caixa"_s].size(), preSales);
    for (int round = 0; round < rounds; ++round) {
        prepare();
        QElapsedTimer clock;
        clock.start();
        close(stations);
        QCOMPARE(differenceBetween(booksOf(bench.server()), once), QString());
        if (rounds > 1)
            qInfo("round %d: %d stations, %d pre-sales, each once, %.1f s", round + 1, stations, preSales,
                  static_cast<double>(clock.elapsed()) / 1000);
    }
}

QTEST_MAIN(TstStations)
#include "tst_stations.moc"
