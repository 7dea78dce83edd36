#include "bench/ProductBench.h"

#include "bench/ProductSearch.h"
#include "bench/support/Client.h"
#include "bench/support/Measure.h"
#include "bench/support/Painted.h"
#include "bench/support/Session.h"
#include "products/ProductQuery.h"

#include <QWidget>

using namespace Qt::StringLiterals;

namespace tarvessa::bench {

namespace {

constexpr double clientGoal = 1.3;
constexpr double secondsGoal = 0.030;
constexpr int rounds = 9;

} // namespace

QList<Row> productRows(test::PrivateServer& server) {
    fillProducts(server);
    const Session session;
    QWidget form;
    form.show();
    waitPainted(&form);
    QList<Row> rows;
    for (const Search& search : searches) {
        QString text = QString::fromUtf16(search.word);
        const QString sql = productQuery(text).sql;
        std::vector<double> own;
        const auto ours = [&] {
            const Taken taken = timedSearch(search, &form);
            own.push_back(taken.own);
            return taken.elapsed;
        };
        const std::vector<double> times =
            interleaved(rounds, {ours, [&] { return clientSeconds(server, {sql}); }});
        rows.append(
            {u"search with %1 of 200,000 products found, against the client"_s.arg(countText(search.matches)),
             timeText(times[0]), timeText(times[1]), ratioText(times[0] / times[1]),
             u"at most 1.3 times plus 30 ms"_s, times[0] <= clientGoal * times[1] + secondsGoal});
        rows.append({u"- our own processor time in it"_s, timeText(median(own)), {}, {}, {}, false});
    }
    return rows;
}

} // namespace tarvessa::bench
