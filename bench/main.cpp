#include "app/Application.h"
#include "base/ProgramFolder.h"
#include "bench/ClosingBench.h"
#include "bench/GridBench.h"
#include "bench/GrowthBench.h"
#include "bench/ListingBench.h"
#include "bench/NetworkBench.h"
#include "bench/OperationsBench.h"
#include "bench/OwnShareBench.h"
#include "bench/PrintingBench.h"
#include "bench/ProductBench.h"
#include "bench/ProgramBench.h"
#include "bench/RehearsalBench.h"
#include "bench/ReportsBench.h"
#include "bench/SurvivalBench.h"
#include "bench/TargetsBench.h"
#include "bench/support/Machine.h"
#include "bench/support/Workload.h"
#include "support/PrivateServer.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

using namespace tarvessa;

// Where the environment says that the chart is wanted.
void writeChart(const QString& chart) {
    const QString path = qEnvironmentVariable("TARVESSA_BENCH_CHART");
    QFile file(path);
    if (!path.isEmpty() &&
        (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(chart.toUtf8()) < 0))
        throw std::runtime_error("the chart cannot be written");
}

// All subjects, or those named on the command line; prints machine and table.
void measure(const QStringList& subjects) {
    const auto wanted = [&subjects](const QString& subject) {
        if (!subjects.isEmpty() && !subjects.contains(subject))
            return false;
        fprintf(stderr, "%s...\n", qPrintable(subject));
        return true;
    };
    const QTemporaryDir logs;
    setProgramFolder(logs.path());
    test::PrivateServer server;
    const bench::Workload workload(server);
    const QString machine = bench::machineText(server);
    QList<bench::Row> rows;
    if (wanted(u"listing"_s))
        rows += bench::listingRows(server, workload);
    if (wanted(u"closing"_s))
        rows += bench::closingRows(server, workload);
    if (wanted(u"rehearsal"_s))
        rows += bench::rehearsalRows(server, workload);
    if (wanted(u"operations"_s))
        rows += bench::operationRows(server, workload);
    if (wanted(u"start"_s))
        rows += bench::startRows(server, workload);
    if (wanted(u"reports"_s))
        rows += bench::reportRows(server, workload);
    if (wanted(u"printing"_s))
        rows += bench::printingRows(server);
    if (wanted(u"grids"_s))
        rows += bench::gridRows();
    if (wanted(u"targets"_s))
        rows += bench::targetRows(server, workload);
    if (wanted(u"survival"_s))
        rows += bench::survivalRows(server);
    if (wanted(u"network"_s))
        rows += bench::networkRows(server, workload);
    if (wanted(u"growth"_s)) {
        const bench::Growth growth = bench::growth(server, workload);
        rows += growth.rows;
        writeChart(growth.chart);
    }
    // Last: they leave products that no other subject knows.
    if (wanted(u"share"_s))
        rows += bench::ownShareRows(server, workload);
    if (wanted(u"products"_s))
        rows += bench::productRows(server);
    printf("%s\n%s", qPrintable(machine), qPrintable(bench::tableText(rows)));
}

} // namespace

int main(int argc, char* argv[]) {
    Application application(argc, argv);
    Application::setQuitOnLastWindowClosed(false);
    try {
        if (Application::arguments().value(1) == QLatin1StringView(bench::previewMemoryWord))
            return bench::previewMemory();
        if (Application::arguments().value(1) == QLatin1StringView(bench::gridMemoryWord))
            return bench::gridSavingMemory();
        measure(Application::arguments().mid(1));
    } catch (const std::exception& error) {
        fprintf(stderr, "tarvessa_bench: %s\n", error.what());
        return 1;
    }
    return 0;
}
