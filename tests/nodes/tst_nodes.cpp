// Two workstations work through a day on three replicating database nodes while the node they work on is
// killed again and again. Whatever was cut, the operators press again and conclude what was interrupted; in
// the end every pre-sale is closed once.
//
// Run by tests/cluster. TARVESSA_NODES_SEED sets where the nodes are killed.

#include "nodes/Nodes.h"
#include "nodes/Station.h"
#include "support/TestError.h"

#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QRandomGenerator>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using namespace tarvessa::test;

namespace {

constexpr int preSales = 300;
constexpr int documents = 200; // DAVs
constexpr int firstDocument = 7001;
constexpr int lastNumber = 5000; // the counter of pre-sales
constexpr int kills = 5;
constexpr int reportMs = 1000;
constexpr int hangMs = 900000;

/// The shop: each pre-sale has two lines, each document one and a note; each line sells a product of its own,
/// of which there are 500. `placa` says of which document a line was.
const QString preparation =
    u"ALTER TABLE empresa MODIFY id INT NOT NULL AUTO_INCREMENT INVISIBLE; "
    "ALTER TABLE relat ENGINE=InnoDB, MODIFY id BIGINT NOT NULL AUTO_INCREMENT INVISIBLE; "
    "ALTER TABLE relat2 ENGINE=InnoDB, MODIFY id BIGINT NOT NULL AUTO_INCREMENT INVISIBLE; "
    "INSERT INTO empresa (contadorPV, ultpedido, ContaCTB1, PAF_ECF) VALUES (%1, 500, "
    u"'1.01/1.02/2.01/2.02/1.05', "
    "'NAO'); "
    "INSERT INTO Finalizadoras (ID, Descricao, avista) VALUES (1, 'DINHEIRO', 'S'), (2, 'BOLETO', 'N'); "
    "INSERT INTO clientes (codigo, nome, cidade, prazo, formapg, colunapreco, CNPJ_CPF) SELECT CONCAT('C', "
    "seq), "
    "CONCAT('CLIENTE ', seq), 'CAMPINAS', 30, IF(seq % 3 = 0, 'DINHEIRO', 'BOLETO'), '1', "
    "'12.345.678/0001-95' FROM "
    "seq_1_to_10; "
    "INSERT INTO produtos (codfabr, descricao, quantidade, quantidade2) SELECT CONCAT('A', seq), "
    "CONCAT('PRODUTO ', "
    "seq), 500, 0 FROM seq_1_to_1000; "
    "INSERT INTO orcamento (nrpedido, TipoOperacao, situacaoorc, codigocli, nomevendedor, Vendedor, "
    "dataabertura, "
    "codigo, quantidade, unitario, totalped) SELECT FLOOR((seq + 1) / 2), 'P', 'A', CONCAT('C', 1 + seq % "
    "10), 'ANA', "
    "1, CURDATE(), CONCAT('A', seq), 1 + seq % 7, 10, 10 * (1 + seq % 7) FROM seq_1_to_%2; "
    "UPDATE orcamento SET codigocli = CONCAT('C', 1 + nrpedido % 10); "
    "INSERT INTO orcamento_controle (NrPedido, tipoOperacao) SELECT seq, 'P' FROM seq_1_to_%3; "
    "INSERT INTO vendedores (codigovend, vendedor, Ativo) VALUES (1, 'ANA', 'S'), (2, 'BRUNO', 'S'); "
    "INSERT INTO metavendedoritem (CodVendedor, CodigoProduto, Quantidade) SELECT 1 + seq % 2, CONCAT('A', "
    "seq), 10 "
    "FROM seq_1_to_50; "
    "INSERT INTO nfsaida (nrnf, SerieNF, CodVendedor, razsoc) SELECT seq, '1', 1 + seq % 2, 'CLIENTE' FROM "
    "seq_1_to_200; "
    "INSERT INTO movsaient (nr_nf, serienf, dataemissao, entrsai, cancelado, cfop, codigo, descricao, "
    "quantunit, "
    "totalvenda) SELECT seq, '1', CURDATE(), 'S', 'N', '5102', CONCAT('A', 1 + seq % 50), 'PRODUTO', 2, 25.5 "
    "FROM "
    "seq_1_to_200"_s.arg(lastNumber)
        .arg(2 * preSales)
        .arg(preSales);

const QString arrivals =
    u"INSERT INTO orcamento (nrpedido, TipoOperacao, situacaoorc, codigocli, placa, nomevendedor, Vendedor, "
    "dataabertura, codigo, quantidade, unitario, totalped) SELECT %1 + seq, 'D', 'A', CONCAT('C', 1 + seq % "
    "10), %1 + "
    "seq, 'BRUNO', 2, CURDATE(), CONCAT('A', %2 + seq), 2, 10, 20 FROM seq_1_to_%3; "
    "INSERT INTO observacao (nrpedido, tipoOperacao, texto) SELECT %1 + seq, 'D', %1 + seq FROM seq_1_to_%3"_s
        .arg(firstDocument - 1)
        .arg(2 * preSales)
        .arg(documents);

/// How many break the rule: each of these counts has to be 0.
const QList<std::pair<const char*, QString>> rules = {
    {"pre-sales of the morning not closed", u"SELECT COUNT(*) FROM orcamento WHERE nrpedido <= %1 AND "
                                            "(TipoOperacao <> 'P' OR situacaoorc <> 'B')"_s.arg(preSales)},
    {"documents not converted", u"SELECT COUNT(*) FROM orcamento WHERE TipoOperacao = 'D'"_s},
    {"numbers missing",
     u"SELECT %1 - COUNT(DISTINCT nrpedido) FROM orcamento WHERE nrpedido > %2"_s.arg(documents).arg(
         lastNumber)},
    {"numbers with two documents",
     u"SELECT COUNT(*) FROM (SELECT nrpedido FROM orcamento WHERE nrpedido > %1 GROUP BY "
     "nrpedido HAVING COUNT(*) <> 1) AS merged"_s.arg(lastNumber)},
    {"notes that are not with their document",
     u"SELECT COUNT(*) FROM observacao AS n LEFT JOIN orcamento AS o ON o.nrpedido = n.nrpedido AND "
     u"o.TipoOperacao = "
     "n.tipoOperacao WHERE o.placa IS NULL OR o.placa <> n.texto"_s},
    {"documents partly closed",
     u"SELECT COUNT(*) FROM (SELECT nrpedido FROM orcamento GROUP BY nrpedido HAVING "
     "COUNT(DISTINCT situacaoorc) > 1) AS partly"_s},
    {"closed without exactly one receivable of its total",
     u"SELECT COUNT(*) FROM (SELECT nrpedido, SUM(totalped) AS total FROM orcamento WHERE situacaoorc = 'B' "
     u"GROUP BY "
     "nrpedido) AS d LEFT JOIN (SELECT Nr_Pedido, COUNT(*) AS times, SUM(Valor) AS value FROM areceber GROUP "
     "BY "
     "Nr_Pedido) AS r ON r.Nr_Pedido = d.nrpedido WHERE IFNULL(r.times, 0) <> 1 OR r.value <> d.total"_s},
    {"receivables without a closed pre-sale",
     u"SELECT COUNT(*) FROM areceber WHERE Nr_Pedido NOT IN (SELECT nrpedido FROM orcamento WHERE situacaoorc = 'B')"_s},
    {"closed without exactly one cash row of its total",
     u"SELECT COUNT(*) FROM (SELECT CONCAT('PED:', INSERT(LPAD(nrpedido, 6, '0'), 4, 0, '.')) AS code, "
     u"SUM(totalped) AS "
     "total FROM orcamento WHERE situacaoorc = 'B' GROUP BY nrpedido) AS d LEFT JOIN (SELECT CodigoLanc, "
     "COUNT(*) AS "
     "times, SUM(Valor) AS value FROM caixa GROUP BY CodigoLanc) AS c ON c.CodigoLanc = d.code WHERE "
     "IFNULL(c.times, 0) "
     "<> 1 OR c.value <> d.total"_s},
    {"more cash rows than closed pre-sales",
     u"SELECT (SELECT COUNT(*) FROM caixa) - (SELECT COUNT(DISTINCT nrpedido) "
     "FROM orcamento WHERE situacaoorc = 'B')"_s},
    {"closed lines without exactly one movement in the stock log",
     u"SELECT COUNT(*) FROM orcamento AS o LEFT JOIN (SELECT codproduto, COUNT(*) AS times, SUM(qtdLoja) AS "
     u"moved FROM "
     "logestoque GROUP BY codproduto) AS l ON l.codproduto = o.codigo WHERE o.situacaoorc = 'B' AND "
     "(IFNULL(l.times, 0) "
     "<> 1 OR l.moved <> -o.quantidade)"_s},
    {"movements without a closed line",
     u"SELECT (SELECT COUNT(*) FROM logestoque) - (SELECT COUNT(*) FROM orcamento "
     "WHERE situacaoorc = 'B')"_s},
    {"products whose stock is not what the closed lines left",
     u"SELECT COUNT(*) FROM produtos AS p LEFT JOIN (SELECT codigo, SUM(quantidade) AS sold FROM orcamento "
     u"WHERE "
     "situacaoorc = 'B' GROUP BY codigo) AS s ON s.codigo = p.codfabr WHERE p.quantidade <> 500 - IFNULL(s.sold, 0)"_s},
    {"control rows not settled",
     u"SELECT COUNT(*) FROM orcamento_controle AS k JOIN orcamento AS o ON o.nrpedido = "
     "k.NrPedido WHERE o.situacaoorc = 'B' AND IFNULL(k.Status, '') <> 'B'"_s},
    {"targets not as the invoices have them",
     u"SELECT COUNT(*) FROM metavendedoritem AS m LEFT JOIN (SELECT n.CodVendedor, i.codigo, "
     u"SUM(i.quantunit) AS sold, "
     "SUM(i.totalvenda) AS value FROM movsaient AS i JOIN nfsaida AS n ON n.nrnf = i.nr_nf AND n.SerieNF = "
     "i.serienf "
     "GROUP BY n.CodVendedor, i.codigo) AS s ON s.CodVendedor = m.CodVendedor AND s.codigo = m.CodigoProduto "
     "WHERE "
     "m.Vendido <> IFNULL(s.sold, 0) OR m.TotalVendas <> IFNULL(s.value, 0)"_s},
};

QString readFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw TestError(path + u": "_s + file.errorString());
    return QString::fromUtf8(file.readAll());
}

