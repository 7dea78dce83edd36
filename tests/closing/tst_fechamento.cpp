// What a closing sends and writes.

#include "base/Dinheiro.h"
#include "base/HostUser.h"
#include "closing/PainelFechamento.h"
#include "closing/PainelFechamentoColumns.h"
#include "closing/PanelBench.h"
#include "support/ModalHelper.h"
#include "support/StatementLog.h"
#include "ui/grid/Grid.h"

#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

// The clock stands at 15/03/2024 14:07:09.
const QString sqlListagem =
    u"SELECT o.codigocli, o.placa, o.nrpedido, o.TipoOperacao, c.nome, SUM(o.totalped) AS totalped, "
    "o.nomevendedor, c.cidade, c.prazo, c.formapg,c.colunapreco  FROM orcamento AS o left join clientes AS c "
    "ON o.codigocli=c.codigo where o.situacaoorc in ('A','C') and TipoOperacao='P' and "
    "dataabertura>='2024-03-08' group BY o.nrpedido Order By o.nomevendedor, c.nome"_s;
const QString sqlDocumentoDoCliente = u"Select CNPJ_CPF From Clientes Where Codigo='%1'"_s;
const QString sqlEstoque =
    u"SELECT o.codigo, SUM(o.quantidade) as quantidade, ifnull(p.quantidade+p.quantidade2,0) AS estoque  "
    u"FROM "
    "orcamento AS o left join produtos AS p ON o.codigo=p.codfabr WHERE Nrpedido=%1 AND tipoOperacao='P' "
    "GROUP BY codigo"_s;
const QString sqlLinhas = u"select * from orcamento where NrPedido=%1 AND tipoOperacao = 'P'"_s;
const QString sqlFicha = u"select codigo, codigoprod, quantidade from FichaTecnica where Codigoprod = '%1'"_s;
const QString sqlLogEstoque =
    u"INSERT INTO logestoque SET data = '2024-03-15', hora = '14:07:09', usuario = '"_s + hostUserName() +
    u"', "
    "tela = 'FECHAMENTO DA PV Nº %1', codproduto = '%2', qtdLoja = %3"_s;
const QString sqlSaida = u"update Produtos Set Ultima_Saida='2024-03-15',Quantidade=Quantidade - %1, "
                         "Nitem=Nitem%2 Where CodFabr='%3'"_s;
const QString sqlSaidaDeComponente =
    u"Update Produtos Set Ultima_Saida='2024-03-15', Quantidade = Quantidade - "
    "%1 where Codfabr = '%2'"_s;
const QString sqlLiquida =
    u" UPDATE orcamento SET SituacaoOrc='B', DataBaixa= '2024-03-15', Horario='14:07', "
    "status='B' WHERE NrPedido=%1 AND tipoOperacao = 'P'"_s;
const QString sqlControle = u"Update orcamento_controle Set NrCaixa=0, Status='B', "
                            "Fechamento='2024-03-15 14:07:00' WHERE NrPedido=%1 AND tipoOperacao = 'P'"_s;
const QString sqlAvista = u"SELECT avista FROM Finalizadoras WHERE Descricao = '%1'"_s;
const QString sqlReceber =
    u"INSERT INTO `areceber` (`CodigoCli`, `NomeCli`, `Emissao`, `Vencto`, `Valor`, `Historico`, "
    u"`Nr_Pedido`, "
    "`DataBaixa`, `ValorPago`, `SitBaixa`, `TipoPag`, CodigoVend, CodigoMec, ContaCTB) VALUES ("_s;
const QString sqlReceberCartao =
    u"INSERT INTO `areceber` (`CodigoCli`, `NomeCli`, `Emissao`, `Vencto`, `Valor`, `Historico`, "
    u"`Nr_Pedido`, "
    "`DataBaixa`, `ValorPago`, `SitBaixa`, `TipoPag`, TipoCartao, CodigoVend, CodigoMec, ContaCTB) "
    "VALUES ("_s;
const QString sqlCaixa =
    u"insert into caixa Set cd_cta='1.01', DataCx='2024-03-15', Historico= 'PEDIDO Nº 001.234-PADARIA "
    u"MODELO', "
    "Valor= 1234.5, Finaliza1='%1', ValorFin1= 1234.5, CodigoLanc='PED:001.234', NrCaixa=0, "
    "USUARIO='PAINEL PV'"_s;
const QString sqlUltimaPv = u"UPDATE Empresa SET UltimaPV=%1"_s;

