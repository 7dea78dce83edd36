#include "core/AcessoDados.h"
#include "support/ErrorOf.h"
#include "support/PrivateServer.h"

#include <QTest>

#include <map>
#include <memory>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

/// What the program needs of a shop's database: tables, columns with fitting types, and the SQL dialect. The
/// sample schema stands for the shop's.
class TstEsquema : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanupTestCase();

    void tableHasItsColumns_data();
    void tableHasItsColumns();
    void stagingTablesHaveOneColumnSet();
    void rowKeysAreUniqueAndGenerated_data();
    void rowKeysAreUniqueAndGenerated();
    void lookUpsHaveAnIndex_data();
    void lookUpsHaveAnIndex();

    void backquotedNames();
    void groupingByFewerColumnsThanSelected();
    void tableNamesInAnyLetterCase_data();
    void tableNamesInAnyLetterCase();
    void closingMomentAsText();
    void screenDateInTheStagingTable();

  private:
    QString valor(const QString& sql) {
        const auto linhas = m_server->query(sql);
        return linhas.isEmpty() ? u"(no row)"_s : linhas[0][0];
    }

    std::unique_ptr<PrivateServer> m_server;
};

namespace {

// Kinds of columns, as far as the statements fix them.
const QString text = u"text"_s;
const QString whole = u"integer"_s;
const QString dinheiro = u"decimal of 2 places"_s;
const QString quantidade = u"decimal of 3 places"_s;
const QString data = u"date"_s;
const QString hora = u"time"_s;
// Filled with a text of date and time.
const QString moment = u"date and time"_s;

using TableColumns = std::map<QString, QString>;

TableColumns deRelatorio() {
    TableColumns columns{
        {u"Codigo1"_s, text}, {u"Codigo2"_s, text}, {u"Quant"_s, quantidade}, {u"Data1"_s, text}};
    for (int n = 1; n <= 7; ++n)
        columns[u"Texto%1"_s.arg(n)] = text;
    for (int n = 1; n <= 9; ++n)
        columns[u"Valor%1"_s.arg(n)] = dinheiro;
    return columns;
}

/// The kind of a column from its description in the server's catalogue.
QString kind(const QString& tipo, const QString& casas) {
    if (tipo == u"varchar"_s || tipo == u"char"_s || tipo == u"text"_s)
        return text;
    if (tipo == u"int"_s || tipo == u"bigint"_s)
        return whole;
    if (tipo == u"decimal"_s && casas == u"2"_s)
        return dinheiro;
    if (tipo == u"decimal"_s && casas == u"3"_s)
        return quantidade;
    if (tipo == u"date"_s)
        return data;
    if (tipo == u"time"_s)
        return hora;
    if (tipo == u"datetime"_s)
        return moment;
    return tipo;
}

} // namespace

void TstEsquema::initTestCase() {
    m_server = std::make_unique<PrivateServer>();
    QVERIFY(IniciaBanco());
}

void TstEsquema::init() {
    for (const char* table : {"orcamento", "orcamento_controle", "produtos", "clientes", "vendedores",
                              "empresa", "relat", "relat2", "areceber", "movsaient", "logestoque"})
        m_server->execute(u"DELETE FROM %1"_s.arg(QLatin1StringView(table)));
}

void TstEsquema::cleanupTestCase() {
    EncerraBanco();
    m_server.reset();
}