bool contains(const QJsonObject& answer, const QString& part) {
    const QJsonArray boxes = answer[u"boxes"].toArray();
    return std::any_of(boxes.begin(), boxes.end(),
                       [&part](const QJsonValue& box) { return box.toString().contains(part); });
}

/// What an operator has been told and has still to do.
struct Work {
    std::unique_ptr<Station> station;
    QStringList toDo; ///< the commands of the day, in order; the last one is repeated
    bool interrupted = false;
    qint64 notBefore = 0;  ///< an operator reads a report before he goes on
    bool hasLost = false;  ///< the connection, since the last kill
    bool hasMoved = false; ///< to another node after that
    int losses = 0;
    int errors = 0; ///< reports of another kind
};

} // namespace

class TstNodes : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();
    void dayWhileNodesDie_data();
    void dayWhileNodesDie();

  private:
    void prepare();
    void next(Work& work);
    void look(Work& work, const QJsonObject& answer);
    void killAndBringBack(bool waitForOperators);
    bool isWorkDone();
    int progress();

    QString m_folder;
    std::unique_ptr<Nodes> m_nodes;
    std::array<Work, 2> m_work;
    QElapsedTimer m_clock;
    QRandomGenerator m_random;
    QList<int> m_marks; ///< how much has been done when the next node is killed
    int m_dead = 0;
    qint64 m_backAt = 0;
    int m_kills = 0;
    bool m_targets = false;
};

