#include "bench/SurvivalBench.h"

#include "base/Operation.h"
#include "base/RuntimeError.h"
#include "bench/support/Measure.h"
#include "bench/support/Session.h"
#include "closing/BatchQuestion.h"
#include "closing/InterruptedClosings.h"
#include "closing/ListedPeriod.h"
#include "core/AcessoDados.h"
#include "support/PrivateServer.h"

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace tarvessa::bench {

namespace {

constexpr double reconnectGoal = 1;
constexpr double questionGoal = 0.3;
constexpr int rounds = 11;
constexpr int logRows = 1000000;
constexpr int closedPerDay = 300;

/// Three years of movements, three to a closing and half of them of other screens, and the pre-sales,
/// receivables and cash rows of the closings of the last month.
void load(test::PrivateServer& server) {
    server.execute(u"SET GLOBAL innodb_flush_log_at_trx_commit = 0;"
                   "TRUNCATE logestoque; TRUNCATE orcamento; TRUNCATE areceber; TRUNCATE caixa;"
                   "INSERT INTO logestoque (data, hora, usuario, tela, codproduto, qtdLoja) "
                   "SELECT CURDATE() - INTERVAL seq % 1000 DAY, '10:00:00', 'CAIXA', IF(seq % 2000 < 1000, "
                   "CONCAT('FECHAMENTO "
                   "DA PV Nº ', seq % 1000 * %2 + seq DIV 3334), 'ENTRADA DE MERCADORIA'), LPAD(1 + seq % "
                   "500, 6, '0'), -1 "
                   "FROM seq_1_to_%1;"
                   "INSERT INTO orcamento (nrpedido, TipoOperacao, situacaoorc, codigocli, dataabertura, "
                   "databaixa, codigo, "
                   "quantidade, totalped) SELECT d.seq * %2 + n.seq, 'P', 'B', '00001', CURDATE() - INTERVAL "
                   "d.seq DAY, CURDATE() "
                   "- INTERVAL d.seq DAY, '000001', 1, 10 FROM seq_1_to_1000 d, seq_1_to_%2 n;"
                   "INSERT INTO areceber (Nr_Pedido, Emissao, Valor) SELECT nrpedido, databaixa, totalped "
                   "FROM orcamento;"
                   "INSERT INTO caixa (CodigoLanc, DataCx, Valor) SELECT CONCAT('PED:', LPAD(nrpedido, 6, "
                   "'0')), databaixa, "
                   "totalped FROM orcamento;"
                   "ANALYZE TABLE logestoque, orcamento, areceber, caixa;"
                   "SET GLOBAL innodb_flush_log_at_trx_commit = 1"_s.arg(logRows)
                       .arg(closedPerDay));
    const QString indexed =
        server.query(u"SELECT COUNT(*) FROM information_schema.statistics WHERE table_schema = "
                     "DATABASE() AND table_name = 'logestoque' AND column_name IN ('data', "
                     "'tela')"_s)[0][0];
    if (indexed != u"0")
        throw std::runtime_error("the stock log has an index");
}

double connectAgain(test::PrivateServer& server) {
    server.killProgramConnections();
    try {
        const Operation lost;
        Executa(u"SET @again = 1"_s);
        throw std::runtime_error("the loss was not noticed");
    } catch (const RuntimeError&) {
        const Operation next;
        return secondsOf([] { Executa(u"SET @again = 1"_s); });
    }
}

Row row(const QString& what, double seconds, const QString& goalText, double goal) {
    return {what, timeText(seconds), {}, {}, goalText, seconds < goal};
}

} // namespace

QList<Row> survivalRows(test::PrivateServer& server) {
    const Session session;
    load(server);
    const std::vector<double> times =
        interleaved(rounds, {[&server] { return connectAgain(server); },
                             [] {
                                 const Operation operation;
                                 return secondsOf([] { askBeforeBatch(firstListedDay()); });
                             },
                             [] {
                                 const Operation operation;
                                 return secondsOf([] { interruptedclosings::find(firstListedDay()); });
                             }});
    return {
        row(u"first statement after a loss, with the connection opened again"_s, times[0], u"under 1 s"_s,
            reconnectGoal),
        row(u"a batch's question on 1,000,000 rows of the stock log, no index"_s, times[1], u"under 0.3 s"_s,
            questionGoal),
        row(u"the question at the start on the same and 300,000 closed PVs"_s, times[2], {}, questionGoal)};
}

} // namespace tarvessa::bench