void TstEsquema::tableHasItsColumns_data() {
    QTest::addColumn<TableColumns>("columns");
    const auto table = [](const char* name, const TableColumns& columns) { QTest::newRow(name) << columns; };
    table("orcamento", {{u"id"_s, whole},
                        {u"nrpedido"_s, whole},
                        {u"TipoOperacao"_s, text},
                        {u"situacaoorc"_s, text},
                        {u"codigocli"_s, text},
                        {u"placa"_s, text},
                        {u"nomevendedor"_s, text},
                        {u"Vendedor"_s, whole},
                        {u"dataabertura"_s, data},
                        {u"databaixa"_s, data},
                        {u"Horario"_s, hora},
                        {u"status"_s, text},
                        {u"codigo"_s, text},
                        {u"quantidade"_s, quantidade},
                        {u"unitario"_s, dinheiro},
                        {u"totalped"_s, dinheiro},
                        {u"UnitarioPAF"_s, dinheiro},
                        {u"TotalPaf"_s, dinheiro}});
    table("orcamento_controle", {{u"NrPedido"_s, whole},
                                 {u"tipoOperacao"_s, text},
                                 {u"NrCaixa"_s, whole},
                                 {u"Status"_s, text},
                                 {u"Fechamento"_s, moment}});
    table("observacao", {{u"nrpedido"_s, whole}, {u"tipoOperacao"_s, text}});
    table("clientes", {{u"codigo"_s, text},
                       {u"nome"_s, text},
                       {u"fantasia"_s, text},
                       {u"cidade"_s, text},
                       {u"prazo"_s, whole},
                       {u"formapg"_s, text},
                       {u"colunapreco"_s, text},
                       {u"tabelas_preco"_s, text},
                       {u"CNPJ_CPF"_s, text},
                       {u"ativocad"_s, text}});
    table("produtos", {{u"codfabr"_s, text},
                       {u"descricao"_s, text},
                       {u"aplicacao"_s, text},
                       {u"observacao"_s, text},
                       {u"ativo"_s, text},
                       {u"Venda"_s, dinheiro},
                       {u"Venda2"_s, dinheiro},
                       {u"Venda3"_s, dinheiro},
                       {u"Venda4"_s, dinheiro},
                       {u"ValidadePromo"_s, data},
                       {u"ValidadePromo2"_s, data},
                       {u"quantidade"_s, quantidade},
                       {u"quantidade2"_s, quantidade},
                       {u"Ultima_Saida"_s, data},
                       {u"Ultima_Alteracao"_s, data},
                       {u"Nitem"_s, whole},
                       {u"Localizacao"_s, text},
                       {u"Unidade"_s, text},
                       {u"LinhaProd"_s, whole}});
    table("FichaTecnica", {{u"codigo"_s, text}, {u"codigoprod"_s, text}, {u"quantidade"_s, quantidade}});
    table("logestoque", {{u"data"_s, data},
                         {u"hora"_s, hora},
                         {u"usuario"_s, text},
                         {u"tela"_s, text},
                         {u"codproduto"_s, text},
                         {u"qtdLoja"_s, quantidade}});
    table("empresa", {{u"contadorPV"_s, whole},
                      {u"ultpedido"_s, whole},
                      {u"UltimaPV"_s, whole},
                      {u"ContaCTB1"_s, text},
                      {u"PAF_ECF"_s, text},
                      {u"ReservaAtualizaGridEstoque"_s, text},
                      {u"Titulom1"_s, text},
                      {u"Titulom2"_s, text},
                      {u"Titulom3"_s, text},
                      {u"Titulom4"_s, text}});
    table("Finalizadoras", {{u"ID"_s, whole}, {u"Descricao"_s, text}, {u"avista"_s, text}});
    table("areceber", {{u"CodigoCli"_s, text},
                       {u"NomeCli"_s, text},
                       {u"Emissao"_s, data},
                       {u"Vencto"_s, data},
                       {u"Valor"_s, dinheiro},
                       {u"Historico"_s, text},
                       {u"Nr_Pedido"_s, whole},
                       {u"DataBaixa"_s, data},
                       {u"ValorPago"_s, dinheiro},
                       {u"SitBaixa"_s, text},
                       {u"TipoPag"_s, text},
                       {u"TipoCartao"_s, text},
                       {u"CodigoVend"_s, whole},
                       {u"CodigoMec"_s, whole},
                       {u"ContaCTB"_s, text}});
    table("caixa", {{u"cd_cta"_s, text},
                    {u"DataCx"_s, data},
                    {u"Historico"_s, text},
                    {u"Valor"_s, dinheiro},
                    {u"Finaliza1"_s, text},
                    {u"ValorFin1"_s, dinheiro},
                    {u"CodigoLanc"_s, text},
                    {u"NrCaixa"_s, whole},
                    {u"USUARIO"_s, text}});
    table("movsaient", {{u"nr_nf"_s, whole},
                        {u"serienf"_s, text},
                        {u"dataemissao"_s, data},
                        {u"entrsai"_s, text},
                        {u"cancelado"_s, text},
                        {u"cfop"_s, text},
                        {u"codigo"_s, text},
                        {u"descricao"_s, text},
                        {u"quantunit"_s, quantidade},
                        {u"totalvenda"_s, dinheiro},
                        {u"vlr_tot_item"_s, dinheiro},
                        {u"cnpj_cpf"_s, text}});
    table("nfsaida",
          {{u"nrnf"_s, whole}, {u"SerieNF"_s, text}, {u"CodVendedor"_s, whole}, {u"razsoc"_s, text}});
    table("vendedores", {{u"codigovend"_s, whole},
                         {u"vendedor"_s, text},
                         {u"Ativo"_s, text},
                         {u"ComissEsp1"_s, dinheiro},
                         {u"ComissEsp2"_s, dinheiro}});
    table("Orcamento_Troca", {{u"codigo"_s, text},
                              {u"codigocli"_s, text},
                              {u"Vendedor"_s, whole},
                              {u"quantidade"_s, quantidade},
                              {u"pcfabrica"_s, dinheiro},
                              {u"situacaoorc"_s, text},
                              {u"databaixa"_s, data}});
    table("metavendedoritem", {{u"ID"_s, whole},
                               {u"CodVendedor"_s, whole},
                               {u"CodigoProduto"_s, text},
                               {u"Quantidade"_s, quantidade},
                               {u"Vendido"_s, quantidade},
                               {u"TotalVendas"_s, dinheiro},
                               {u"QtdDevolucao"_s, quantidade}});
    table("relat", deRelatorio());
    table("relat2", deRelatorio());
}