void TstNodes::initTestCase() {
    m_folder = qEnvironmentVariable("TARVESSA_CLUSTER");
    QVERIFY2(!m_folder.isEmpty(), "run by tests/cluster");
    m_nodes = std::make_unique<Nodes>();
}

void TstNodes::prepare() {
    const QString schema = readFile(QStringLiteral(TARVESSA_SOURCE_DIR "/demo/schema.sql"));
    m_nodes->execute(
        1, u"DROP DATABASE tarvessa; CREATE DATABASE tarvessa CHARACTER SET utf8mb4; USE tarvessa; "_s +
               schema + preparation);
}

void TstNodes::dayWhileNodesDie_data() {
    QTest::addColumn<QString>("source");
    QTest::addColumn<bool>("operatorsFirst");
    QTest::newRow("through the proxy") << u"odbc.ini"_s << false;
    // The driver always begins with the first server of its list: a station that reconnects after that one
    // has returned would work on another node than its neighbour.
    QTest::newRow("through the driver's list") << u"hosts.ini"_s << true;
}

/// How many pre-sales are closed and documents converted.
int TstNodes::progress() {
    return m_nodes
        ->value(u"SELECT COUNT(*) + (SELECT COUNT(DISTINCT nrpedido) FROM orcamento WHERE nrpedido > %1 AND "
                u"TipoOperacao "
                "= 'P') FROM caixa"_s.arg(lastNumber))
        .toInt();
}

