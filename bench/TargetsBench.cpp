#include "bench/TargetsBench.h"

#include "bench/support/BareOdbc.h"
#include "bench/support/Client.h"
#include "bench/support/FormerSchema.h"
#include "bench/support/Measure.h"
#include "bench/support/Painted.h"
#include "bench/support/Recorded.h"
#include "bench/support/Session.h"
#include "bench/support/Workload.h"
#include "support/PrivateServer.h"
#include "targets/MetasQuadro.h"
#include "targets/MetasQuadroColumns.h"
#include "ui/DateBox.h"
#include "ui/grid/Grid.h"

#include <QPushButton>
#include <QTabWidget>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace tarvessa::bench {

namespace {

constexpr int lines = 1000000;
constexpr int sellers = 10;
constexpr int targets = 5000;
constexpr int boardRows = 1 + targets + 3 * sellers;
constexpr double clientGoal = 1.05;
constexpr double schemaGoal = 2; // against the former tables
constexpr double boardGoal = 0.1;
constexpr int rounds = 5;
constexpr int shortRounds = 15;

/// The targets screen on the tab with the board, set to the year of the workload.
class Board {
  public:
    Board() {
        m_screen.Form_Load();
        m_grid = m_screen.findChild<Grid*>(u"Grid2"_s);
        m_screen.show();
        m_screen.findChild<QTabWidget*>(u"SSTab1"_s)->setCurrentIndex(1);
        m_screen.findChild<DateBox*>(u"DataIni"_s)->setText(u"01/01/2024"_s);
        m_screen.findChild<DateBox*>(u"DataFin"_s)->setText(u"31/12/2024"_s);
        waitPainted(m_grid->viewport());
    }

    double seconds() {
        const double seconds = secondsOf([this] {
            m_screen.findChild<QPushButton*>(u"Command4"_s)->click();
            waitPainted(m_grid->viewport());
        });
        if (m_grid->rows() != boardRows)
            throw std::runtime_error("the board does not show what there is");
        return seconds;
    }

    /// Targets that are shown as reached.
    int reached() const {
        int rows = 0;
        for (int row = 1; row < m_grid->rows(); ++row)
            if (!m_grid->text(row, 0).isEmpty() && m_grid->isBold(row, metasquadro::grid2::PercMeta))
                ++rows;
        return rows;
    }

  private:
    Session m_session;
    MetasQuadro m_screen;
    Grid* m_grid = nullptr;
};

Row computation(test::PrivateServer& server, Board& board, const QStringList& statements) {
    const auto ours = [&] { return board.seconds(); };
    const auto client = [&] { return clientSeconds(server, statements); };
    const std::vector<double> times = interleaved(rounds, {ours, client});
    const double ratio = times[0] / times[1];
    return {u"progress of %1 targets over %2 fiscal lines, against the client"_s.arg(countText(targets),
                                                                                     countText(lines)),
            timeText(times[0]),
            timeText(times[1]),
            ratioText(ratio),
            u"at most 1.05 times"_s,
            ratio <= clientGoal};
}

// With one line for each target, by which it is reached: the statements are short and every row is coloured.
void sellEachTarget(test::PrivateServer& server) {
    server.execute(
        u"TRUNCATE movsaient; TRUNCATE nfsaida; TRUNCATE Orcamento_Troca;"
        "INSERT INTO nfsaida (nrnf, SerieNF, CodVendedor, razsoc) SELECT seq, '1', seq, 'PADARIA' "
        "FROM seq_1_to_%1;"
        "INSERT INTO movsaient (nr_nf, serienf, dataemissao, entrsai, cfop, codigo, descricao, quantunit, "
        "totalvenda, vlr_tot_item, cnpj_cpf) SELECT v.seq, '1', '2024-06-03', 'S', '5102', "
        "LPAD(p.seq, 6, '0'), 'PÃO FRANCÊS', 10 * p.seq, 12.50, 12.50, '00000001000195' "
        "FROM seq_1_to_%1 v, seq_1_to_%2 p; ANALYZE TABLE movsaient, nfsaida, Orcamento_Troca"_s.arg(sellers)
            .arg(targets / sellers));
}

Row filling(test::PrivateServer& server, Board& board, const QStringList& statements) {
    sellEachTarget(server);
    QByteArrayList bare;
    for (const QString& statement : statements)
        bare.append(statement.toUtf8());
    BareOdbc odbc;
    const auto ours = [&] { return board.seconds(); };
    const auto query = [&] { return secondsOf([&] { odbc.run(bare); }); };
    const std::vector<double> times = interleaved(shortRounds, {ours, query});
    if (board.reached() != targets)
        throw std::runtime_error("the board does not show every target as reached");
    const double beyond = times[0] - times[1];
    return {u"board of %1 targets filled, coloured and painted, against the bare statements"_s.arg(
                countText(targets)),
            timeText(times[0]),
            timeText(times[1]),
            u"+ "_s + timeText(beyond),
            u"under 100 ms more"_s,
            beyond < boardGoal};
}

} // namespace

QList<Row> targetRows(test::PrivateServer& server, const Workload& workload) {
    workload.fiscalYear(lines);
    workload.targets();
    Board board;
    const QStringList statements = recordedTexts(server, [&] { board.seconds(); });
    return {computation(server, board, statements), schemaRow(server, u"targets"_s, statements, schemaGoal),
            filling(server, board, statements)};
}

} // namespace tarvessa::bench