void TstEsquema::tableHasItsColumns() {
    QFETCH(TableColumns, columns);
    const auto linhas = m_server->query(
        u"SELECT column_name, data_type, IFNULL(numeric_scale, '') FROM information_schema.columns "
        "WHERE table_schema = DATABASE() AND LOWER(table_name) = LOWER('%1')"_s.arg(
            QString::fromLatin1(QTest::currentDataTag())));
    TableColumns existing;
    for (const QStringList& row : linhas)
        existing[row[0]] = kind(row[1], row[2]);
    for (const auto& [name, expectedKind] : columns) {
        QVERIFY2(existing.contains(name), qPrintable(name));
        QVERIFY2(existing[name] == expectedKind,
                 qPrintable(u"%1: %2, not %3"_s.arg(name, existing[name], expectedKind)));
    }
}

// What one report leaves in a table another reads, and both tables take the same statements.
void TstEsquema::stagingTablesHaveOneColumnSet() {
    const auto columnsOf = [this](const QString& table) {
        return m_server->query(
            u"SELECT column_name, column_type FROM information_schema.columns WHERE "
            "table_schema = DATABASE() AND table_name = '%1' ORDER BY column_name"_s.arg(table));
    };
    QVERIFY(columnsOf(u"relat"_s).size() >= 20);
    QCOMPARE(columnsOf(u"relat"_s), columnsOf(u"relat2"_s));
}

void TstEsquema::rowKeysAreUniqueAndGenerated_data() {
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("keyName");
    QTest::newRow("order lines") << u"orcamento"_s << u"id"_s;
    QTest::newRow("target items") << u"metavendedoritem"_s << u"ID"_s;
}

void TstEsquema::rowKeysAreUniqueAndGenerated() {
    QFETCH(QString, table);
    QFETCH(QString, keyName);
    QCOMPARE(
        valor(u"SELECT CONCAT(column_key, ' ', extra) FROM information_schema.columns WHERE table_schema = "
              "DATABASE() AND table_name = '%1' AND column_name = '%2'"_s.arg(table, keyName)),
        u"PRI auto_increment"_s);
}

void TstEsquema::lookUpsHaveAnIndex_data() {
    QTest::addColumn<QString>("sql");
    QTest::newRow("lines of one document")
        << u"SELECT * FROM orcamento WHERE nrpedido=1 AND TipoOperacao='P'"_s;
    QTest::newRow("control row")
        << u"SELECT * FROM orcamento_controle WHERE NrPedido=1 AND tipoOperacao='P'"_s;
    QTest::newRow("notes of one document")
        << u"SELECT * FROM observacao WHERE nrpedido=1 AND tipoOperacao='D'"_s;
    QTest::newRow("customer") << u"SELECT * FROM clientes WHERE codigo='1'"_s;
    QTest::newRow("customer by tax number") << u"SELECT * FROM clientes WHERE CNPJ_CPF='1'"_s;
    QTest::newRow("product") << u"SELECT * FROM produtos WHERE codfabr='1'"_s;
    QTest::newRow("technical sheet") << u"SELECT * FROM FichaTecnica WHERE codigoprod='1'"_s;
    QTest::newRow("open lines of one product")
        << u"SELECT * FROM orcamento WHERE codigo='1' AND TipoOperacao='P' AND situacaoorc='A'"_s;
}

