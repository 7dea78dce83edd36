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
        const auto linhas = m_servidor->query(sql);
        return linhas.isEmpty() ? u"(no row)"_s : linhas[0][0];
    }

    std::unique_ptr<PrivateServer> m_servidor;
};

namespace {

// Kinds of columns, as far as the statements fix them.
const QString texto = u"text"_s;
const QString inteiro = u"integer"_s;
const QString dinheiro = u"decimal of 2 places"_s;
const QString quantidade = u"decimal of 3 places"_s;
const QString data = u"date"_s;
const QString hora = u"time"_s;
// Filled with a text of date and time.
const QString momento = u"date and time"_s;

using Colunas = std::map<QString, QString>;

Colunas deRelatorio() {
    Colunas colunas{
        {u"Codigo1"_s, texto}, {u"Codigo2"_s, texto}, {u"Quant"_s, quantidade}, {u"Data1"_s, texto}};
    for (int n = 1; n <= 7; ++n)
        colunas[u"Texto%1"_s.arg(n)] = texto;
    for (int n = 1; n <= 9; ++n)
        colunas[u"Valor%1"_s.arg(n)] = dinheiro;
    return colunas;
}

/// The kind of a column from its description in the server's catalogue.
QString especie(const QString& tipo, const QString& casas) {
    if (tipo == u"varchar"_s || tipo == u"char"_s || tipo == u"text"_s)
        return texto;
    if (tipo == u"int"_s || tipo == u"bigint"_s)
        return inteiro;
    if (tipo == u"decimal"_s && casas == u"2"_s)
        return dinheiro;
    if (tipo == u"decimal"_s && casas == u"3"_s)
        return quantidade;
    if (tipo == u"date"_s)
        return data;
    if (tipo == u"time"_s)
        return hora;
    if (tipo == u"datetime"_s)
        return momento;
    return tipo;
}

} // namespace

void TstEsquema::initTestCase() {
    m_servidor = std::make_unique<PrivateServer>();
    QVERIFY(IniciaBanco());
}

void TstEsquema::init() {
    for (const char* tabela : {"orcamento", "orcamento_controle", "produtos", "clientes", "vendedores",
                               "empresa", "relat", "relat2", "areceber", "movsaient", "logestoque"})
        m_servidor->execute(u"DELETE FROM %1"_s.arg(QLatin1StringView(tabela)));
}

void TstEsquema::cleanupTestCase() {
    EncerraBanco();
    m_servidor.reset();
}

