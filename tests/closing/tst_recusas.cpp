// What a closing refuses or cancels, and what its log says of it.

#include "closing/PainelFechamentoColumns.h"
#include "closing/PanelBench.h"
#include "support/ModalHelper.h"
#include "ui/grid/Grid.h"

#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

const QString pessoa = u"PRÉ-VENDA: %1 - O PEDIDO É DE PESSOA FÍSICA E FOI CANCELADO"_s;
const QString invalidMethod = u"PRÉ-VENDA: %1 - FORMA DE PAGAMENTO INVÁLIDA."_s;
const QString withoutStock = u"PRÉ-VENDA: %1 - O PEDIDO NÃO POSSUI ESTOQUE DISPONÍVEL"_s;
const QString withoutCustomer = u"PRÉ-VENDA: %1 - CLIENTE NÃO CADASTRADO."_s;

} // namespace

class TstRecusas : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { b = std::make_unique<PanelBench>(); }
    void cleanupTestCase() { b.reset(); }
    void init() { b->reset(); }

    void personByDocument_data();
    void personByDocument();
    void personIsCancelledEvenUnselected();
    void personIsNotSweptWhenNothingIsSelected();
    void paymentMethodAndTerm_data();
    void paymentMethodAndTerm();
    void methodNotInTheList_data();
    void methodNotInTheList();
    void methodThatWouldBreakTheStatements();
    void stock_data();
    void stock();
    void noteLinesWithoutQuantityPassTheStockTest();
    void stockTakenByTheRowBefore();
    void badMethodAndMissingStockGiveTwoLines();
    void customerWithoutRecord();
    void refusedStaysAndClosedLeaves();
    void numberInTheLog_data();
    void numberInTheLog();
    void logOfAMixedBatch();
    void logIsRewrittenAtEachPress();

  private:
    void closeAll(const QString& fim);
    QString situacao(int pedido) {
        return b->server().query(
            u"SELECT situacaoorc FROM orcamento WHERE nrpedido = %1"_s.arg(pedido))[0][0];
    }
    QStringList received() {
        QStringList pedidos;
        for (const QStringList& linha : b->server().query(u"SELECT Nr_Pedido FROM areceber ORDER BY id"_s))
            pedidos.append(linha[0]);
        return pedidos;
    }

    std::unique_ptr<PanelBench> b;
};

/// Presses the closing button; `fim` is the message at the end.
void TstRecusas::closeAll(const QString& fim) {
    ModalHelper modal;
    modal.expect(mensagens::lembrete, QMessageBox::Ok);
    modal.expect(fim, QMessageBox::Ok);
    b->press(u"Command4"_s);
    QCOMPARE(modal.problem(), QString());
}

void TstRecusas::personByDocument_data() {
    QTest::addColumn<Valor>("documento");
    QTest::addColumn<bool>("pessoaFisica");
    QTest::newRow("CPF") << Valor(u"12345678909"_s) << true;
    QTest::newRow("CPF with punctuation") << Valor(u"123.456.789-09"_s) << true;
    QTest::newRow("empty") << Valor(QString(u""_s)) << true;
    QTest::newRow("NULL") << Valor() << true;
    QTest::newRow("punctuation alone") << Valor(u"  .   .   /    -  "_s) << true;
    QTest::newRow("letters") << Valor(u"ISENTO"_s) << true;
    QTest::newRow("11 digits in 20 places") << Valor(u"1-2-3-4-5-6-7-8-9-01"_s) << true;
    QTest::newRow("12 digits") << Valor(u"123456789012"_s) << false;
    QTest::newRow("CNPJ") << Valor(u"12345678000195"_s) << false;
    QTest::newRow("CNPJ with punctuation") << Valor(u"12.345.678/0001-95"_s) << false;
}

void TstRecusas::personByDocument() {
    QFETCH(Valor, documento);
    QFETCH(bool, pessoaFisica);
    b->shop().basico();
    b->shop().cliente({.codigo = u"C2"_s, .cnpjCpf = documento});
    b->shop().documento({.pedido = 1, .cliente = u"C2"_s});
    QVERIFY(b->open());
    closeAll(pessoaFisica ? mensagens::comErros : mensagens::sucesso);
    QCOMPARE(b->log(),
             PanelBench::logWith(pessoaFisica ? QStringList{pessoa.arg(u"0000001"_s)} : QStringList()));
    QCOMPARE(b->server().query(u"SELECT situacaoorc, databaixa FROM orcamento"_s),
             (QList<QStringList>{{pessoaFisica ? u"X"_s : u"B"_s, u"2024-03-15"_s}}));
    QCOMPARE(received(), pessoaFisica ? QStringList() : QStringList{u"1"_s});
    QCOMPARE(b->grid()->rows(), 1);
}