const QString sqlTrava = u"SELECT GET_LOCK(CONCAT('tarvessa_fechamento_', MD5(DATABASE())), 10)"_s;
const QString sqlDestrava = u"SELECT RELEASE_LOCK(CONCAT('tarvessa_fechamento_', MD5(DATABASE())))"_s;
const QString sqlComMovimento =
    u"Select 'ESTOQUE' As tipo, Convert(tela Using utf8mb4) As texto From logestoque Where "
    "data>='2024-03-08' And tela Like 'FECHAMENTO DA PV Nº %' Group By tela Union All Select 'FICHA', "
    "Convert(codigoprod Using utf8mb4) From FichaTecnica Where Instr(codigo, Char(39))>0 Or Instr(codigo, "
    "Char(92))>0 Union All Select If(Max(situacaoorc In ('A','C')), 'PARTE', 'FIM'), nrpedido From orcamento "
    "Where TipoOperacao='P' And situacaoorc In ('A','B','C','X') And dataabertura>='2024-03-08' Group By "
    "nrpedido Having Max(situacaoorc In "
    "('B','X')) Union All Select 'PARTE', nrpedido From orcamento Where TipoOperacao='P' And situacaoorc In "
    "('B','X') And dataabertura<'2024-03-08' And nrpedido In (Select nrpedido From orcamento Where "
    "TipoOperacao='P' And situacaoorc In ('A','C') And dataabertura>='2024-03-08') Group By nrpedido "
    "Union All Select 'CLIENTE', Concat(nrpedido, ' ', Convert(codigocli Using utf8mb4)) From "
    "orcamento Where TipoOperacao='P' And situacaoorc In ('A','C') And dataabertura>='2024-03-08' Group By "
    "nrpedido, codigocli"_s;

/// The statements of a batch without those around its rows, which are checked here: lock and question before
/// the first one, the lock's release before the listing.
QStringList withoutFrame(QStringList texts) {
    const qsizetype listing = texts.size() - 1;
    if (texts.value(0) != sqlTrava || texts.value(1) != sqlComMovimento ||
        texts.value(listing - 1) != sqlDestrava)
        return {u"no lock, question and release around: "_s + texts.join(u'\n')};
    texts.removeAt(listing - 1);
    return texts.mid(2);
}

} // namespace

class TstFechamento : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { b = std::make_unique<PanelBench>(); }
    void cleanupTestCase() { b.reset(); }
    void init() { b->reset(); }

    void statementsOfEachReceivableForm_data();
    void statementsOfEachReceivableForm();
    void statementsWithTechnicalSheet();
    void statementsOfManyLines();
    void statementsWithPafEcf();
    void statementsOfACancelledPerson();
    void statementsOfRowsLeftAlone();
    void statementsOfARefusal();
    void statementsOfFechaPvAlone();

    void rowsWrittenByABill();
    void firstMatchingFormWins_data();
    void firstMatchingFormWins();
    void dueDateCrossesMonthAndYear();
    void numberFormats_data();
    void numberFormats();
    void nameInTheCashBookIsCutToFifty_data();
    void nameInTheCashBookIsCutToFifty();
    void oddNamesAreCleaned_data();
    void oddNamesAreCleaned();
    void accentsThroughEveryCharset_data();
    void accentsThroughEveryCharset();
    void totalOverTenMillion();
    void nullsInTheClosing();
    void sellerCode_data();
    void sellerCode();
    void sellerCodeBeyondSixteenBits();
    void termBeyondTheCalendar();
    void davOfTheSameNumberIsLeftAlone();
    void lastClosedNumberFollowsTheGridsOrder();

  private:
    void closeAll(const QStringList& mensagensDoFim = {mensagens::sucesso});
    QList<QStringList> consulta(const QString& sql) { return b->server().query(sql); }

    std::unique_ptr<PanelBench> b;
};

/// Presses the closing button and answers its messages.
void TstFechamento::closeAll(const QStringList& mensagensDoFim) {
    ModalHelper modal;
    modal.expect(mensagens::lembrete, QMessageBox::Ok);
    for (const QString& message : mensagensDoFim)
        modal.expect(message, QMessageBox::Ok);
    b->press(u"Command4"_s);
    QCOMPARE(modal.problem(), QString());
}

void TstFechamento::statementsOfEachReceivableForm_data() {
    QTest::addColumn<QString>("forma");
    QTest::addColumn<QString>("prazo");
    QTest::addColumn<QString>("receber");
    const QString common = u"'C1', 'PADARIA MODELO', '2024-03-15', "_s;
    const QString history = u", 'REF.: PRÉ VENDA Nº1234', 1234, "_s;
    QTest::newRow("card") << u"CARTÃO"_s << u"30"_s
                          << sqlReceberCartao + common + u"'2024-04-14',  1234.5"_s + history +
                                 u"'2024-04-14',  1234.5, 'B', 'CARTÃO', 'C-', 7, 0, '1.05')"_s;
    QTest::newRow("cheque") << u"CHEQUE PRÉ"_s << u"45"_s
                            << sqlReceber + common + u"'2024-04-29',  1234.5"_s + history +
                                   u"'2024-04-29',  1234.5, 'B', 'CHEQUE PRÉ', 7, 0, '1.05')"_s;
    QTest::newRow("open") << u"BOLETO"_s << u"30"_s
                          << sqlReceber + common + u"'2024-04-14',  1234.5"_s + history +
                                 u"'1901-01-01', 0.00, 'A', 'BOLETO', 7, 0, '1.05')"_s;
    QTest::newRow("cash") << u"DINHEIRO"_s << u"5"_s
                          << sqlReceber + common + u"'2024-03-15',  1234.5"_s + history +
                                 u"'2024-03-15',  1234.5, 'B', 'DINHEIRO', 7, 0, '1.01')"_s;
    QTest::newRow("cash by its mark") << u"PIX"_s << u"0"_s
                                      << sqlReceber + common + u"'2024-03-15',  1234.5"_s + history +
                                             u"'2024-03-15',  1234.5, 'B', 'PIX', 7, 0, '1.01')"_s;
    QTest::newRow("cash by its name") << u"TICKET"_s << u"15"_s
                                      << sqlReceber + common + u"'2024-03-15',  1234.5"_s + history +
                                             u"'2024-03-15',  1234.5, 'B', 'TICKET', 7, 0, '1.01')"_s;
}