void TstEsquema::tableHasItsColumns_data() {
    QTest::addColumn<Colunas>("colunas");
    const auto tabela = [](const char* nome, const Colunas& colunas) { QTest::newRow(nome) << colunas; };
    tabela("orcamento", {{u"id"_s, inteiro},
                         {u"nrpedido"_s, inteiro},
                         {u"TipoOperacao"_s, texto},
                         {u"situacaoorc"_s, texto},
                         {u"codigocli"_s, texto},
                         {u"placa"_s, texto},
                         {u"nomevendedor"_s, texto},
                         {u"Vendedor"_s, inteiro},
                         {u"dataabertura"_s, data},
                         {u"databaixa"_s, data},
                         {u"Horario"_s, hora},
                         {u"status"_s, texto},
                         {u"codigo"_s, texto},
                         {u"quantidade"_s, quantidade},
                         {u"unitario"_s, dinheiro},
                         {u"totalped"_s, dinheiro},
                         {u"UnitarioPAF"_s, dinheiro},
                         {u"TotalPaf"_s, dinheiro}});
    tabela("orcamento_controle", {{u"NrPedido"_s, inteiro},
                                  {u"tipoOperacao"_s, texto},
                                  {u"NrCaixa"_s, inteiro},
                                  {u"Status"_s, texto},
                                  {u"Fechamento"_s, momento}});
    tabela("observacao", {{u"nrpedido"_s, inteiro}, {u"tipoOperacao"_s, texto}});
    tabela("clientes", {{u"codigo"_s, texto},
                        {u"nome"_s, texto},
                        {u"fantasia"_s, texto},
                        {u"cidade"_s, texto},
                        {u"prazo"_s, inteiro},
                        {u"formapg"_s, texto},
                        {u"colunapreco"_s, texto},
                        {u"tabelas_preco"_s, texto},
                        {u"CNPJ_CPF"_s, texto},
                        {u"ativocad"_s, texto}});
    tabela("produtos", {{u"codfabr"_s, texto},
                        {u"descricao"_s, texto},
                        {u"aplicacao"_s, texto},
                        {u"observacao"_s, texto},
                        {u"ativo"_s, texto},
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
                        {u"Nitem"_s, inteiro},
                        {u"Localizacao"_s, texto},
                        {u"Unidade"_s, texto},
                        {u"LinhaProd"_s, inteiro}});
    tabela("FichaTecnica", {{u"codigo"_s, texto}, {u"codigoprod"_s, texto}, {u"quantidade"_s, quantidade}});
    tabela("logestoque", {{u"data"_s, data},
                          {u"hora"_s, hora},
                          {u"usuario"_s, texto},
                          {u"tela"_s, texto},
                          {u"codproduto"_s, texto},
                          {u"qtdLoja"_s, quantidade}});
    tabela("empresa", {{u"contadorPV"_s, inteiro},
                       {u"ultpedido"_s, inteiro},
                       {u"UltimaPV"_s, inteiro},
                       {u"ContaCTB1"_s, texto},
                       {u"PAF_ECF"_s, texto},
                       {u"ReservaAtualizaGridEstoque"_s, texto},
                       {u"Titulom1"_s, texto},
                       {u"Titulom2"_s, texto},
                       {u"Titulom3"_s, texto},
                       {u"Titulom4"_s, texto}});
    tabela("Finalizadoras", {{u"ID"_s, inteiro}, {u"Descricao"_s, texto}, {u"avista"_s, texto}});
    tabela("areceber", {{u"CodigoCli"_s, texto},
                        {u"NomeCli"_s, texto},
                        {u"Emissao"_s, data},
                        {u"Vencto"_s, data},
                        {u"Valor"_s, dinheiro},
                        {u"Historico"_s, texto},
                        {u"Nr_Pedido"_s, inteiro},
                        {u"DataBaixa"_s, data},
                        {u"ValorPago"_s, dinheiro},
                        {u"SitBaixa"_s, texto},
                        {u"TipoPag"_s, texto},
                        {u"TipoCartao"_s, texto},
                        {u"CodigoVend"_s, inteiro},
                        {u"CodigoMec"_s, inteiro},
                        {u"ContaCTB"_s, texto}});
    tabela("caixa", {{u"cd_cta"_s, texto},
                     {u"DataCx"_s, data},
                     {u"Historico"_s, texto},
                     {u"Valor"_s, dinheiro},
                     {u"Finaliza1"_s, texto},
                     {u"ValorFin1"_s, dinheiro},
                     {u"CodigoLanc"_s, texto},
                     {u"NrCaixa"_s, inteiro},
                     {u"USUARIO"_s, texto}});
    tabela("movsaient", {{u"nr_nf"_s, inteiro},
                         {u"serienf"_s, texto},
                         {u"dataemissao"_s, data},
                         {u"entrsai"_s, texto},
                         {u"cancelado"_s, texto},
                         {u"cfop"_s, texto},
                         {u"codigo"_s, texto},
                         {u"descricao"_s, texto},
                         {u"quantunit"_s, quantidade},
                         {u"totalvenda"_s, dinheiro},
                         {u"vlr_tot_item"_s, dinheiro},
                         {u"cnpj_cpf"_s, texto}});
    tabela("nfsaida",
           {{u"nrnf"_s, inteiro}, {u"SerieNF"_s, texto}, {u"CodVendedor"_s, inteiro}, {u"razsoc"_s, texto}});
    tabela("vendedores", {{u"codigovend"_s, inteiro},
                          {u"vendedor"_s, texto},
                          {u"Ativo"_s, texto},
                          {u"ComissEsp1"_s, dinheiro},
                          {u"ComissEsp2"_s, dinheiro}});
    tabela("Orcamento_Troca", {{u"codigo"_s, texto},
                               {u"codigocli"_s, texto},
                               {u"Vendedor"_s, inteiro},
                               {u"quantidade"_s, quantidade},
                               {u"pcfabrica"_s, dinheiro},
                               {u"situacaoorc"_s, texto},
                               {u"databaixa"_s, data}});
    tabela("metavendedoritem", {{u"ID"_s, inteiro},
                                {u"CodVendedor"_s, inteiro},
                                {u"CodigoProduto"_s, texto},
                                {u"Quantidade"_s, quantidade},
                                {u"Vendido"_s, quantidade},
                                {u"TotalVendas"_s, dinheiro},
                                {u"QtdDevolucao"_s, quantidade}});
    tabela("relat", deRelatorio());
    tabela("relat2", deRelatorio());
}