/// Nothing is left to do; asked only when the operators have stopped to look.
bool TstNodes::isWorkDone() {
    return m_kills == kills && m_targets && !m_nodes->isOneMissing() && !m_work[0].interrupted &&
           !m_work[1].interrupted && m_nodes->value(rules[0].second) == u"0" &&
           m_nodes->value(rules[1].second) == u"0";
}

/// The next thing that the operator does.
void TstNodes::next(Work& work) {
    if (work.interrupted)
        work.station->tell(u"interrupted"_s);
    else
        work.station->tell(work.toDo.first());
}

void TstNodes::look(Work& work, const QJsonObject& answer) {
    const bool error = contains(answer, u"Erro em tempo de execução"_s);
    const bool lost = contains(answer, u"a próxima operação tentará abri-la novamente"_s);
    const bool later = contains(answer, u"Outra estação"_s);
    for (const auto& box : answer[u"boxes"].toArray())
        if (box.toString().contains(u"Erro em tempo"_s))
            qInfo("%s: %s", qPrintable(work.station->name()),
                  qPrintable(box.toString().simplified().left(400)));
    work.hasLost = work.hasLost || lost;
    work.hasMoved = work.hasMoved || (work.hasLost && !error);
    work.losses += lost ? 1 : 0;
    work.errors += error && !lost ? 1 : 0;
    QVERIFY2(answer[u"unclear"].toArray().isEmpty(),
             qPrintable(answer[u"unclear"].toArray().first().toString()));
    if (error)
        work.notBefore = m_clock.elapsed() + reportMs;
    if (error || later) {
        work.interrupted = true; // presses F7 before anything else
        return;
    }
    if (work.interrupted) {
        work.interrupted = answer[u"waiting"].toBool();
        return;
    }
    const QStringList enabled = answer[u"enabled"].toVariant().toStringList();
    const QString command = work.toDo.first();
    if (command == u"targets") {
        QVERIFY2(answer[u"boxes"].toArray().isEmpty(), "the targets could not be computed");
        m_targets = true;
    }
    if (work.toDo.size() > 1 && !(command == u"press Command2" && enabled.contains(u"Command2"_s)))
        work.toDo.removeFirst();
    if (work.toDo.size() == 1)
        work.toDo = {enabled.contains(u"Command4"_s) ? u"press Command4"_s : u"press Command3"_s};
}