void TstFechamento::statementsOfEachReceivableForm() {
    QFETCH(QString, forma);
    QFETCH(QString, prazo);
    QFETCH(QString, receber);
    b->shop().empresa();
    b->shop().formas();
    b->shop().cliente({.codigo = u"C1"_s, .prazo = prazo, .formaPg = forma});
    b->shop().produto({.codigo = u"P1"_s});
    b->shop().documento({.pedido = 1234, .linhas = {{.quantidade = u"1.5"_s, .total = u"1234.50"_s}}});
    QVERIFY(b->open());
    StatementLog log(b->server());
    closeAll();
    QCOMPARE(withoutFrame(log.texts()),
             StatementLog::expected(
                 {sqlDocumentoDoCliente.arg(u"C1"_s), sqlEstoque.arg(1234), sqlLinhas.arg(1234),
                  sqlFicha.arg(u"P1"_s), sqlLogEstoque.arg(u"1234"_s, u"P1"_s, u"-1.5"_s),
                  sqlSaida.arg(u" 1.5"_s, u"+1"_s, u"P1"_s), sqlLiquida.arg(1234), sqlControle.arg(1234),
                  sqlAvista.arg(forma), receber, sqlCaixa.arg(forma), sqlUltimaPv.arg(1234), sqlListagem}));
}

void TstFechamento::statementsWithTechnicalSheet() {
    b->shop().basico();
    b->shop().produto({.codigo = u"CESTA"_s});
    b->shop().ficha(u"CESTA"_s, {{u"PAO"_s, u"12"_s}, {u"CAFE"_s, u"0.5"_s}, {u"GELEIA"_s, u"0.333"_s}});
    b->shop().documento({.pedido = 1234, .linhas = {{u"CESTA"_s, u"2"_s, u"1234.50"_s}}});
    QVERIFY(b->open());
    StatementLog log(b->server());
    closeAll();
    QCOMPARE(
        withoutFrame(log.texts()).mid(3, 7),
        StatementLog::expected({sqlFicha.arg(u"CESTA"_s), sqlLogEstoque.arg(u"1234"_s, u"PAO"_s, u"-24"_s),
                                sqlSaidaDeComponente.arg(u" 24"_s, u"PAO"_s),
                                sqlLogEstoque.arg(u"1234"_s, u"CAFE"_s, u"-1"_s),
                                sqlSaidaDeComponente.arg(u" 1"_s, u"CAFE"_s),
                                sqlLogEstoque.arg(u"1234"_s, u"GELEIA"_s, u"-0.666"_s),
                                sqlSaidaDeComponente.arg(u" 0.666"_s, u"GELEIA"_s)}));
    QCOMPARE(withoutFrame(log.texts())[10], StatementLog::expected({sqlLiquida.arg(1234)})[0]);
    QCOMPARE(consulta(u"SELECT quantidade, Nitem FROM produtos WHERE codfabr = 'CESTA'"_s),
             (QList<QStringList>{{u"100.000"_s, u"0"_s}}));
}

// Notes move nothing, a returned line comes back into the stock, blanks around a code do not count.
void TstFechamento::statementsOfManyLines() {
    b->shop().basico();
    b->shop().produto({.codigo = u"P2"_s});
    b->shop().produto({.codigo = u"***FRETE"_s});
    b->shop().documento({.pedido = 1234,
                         .linhas = {{u"P1"_s, u"0.125"_s, u"1000.00"_s},
                                    {u"***FRETE"_s, u"1"_s, u"200.00"_s},
                                    {u"***"_s, u"0"_s, std::nullopt},
                                    {u" P2 "_s, u"0"_s, u"34.50"_s},
                                    {u"P2"_s, u"-3"_s, u"0"_s}}});
    QVERIFY(b->open());
    StatementLog log(b->server());
    closeAll();
    QCOMPARE(withoutFrame(log.texts()).mid(2, 11),
             StatementLog::expected({sqlLinhas.arg(1234), sqlFicha.arg(u"P1"_s),
                                     sqlLogEstoque.arg(u"1234"_s, u"P1"_s, u"-0.125"_s),
                                     sqlSaida.arg(u" 0.125"_s, u"+1"_s, u"P1"_s), sqlFicha.arg(u"P2"_s),
                                     sqlLogEstoque.arg(u"1234"_s, u"P2"_s, u" 0"_s),
                                     sqlSaida.arg(u" 0"_s, u"+1"_s, u"P2"_s), sqlFicha.arg(u"P2"_s),
                                     sqlLogEstoque.arg(u"1234"_s, u"P2"_s, u" 3"_s),
                                     sqlSaida.arg(u"-3"_s, u"-1"_s, u"P2"_s), sqlLiquida.arg(1234)}));
    QCOMPARE(consulta(u"SELECT codfabr, quantidade, Nitem FROM produtos ORDER BY codfabr"_s),
             (QList<QStringList>{{u"***FRETE"_s, u"100.000"_s, u"0"_s},
                                 {u"P1"_s, u"99.875"_s, u"1"_s},
                                 {u"P2"_s, u"103.000"_s, u"0"_s}}));
}

