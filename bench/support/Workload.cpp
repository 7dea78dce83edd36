#include "bench/support/Workload.h"

#include "support/PrivateServer.h"

using namespace Qt::StringLiterals;

namespace tarvessa::bench {

namespace {

// d numbers the documents, l their lines.
QString presales(const QString& situation, const QString& from, const QString& opened) {
    return u"INSERT INTO orcamento (nrpedido, TipoOperacao, situacaoorc, codigocli, placa, nomevendedor, "
           "Vendedor, dataabertura, codigo, quantidade, unitario, totalped) "
           "SELECT d.seq, 'P', "_s +
           situation +
           u", LPAD(1 + d.seq * 7919 % 2000, 5, '0'), '', ELT(1 + d.seq % 9, 'ADRIANA', 'CLÁUDIO', "
           "'FERNANDA', 'JOÃO PEDRO', 'MARIA LÚCIA', 'PAULO', 'RITA', 'SÉRGIO', 'TERESA'), 1 + d.seq % 9, "_s +
           opened +
           u", LPAD(1 + (d.seq * 3 + l.seq) % 500, 6, '0'), 1 + l.seq, 12.50, (1 + l.seq) * 12.50 + "
           "d.seq % 700 "
           "FROM "_s +
           from;
}

} // namespace

Workload::Workload(test::PrivateServer& server) : m_server(server) {
    customers(usualCustomers);
    server.execute(
        u"INSERT INTO Finalizadoras VALUES (1, 'DINHEIRO', 'S'), (2, 'BOLETO', 'N'), (3, 'CARTÃO', 'N'), "
        "(4, 'CHEQUE', 'N');"
        "INSERT INTO empresa (contadorPV, ultpedido, UltimaPV, ContaCTB1, PAF_ECF) "
        "VALUES (0, 0, 0, '1.01/1.02/2.01/2.02/1.05', 'NAO');"
        "INSERT INTO FichaTecnica (codigo, codigoprod, quantidade) "
        "SELECT LPAD(1 + (p.seq * 10 + c.seq) % 500, 6, '0'), LPAD(p.seq * 10, 6, '0'), 0.5 * c.seq "
        "FROM seq_1_to_50 p, seq_1_to_2 c"_s);
    products();
}

void Workload::customers(int count) const {
    m_server.execute(
        u"TRUNCATE clientes;"
        "INSERT INTO clientes (codigo, nome, cidade, prazo, formapg, colunapreco, CNPJ_CPF) "
        "SELECT LPAD(seq, GREATEST(5, LENGTH(seq)), '0'), CONCAT('PADARIA E CONFEITARIA DO BAIRRO ', seq), "
        "ELT(1 + seq % 7, 'CAMPINAS', 'SÃO PAULO', 'RIBEIRÃO PRETO', 'SOROCABA', 'JUNDIAÍ', 'AMERICANA', "
        "'PIRACICABA'), 28, ELT(1 + seq % 4, 'BOLETO', 'CARTÃO', 'CHEQUE', 'DINHEIRO'), seq % 5, "
        "CONCAT(LPAD(seq, 8, '0'), '000195') FROM seq_1_to_%1; ANALYZE TABLE clientes"_s.arg(count));
}

void Workload::products() const {
    m_server.execute(u"TRUNCATE produtos;"
                     "INSERT INTO produtos (codfabr, descricao, Venda, quantidade, quantidade2) "
                     "SELECT LPAD(seq, 6, '0'), CONCAT('PRODUTO ', seq), 12.50, 100000, 100000 "
                     "FROM seq_1_to_500"_s);
}

void Workload::listing(int count, int lines) const {
    m_server.execute(u"TRUNCATE orcamento;"_s +
                     presales(u"'A'"_s, u"seq_1_to_%1 d, seq_1_to_%2 l"_s.arg(count).arg(lines),
                              u"CURDATE() - INTERVAL d.seq % 7 DAY"_s) +
                     u"; ANALYZE TABLE orcamento, clientes"_s);
}

void Workload::closing(int open, int documents) const {
    // Written through to the disk only while it is measured.
    m_server.execute(u"SET GLOBAL innodb_flush_log_at_trx_commit = 0"_s);
    products();
    m_server.execute(
        u"TRUNCATE orcamento; TRUNCATE orcamento_controle; TRUNCATE areceber; TRUNCATE caixa;"
        "TRUNCATE logestoque;"_s +
        presales(u"IF(MOD(d.seq, %1) = 0, 'A', 'B')"_s.arg(documents / open),
                 u"seq_1_to_%1 d, seq_1_to_3 l"_s.arg(documents), u"CURDATE() - INTERVAL d.seq % 7 DAY"_s) +
        u"; INSERT INTO orcamento_controle (NrPedido, tipoOperacao, Status) "
        "SELECT seq, 'P', 'A' FROM seq_1_to_%1; ANALYZE TABLE orcamento, clientes, produtos"_s.arg(
            documents));
    // What the server still has to do of it is not part of what is measured next.
    m_server.execute(u"SET GLOBAL innodb_max_purge_lag_wait = 0; SET GLOBAL innodb_log_checkpoint_now = ON; "
                     "SET GLOBAL innodb_flush_log_at_trx_commit = 1"_s);
}

// Each customer buys at the table that its number tells.
void Workload::trade(int documents, char kind) const {
    // Written through to the disk only while it is measured.
    m_server.execute(u"SET GLOBAL innodb_flush_log_at_trx_commit = 0"_s);
    products();
    m_server.execute(
        u"TRUNCATE orcamento; TRUNCATE observacao; UPDATE empresa SET contadorPV = 0;"
        "UPDATE produtos SET Venda2 = 11.90, Venda3 = 11.50, Venda4 = 10.90;"
        "INSERT INTO orcamento (nrpedido, TipoOperacao, situacaoorc, codigocli, nomevendedor, "
        "Vendedor, dataabertura, codigo, quantidade, unitario, totalped) "
        "SELECT 10000 + d.seq, '%2', 'A', LPAD(5 * (d.seq % 400) + 1 + d.seq % 4, 5, '0'), 'RITA', "
        "7, CURDATE(), LPAD(1 + (d.seq * 3 + l.seq) % 500, 6, '0'), l.seq, "
        "ELT(1 + d.seq % 4, 12.50, 11.90, 11.50, 10.90) + IF(l.seq > 18, 1, 0), 1 "
        "FROM seq_1_to_%1 d, seq_1_to_20 l;"
        "INSERT INTO observacao (nrpedido, tipoOperacao, texto) SELECT 10000 + seq, '%2', 'NOTA' "
        "FROM seq_1_to_%1; ANALYZE TABLE orcamento, observacao, clientes, produtos;"
        "SET GLOBAL innodb_flush_log_at_trx_commit = 1"_s.arg(documents)
            .arg(QLatin1Char(kind)));
}

void Workload::targets() const {
    m_server.execute(u"TRUNCATE metavendedoritem; INSERT INTO metavendedoritem (CodVendedor, CodigoProduto, "
                     "Quantidade) SELECT v.seq, LPAD(p.seq, 6, '0'), 10 * p.seq FROM seq_1_to_10 v, "
                     "seq_1_to_500 p; ANALYZE TABLE metavendedoritem"_s);
}

void Workload::fiscalYear(int lines, int customers) const {
    constexpr int linesPerInvoice = 4;
    m_server.execute(u"SET GLOBAL innodb_flush_log_at_trx_commit = 0"_s);
    m_server.execute(
        u"TRUNCATE movsaient; TRUNCATE nfsaida; TRUNCATE Orcamento_Troca; TRUNCATE vendedores;"
        "INSERT INTO vendedores (codigovend, vendedor, ComissEsp1, ComissEsp2) "
        "SELECT seq, CONCAT('VENDEDOR ', seq), 3, 1.5 FROM seq_1_to_9;"
        "INSERT INTO nfsaida (nrnf, SerieNF, CodVendedor, razsoc) "
        "SELECT seq, '1', 1 + seq % 9, CONCAT('PADARIA E CONFEITARIA DO BAIRRO ', 1 + seq % %3) "
        "FROM seq_1_to_%1;"
        "INSERT INTO movsaient (nr_nf, serienf, dataemissao, entrsai, cfop, codigo, descricao, quantunit, "
        "totalvenda, vlr_tot_item, cnpj_cpf) "
        "SELECT n.seq, '1', '2024-01-01' + INTERVAL n.seq % 366 DAY, IF(n.seq % 20 = 0, 'E', 'S'), "
        "IF(n.seq % 20 = 0, '1202', '5102'), LPAD(1 + (n.seq + l.seq) % 500, 6, '0'), "
        "ELT(1 + (n.seq + l.seq) % 3, 'PÃO FRANCÊS', 'BOLO DE MILHO', 'PAO DE FORMA'), l.seq, "
        "12.50 * l.seq + n.seq % 90, 12.50 * l.seq + n.seq % 90, "
        "CONCAT(LPAD(1 + n.seq % %3, 8, '0'), '000195') FROM seq_1_to_%1 n, seq_1_to_%2 l;"
        "INSERT INTO Orcamento_Troca (codigo, codigocli, Vendedor, quantidade, pcfabrica, situacaoorc, "
        "databaixa) SELECT LPAD(1 + seq % 500, 6, '0'), LPAD(1 + seq % 2000, 5, '0'), 1 + seq % 9, 1.5, "
        "3.25, 'B', '2024-01-01' + INTERVAL seq % 366 DAY FROM seq_1_to_1000;"
        "ANALYZE TABLE movsaient, nfsaida, Orcamento_Troca, vendedores, clientes, produtos"_s
            .arg(lines / linesPerInvoice)
            .arg(linesPerInvoice)
            .arg(customers));
    m_server.execute(u"SET GLOBAL innodb_flush_log_at_trx_commit = 1"_s);
}

} // namespace tarvessa::bench