/// The operators are at work on one node; that node is killed. It comes back some seconds later, or when both
/// operators have found another one.
void TstNodes::killAndBringBack(bool operatorsFirst) {
    const qint64 now = m_clock.elapsed();
    if (m_dead != 0) {
        if (now < m_backAt || (operatorsFirst && !(m_work[0].hasMoved && m_work[1].hasMoved)))
            return;
        m_nodes->bringBack(m_dead);
        m_dead = 0;
        return;
    }
    if (m_kills == kills || m_nodes->isOneMissing() || progress() < m_marks[m_kills])
        return;
    const QList<int> writers = m_nodes->withSessions();
    QVERIFY2(writers.size() == 1, "the stations work on more than one node");
    for (Work& work : m_work)
        work.hasLost = work.hasMoved = false;
    m_dead = writers.first();
    m_nodes->kill(m_dead);
    ++m_kills;
    m_backAt = m_clock.elapsed() + m_random.bounded(3000);
    qInfo("%.1f s: node %d killed", static_cast<double>(now) / 1000, m_dead);
}

void TstNodes::dayWhileNodesDie() {
    QFETCH(QString, source);
    QFETCH(bool, operatorsFirst);
    const int seed = qEnvironmentVariableIntValue("TARVESSA_NODES_SEED");
    m_random.seed(seed > 0 ? static_cast<quint32>(seed) : 20240315);
    m_marks.clear();
    for (int kill = 0; kill < kills; ++kill)
        m_marks.append((preSales + documents) * kill / (kills + 1) + 20 + m_random.bounded(60));
    m_kills = 0;
    m_dead = 0;
    m_targets = false;
    m_clock.start();
    prepare();
    const QString odbcIni = m_folder + u'/' + source;
    // The first station begins before the documents arrive, so that it lists pre-sales.
    m_work[0] = {std::make_unique<Station>(u"ana"_s, odbcIni), {u"press Command4"_s}};
    m_nodes->execute(1, arrivals);
    m_work[1] = {std::make_unique<Station>(u"bruno"_s, odbcIni),
                 {u"press Command2"_s, u"targets"_s, u"targets"_s, u"press Command3"_s}};
    bool done = false;
    while (!done || !m_work[0].station->isIdle() || !m_work[1].station->isIdle()) {
        QVERIFY2(m_clock.elapsed() < hangMs, "the day does not end");
        for (Work& work : m_work) {
            if (const std::optional<QJsonObject> answer = work.station->answer())
                look(work, *answer);
            if (QTest::currentTestFailed())
                return;
            done = done || isWorkDone();
            // A loss in the last moment is still looked after.
            if (work.station->isIdle() && m_clock.elapsed() >= work.notBefore && (!done || work.interrupted))
                next(work);
        }
        killAndBringBack(operatorsFirst);
        if (QTest::currentTestFailed())
            return;
        QTest::qWait(20);
    }
    for (Work& work : m_work)
        work.station.reset();
    for (int node = 1; node <= Nodes::count; ++node)
        for (const auto& [what, sql] : rules) {
            const QString found = m_nodes->value(node, sql);
            QVERIFY2(found == u"0",
                     qPrintable(u"node %1: %2: %3"_s.arg(node).arg(QLatin1String(what), found)));
        }
    QCOMPARE(m_kills, kills);
    QVERIFY(m_work[0].losses > 0 && m_work[1].losses > 0);
    qInfo(
        "%.0f s, %d nodes killed; ana lost the connection %d times and saw %d other errors, bruno %d and %d",
        static_cast<double>(m_clock.elapsed()) / 1000, m_kills, m_work[0].losses, m_work[0].errors,
        m_work[1].losses, m_work[1].errors);
}

QTEST_GUILESS_MAIN(TstNodes)

#include "tst_nodes.moc"