void TstFechamento::statementsWithPafEcf() {
    b->shop().empresa(u"1.01/1.02/2.01/2.02/1.05"_s, u"SIM"_s);
    b->shop().formas();
    b->shop().cliente({.codigo = u"C1"_s, .formaPg = u"DINHEIRO"_s});
    b->shop().produto({.codigo = u"P1"_s});
    b->shop().documento({.pedido = 1234, .linhas = {{.total = u"1234.50"_s}}});
    QVERIFY(b->open());
    StatementLog log(b->server());
    closeAll();
    QCOMPARE(
        withoutFrame(log.texts()),
        StatementLog::expected(
            {sqlDocumentoDoCliente.arg(u"C1"_s), sqlEstoque.arg(1234), sqlLinhas.arg(1234),
             sqlLiquida.arg(1234), sqlControle.arg(1234), sqlAvista.arg(u"DINHEIRO"_s),
             sqlReceber + u"'C1', 'PADARIA MODELO', '2024-03-15', '2024-03-15',  1234.5, "
                          "'REF.: PRÉ VENDA Nº1234', 1234, '2024-03-15',  1234.5, 'B', 'DINHEIRO', 7, 0, "
                          "'1.01')"_s,
             sqlCaixa.arg(u"DINHEIRO"_s), sqlUltimaPv.arg(1234), sqlListagem}));
    QCOMPARE(consulta(u"SELECT quantidade, Ultima_Saida, Nitem FROM produtos"_s),
             (QList<QStringList>{{u"100.000"_s, u"1901-01-01"_s, u"0"_s}}));
}

void TstFechamento::statementsOfACancelledPerson() {
    b->shop().basico();
    b->shop().cliente({.codigo = u"C2"_s, .cnpjCpf = u"123.456.789-09"_s});
    b->shop().documento({.pedido = 1234, .cliente = u"C2"_s});
    QVERIFY(b->open());
    StatementLog log(b->server());
    closeAll({mensagens::comErros});
    QCOMPARE(withoutFrame(log.texts()),
             StatementLog::expected({sqlDocumentoDoCliente.arg(u"C2"_s),
                                     u"Update Orcamento Set SituacaoOrc='X', databaixa='2024-03-15' Where "
                                     "nrpedido=1234 And TipoOperacao='P'"_s,
                                     sqlListagem}));
}

void TstFechamento::statementsOfRowsLeftAlone() {
    b->shop().basico();
    b->shop().documento({.pedido = 1, .nomeVendedor = u"A"_s});
    b->shop().documento({.pedido = 2, .nomeVendedor = u"B"_s, .linhas = {{.quantidade = u"500"_s}}});
    QVERIFY(b->open());
    b->click(1, painelfechamento::Selecao);
    StatementLog log(b->server());
    closeAll({mensagens::comErros});
    QCOMPARE(withoutFrame(log.texts()),
             StatementLog::expected({sqlDocumentoDoCliente.arg(u"C1"_s), sqlDocumentoDoCliente.arg(u"C1"_s),
                                     sqlEstoque.arg(2), sqlListagem}));
}

// The stock is looked into whatever the payment test said.
void TstFechamento::statementsOfARefusal() {
    b->shop().basico();
    b->shop().cliente({.codigo = u"C2"_s, .prazo = u"0"_s});
    b->shop().documento({.pedido = 9, .cliente = u"C2"_s});
    QVERIFY(b->open());
    StatementLog log(b->server());
    closeAll({mensagens::comErros});
    QCOMPARE(withoutFrame(log.texts()),
             StatementLog::expected({sqlDocumentoDoCliente.arg(u"C2"_s), sqlEstoque.arg(9), sqlListagem}));
}

void TstFechamento::statementsOfFechaPvAlone() {
    b->shop().basico();
    b->shop().documento({.pedido = 77});
    QVERIFY(b->open());
    StatementLog log(b->server());
    ModalHelper modal;
    b->panel()->FechaPV(77, u"BOLETO"_s, Dinheiro::dePonto(u"0.05"), QDate(2024, 12, 31), u"D'ÁVILA"_s);
    QCOMPARE(modal.problem(), QString());
    QVERIFY(modal.boxes().isEmpty());
    QCOMPARE(
        log.texts().mid(7),
        StatementLog::expected(
            {sqlReceber + u"'C1', 'D´ÁVILA', '2024-03-15', '2024-12-31',  0.05, 'REF.: PRÉ VENDA Nº77', 77, "
                          "'1901-01-01', 0.00, 'A', 'BOLETO', 7, 0, '1.05')"_s,
             u"insert into caixa Set cd_cta='1.01', DataCx='2024-03-15', Historico= 'PEDIDO Nº "
             "000.077-D´ÁVILA', Valor= 0.05, Finaliza1='BOLETO', ValorFin1= 0.05, CodigoLanc='PED:000.077', "
             "NrCaixa=0, USUARIO='PAINEL PV'"_s,
             sqlUltimaPv.arg(77)}));
    QVERIFY(b->log().isNull());
}