void TstRecusas::personIsCancelledEvenUnselected() {
    b->shop().basico();
    b->shop().cliente({.codigo = u"C2"_s, .cnpjCpf = u"123.456.789-09"_s});
    b->shop().cliente({.codigo = u"C3"_s, .cnpjCpf = u""_s});
    b->shop().documento({.pedido = 1, .cliente = u"C2"_s, .nomeVendedor = u"A"_s});
    b->shop().documento({.pedido = 2, .nomeVendedor = u"B"_s});
    b->shop().documento({.pedido = 3, .cliente = u"C3"_s, .nomeVendedor = u"C"_s});
    b->shop().documento({.pedido = 4, .nomeVendedor = u"D"_s});
    QVERIFY(b->open());
    for (const int linha : {1, 3, 4})
        b->click(linha, painelfechamento::Selecao);
    closeAll(mensagens::comErros);
    QCOMPARE((QStringList{situacao(1), situacao(2), situacao(3), situacao(4)}),
             (QStringList{u"X"_s, u"B"_s, u"X"_s, u"A"_s}));
    QCOMPARE(b->log(), PanelBench::logWith({pessoa.arg(u"0000001"_s), pessoa.arg(u"0000003"_s)}));
    QCOMPARE(b->column(painelfechamento::Pedido), QStringList{u"4"_s});
}

void TstRecusas::personIsNotSweptWhenNothingIsSelected() {
    b->shop().basico();
    b->shop().cliente({.codigo = u"C2"_s, .cnpjCpf = u"123.456.789-09"_s});
    b->shop().documento({.pedido = 1, .cliente = u"C2"_s});
    QVERIFY(b->open());
    b->press(u"Command1"_s);
    ModalHelper modal;
    modal.expect(mensagens::nadaSelecionado, QMessageBox::Ok);
    b->press(u"Command4"_s);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(situacao(1), u"A"_s);
}

void TstRecusas::paymentMethodAndTerm_data() {
    QTest::addColumn<QString>("forma");
    QTest::addColumn<QString>("prazo");
    QTest::addColumn<bool>("valid");
    QTest::newRow("not cash, no term") << u"BOLETO"_s << u"0"_s << false;
    QTest::newRow("not cash, one day") << u"BOLETO"_s << u"1"_s << true;
    QTest::newRow("not cash, negative term") << u"BOLETO"_s << u"-1"_s << false;
    QTest::newRow("cash, no term") << u"PIX"_s << u"0"_s << true;
    QTest::newRow("cash, some days") << u"PIX"_s << u"10"_s << true;
    QTest::newRow("cash, negative term") << u"PIX"_s << u"-1"_s << false;
    QTest::newRow("card, no term") << u"CARTÃO"_s << u"0"_s << false;
    QTest::newRow("known by name but not marked as cash, no term") << u"OUTROS"_s << u"0"_s << false;
}

void TstRecusas::paymentMethodAndTerm() {
    QFETCH(QString, forma);
    QFETCH(QString, prazo);
    QFETCH(bool, valid);
    b->shop().basico();
    b->shop().cliente({.codigo = u"C2"_s, .prazo = prazo, .formaPg = forma});
    b->shop().documento({.pedido = 1, .cliente = u"C2"_s});
    QVERIFY(b->open());
    closeAll(valid ? mensagens::sucesso : mensagens::comErros);
    QCOMPARE(situacao(1), valid ? u"B"_s : u"A"_s);
    QCOMPARE(b->log(),
             PanelBench::logWith(valid ? QStringList() : QStringList{invalidMethod.arg(u"0000001"_s)}));
}

void TstRecusas::methodNotInTheList_data() {
    QTest::addColumn<Valor>("forma");
    QTest::newRow("unknown") << Valor(u"FIADO"_s);
    QTest::newRow("other letter case") << Valor(u"boleto"_s);
    QTest::newRow("without its accent") << Valor(u"CARTAO"_s);
    QTest::newRow("beginning of a name") << Valor(u"BOL"_s);
    QTest::newRow("blank after it") << Valor(u"BOLETO "_s);
    QTest::newRow("apostrophe") << Valor(u"D'ÁGUA"_s);
    QTest::newRow("empty") << Valor(QString(u""_s));
    QTest::newRow("NULL") << Valor();
}