void TstEsquema::tableHasItsColumns() {
    QFETCH(Colunas, colunas);
    const auto linhas = m_servidor->query(
        u"SELECT column_name, data_type, IFNULL(numeric_scale, '') FROM information_schema.columns "
        "WHERE table_schema = DATABASE() AND LOWER(table_name) = LOWER('%1')"_s.arg(
            QString::fromLatin1(QTest::currentDataTag())));
    Colunas existentes;
    for (const QStringList& linha : linhas)
        existentes[linha[0]] = especie(linha[1], linha[2]);
    for (const auto& [nome, especieEsperada] : colunas) {
        QVERIFY2(existentes.contains(nome), qPrintable(nome));
        QVERIFY2(existentes[nome] == especieEsperada,
                 qPrintable(u"%1: %2, not %3"_s.arg(nome, existentes[nome], especieEsperada)));
    }
}

// What one report leaves in a table another reads, and both tables take the same statements.
void TstEsquema::stagingTablesHaveOneColumnSet() {
    const auto colunasDe = [this](const QString& tabela) {
        return m_servidor->query(
            u"SELECT column_name, column_type FROM information_schema.columns WHERE "
            "table_schema = DATABASE() AND table_name = '%1' ORDER BY column_name"_s.arg(tabela));
    };
    QVERIFY(colunasDe(u"relat"_s).size() >= 20);
    QCOMPARE(colunasDe(u"relat"_s), colunasDe(u"relat2"_s));
}

void TstEsquema::rowKeysAreUniqueAndGenerated_data() {
    QTest::addColumn<QString>("tabela");
    QTest::addColumn<QString>("chave");
    QTest::newRow("order lines") << u"orcamento"_s << u"id"_s;
    QTest::newRow("target items") << u"metavendedoritem"_s << u"ID"_s;
}

void TstEsquema::rowKeysAreUniqueAndGenerated() {
    QFETCH(QString, tabela);
    QFETCH(QString, chave);
    QCOMPARE(
        valor(u"SELECT CONCAT(column_key, ' ', extra) FROM information_schema.columns WHERE table_schema = "
              "DATABASE() AND table_name = '%1' AND column_name = '%2'"_s.arg(tabela, chave)),
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
    m_servidor->execute(
        u"INSERT INTO produtos (codfabr) VALUES ('1'), ('2'); "
        "INSERT INTO clientes (codigo, CNPJ_CPF) VALUES ('1', '1'), ('2', '2'); "
        "INSERT INTO orcamento_controle (NrPedido, tipoOperacao) VALUES (1, 'P'), (2, 'P')"_s);
    const auto plano = m_servidor->query(u"EXPLAIN "_s + sql);
    QCOMPARE(plano.size(), 1);
    constexpr int chavesPossiveis = 4;
    QVERIFY2(!plano[0][chavesPossiveis].isEmpty(), qPrintable(plano[0].join(u'|')));
}

void TstEsquema::backquotedNames() {
    Executa(u"INSERT INTO `areceber` (`CodigoCli`, `NomeCli`, `Valor`, `Nr_Pedido`) "
            "VALUES ('7', 'JOÃO', 12.50, 99)"_s);
    QCOMPARE(m_servidor->query(
                 u"SELECT CodigoCli, NomeCli, Valor, Nr_Pedido, DataBaixa, SitBaixa FROM areceber"_s),
             (QList<QStringList>{{u"7"_s, u"JOÃO"_s, u"12.50"_s, u"99"_s, u"1901-01-01"_s, u"A"_s}}));
}

void TstEsquema::groupingByFewerColumnsThanSelected() {
    m_servidor->execute(
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
    QTest::addColumn<QString>("tabela");
    for (const char* tabela : {"orcamento", "Orcamento", "produtos", "Produtos", "empresa", "Empresa",
                               "EMPRESA", "clientes", "Clientes", "vendedores", "Vendedores", "relat2",
                               "Relat2", "fichatecnica", "FICHATECNICA", "finalizadoras", "orcamento_troca"})
        QTest::newRow(tabela) << QString::fromLatin1(tabela);
}

void TstEsquema::tableNamesInAnyLetterCase() {
    QFETCH(QString, tabela);
    QVERIFY(AbreRS(u"SELECT COUNT(*) AS n FROM "_s + tabela));
    QVERIFY(!rs.field(u"n").isNull());
}

void TstEsquema::closingMomentAsText() {
    m_servidor->execute(u"INSERT INTO orcamento_controle (NrPedido, tipoOperacao) VALUES (1, 'P')"_s);
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
    QCOMPARE(m_servidor->query(u"SELECT Data1 FROM relat2 ORDER BY id"_s),
             (QList<QStringList>{{u"29/02/2024"_s}, {u"2024-02-29"_s}}));
}

QTEST_MAIN(TstEsquema)
#include "tst_esquema.moc"