void TstFechamento::rowsWrittenByABill() {
    b->shop().basico();
    b->shop().documento({.pedido = 55, .linhas = {{.quantidade = u"4"_s}, {.quantidade = u"6"_s}}});
    QVERIFY(b->open());
    closeAll();
    const QStringList linha{u"B"_s, u"2024-03-15"_s, u"14:07:00"_s, u"B"_s};
    QCOMPARE(consulta(u"SELECT situacaoorc, databaixa, Horario, status FROM orcamento"_s),
             (QList<QStringList>{linha, linha}));
    QCOMPARE(consulta(u"SELECT NrCaixa, Status, Fechamento FROM orcamento_controle"_s),
             (QList<QStringList>{{u"0"_s, u"B"_s, u"2024-03-15 14:07:00"_s}}));
    QCOMPARE(
        consulta(u"SELECT CodigoCli, NomeCli, Emissao, Vencto, Valor, Historico, Nr_Pedido, DataBaixa, "
                 "ValorPago, SitBaixa, TipoPag, TipoCartao, CodigoVend, CodigoMec, ContaCTB FROM areceber"_s),
        (QList<QStringList>{{u"C1"_s, u"PADARIA MODELO"_s, u"2024-03-15"_s, u"2024-04-14"_s, u"20.00"_s,
                             u"REF.: PRÉ VENDA Nº55"_s, u"55"_s, u"1901-01-01"_s, u"0.00"_s, u"A"_s,
                             u"BOLETO"_s, QString(), u"7"_s, u"0"_s, u"1.05"_s}}));
    QCOMPARE(
        consulta(u"SELECT cd_cta, DataCx, Historico, Valor, Finaliza1, ValorFin1, CodigoLanc, NrCaixa, "
                 "USUARIO FROM caixa"_s),
        (QList<QStringList>{{u"1.01"_s, u"2024-03-15"_s, u"PEDIDO Nº 000.055-PADARIA MODELO"_s, u"20.00"_s,
                             u"BOLETO"_s, u"20.00"_s, u"PED:000.055"_s, u"0"_s, u"PAINEL PV"_s}}));
    QCOMPARE(consulta(u"SELECT quantidade, Ultima_Saida, Nitem FROM produtos"_s),
             (QList<QStringList>{{u"90.000"_s, u"2024-03-15"_s, u"2"_s}}));
    QCOMPARE(consulta(u"SELECT data, hora, usuario, tela, codproduto, qtdLoja FROM logestoque ORDER BY id"_s),
             (QList<QStringList>{{u"2024-03-15"_s, u"14:07:09"_s, hostUserName(), u"FECHAMENTO DA PV Nº 55"_s,
                                  u"P1"_s, u"-4.000"_s},
                                 {u"2024-03-15"_s, u"14:07:09"_s, hostUserName(), u"FECHAMENTO DA PV Nº 55"_s,
                                  u"P1"_s, u"-6.000"_s}}));
    QCOMPARE(consulta(u"SELECT UltimaPV FROM empresa"_s), (QList<QStringList>{{u"55"_s}}));
    QCOMPARE(b->grid()->rows(), 1);
}

void TstFechamento::firstMatchingFormWins_data() {
    QTest::addColumn<QString>("forma");
    QTest::addColumn<QString>("avista");
    QTest::addColumn<QString>("vencto");
    QTest::addColumn<QString>("sitBaixa");
    QTest::addColumn<QString>("cardType");
    QTest::addColumn<QString>("conta");
    const QString vence = u"2024-03-25"_s;
    const QString today = u"2024-03-15"_s;
    QTest::newRow("card marked as cash") << u"CARTÃO"_s << u"S"_s << vence << u"B"_s << u"C-"_s << u"1.05"_s;
    QTest::newRow("longer card name")
        << u"CARTÃO DÉBITO"_s << u"N"_s << vence << u"A"_s << QString() << u"1.05"_s;
    QTest::newRow("longer card name, cash")
        << u"CARTÃO DÉBITO"_s << u"S"_s << today << u"B"_s << QString() << u"1.01"_s;
    QTest::newRow("cheque marked as cash")
        << u"CHEQUE"_s << u"S"_s << vence << u"B"_s << QString() << u"1.05"_s;
    QTest::newRow("cheque run together")
        << u"CHEQUES"_s << u"N"_s << vence << u"B"_s << QString() << u"1.05"_s;
    QTest::newRow("cheque not at the start")
        << u"EM CHEQUE"_s << u"N"_s << vence << u"A"_s << QString() << u"1.05"_s;
    QTest::newRow("OUTROS") << u"OUTROS"_s << u"N"_s << today << u"B"_s << QString() << u"1.01"_s;
    QTest::newRow("DINHEIRO not marked")
        << u"DINHEIRO"_s << u"N"_s << today << u"B"_s << QString() << u"1.01"_s;
    QTest::newRow("short name") << u"VR"_s << u"N"_s << vence << u"A"_s << QString() << u"1.05"_s;
}