void TstRecusas::methodNotInTheList() {
    QFETCH(Valor, forma);
    b->shop().basico();
    b->shop().cliente({.codigo = u"C2"_s, .formaPg = forma});
    b->shop().documento({.pedido = 1, .cliente = u"C2"_s});
    QVERIFY(b->open());
    closeAll(mensagens::comErros);
    QCOMPARE(situacao(1), u"A"_s);
    QCOMPARE(b->log(), PanelBench::logWith({invalidMethod.arg(u"0000001"_s)}));
}

void TstRecusas::methodThatWouldBreakTheStatements() {
    b->shop().basico();
    b->shop().forma(u"GOTA D'ÁGUA"_s, Valor(u"S"_s));
    b->shop().cliente({.codigo = u"C2"_s, .formaPg = u"GOTA D'ÁGUA"_s});
    b->shop().documento({.pedido = 1, .cliente = u"C2"_s});
    QVERIFY(b->open());
    closeAll(mensagens::comErros);
    QCOMPARE(situacao(1), u"A"_s);
    QCOMPARE(b->server().query(u"SELECT COUNT(*) FROM logestoque"_s)[0][0], u"0"_s);
    QCOMPARE(b->log(), PanelBench::logWith({invalidMethod.arg(u"0000001"_s)}));
}

void TstRecusas::stock_data() {
    QTest::addColumn<Valor>("shop");
    QTest::addColumn<Valor>("deposito");
    QTest::addColumn<QStringList>("quantidades");
    QTest::addColumn<bool>("enough");
    const Valor zero(u"0"_s);
    QTest::newRow("exactly what there is") << Valor(u"3"_s) << zero << QStringList{u"3"_s} << true;
    QTest::newRow("a thousandth too much") << Valor(u"3"_s) << zero << QStringList{u"3.001"_s} << false;
    QTest::newRow("shop and warehouse together")
        << Valor(u"1.5"_s) << Valor(u"1.5"_s) << QStringList{u"3"_s} << true;
    QTest::newRow("warehouse covers a negative shop")
        << Valor(u"-2"_s) << Valor(u"5"_s) << QStringList{u"3"_s} << true;
    QTest::newRow("lines of one product are added")
        << Valor(u"3"_s) << zero << QStringList{u"2"_s, u"2"_s} << false;
    QTest::newRow("a return makes room") << Valor(u"3"_s) << zero << QStringList{u"4"_s, u"-1"_s} << true;
    QTest::newRow("none asked, none there") << zero << zero << QStringList{u"0"_s} << true;
    QTest::newRow("none asked, stock below zero") << Valor(u"-1"_s) << zero << QStringList{u"0"_s} << false;
    QTest::newRow("shop stock NULL") << Valor() << Valor(u"5"_s) << QStringList{u"1"_s} << false;
    QTest::newRow("warehouse stock NULL") << Valor(u"5"_s) << Valor() << QStringList{u"1"_s} << false;
    QTest::newRow("both NULL, none asked") << Valor() << Valor() << QStringList{u"0"_s} << true;
}

void TstRecusas::stock() {
    QFETCH(Valor, shop);
    QFETCH(Valor, deposito);
    QFETCH(QStringList, quantidades);
    QFETCH(bool, enough);
    b->shop().basico();
    b->shop().produto({.codigo = u"P2"_s, .estoque = shop, .estoque2 = deposito});
    // The product tested is neither the first nor the last of the document.
    QList<Linha> linhas{{.codigo = u"P1"_s}};
    for (const QString& quantidade : quantidades)
        linhas.append({u"P2"_s, quantidade});
    b->shop().produto({.codigo = u"P3"_s});
    linhas.append({.codigo = u"P3"_s});
    b->shop().documento({.pedido = 1, .linhas = linhas});
    QVERIFY(b->open());
    closeAll(enough ? mensagens::sucesso : mensagens::comErros);
    QCOMPARE(situacao(1), enough ? u"B"_s : u"A"_s);
    QCOMPARE(b->log(),
             PanelBench::logWith(enough ? QStringList() : QStringList{withoutStock.arg(u"0000001"_s)}));
    if (!enough)
        QVERIFY(b->server().query(u"SELECT * FROM logestoque"_s).isEmpty());
}

