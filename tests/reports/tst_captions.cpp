#include "core/PrintLayout.h"
#include "printing/output/CsvFile.h"
#include "support/Bench.h"

#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

/// Every caption of every shipped layout, each over the value that belongs below it. All values of a row
/// differ and are large enough for their masks to show.
class TstCaptions : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { m = std::make_unique<Bench>(); }
    void cleanupTestCase() { m.reset(); }
    void init();

    void page_data();
    void page();
    void table_data();
    void table();
    void pageWithoutRows_data();
    void pageWithoutRows();

  private:
    void print(const QString& layout, const QStringList& formulas);

    std::unique_ptr<Bench> m;
};

void TstCaptions::init() {
    m->resetConnected();
}

void TstCaptions::print(const QString& layout, const QStringList& formulas) {
    printLayout(layout, u"Documento"_s, formulas);
    QCOMPARE(m->closePreviews(), 1);
}

namespace {

const QString commission = u"COMISSAO.RPT"_s;
const QString statement = u"ExtratoVendedorDistribuidora.RPT"_s;
const QString levels = u"RelatNivelPreco.RPT"_s;
const QString targets = u"Metas.RPT"_s;

const QString commissionRow =
    u"INSERT INTO relat2 SET Codigo1='7', Texto1='ANA', Valor1=1001.01, Valor2=1002.2, Valor3=3003.03, "
    "Valor4=4004.04, Valor5=1005.5, Valor6=6006.06, Valor7=7007.07, Valor8=8008.08, Valor9=9009.09, "
    "Texto2='12,34'"_s;
const QString statementRow =
    u"INSERT INTO relat2 SET Data1='10/02/2024', Valor1=1234567, Texto1='PADARIA', Valor2=2002.02, "
    "Valor3=3003.03, Valor4=5005.05"_s;
const QString levelRow =
    u"INSERT INTO clientes SET codigo='C7', nome='PADARIA', fantasia='PAO BOM', colunapreco='1', "
    "ativocad='S'"_s;
const QString targetRows =
    u"INSERT INTO relat2 (codigo1, codigo2, texto1, texto2, texto3, texto4, texto5, texto6, texto7) VALUES "
    "('7 - ANA', 'P1', 'LEITE', '2.002', '3.003', '150,0%', '5.005,05', '6.006', '7,1%'), "
    "('7 - ANA', '', '*** TOTAIS DE 7 - ANA ***', '8.002', '9.003', '112,5%', '9.005,05', '9.006', '9,1%')"_s;

const QString title = u"Titulo='PERÍODO DE TESTE'"_s;
const QStringList statementFormulas = {title, u"PorcComissaoPao= 1003"_s, u"PorcComissaoOutros= 1004.5"_s,
                                       u"TotalDevolucoes= 6006.06"_s, u"PercentualDev=' 120%'"_s};

} // namespace

void TstCaptions::page_data() {
    QTest::addColumn<QString>("row");
    QTest::addColumn<QString>("layout");
    QTest::addColumn<QStringList>("formulas");
    QTest::addColumn<QString>("words");
    const QString printed = u"Página 1 de 1 "_s;
    const QString when = u"Impresso em 15/03/2024 às 14:07 "_s;
    QTest::newRow("commission")
        << commissionRow << commission << QStringList{title}
        << printed + u"Comissão dos vendedores "_s + when +
               u"PERÍODO DE TESTE "
               "PÃO OUTROS TOTAL DEVOLUÇÕES "
               "Código Vendedor R$ total % com. R$ comissão R$ total % com. R$ comissão R$ vendas "
               "R$ comissões R$ % "
               "7 ANA 1.001,01 1002,2 3.003,03 4.004,04 1005,5 6.006,06 7.007,07 8.008,08 9.009,09 12,34 "
               "TOTAL (vendedores: 1) 1.001,01 3.003,03 4.004,04 6.006,06 7.007,07 8.008,08 9.009,09 "
               "128,57"_s;
    QTest::newRow("statement") << statementRow << statement << statementFormulas
                               << printed + u"Extrato do vendedor "_s + when +
                                      u"PERÍODO DE TESTE "
                                      "Data Nº NF Cliente R$ total pão R$ total outros R$ total NF "
                                      "10/02/2024 1234567 PADARIA 2.002,02 3.003,03 5.005,05 "
                                      "TOTAL (notas: 1) 2.002,02 3.003,03 5.005,05 "
                                      "R$ vendas % R$ comissão "
                                      "Pão 2.002,02 1.003,0% 20.080,26 Outros 3.003,03 1.004,5% 30.165,44 "
                                      "Total 5.005,05 50.245,70 Devoluções 6.006,06 120,00%"_s;
    QTest::newRow("price level")
        << levelRow << levels << QStringList()
        << printed + u"Clientes por nível de preço "_s + when +
               u"Clientes ativos, em ordem alfabética Nível de preço: 1 "
               "Código Nome Nome fantasia P C7 PADARIA PAO BOM Letra P: 1 Total de clientes: 1"_s;
    QTest::newRow("targets") << targetRows << targets << QStringList{title}
                             << printed + u"Metas por vendedor "_s + when +
                                    u"PERÍODO DE TESTE "
                                    "Código Descrição Meta Vendido % meta R$ total venda Devolução % devol. "
                                    "7 - ANA P1 LEITE 2.002 3.003 150,0% 5.005,05 6.006 7,1% "
                                    "*** TOTAIS DE 7 - ANA *** 8.002 9.003 112,5% 9.005,05 9.006 9,1%"_s;
}