void TstFechamento::firstMatchingFormWins() {
    QFETCH(QString, forma);
    QFETCH(QString, avista);
    QFETCH(QString, vencto);
    QFETCH(QString, sitBaixa);
    QFETCH(QString, cardType);
    QFETCH(QString, conta);
    b->shop().empresa();
    b->shop().forma(forma, avista);
    b->shop().cliente({.codigo = u"C1"_s, .prazo = u"10"_s, .formaPg = forma});
    b->shop().produto({.codigo = u"P1"_s});
    b->shop().documento({.pedido = 1});
    QVERIFY(b->open());
    closeAll();
    const QString baixa = sitBaixa == u"A" ? u"1901-01-01"_s : vencto;
    const QString paid = sitBaixa == u"A" ? u"0.00"_s : u"10.00"_s;
    QCOMPARE(
        consulta(u"SELECT Emissao, Vencto, DataBaixa, ValorPago, SitBaixa, TipoPag, TipoCartao, ContaCTB "
                 "FROM areceber"_s),
        (QList<QStringList>{{u"2024-03-15"_s, vencto, baixa, paid, sitBaixa, forma, cardType, conta}}));
    QCOMPARE(consulta(u"SELECT cd_cta, Finaliza1 FROM caixa"_s), (QList<QStringList>{{u"1.01"_s, forma}}));
}

void TstFechamento::dueDateCrossesMonthAndYear() {
    b->shop().basico();
    b->shop().cliente({.codigo = u"C2"_s, .prazo = u"292"_s});
    b->shop().documento({.pedido = 1, .cliente = u"C2"_s});
    QVERIFY(b->open());
    closeAll();
    QCOMPARE(consulta(u"SELECT Vencto FROM areceber"_s), (QList<QStringList>{{u"2025-01-01"_s}}));
}

void TstFechamento::numberFormats_data() {
    QTest::addColumn<int>("pedido");
    QTest::addColumn<QString>("formatted");
    QTest::newRow("1") << 1 << u"000.001"_s;
    QTest::newRow("1234") << 1234 << u"001.234"_s;
    QTest::newRow("999999") << 999999 << u"999.999"_s;
    QTest::newRow("1234567") << 1234567 << u"1.234.567"_s;
    QTest::newRow("largest") << 2147483647 << u"2.147.483.647"_s;
}

void TstFechamento::numberFormats() {
    QFETCH(int, pedido);
    QFETCH(QString, formatted);
    b->shop().basico();
    b->shop().documento({.pedido = pedido});
    QVERIFY(b->open());
    closeAll();
    QCOMPARE(
        consulta(u"SELECT Historico, CodigoLanc FROM caixa"_s),
        (QList<QStringList>{{u"PEDIDO Nº "_s + formatted + u"-PADARIA MODELO"_s, u"PED:"_s + formatted}}));
    QCOMPARE(
        consulta(u"SELECT Historico, Nr_Pedido FROM areceber"_s),
        (QList<QStringList>{{u"REF.: PRÉ VENDA Nº"_s + QString::number(pedido), QString::number(pedido)}}));
    QCOMPARE(consulta(u"SELECT UltimaPV FROM empresa"_s), (QList<QStringList>{{QString::number(pedido)}}));
}

void TstFechamento::nameInTheCashBookIsCutToFifty_data() {
    QTest::addColumn<QString>("nome");
    QTest::addColumn<QString>("noCaixa");
    const QString fifty = QString(50, u'A');
    QTest::newRow("50") << fifty << fifty;
    QTest::newRow("51") << fifty + u'B' << fifty;
    QTest::newRow("60") << fifty + u"BCDEFGHIJK"_s << fifty;
    QTest::newRow("blank at the cut") << QString(48, u'A') + u"  BC"_s << QString(48, u'A');
    QTest::newRow("blanks at the ends") << u"  PADARIA  "_s << u"PADARIA"_s;
    QTest::newRow("four-byte character at the cut")
        << QString(49, u'A') + u"\U0001F950BC"_s << QString(49, u'A') + u"\U0001F950"_s;
    QTest::newRow("empty") << QString(u""_s) << QString(u""_s);
}

void TstFechamento::nameInTheCashBookIsCutToFifty() {
    QFETCH(QString, nome);
    QFETCH(QString, noCaixa);
    b->shop().basico();
    b->shop().cliente({.codigo = u"C2"_s, .nome = nome});
    b->shop().documento({.pedido = 1, .cliente = u"C2"_s});
    QVERIFY(b->open());
    closeAll();
    QCOMPARE(consulta(u"SELECT Historico FROM caixa"_s),
             (QList<QStringList>{{u"PEDIDO Nº 000.001-"_s + noCaixa}}));
    QCOMPARE(consulta(u"SELECT NomeCli FROM areceber"_s), (QList<QStringList>{{nome}}));
}

void TstFechamento::oddNamesAreCleaned_data() {
    QTest::addColumn<QString>("nome");
    QTest::addColumn<QString>("clean");
    QTest::newRow("apostrophe") << u"EMPÓRIO D'ÁVILA"_s << u"EMPÓRIO D´ÁVILA"_s;
    QTest::newRow("only apostrophes") << u"'''"_s << u"´´´"_s;
    QTest::newRow("backslash at the end") << u"PÃES\\DOCES\\"_s << u"PÃES/DOCES/"_s;
    QTest::newRow("line break") << u"PADARIA\r\nDO PORTO"_s << u"PADARIADO PORTO"_s;
    QTest::newRow("tab") << u"PADARIA\tDO PORTO"_s << u"PADARIADO PORTO"_s;
    QTest::newRow("four-byte characters") << u"CAFÉ \U0001F950"_s << u"CAFÉ \U0001F950"_s;
    QTest::newRow("what a driver might take for its own")
        << u"{d '2024'} ? %1 %s -- /* # `;"_s << u"{d ´2024´} ? %1 %s -- /* # `;"_s;
}

