#include "bench/ProductBench.h"

#include "bench/support/Client.h"
#include "bench/support/Measure.h"
#include "bench/support/Painted.h"
#include "core/AcessoDados.h"
#include "products/PesquisaProduto.h"
#include "products/ProductQuery.h"
#include "products/SelecionaProd.h"
#include "support/PrivateServer.h"
#include "ui/grid/Grid.h"

#include <QApplication>
#include <QTimer>

#include <chrono>
#include <ctime>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace tarvessa::bench {

namespace {

using Clock = std::chrono::steady_clock;

constexpr double clientGoal = 1.3;
constexpr double secondsGoal = 0.030;
constexpr int rounds = 9;

struct Search {
    QString word;
    int matches;
};

// One in ten descriptions is too long for one line, as in shops that write out what a package holds. The
// words searched for stand inside the descriptions.
void fillProducts(test::PrivateServer& server) {
    server.execute(
        u"TRUNCATE produtos;"
        "INSERT INTO produtos (codfabr, descricao, aplicacao, observacao, Venda, Venda2, Venda3, Venda4, "
        "quantidade, quantidade2, Ultima_Alteracao, Unidade, LinhaProd) "
        "SELECT LPAD(seq, 13, '0'), CONCAT(ELT(1 + seq % 7, 'PÃO DE FORMA', 'BISCOITO AMANTEIGADO', "
        "'BOLO', 'REFRIGERANTE', 'EMBALAGEM', 'ROSCA', 'TORTA'), ' ', IF(seq = 150000, 'ESPARSO ', ''), "
        "IF(seq % 2000 = 7, 'CENTENO ', ''), IF(seq % 40 = 3, 'MILHEIRO ', ''), seq, "
        "IF(seq DIV 40 % 10 = 3, ' COM CASTANHA-DO-PARÁ, NOZES E UVA-PASSA, FAMÍLIA, COM DOZE', ' 500G')), "
        "'FABRICAÇÃO PRÓPRIA', IF(seq % 3 = 0, 'CONFERIR A DATA NA ENTREGA.', NULL), seq % 90 + 0.65, "
        "seq % 90 + 0.60, seq % 90 + 0.55, seq % 90 + 0.50, seq % 3000, seq % 300, "
        "CURDATE() - INTERVAL seq % 900 DAY, ELT(1 + seq % 3, 'UN', 'KG', 'CX'), seq % 5 = 0 "
        "FROM seq_1_to_200000;"
        "ANALYZE TABLE produtos"_s);
}

/// What one search took, in seconds: by the clock, and of that the processor's time in this process, where
/// the driver, the reading, the filling and the painting are, but not the server.
struct Taken {
    double elapsed;
    double own;
};

Taken now() {
    return {std::chrono::duration<double>(Clock::now().time_since_epoch()).count(),
            static_cast<double>(std::clock()) / CLOCKS_PER_SEC};
}

/// From the typed text to the painted screen, or to the code of the single match.
Taken timedSearch(const Search& search, QWidget* form) {
    Taken end = {};
    int shown = 1;
    QTimer whenOpen;
    whenOpen.setSingleShot(true);
    whenOpen.callOnTimeout([&] {
        auto* screen = qobject_cast<SelecionaProd*>(QApplication::activeModalWidget());
        if (!screen)
            return;
        waitPainted(screen->grid()->viewport());
        end = now();
        shown = screen->grid()->rows() - 1;
        screen->reject();
    });
    whenOpen.start(0);
    QString text = search.word;
    const Taken start = now();
    const QString code = PesquisaProduto(text, form);
    if (search.matches == 1)
        end = now();
    if (shown != search.matches || (search.matches > 1) != code.isEmpty())
        throw std::runtime_error("the search did not find what there is");
    return {end.elapsed - start.elapsed, end.own - start.own};
}

} // namespace

QList<Row> productRows(test::PrivateServer& server) {
    fillProducts(server);
    if (!IniciaBanco())
        throw std::runtime_error("the database cannot be reached");
    QWidget form;
    form.show();
    waitPainted(&form);
    QList<Row> rows;
    for (const Search& search :
         {Search{u"ESPARSO"_s, 1}, Search{u"CENTENO"_s, 100}, Search{u"MILHEIRO"_s, 5000}}) {
        QString text = search.word;
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
    EncerraBanco();
    return rows;
}

} // namespace tarvessa::bench
