#include "bench/OperationsBench.h"

#include "bench/StartedPanel.h"
#include "bench/support/BareOdbc.h"
#include "bench/support/BoxAnswerer.h"
#include "bench/support/Measure.h"
#include "bench/support/Recorded.h"
#include "bench/support/Workload.h"
#include "closing/PainelFechamento.h"
#include "core/AcessoDados.h"
#include "support/PrivateServer.h"
#include "ui/grid/Grid.h"

#include <QPushButton>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace tarvessa::bench {

namespace {

constexpr double loopGoal = 1.05;
constexpr int rounds = 11;
constexpr int documents = 500;

/// What is measured: the documents it needs, the panel doing it, and the first statement it sends.
struct Operation {
    QString what;
    char kind;
    Taken (*run)(PainelFechamento& panel, std::vector<double>& boxTimes);
    QString firstStatement;
    bool listsAtTheEnd;
};

Taken convert(PainelFechamento& panel, std::vector<double>& /*boxTimes*/) {
    const Taken taken = takenBy([&] { panel.findChild<QPushButton*>(u"Command2"_s)->click(); });
    if (panel.findChild<Grid*>(u"Grid1"_s)->rows() != 1)
        throw std::runtime_error("the conversion did not end well");
    return taken;
}

// From the question taken apart to the message with what was corrected; what both boxes take goes to
// `boxTimes`.
Taken checkPrices(PainelFechamento& panel, std::vector<double>& boxTimes) {
    const BoxAnswerer answerer;
    panel.findChild<QPushButton*>(u"Command5"_s)->click();
    const std::vector<BoxAnswerer::Box>& boxes = answerer.boxes();
    if (boxes.size() != 2 || boxes[1].text.count(u"PV Nº "_s) != documents)
        throw std::runtime_error("the price check did not end well");
    boxTimes.push_back(BoxAnswerer::around(boxes[0], boxes[1]).elapsed);
    return BoxAnswerer::between(boxes[0], boxes[1]);
}

Taken throughPanel(const Operation& operation, std::vector<double>& boxTimes) {
    Taken taken;
    {
        PainelFechamento panel;
        startPanel(panel, documents);
        taken = operation.run(panel, boxTimes);
    }
    EncerraBanco();
    return taken;
}

QByteArrayList statementsOf(test::PrivateServer& server, const Workload& workload,
                            const Operation& operation) {
    workload.trade(documents, operation.kind);
    std::vector<double> boxTimes;
    QByteArrayList statements =
        recordedStatements(server, operation.firstStatement, [&] { throughPanel(operation, boxTimes); });
    if (statements.size() <= documents)
        throw std::runtime_error("the statements are not in the log");
    if (operation.listsAtTheEnd)
        statements.removeLast();
    return statements;
}

} // namespace

QList<Row> operationRows(test::PrivateServer& server, const Workload& workload) {
    const std::vector<Operation> operations = {
        {u"conversion of 500 DAVs of 20 lines"_s, 'D', convert, u"SELECT GET_LOCK"_s, false},
        {u"price check of 500 PVs of 20 lines"_s, 'P', checkPrices, u"Select o.id"_s, true}};
    std::vector<QByteArrayList> statements;
    statements.reserve(operations.size());
    for (const Operation& operation : operations)
        statements.push_back(statementsOf(server, workload, operation));

    std::vector<Contestant> contestants;
    std::vector<Processor> processors(operations.size());
    std::vector<double> boxTimes;
    for (size_t i = 0; i < operations.size(); ++i) {
        contestants.push_back([&workload, &boxTimes, &operation = operations[i], &processor = processors[i]] {
            workload.trade(documents, operation.kind);
            const Taken taken = throughPanel(operation, boxTimes);
            processor.ours.push_back(taken.own);
            return taken.elapsed;
        });
        contestants.push_back(
            [&workload, &operation = operations[i], &sent = statements[i], &processor = processors[i]] {
                workload.trade(documents, operation.kind);
                BareOdbc bare;
                const Taken taken = takenBy([&] { bare.run(sent); });
                processor.other.push_back(taken.own);
                return taken.elapsed;
            });
    }
    const std::vector<double> times = interleaved(rounds, contestants);

    QList<Row> rows;
    for (size_t i = 0; i < operations.size(); ++i) {
        const double ours = times[2 * i];
        const double loop = times[2 * i + 1];
        rows.append({u"%1 (%2 statements), against a bare loop"_s.arg(operations[i].what,
                                                                      countText(statements[i].size())),
                     timeText(ours), timeText(loop), ratioText(ours / loop), u"at most 1.05 times"_s,
                     ours / loop <= loopGoal, processors[i].sentence()});
    }
    rows.append({u"- its boxes: the question taken apart, the one with 500 lines made and shown"_s,
                 timeText(median(boxTimes)),
                 {},
                 {},
                 {},
                 {}});
    return rows;
}

} // namespace tarvessa::bench