void TstFechamento::oddNamesAreCleaned() {
    QFETCH(QString, nome);
    QFETCH(QString, clean);
    b->shop().basico();
    b->shop().cliente({.codigo = u"C2"_s, .nome = nome});
    b->shop().documento({.pedido = 1, .cliente = u"C2"_s});
    QVERIFY(b->open());
    closeAll();
    QCOMPARE(consulta(u"SELECT NomeCli FROM areceber"_s), (QList<QStringList>{{clean}}));
    QCOMPARE(consulta(u"SELECT Historico FROM caixa"_s),
             (QList<QStringList>{{u"PEDIDO Nº 000.001-"_s + clean}}));
    QCOMPARE(consulta(u"SELECT situacaoorc FROM orcamento"_s), (QList<QStringList>{{u"B"_s}}));
}

void TstFechamento::accentsThroughEveryCharset_data() {
    QTest::addColumn<QString>("charset");
    QTest::newRow("none") << QString();
    QTest::newRow("utf8mb4") << u"utf8mb4"_s;
    QTest::newRow("latin1") << u"latin1"_s;
}

void TstFechamento::accentsThroughEveryCharset() {
    QFETCH(QString, charset);
    b->server().useCharset(charset);
    b->shop().basico();
    b->shop().cliente({.codigo = u"C2"_s, .nome = u"PÃES & CIA Nº 1 D'ÁVILA"_s, .formaPg = u"CARTÃO"_s});
    b->shop().documento({.pedido = 1, .cliente = u"C2"_s});
    QVERIFY(b->open());
    closeAll();
    QCOMPARE(consulta(u"SELECT NomeCli, Historico, TipoPag FROM areceber"_s),
             (QList<QStringList>{{u"PÃES & CIA Nº 1 D´ÁVILA"_s, u"REF.: PRÉ VENDA Nº1"_s, u"CARTÃO"_s}}));
    QCOMPARE(consulta(u"SELECT tela FROM logestoque"_s), (QList<QStringList>{{u"FECHAMENTO DA PV Nº 1"_s}}));
}

void TstFechamento::totalOverTenMillion() {
    b->shop().basico();
    b->shop().documento({.pedido = 1, .linhas = {{.total = u"12345678.90"_s}, {.total = u"0.09"_s}}});
    QVERIFY(b->open());
    closeAll();
    QCOMPARE(consulta(u"SELECT Valor FROM areceber"_s), (QList<QStringList>{{u"12345678.99"_s}}));
    QCOMPARE(consulta(u"SELECT Valor, ValorFin1 FROM caixa"_s),
             (QList<QStringList>{{u"12345678.99"_s, u"12345678.99"_s}}));
}

void TstFechamento::nullsInTheClosing() {
    b->server().execute(u"INSERT INTO empresa (id) VALUES (1)"_s);
    b->shop().forma(u"BOLETO"_s, std::nullopt);
    b->shop().cliente(
        {.codigo = u"C1"_s, .nome = std::nullopt, .cidade = std::nullopt, .colunaPreco = std::nullopt});
    b->shop().produto({.codigo = u"P1"_s, .estoque2 = std::nullopt});
    b->shop().produto({.codigo = u"P2"_s});
    b->shop().ficha(u"P2"_s, {{u"P1"_s, std::nullopt}});
    b->shop().documento({.pedido = 1,
                         .nomeVendedor = std::nullopt,
                         .vendedor = std::nullopt,
                         .linhas = {{.quantidade = std::nullopt}, {u"P2"_s, u"1"_s, std::nullopt}}});
    QVERIFY(b->open());
    closeAll();
    QCOMPARE(consulta(u"SELECT NomeCli, Valor, CodigoVend, ContaCTB, SitBaixa FROM areceber"_s),
             (QList<QStringList>{{QString(), u"10.00"_s, u"0"_s, u"00.000"_s, u"A"_s}}));
    QCOMPARE(consulta(u"SELECT codproduto, qtdLoja FROM logestoque ORDER BY id"_s),
             (QList<QStringList>{{u"P1"_s, u"0.000"_s}, {u"P1"_s, u"0.000"_s}}));
    QCOMPARE(consulta(u"SELECT quantidade FROM produtos WHERE codfabr = 'P1'"_s),
             (QList<QStringList>{{u"100.000"_s}}));
}

void TstFechamento::sellerCode_data() {
    QTest::addColumn<Valor>("vendedor");
    QTest::addColumn<QString>("stored");
    QTest::newRow("NULL") << Valor() << u"0"_s;
    QTest::newRow("0") << Valor(u"0"_s) << u"0"_s;
    QTest::newRow("largest of 16 bits") << Valor(u"32767"_s) << u"32767"_s;
    QTest::newRow("smallest of 16 bits") << Valor(u"-32768"_s) << u"-32768"_s;
}

void TstFechamento::sellerCode() {
    QFETCH(Valor, vendedor);
    QFETCH(QString, stored);
    b->shop().basico();
    b->shop().documento({.pedido = 1, .vendedor = vendedor});
    QVERIFY(b->open());
    closeAll();
    QCOMPARE(consulta(u"SELECT CodigoVend FROM areceber"_s), (QList<QStringList>{{stored}}));
}