// An unregistered product counts as none in stock, a note included.
void TstRecusas::noteLinesWithoutQuantityPassTheStockTest() {
    b->shop().basico();
    b->shop().documento(
        {.pedido = 1, .nomeVendedor = u"A"_s, .linhas = {{}, {u"***ENTREGAR CEDO"_s, u"0"_s}}});
    b->shop().documento({.pedido = 2, .nomeVendedor = u"B"_s, .linhas = {{}, {u"***FRETE"_s, u"1"_s}}});
    b->shop().documento({.pedido = 3, .nomeVendedor = u"C"_s, .linhas = {{u"SUMIU"_s, u"0.001"_s}}});
    QVERIFY(b->open());
    closeAll(mensagens::comErros);
    QCOMPARE(received(), QStringList{u"1"_s});
    QCOMPARE(b->log(), PanelBench::logWith({withoutStock.arg(u"0000002"_s), withoutStock.arg(u"0000003"_s)}));
}

void TstRecusas::stockTakenByTheRowBefore() {
    b->shop().basico();
    b->shop().produto({.codigo = u"P2"_s, .estoque = u"5"_s});
    for (const int pedido : {1, 2, 3})
        b->shop().documento({.pedido = pedido,
                             .nomeVendedor = u"V%1"_s.arg(pedido),
                             .linhas = {{u"P2"_s, pedido == 3 ? u"2"_s : u"3"_s}}});
    QVERIFY(b->open());
    closeAll(mensagens::comErros);
    QCOMPARE(received(), (QStringList{u"1"_s, u"3"_s}));
    QCOMPARE(b->log(), PanelBench::logWith({withoutStock.arg(u"0000002"_s)}));
    QCOMPARE(b->server().query(u"SELECT quantidade FROM produtos WHERE codfabr = 'P2'"_s),
             (QList<QStringList>{{u"0.000"_s}}));
}

void TstRecusas::badMethodAndMissingStockGiveTwoLines() {
    b->shop().basico();
    b->shop().cliente({.codigo = u"C2"_s, .prazo = u"0"_s});
    b->shop().documento({.pedido = 1234, .cliente = u"C2"_s, .linhas = {{.quantidade = u"101"_s}}});
    QVERIFY(b->open());
    closeAll(mensagens::comErros);
    QCOMPARE(b->log(),
             PanelBench::logWith({invalidMethod.arg(u"0001234"_s), withoutStock.arg(u"0001234"_s)}));
}

// Refused when selected, never taken for a person.
void TstRecusas::customerWithoutRecord() {
    b->shop().basico();
    b->shop().documento({.pedido = 1, .cliente = u"C9"_s, .nomeVendedor = u"A"_s});
    b->shop().documento({.pedido = 2, .cliente = u"C9"_s, .nomeVendedor = u"B"_s});
    b->shop().documento({.pedido = 3, .cliente = std::nullopt, .nomeVendedor = u"C"_s});
    b->shop().documento({.pedido = 4, .nomeVendedor = u"D"_s});
    QVERIFY(b->open());
    b->click(1, painelfechamento::Selecao);
    closeAll(mensagens::comErros);
    QCOMPARE(b->log(),
             PanelBench::logWith({withoutCustomer.arg(u"0000002"_s), withoutCustomer.arg(u"0000003"_s)}));
    QCOMPARE((QStringList{situacao(1), situacao(2), situacao(3), situacao(4)}),
             (QStringList{u"A"_s, u"A"_s, u"A"_s, u"B"_s}));
}

void TstRecusas::refusedStaysAndClosedLeaves() {
    b->shop().basico();
    b->shop().cliente({.codigo = u"C2"_s, .prazo = u"0"_s});
    b->shop().documento({.pedido = 1, .nomeVendedor = u"A"_s});
    b->shop().documento({.pedido = 2, .cliente = u"C2"_s, .nomeVendedor = u"B"_s});
    QVERIFY(b->open());
    closeAll(mensagens::comErros);
    QCOMPARE(b->column(painelfechamento::Pedido), QStringList{u"2"_s});

    b->server().execute(u"UPDATE clientes SET prazo = 7 WHERE codigo = 'C2'"_s);
    QVERIFY(b->open());
    closeAll(mensagens::sucesso);
    QCOMPARE(received(), (QStringList{u"1"_s, u"2"_s}));
    QCOMPARE(b->grid()->rows(), 1);
    QVERIFY(!b->button(u"Command4"_s)->isEnabled());
    QVERIFY(b->button(u"Command3"_s)->isEnabled());
}

