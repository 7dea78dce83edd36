#include "bench/OwnShareBench.h"

#include "bench/BatchRun.h"
#include "bench/ListingPanel.h"
#include "bench/ProductSearch.h"
#include "bench/ProgramBench.h"
#include "bench/support/BareOdbc.h"
#include "bench/support/Client.h"
#include "bench/support/Measure.h"
#include "bench/support/Painted.h"
#include "bench/support/Session.h"
#include "bench/support/Workload.h"
#include "closing/BatchProgress.h"
#include "core/AcessoDados.h"
#include "products/ProductQuery.h"
#include "support/PrivateServer.h"

#include <QWidget>

#include <algorithm>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace tarvessa::bench {

namespace {

constexpr double statementGoal = 3e-6;
constexpr double queryGoal = 5e-6;
constexpr double rowGoal = 0.8e-6;
constexpr double clientGoal = 1.0;
constexpr double batchGoal = 5e-3;
constexpr double searchGoal = 10e-3;

constexpr int repetitions = 2000;
constexpr int rounds = 25;
constexpr int listedDocuments = 100000;
constexpr int listingRounds = 9;
constexpr int batchPresales = 10;
constexpr int batchRounds = 15;
constexpr int searchRounds = 15;

double ownSecondsOf(const std::function<void()>& work) {
    return takenBy(work).own;
}

/// What one of `units` costs beyond the bare calls, beside the bare calls themselves.
Row unitRow(const QString& what, double ours, double bare, int units, const QString& goal, double limit,
            const QString& why = {}) {
    const double each = (ours - bare) / units;
    return {what, timeText(each), timeText(bare / units), {}, goal, each <= limit, why};
}

Row statementRow() {
    const QString sql = u"UPDATE clientes SET prazo = prazo + 1 WHERE codigo = '00001'"_s;
    const QByteArrayList bareStatements(repetitions, sql.toUtf8());
    BareOdbc bare;
    const std::vector<double> times =
        least(rounds, {[&] {
                           return ownSecondsOf([&] {
                               for (int i = 0; i < repetitions; ++i)
                                   Executa(sql);
                           });
                       },
                       [&] { return ownSecondsOf([&] { bare.run(bareStatements); }); }});
    return unitRow(u"a statement that changes data, beyond the bare calls"_s, times[0], times[1], repetitions,
                   u"at most 3 µs"_s, statementGoal);
}

Row queryRow() {
    const QString sql = u"Select CNPJ_CPF From clientes Where codigo='00001'"_s;
    const QByteArrayList bareStatements(repetitions, sql.toUtf8());
    qsizetype characters = 0;
    BareOdbc bare;
    const std::vector<double> times =
        least(rounds, {[&] {
                           return ownSecondsOf([&] {
                               for (int i = 0; i < repetitions; ++i) {
                                   AbreRS(sql);
                                   characters += rs.field(u"CNPJ_CPF").text().size();
                                   rs.close();
                               }
                           });
                       },
                       [&] { return ownSecondsOf([&] { bare.run(bareStatements); }); }});
    if (characters == 0)
        throw std::runtime_error("the query found nothing");
    return unitRow(u"a query with one short row, read by name, beyond the bare calls"_s, times[0], times[1],
                   repetitions, u"at most 5 µs"_s, queryGoal);
}

QList<Row> statementRows(test::PrivateServer& server) {
    server.execute(u"SET GLOBAL innodb_flush_log_at_trx_commit = 0"_s);
    const Session session;
    const QList<Row> rows = {statementRow(), queryRow()};
    server.execute(u"SET GLOBAL innodb_flush_log_at_trx_commit = 1"_s);
    return rows;
}

QList<Row> listingShareRows(test::PrivateServer& server, const Workload& workload) {
    workload.listing(listedDocuments);
    ListingPanel panel;
    const QString sql = panel.statement(server);
    const QByteArray bareSql = sql.toUtf8();
    BareOdbc bare;
    const std::vector<double> times =
        least(listingRounds, {[&] {
                                  panel.empty();
                                  const double seconds = ownSecondsOf([&] { panel.list(); });
                                  panel.expectRows(listedDocuments);
                                  return seconds;
                              },
                              [&] { return ownSecondsOf([&] { bare.readInBlocks(bareSql); }); },
                              [&] { return clientRun(server, {sql}).own; }});
    const double ratio = times[0] / times[2];
    return {unitRow(u"a row of a listing of 11 columns, painted when seen, beyond the bare blocks"_s,
                    times[0], times[1], listedDocuments, u"at most 0.8 µs"_s, rowGoal),
            {u"listing of 100,000 documents, without the server's share, against the client's own"_s,
             timeText(times[0]), timeText(times[2]), ratioText(ratio), u"at most 1.0 times"_s,
             ratio <= clientGoal,
             u"the driver alone takes %1 times the client's share to hand over the same rows"_s.arg(
                 ratioText(times[1] / times[2]))}};
}

// The bar as a batch shows it, on a panel of the same documents.
double barSeconds() {
    ListingPanel panel;
    auto* bar = panel.panel().findChild<BatchProgress*>(u"progresso"_s);
    return ownSecondsOf([bar] {
        BatchProgress::Run run(bar, batchPresales, u"Pré-venda"_s);
        for (int row = 1; row <= batchPresales; ++row)
            run.enter(row);
    });
}

QList<Row> batchRows(test::PrivateServer& server, const Workload& workload) {
    const QByteArrayList statements = batchStatements(server, workload, batchPresales);
    std::vector<double> bars;
    std::vector<double> boxes;
    const std::vector<double> times =
        least(batchRounds, {[&] {
                                workload.closing(batchPresales);
                                bars.push_back(barSeconds());
                                const BatchRun run = closeAll(batchPresales);
                                boxes.push_back(run.boxes.own);
                                return run.batch.own;
                            },
                            [&] {
                                workload.closing(batchPresales);
                                BareOdbc bare;
                                return ownSecondsOf([&] { bare.run(statements); });
                            }});
    const double bar = *std::min_element(bars.begin(), bars.end());
    const double shown = *std::min_element(boxes.begin(), boxes.end());
    const double both = bar + shown;
    return {{u"the boxes of a batch of 10 PVs and the painting of its bar (%1)"_s.arg(timeText(bar)),
             timeText(both),
             {},
             {},
             u"under 5 ms"_s,
             both < batchGoal,
             u"%1 of it is Qt making, measuring and showing two windows of its own"_s.arg(timeText(shown))},
            {u"- per statement of that batch, all that the panel does, beyond the bare calls"_s,
             timeText((times[0] - times[1]) / static_cast<double>(statements.size())),
             timeText(times[1] / static_cast<double>(statements.size())),
             {},
             {},
             false}};
}

QList<Row> searchRows(test::PrivateServer& server) {
    fillProducts(server);
    const Session session;
    QWidget form;
    form.show();
    waitPainted(&form);
    const Search& search = searches.back();
    QString text = QString::fromUtf16(search.word);
    const QByteArray sql = productQuery(text).sql.toUtf8();
    BareOdbc bare;
    const std::vector<double> times =
        least(searchRounds, {[&] { return timedSearch(search, &form).own; },
                             [&] { return ownSecondsOf([&] { bare.readInBlocks(sql); }); }});
    const QString what = u"search with %1 matches, read, filled and painted"_s.arg(countText(search.matches));
    return {
        unitRow(what + u", beyond the bare blocks"_s, times[0], times[1], 1, u"at most 10 ms"_s, searchGoal,
                u"what is left is the making and painting of a window and the formatting of six amounts a "
                "row"_s),
        {u"- all of it, with the driver's share"_s, timeText(times[0]), {}, {}, {}, false}};
}

} // namespace

QList<Row> ownShareRows(test::PrivateServer& server, const Workload& workload) {
    QList<Row> rows = statementRows(server);
    rows += listingShareRows(server, workload);
    rows += memoryRows(server, workload);
    rows += batchRows(server, workload);
    rows += searchRows(server);
    return rows;
}

} // namespace tarvessa::bench