void TstEsquema::lookUpsHaveAnIndex() {
    QFETCH(QString, sql);
    // A plan on an empty table tells nothing, hence the keys the server finds possible.
    m_server->execute(u"INSERT INTO produtos (codfabr) VALUES ('1'), ('2'); "
                      "INSERT INTO clientes (codigo, CNPJ_CPF) VALUES ('1', '1'), ('2', '2'); "
                      "INSERT INTO orcamento_controle (NrPedido, tipoOperacao) VALUES (1, 'P'), (2, 'P')"_s);
    const auto plain = m_server->query(u"EXPLAIN "_s + sql);
    QCOMPARE(plain.size(), 1);
    constexpr int possibleKeys = 4;
    QVERIFY2(!plain[0][possibleKeys].isEmpty(), qPrintable(plain[0].join(u'|')));
}

void TstEsquema::backquotedNames() {
    Executa(u"INSERT INTO `areceber` (`CodigoCli`, `NomeCli`, `Valor`, `Nr_Pedido`) "
            "VALUES ('7', 'JOÃO', 12.50, 99)"_s);
    QCOMPARE(
        m_server->query(u"SELECT CodigoCli, NomeCli, Valor, Nr_Pedido, DataBaixa, SitBaixa FROM areceber"_s),
        (QList<QStringList>{{u"7"_s, u"JOÃO"_s, u"12.50"_s, u"99"_s, u"1901-01-01"_s, u"A"_s}}));
}

void TstEsquema::groupingByFewerColumnsThanSelected() {
    m_server->execute(
        u"INSERT INTO orcamento (nrpedido, placa, codigocli, totalped) VALUES (1, 'AAA', '7', 1.50), "
        "(1, 'AAA', '7', 2.00), (2, 'BBB', '8', 3.00)"_s);
    QVERIFY(AbreRS(
        u"SELECT nrpedido, placa, codigocli, SUM(totalped) AS totalped FROM Orcamento GROUP BY nrpedido "
        "ORDER BY nrpedido"_s));
    QCOMPARE(rs.field(u"placa").text(), u"AAA"_s);
    QCOMPARE(rs.field(u"totalped").text(), u"3.50"_s);
    rs.moveNext();
    QCOMPARE(rs.field(u"codigocli").text(), u"8"_s);
}

void TstEsquema::tableNamesInAnyLetterCase_data() {
    QTest::addColumn<QString>("table");
    for (const char* table : {"orcamento", "Orcamento", "produtos", "Produtos", "empresa", "Empresa",
                              "EMPRESA", "clientes", "Clientes", "vendedores", "Vendedores", "relat2",
                              "Relat2", "fichatecnica", "FICHATECNICA", "finalizadoras", "orcamento_troca"})
        QTest::newRow(table) << QString::fromLatin1(table);
}

void TstEsquema::tableNamesInAnyLetterCase() {
    QFETCH(QString, table);
    QVERIFY(AbreRS(u"SELECT COUNT(*) AS n FROM "_s + table));
    QVERIFY(!rs.field(u"n").isNull());
}

void TstEsquema::closingMomentAsText() {
    m_server->execute(u"INSERT INTO orcamento_controle (NrPedido, tipoOperacao) VALUES (1, 'P')"_s);
    Executa(u"UPDATE orcamento_controle SET NrCaixa=0,Status='B',Fechamento='2024-02-29 07:05:00' WHERE "
            u"NrPedido=1 "
            "AND tipoOperacao='P'"_s);
    QVERIFY(AbreRS(u"SELECT NrCaixa, Status, Fechamento FROM orcamento_controle"_s));
    QCOMPARE(rs.field(u"Fechamento").text(), u"2024-02-29 07:05:00"_s);
}

// One report fills the column with a date, another with the form of the screen.
void TstEsquema::screenDateInTheStagingTable() {
    Executa(u"INSERT INTO relat2 SET Data1='29/02/2024'"_s);
    Executa(u"INSERT INTO relat2 SET Data1='2024-02-29'"_s);
    QCOMPARE(m_server->query(u"SELECT Data1 FROM relat2 ORDER BY id"_s),
             (QList<QStringList>{{u"29/02/2024"_s}, {u"2024-02-29"_s}}));
}

QTEST_MAIN(TstEsquema)
#include "tst_esquema.moc"