void TstCaptions::page() {
    QFETCH(QString, row);
    QFETCH(QString, layout);
    QFETCH(QStringList, formulas);
    m->server().execute(row);
    print(layout, formulas);
    QFETCH(QString, words);
    QCOMPARE(m->reportWords().split(u' '), words.split(u' '));
}

void TstCaptions::table_data() {
    QTest::addColumn<QString>("row");
    QTest::addColumn<QString>("layout");
    QTest::addColumn<QStringList>("lines"); // the first two of the CSV file
    QTest::newRow("commission")
        << commissionRow << commission
        << QStringList{u"Código;Vendedor;R$ total pão;% comissão pão;R$ comissão pão;R$ total outros;"
                       "% comissão outros;R$ comissão outros;R$ total vendas;R$ total comissão;R$ devoluções;"
                       "% devoluções"_s,
                       u"7;ANA;1001,01;1002,2;3003,03;4004,04;1005,5;6006,06;7007,07;8008,08;9009,09;"
                       "12,34"_s};
    QTest::newRow("statement") << statementRow << statement
                               << QStringList{
                                      u"Data;Nº NF;Cliente;R$ total pão;R$ total outros;R$ total NF"_s,
                                      u"10/02/2024;1234567;PADARIA;2002,02;3003,03;5005,05"_s};
    QTest::newRow("price level") << levelRow << levels
                                 << QStringList{u"Código;Nome;Nome fantasia;Nível de preço"_s,
                                                u"C7;PADARIA;PAO BOM;1"_s};
    QTest::newRow("targets")
        << targetRows << targets
        << QStringList{
               u"Vendedor;Código;Descrição;Meta;Vendido;% meta;R$ total venda;Devolução;% devolução"_s,
               u"7 - ANA;P1;LEITE;2.002;3.003;150,0%;5.005,05;6.006;7,1%"_s};
}

void TstCaptions::table() {
    QFETCH(QString, row);
    QFETCH(QString, layout);
    m->server().execute(row);
    print(layout, statementFormulas);
    const QString path = m->programFolder() + u"/tabela.csv"_s;
    report::saveCsv(*m->reportControl()->lastReport(), path);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll()).remove(QChar::ByteOrderMark);
    QTEST(text.split(u"\r\n"_s).first(2), "lines");
}

void TstCaptions::pageWithoutRows_data() {
    QTest::addColumn<QString>("layout");
    QTest::addColumn<QString>("end");
    QTest::newRow("commission") << commission << u" Não há vendedores a imprimir."_s;
    QTest::newRow("statement") << statement << u" Não há notas no período."_s;
    QTest::newRow("price level") << levels << u" Não há clientes ativos neste nível de preço."_s;
    QTest::newRow("targets") << targets << u" Não há metas a imprimir."_s;
}

void TstCaptions::pageWithoutRows() {
    QFETCH(QString, layout);
    QFETCH(QString, end);
    print(layout, {});
    QVERIFY2(m->reportWords().contains(end), qPrintable(m->reportWords()));
}

QTEST_MAIN(TstCaptions)
#include "tst_captions.moc"
