#include "support/Shop.h"

#include "base/Clock.h"
#include "base/Datas.h"
#include "support/PrivateServer.h"

#include <QRandomGenerator>

#include <utility>

using namespace Qt::StringLiterals;

namespace tarvessa::test {

namespace {

QString literal(const Valor& value) {
    if (!value)
        return u"NULL"_s;
    QString text = *value;
    return u'\'' + text.replace(u'\\', u"\\\\"_s).replace(u'\'', u"''"_s) + u'\'';
}

QString values(const QList<Valor>& columns) {
    QStringList texts;
    for (const Valor& column : columns)
        texts.append(literal(column));
    return u'(' + texts.join(u", "_s) + u')';
}

/// The value, or the column's own default where a test gives none.
QString orDefault(const Valor& value) {
    return value ? literal(value) : u"DEFAULT"_s;
}

} // namespace

void Shop::empresa(const Valor& contaCtb1, const Valor& pafEcf) {
    m_server.execute(u"INSERT INTO empresa (ContaCTB1, PAF_ECF) VALUES "_s + values({contaCtb1, pafEcf}));
}

void Shop::forma(const QString& descricao, const Valor& avista) {
    m_server.execute(u"INSERT INTO Finalizadoras (ID, Descricao, avista) "
                     "SELECT COALESCE(MAX(ID), 0) + 1, %1, %2 FROM Finalizadoras"_s.arg(literal(descricao),
                                                                                        literal(avista)));
}

void Shop::formas() {
    for (const QString& descricao : {u"DINHEIRO"_s, u"PIX"_s})
        forma(descricao, u"S"_s);
    for (const QString& descricao :
         {u"CARTÃO"_s, u"CHEQUE"_s, u"CHEQUE PRÉ"_s, u"TICKET"_s, u"BOLETO"_s, u"OUTROS"_s})
        forma(descricao, u"N"_s);
}

void Shop::cliente(const Cliente& cliente) {
    m_server.execute(
        u"INSERT INTO clientes (codigo, nome, cidade, prazo, formapg, colunapreco, CNPJ_CPF) VALUES "_s +
        values({cliente.codigo, cliente.nome, cliente.cidade, cliente.prazo, cliente.formaPg,
                cliente.colunaPreco, cliente.cnpjCpf}));
    QStringList outros;
    if (cliente.fantasia)
        outros.append(u"fantasia="_s + literal(cliente.fantasia));
    if (!cliente.outros.isEmpty())
        outros.append(cliente.outros);
    if (!outros.isEmpty())
        m_server.execute(
            u"UPDATE clientes SET %1 WHERE codigo=%2"_s.arg(outros.join(u", "_s), literal(cliente.codigo)));
}

void Shop::produto(const Produto& produto) {
    QString columns = u"codfabr, quantidade, quantidade2"_s;
    QList<Valor> row{produto.codigo, produto.estoque, produto.estoque2};
    if (produto.descricao) {
        columns += u", descricao"_s;
        row += produto.descricao;
    }
    if (!produto.precos.isEmpty()) {
        columns += u", Venda, Venda2, Venda3, Venda4"_s;
        row += produto.precos;
    }
    m_server.execute(u"INSERT INTO produtos (%1) VALUES "_s.arg(columns) + values(row));
}

void Shop::produto(const QString& codigo, const Valor& descricao, const QString& outros) {
    m_server.execute(u"INSERT INTO produtos SET codfabr="_s + literal(codigo) + u", descricao="_s +
                     literal(descricao) + (outros.isEmpty() ? QString() : u", "_s + outros));
}

void Shop::produtos(int quantidade) {
    m_server.execute(u"INSERT INTO produtos (codfabr, descricao) SELECT LPAD(seq, 13, '0'), "
                     "CONCAT('PRODUTO ', LPAD(seq, 3, '0')) FROM seq_1_to_"_s +
                     QString::number(quantidade));
}

void Shop::ficha(const QString& composto, const QList<Componente>& componentes) {
    for (const Componente& componente : componentes)
        m_server.execute(u"INSERT INTO FichaTecnica (codigoprod, codigo, quantidade) VALUES "_s +
                         values({composto, componente.codigo, componente.quantidade}));
}

void Shop::documento(const Documento& documento) {
    const QString pedido = QString::number(documento.pedido);
    const QString abertura = TextoSQL(clock::today().addDays(-documento.diasAtras));
    QStringList rows;
    for (const Linha& linha : documento.linhas) {
        const QString total = linha.unitario ? u"ROUND(%1*%2, 2)"_s.arg(*linha.quantidade, *linha.unitario)
                                             : literal(linha.total);
        QString row =
            values({pedido, documento.tipo, documento.situacao, documento.cliente, documento.nomeVendedor,
                    documento.vendedor, abertura, linha.codigo, linha.quantidade});
        row.chop(1);
        rows.append(row + u", "_s + orDefault(linha.unitario) + u", "_s + total + u')');
    }
    m_server.execute(
        u"INSERT INTO orcamento (nrpedido, TipoOperacao, situacaoorc, codigocli, nomevendedor, Vendedor, "
        "dataabertura, codigo, quantidade, unitario, totalped) VALUES "_s +
        rows.join(u", "_s));
    if (documento.controle)
        m_server.execute(u"INSERT INTO orcamento_controle (NrPedido, tipoOperacao) VALUES "_s +
                         values({pedido, documento.tipo}));
}

QString Shop::linhaAberta(const QString& codigo, const QString& cliente, const QString& outros) {
    m_server.execute(u"INSERT INTO orcamento SET nrpedido=1, TipoOperacao='P', situacaoorc='A', codigo=%1, "
                     "codigocli=%2, quantidade=1, unitario=1"_s.arg(literal(codigo), literal(cliente)));
    const QString id = valor(u"SELECT LAST_INSERT_ID()"_s);
    if (!outros.isEmpty())
        m_server.execute(u"UPDATE orcamento SET "_s + outros + u" WHERE id="_s + id);
    return id;
}

void Shop::vendedor(int codigo, const Valor& nome, const QString& ativo) {
    m_server.execute(u"INSERT INTO vendedores (codigovend, vendedor, Ativo) VALUES "_s +
                     values({QString::number(codigo), nome, ativo}));
}

void Shop::vendedor(int codigo, const Valor& nome, const Valor& comissEsp1, const Valor& comissEsp2) {
    m_server.execute(u"INSERT INTO vendedores (codigovend, vendedor, ComissEsp1, ComissEsp2) VALUES "_s +
                     values({QString::number(codigo), nome, comissEsp1, comissEsp2}));
}

void Shop::meta(int vendedor, const QString& produto, const Valor& quantidade) {
    m_server.execute(u"INSERT INTO metavendedoritem (CodVendedor, CodigoProduto, Quantidade) VALUES "_s +
                     values({QString::number(vendedor), produto, quantidade}));
}

void Shop::nota(int numero, int vendedor, const QString& razSoc, const QString& serie) {
    m_server.execute(u"INSERT INTO nfsaida (nrnf, SerieNF, CodVendedor, razsoc) VALUES "_s +
                     values({QString::number(numero), serie, QString::number(vendedor), razSoc}));
}

void Shop::linhaFiscal(const LinhaFiscal& l) {
    m_server.execute(
        u"INSERT INTO movsaient (nr_nf, serienf, dataemissao, entrsai, cancelado, cfop, codigo, descricao, "
        "quantunit, totalvenda, vlr_tot_item, cnpj_cpf) VALUES "_s +
        values({QString::number(l.nota), l.serie, l.data, l.entrsai, l.cancelado, l.cfop, l.codigo,
                l.descricao, u"1"_s, l.totalVenda, l.valorItem, l.cnpj}));
}

void Shop::venda(const Venda& venda) {
    const QString nota = QString::number(++m_nota);
    m_server.execute(u"INSERT INTO nfsaida (nrnf, SerieNF, CodVendedor) VALUES "_s +
                     values({nota, u"1"_s, QString::number(venda.vendedor)}));
    m_server.execute(
        u"INSERT INTO movsaient (nr_nf, serienf, dataemissao, entrsai, cancelado, codigo, descricao, "
        "quantunit, totalvenda) VALUES "_s +
        values({nota, u"1"_s, venda.emissao, venda.entrSai, venda.cancelado, venda.produto, u"X"_s,
                venda.quantidade, venda.total}));
}

void Shop::devolucao(const Devolucao& devolucao) {
    m_server.execute(u"INSERT INTO Orcamento_Troca (codigo, codigocli, Vendedor, quantidade, pcfabrica, "
                     u"situacaoorc, databaixa) "
                     "VALUES "_s +
                     values({devolucao.produto, devolucao.cliente, QString::number(devolucao.vendedor),
                             devolucao.quantidade, devolucao.custo, devolucao.situacao, devolucao.baixa}));
}

void Shop::basico() {
    empresa();
    formas();
    cliente({.codigo = u"C1"_s});
    produto({.codigo = u"P1"_s});
}

void Shop::basicoDosDocumentos() {
    m_server.execute(
        u"INSERT INTO empresa (contadorPV, ultpedido, ContaCTB1, PAF_ECF) VALUES (100, 500, '1.01', 'NAO')"_s);
    for (const auto& [descricao, avista] :
         {std::pair(u"DINHEIRO"_s, u"S"_s), std::pair(u"CARTÃO"_s, u"N"_s), std::pair(u"BOLETO"_s, u"N"_s),
          std::pair(u"PIX"_s, u"S"_s), std::pair(u"CHEQUE PRÉ"_s, u"N"_s)})
        forma(descricao, avista);
}

void Shop::basicoDasMetas() {
    vendedor(1, u"ANA"_s);
    vendedor(2, u"BRUNO"_s);
    produto(u"P1"_s, u"PAO FRANCES"_s);
    produto(u"P2"_s, u"PAO DOCE"_s);
    produto(u"P3"_s, u"LEITE"_s);
}

void Shop::movimento(quint32 seed) {
    QRandomGenerator random(seed);
    const auto one = [&random](const QStringList& of) { return of[random.bounded(of.size())]; };
    const auto amount = [&random](int below) {
        return u"%1.%2"_s.arg(random.bounded(below)).arg(random.bounded(100), 2, 10, QLatin1Char('0'));
    };
    const QStringList dias = {u"2024-01-31"_s, u"2024-02-01"_s, u"2024-02-15"_s, u"2024-02-29"_s,
                              u"2024-03-01"_s};
    const QStringList descricoes = {u"PÃO FRANCÊS"_s,   u"PAO DE FORMA"_s,  u"pão de queijo"_s,
                                    u"PAOZINHO DOCE"_s, u"BOLO DE MILHO"_s, u"SONHO"_s,
                                    u"PA O FALSO"_s,    u"PAÇOCA"_s};
    const QStringList vendas = {u"5101"_s, u"5102"_s, u"5104"_s, u"5401"_s, u"5405"_s, u"6101"_s,
                                u"6404"_s, u"5656"_s, u"5910"_s, u"6656"_s, u"5103"_s};
    const QStringList devolucoes = {u"1202"_s, u"1411"_s, u"2202"_s, u"2411"_s, u"1201"_s};
    constexpr int clientes = 60;
    constexpr int vendedores = 9;
    constexpr int notas = 150;
    constexpr int linhasPorNota = 4;
    m_server.execute(u"START TRANSACTION"_s);
    for (int i = 1; i <= clientes; ++i) {
        const QString nome = u"CLIENTE %1"_s.arg(i, 3, 10, QLatin1Char('0'));
        cliente({.codigo = u"C%1"_s.arg(i),
                 .nome = nome,
                 .colunaPreco = one({u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"0"_s, u"5"_s, u""_s}),
                 .cnpjCpf = u"900%1"_s.arg(i),
                 .fantasia = u"F "_s + nome});
    }
    for (int i = 1; i < vendedores; ++i) { // the last one has no row
        const QString primeira = amount(10);
        const QString segunda = one({amount(10), u"NULL"_s});
        vendedor(i, u"VENDEDOR %1"_s.arg(i), primeira, segunda == u"NULL" ? Valor() : Valor(segunda));
    }
    for (int i = 1; i <= 5; ++i)
        produto(u"P%1"_s.arg(i), one(descricoes));
    for (int n = 1; n <= notas; ++n) {
        const bool devolvida = random.bounded(5) == 0;
        const QString documento = u"900%1"_s.arg(random.bounded(clientes + 2) + 1);
        const QString dia = one(dias);
        const QString serie = one({u"1"_s, u"2"_s});
        nota(n, random.bounded(vendedores + 1), u"RAZÃO %1"_s.arg(n), u"1"_s);
        nota(n, random.bounded(vendedores + 1), u"RAZÃO %1 B"_s.arg(n), u"2"_s);
        for (int l = 0; l < linhasPorNota; ++l)
            linhaFiscal({n, dia, devolvida ? u"E"_s : u"S"_s, devolvida ? one(devolucoes) : one(vendas),
                         u"P%1"_s.arg(random.bounded(8)), one(descricoes), amount(devolvida ? 50 : 900),
                         amount(900), documento, one({u"N"_s, u"N"_s, u"N"_s, u"S"_s}), serie});
    }
    // Every seller with exchanges has sales as well.
    for (int v = 1; v <= vendedores; ++v) {
        nota(notas + v, v, u"CERTA %1"_s.arg(v));
        linhaFiscal({notas + v, u"2024-02-20"_s, u"S"_s, u"5102"_s, u"X"_s, one(descricoes), u"5000.00"_s,
                     u"5000.00"_s, u"9001"_s, u"N"_s, u"1"_s});
        for (int t = 0; t < 6; ++t) {
            Devolucao troca{.vendedor = v, .produto = u"P1"_s};
            troca.cliente = u"C%1"_s.arg(random.bounded(clientes + 2) + 1);
            troca.quantidade =
                u"%1.%2"_s.arg(random.bounded(5)).arg(random.bounded(1000), 3, 10, QLatin1Char('0'));
            troca.custo = amount(20);
            troca.baixa = one(dias);
            troca.situacao = one({u"B"_s, u"B"_s, u"A"_s});
            devolucao(troca);
        }
    }
    m_server.execute(u"COMMIT"_s);
}

// Only tables that hold something: emptying one costs the server many times what looking into it does.
void Shop::esvazia() {
    QStringList looks;
    for (const QString& tabela : tabelas())
        looks.append(u"SELECT '%1' FROM (SELECT 1 FROM `%1` LIMIT 1) AS t"_s.arg(tabela));
    for (const QStringList& cheia : m_server.query(looks.join(u" UNION ALL "_s)))
        m_server.execute(u"TRUNCATE TABLE `%1`"_s.arg(cheia[0]));
    m_nota = 0;
}

QMap<QString, QList<QStringList>> Shop::retrato() {
    QMap<QString, QList<QStringList>> all;
    for (const QString& tabela : tabelas())
        all.insert(tabela, m_server.query(u"SELECT * FROM `%1` ORDER BY 1, 2"_s.arg(tabela)));
    return all;
}

QList<QStringList> Shop::metas() {
    return m_server.query(
        u"SELECT CodVendedor, CodigoProduto, Quantidade, Vendido, TotalVendas, QtdDevolucao "
        "FROM metavendedoritem ORDER BY CodVendedor, CodigoProduto"_s);
}

QList<QStringList> Shop::estagio() {
    return m_server.query(
        u"SELECT codigo1, codigo2, texto1, texto2, texto3, texto4, texto5, texto6, texto7 FROM relat2 "
        "ORDER BY id"_s);
}

QString Shop::valor(const QString& sql) {
    const QList<QStringList> rows = m_server.query(sql);
    return rows.isEmpty() ? u"(no row)"_s : rows[0][0];
}

QStringList Shop::tabelas() {
    QStringList names;
    for (const QStringList& row : m_server.query(u"SHOW TABLES"_s))
        names.append(row[0]);
    return names;
}

} // namespace tarvessa::test