void TstRecusas::numberInTheLog_data() {
    QTest::addColumn<int>("pedido");
    QTest::addColumn<QString>("formatted");
    QTest::newRow("1") << 1 << u"0000001"_s;
    QTest::newRow("1234") << 1234 << u"0001234"_s;
    QTest::newRow("1234567") << 1234567 << u"1234567"_s;
    QTest::newRow("largest") << 2147483647 << u"2147483647"_s;
}

void TstRecusas::numberInTheLog() {
    QFETCH(int, pedido);
    QFETCH(QString, formatted);
    b->shop().basico();
    b->shop().cliente({.codigo = u"C2"_s, .formaPg = u"FIADO"_s});
    b->shop().documento({.pedido = pedido, .cliente = u"C2"_s});
    QVERIFY(b->open());
    closeAll(mensagens::comErros);
    QCOMPARE(b->log(), PanelBench::logWith({invalidMethod.arg(formatted)}));
}

void TstRecusas::logOfAMixedBatch() {
    b->shop().basico();
    b->shop().cliente({.codigo = u"CPF"_s, .cnpjCpf = u"12345678909"_s});
    b->shop().cliente({.codigo = u"FIADO"_s, .formaPg = u"FIADO"_s});
    b->shop().documento({.pedido = 10, .cliente = u"FIADO"_s, .nomeVendedor = u"A"_s});
    b->shop().documento({.pedido = 20, .nomeVendedor = u"B"_s});
    b->shop().documento({.pedido = 30, .cliente = u"CPF"_s, .nomeVendedor = u"C"_s});
    b->shop().documento({.pedido = 40, .nomeVendedor = u"D"_s, .linhas = {{.quantidade = u"999"_s}}});
    b->shop().documento(
        {.pedido = 50, .cliente = u"FIADO"_s, .nomeVendedor = u"E"_s, .linhas = {{.quantidade = u"999"_s}}});
    QVERIFY(b->open());
    closeAll(mensagens::comErros);
    QCOMPARE(
        b->log(),
        QByteArray("LOG DE FECHAMENTO:\r\n"
                   "------------------\r\n"
                   "\r\n"
                   "PR\xC3\x89-VENDA: 0000010 - FORMA DE PAGAMENTO INV\xC3\x81LIDA.\r\n"
                   "PR\xC3\x89-VENDA: 0000030 - O PEDIDO \xC3\x89 DE PESSOA F\xC3\x8DSICA E FOI CANCELADO\r\n"
                   "PR\xC3\x89-VENDA: 0000040 - O PEDIDO N\xC3\x83O POSSUI ESTOQUE DISPON\xC3\x8DVEL\r\n"
                   "PR\xC3\x89-VENDA: 0000050 - FORMA DE PAGAMENTO INV\xC3\x81LIDA.\r\n"
                   "PR\xC3\x89-VENDA: 0000050 - O PEDIDO N\xC3\x83O POSSUI ESTOQUE DISPON\xC3\x8DVEL\r\n"));
    QCOMPARE(received(), QStringList{u"20"_s});
}

void TstRecusas::logIsRewrittenAtEachPress() {
    b->shop().basico();
    b->shop().cliente({.codigo = u"C2"_s, .formaPg = u"FIADO"_s});
    b->shop().documento({.pedido = 1, .cliente = u"C2"_s, .nomeVendedor = u"A"_s});
    b->shop().documento({.pedido = 2, .cliente = u"C2"_s, .nomeVendedor = u"B"_s});
    QVERIFY(b->open());
    closeAll(mensagens::comErros);
    QCOMPARE(b->log(),
             PanelBench::logWith({invalidMethod.arg(u"0000001"_s), invalidMethod.arg(u"0000002"_s)}));

    b->click(1, painelfechamento::Selecao);
    closeAll(mensagens::comErros);
    QCOMPARE(b->log(), PanelBench::logWith({invalidMethod.arg(u"0000002"_s)}));

    b->server().execute(u"UPDATE clientes SET formapg = 'BOLETO'"_s);
    QVERIFY(b->open());
    closeAll(mensagens::sucesso);
    QCOMPARE(b->log(), PanelBench::logWith({}));
}

QTEST_MAIN(TstRecusas)
#include "tst_recusas.moc"