// Nothing of the pre-sale was executed, so every press says again what is wrong with it.
void TstFechamento::sellerCodeBeyondSixteenBits() {
    b->shop().basico();
    b->shop().documento({.pedido = 1, .nomeVendedor = u"A"_s});
    b->shop().documento({.pedido = 2, .nomeVendedor = u"B"_s, .vendedor = u"32768"_s});
    b->shop().documento({.pedido = 3, .nomeVendedor = u"C"_s});
    QVERIFY(b->open());
    {
        ModalHelper modal;
        modal.expect(mensagens::lembrete, QMessageBox::Ok);
        modal.expectContaining(u"código de vendedor 32768"_s, QMessageBox::Ok);
        b->press(u"Command4"_s);
        QCOMPARE(modal.problem(), QString());
        QVERIFY(modal.boxes()[1].text.startsWith(mensagens::erroDeExecucao));
        QVERIFY(!modal.boxes()[1].informative.contains(mensagens::conexaoPerdida));
    }
    QCOMPARE(consulta(u"SELECT Nr_Pedido FROM areceber"_s), (QList<QStringList>{{u"1"_s}}));
    QCOMPARE(consulta(u"SELECT nrpedido FROM orcamento WHERE situacaoorc = 'A' ORDER BY nrpedido"_s),
             (QList<QStringList>{{u"2"_s}, {u"3"_s}}));

    QVERIFY(b->open());
    for (int attempt = 0; attempt < 2; ++attempt) {
        ModalHelper modal;
        modal.expect(mensagens::lembrete, QMessageBox::Ok);
        modal.expectContaining(u"código de vendedor 32768"_s, QMessageBox::Ok);
        b->press(u"Command4"_s);
        QCOMPARE(modal.problem(), QString());
    }
    b->click(1, painelfechamento::Selecao);
    closeAll();
    QCOMPARE(b->column(painelfechamento::Pedido), QStringList{u"2"_s});
}

void TstFechamento::termBeyondTheCalendar() {
    b->shop().basico();
    b->shop().cliente({.codigo = u"C2"_s, .prazo = u"2147483647"_s});
    b->shop().documento({.pedido = 1, .cliente = u"C2"_s});
    QVERIFY(b->open());
    const auto before = b->shop().retrato();
    for (int attempt = 0; attempt < 2; ++attempt) {
        ModalHelper modal;
        modal.expect(mensagens::lembrete, QMessageBox::Ok);
        modal.expect(mensagens::comErros, QMessageBox::Ok);
        b->press(u"Command4"_s);
        QCOMPARE(modal.problem(), QString());
        QCOMPARE(b->log(), PanelBench::logWith({u"PRÉ-VENDA: 0000001 - PRAZO DE PAGAMENTO INVÁLIDO."_s}));
    }
    QCOMPARE(b->shop().retrato(), before);
}

void TstFechamento::davOfTheSameNumberIsLeftAlone() {
    b->shop().basico();
    b->shop().cliente({.codigo = u"C2"_s, .cnpjCpf = u"12345678909"_s});
    for (const QString& tipo : {u"P"_s, u"D"_s}) {
        const QString situacao = tipo == u"D" ? u"B"_s : u"A"_s;
        b->shop().documento({.pedido = 1, .tipo = tipo, .situacao = situacao, .nomeVendedor = u"A"_s});
        b->shop().documento({.pedido = 2, .cliente = u"C2"_s, .tipo = tipo, .situacao = situacao});
    }
    QVERIFY(b->open());
    closeAll({mensagens::comErros});
    QCOMPARE(consulta(u"SELECT nrpedido, situacaoorc, databaixa FROM orcamento WHERE TipoOperacao = 'D' "
                      "ORDER BY nrpedido"_s),
             (QList<QStringList>{{u"1"_s, u"B"_s, QString()}, {u"2"_s, u"B"_s, QString()}}));
    QCOMPARE(consulta(u"SELECT Status FROM orcamento_controle WHERE tipoOperacao = 'D'"_s),
             (QList<QStringList>{{QString()}, {QString()}}));
    QCOMPARE(consulta(u"SELECT nrpedido, situacaoorc FROM orcamento WHERE TipoOperacao = 'P' "
                      "ORDER BY nrpedido"_s),
             (QList<QStringList>{{u"1"_s, u"B"_s}, {u"2"_s, u"X"_s}}));
    QCOMPARE(consulta(u"SELECT quantidade FROM produtos"_s), (QList<QStringList>{{u"99.000"_s}}));
}

void TstFechamento::lastClosedNumberFollowsTheGridsOrder() {
    b->shop().basico();
    b->shop().documento({.pedido = 900, .nomeVendedor = u"A"_s});
    b->shop().documento({.pedido = 200, .nomeVendedor = u"B"_s});
    QVERIFY(b->open());
    closeAll();
    QCOMPARE(consulta(u"SELECT Nr_Pedido FROM areceber ORDER BY id"_s),
             (QList<QStringList>{{u"900"_s}, {u"200"_s}}));
    QCOMPARE(consulta(u"SELECT UltimaPV FROM empresa"_s), (QList<QStringList>{{u"200"_s}}));
}

QTEST_MAIN(TstFechamento)
#include "tst_fechamento.moc"
