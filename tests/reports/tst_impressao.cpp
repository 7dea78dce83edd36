#include "core/Pastas.h"
#include "core/Relatorio.h"
#include "platform/DateBox.h"
#include "platform/grid/Grid.h"
#include "reports/Comissao.h"
#include "reports/ExtratoVendedor.h"
#include "reports/Movimento.h"
#include "support/ModalHelper.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::teste;

/// What is printed: staging rows, formulas, the layout, the page.
class TstImpressao : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { m = std::make_unique<Movimento>(); }
    void cleanupTestCase() { m.reset(); }
    void init();
    void cleanup() { comissao.reset(); }

    void commissionSendsItsStatements();
    void commissionFillsTheStagingTable();
    void commissionPrintsEditsAndTypedDates();
    void commissionPages();
    void commissionNameWithAnApostrophe();
    void commissionPrintsAgain();
    void statementSendsItsStatements();
    void statementFillsTheStagingTable();
    void statementFormulas();
    void statementClearsThreeSlots();
    void slotsStayForTheNextReport();
    void statementPages();
    void statementWithoutSalesIsADivisionByZero();
    void statementNameWithAnApostrophe();
    void statementIntoADateColumn();
    void missingLayoutIsAnErrorReport();

  private:
    void apura();
    /// Presses the print button and closes the preview that comes.
    void imprime(QWidget* tela);
    /// Opens Ana's statement, acts on it, closes it.
    void noExtrato(const std::function<void(QWidget*)>& acao, const QString& devolucao = u"60,00"_s);
    void venda(int nota, int vendedor, const QString& valor, const QString& descricao,
               const QString& cliente = u"CLIENTE"_s);

    std::unique_ptr<Movimento> m;
    std::unique_ptr<Comissao> comissao;
};

void TstImpressao::init() {
    m->arruma();
    m->vendedor(1, u"ANA"_s, u"3"_s, u"1.5"_s);
    m->vendedor(2, u"BETO"_s, u"NULL"_s, u"NULL"_s);
    venda(11, 1, u"1234.50"_s, u"PÃO"_s, u"PADARIA UM"_s);
    venda(12, 1, u"200.00"_s, u"BOLO"_s, u"PADARIA DOIS"_s);
    venda(13, 2, u"100.00"_s, u"PÃO"_s);
    m->troca(u"C1"_s, u"1"_s, u"1"_s, u"60.00"_s);
}

void TstImpressao::venda(int nota, int vendedor, const QString& valor, const QString& descricao,
                         const QString& cliente) {
    m->nota(nota, vendedor, cliente);
    LinhaFiscal l;
    l.nota = nota;
    l.totalVenda = valor;
    l.descricao = descricao;
    m->linha(l);
}

void TstImpressao::apura() {
    comissao = std::make_unique<Comissao>();
    QVERIFY(mostra(comissao.get()));
    QTest::mouseClick(controle<QPushButton>(comissao.get(), "Command4"), Qt::LeftButton);
    QVERIFY(controle<QPushButton>(comissao.get(), "Command1")->isEnabled());
    m->marca();
}

void TstImpressao::imprime(QWidget* tela) {
    QTest::mouseClick(controle<QPushButton>(tela, "Command1"), Qt::LeftButton);
    QCOMPARE(m->fechaPrevias(), 1);
}

void TstImpressao::noExtrato(const std::function<void(QWidget*)>& acao, const QString& devolucao) {
    // Not through the modal helper, which would also answer the preview that stands over the statement.
    ExtratoVendedor extrato;
    QMetaObject::invokeMethod(
        &extrato,
        [&] {
            acao(&extrato);
            extrato.close();
        },
        Qt::QueuedConnection);
    extrato.Carrega(1, u"ANA"_s, u"01/02/2024"_s, u"29/02/2024"_s, u"3,0"_s, u"1,5"_s, devolucao);
}

void TstImpressao::commissionSendsItsStatements() {
    apura();
    imprime(comissao.get());
    const QStringList comandos = m->comandos();
    QCOMPARE(comandos.size(), 4);
    QCOMPARE(
        comandos.first(3),
        QStringList({u"Truncate Relat2"_s,
                     u"Insert into relat2 Set Codigo1='1',Texto1='ANA',Valor1= 1234.5, Valor2= 3, Valor3= "
                     "37.04, Valor4= 200, Valor5= 1.5, Valor6= 3, Valor7= 1434.5, Valor8= 40.04, Valor9= 60, "
                     "Texto2='4,18'"_s,
                     u"Insert into relat2 Set Codigo1='2',Texto1='BETO',Valor1= 100, Valor2= 0, Valor3= 0, "
                     "Valor4= 0, Valor5= 0, Valor6= 0, Valor7= 100, Valor8= 0, Valor9= 0, Texto2='0,00'"_s}));
    QVERIFY(comandos[3].contains(u"FROM relat2"_s)); // the layout's own
    QCOMPARE(CRW->formula(0), u"Titulo='PERÍODO DE 01/02/2024 À 29/02/2024'"_s);
    QCOMPARE(CRW->windowState(), 2);
    QVERIFY(CRW->reportFileName().endsWith(u"\\rpt\\COMISSAO.RPT"));
}

void TstImpressao::commissionFillsTheStagingTable() {
    apura();
    imprime(comissao.get());
    QCOMPARE(
        m->servidor().consulta(u"SELECT Codigo1, Texto1, Valor1, Valor2, Valor3, Valor4, Valor5, Valor6, "
                               "Valor7, Valor8, Valor9, Texto2 FROM relat2 ORDER BY id"_s),
        QList<QStringList>({{u"1"_s, u"ANA"_s, u"1234.50"_s, u"3.00"_s, u"37.04"_s, u"200.00"_s, u"1.50"_s,
                             u"3.00"_s, u"1434.50"_s, u"40.04"_s, u"60.00"_s, u"4,18"_s},
                            {u"2"_s, u"BETO"_s, u"100.00"_s, u"0.00"_s, u"0.00"_s, u"0.00"_s, u"0.00"_s,
                             u"0.00"_s, u"100.00"_s, u"0.00"_s, u"0.00"_s, u"0,00"_s}}));
}

void TstImpressao::commissionPrintsEditsAndTypedDates() {
    apura();
    clica(controle<Grid>(comissao.get(), "Grid1"), 2, 3);
    auto* editor = controle<QLineEdit>(comissao.get(), "TextGrid");
    QTest::keyClicks(editor, u"-2,5"_s);
    QTest::keyClick(editor, Qt::Key_Return);
    controle<DateBox>(comissao.get(), "DataFin")->setText(u"05/03/2024"_s);
    imprime(comissao.get());
    QCOMPARE(m->servidor().consulta(u"SELECT Valor2, Valor3, Valor8 FROM relat2 WHERE Codigo1='2'"_s),
             QList<QStringList>({{u"-2.50"_s, u"-2.50"_s, u"-2.50"_s}}));
    QCOMPARE(CRW->formula(0), u"Titulo='PERÍODO DE 01/02/2024 À 05/03/2024'"_s);
}

void TstImpressao::commissionPages() {
    if (!Movimento::leitorDePdf())
        QSKIP("no tool here reads a PDF's text");
    apura();
    imprime(comissao.get());
    const QString texto = m->textoDoPdf();
    for (const QString& parte :
         {u"PERÍODO DE 01/02/2024 À 29/02/2024"_s, u"ANA"_s, u"BETO"_s, u"1.234,50"_s, u"37,04"_s,
          u"1.434,50"_s, u"40,04"_s, u"4,18"_s, u"1.334,50"_s, u"1.534,50"_s})
        QVERIFY2(texto.contains(parte), qPrintable(parte + u" missing in:\n"_s + texto));
}

void TstImpressao::commissionNameWithAnApostrophe() {
    m->servidor().executa(u"UPDATE vendedores SET vendedor='D''ÁVILA' WHERE codigovend=2"_s);
    apura();
    ModalHelper modal;
    modal.esperaContendo(u"D'ÁVILA"_s, QMessageBox::Ok);
    QTest::mouseClick(controle<QPushButton>(comissao.get(), "Command1"), Qt::LeftButton);
    QCOMPARE(modal.confere(), QString());
    QCOMPARE(m->fechaPrevias(), 0);
    // As far as it was filled, and no formula of a report that did not come.
    QCOMPARE(m->servidor().consulta(u"SELECT Codigo1 FROM relat2"_s), QList<QStringList>({{u"1"_s}}));
    QCOMPARE(CRW->formula(0), QString());
    QVERIFY(comissao->isVisible());
}

void TstImpressao::commissionPrintsAgain() {
    apura();
    imprime(comissao.get());
    imprime(comissao.get());
    QCOMPARE(m->servidor().consulta(u"SELECT COUNT(*) FROM relat2"_s)[0][0], u"2"_s);
}

void TstImpressao::statementSendsItsStatements() {
    noExtrato([this](QWidget* tela) {
        m->marca();
        imprime(tela);
        const QStringList comandos = m->comandos();
        QCOMPARE(comandos.size(), 4);
        const QString inicio =
            u"Insert into relat2 (Data1,Valor1,Texto1,Valor2,valor3,valor4) values ('10/02/2024', "_s;
        QCOMPARE(comandos.first(3),
                 QStringList({u"truncate relat2"_s, inicio + u" 11 , 'PADARIA UM',  1234.5 ,  0 ,  1234.5)"_s,
                              inicio + u" 12 , 'PADARIA DOIS',  0 ,  200 ,  200)"_s}));
        QVERIFY(comandos[3].contains(u"FROM relat2"_s));
    });
}

void TstImpressao::statementFillsTheStagingTable() {
    noExtrato([this](QWidget* tela) { imprime(tela); });
    QCOMPARE(m->servidor().consulta(
                 u"SELECT Data1, Valor1, Texto1, Valor2, Valor3, Valor4 FROM relat2 ORDER BY id"_s),
             QList<QStringList>(
                 {{u"10/02/2024"_s, u"11.00"_s, u"PADARIA UM"_s, u"1234.50"_s, u"0.00"_s, u"1234.50"_s},
                  {u"10/02/2024"_s, u"12.00"_s, u"PADARIA DOIS"_s, u"0.00"_s, u"200.00"_s, u"200.00"_s}}));
}

// Slots 0 to 2 are empty again when the call returns: they are looked at when the layout is not to be had.
void TstImpressao::statementFormulas() {
    const QString pasta = QString::fromUtf8(TARVESSA_SOURCE_DIR);
    FixaPastaDoPrograma(pasta + u"/docs"_s);
    noExtrato([](QWidget* tela) {
        ModalHelper modal;
        modal.esperaContendo(u"ExtratoVendedorDistribuidora.RPT"_s, QMessageBox::Ok);
        QTest::mouseClick(controle<QPushButton>(tela, "Command1"), Qt::LeftButton);
        QCOMPARE(modal.confere(), QString());
    });
    FixaPastaDoPrograma(pasta);
    QCOMPARE(CRW->formula(0), u"Titulo='1 - ANA    -   PERÍODO DE 01/02/2024 A 29/02/2024'"_s);
    QCOMPARE(CRW->formula(1), u"PorcComissaoPao= 3"_s);
    QCOMPARE(CRW->formula(2), u"PorcComissaoOutros= 1.5"_s);
    QCOMPARE(CRW->formula(3), u"TotalDevolucoes= 60"_s);
    QCOMPARE(CRW->formula(4), u"PercentualDev=' 4.18%'"_s);
}

void TstImpressao::statementClearsThreeSlots() {
    CRW->setFormula(5, u"Outra='x'"_s);
    noExtrato([this](QWidget* tela) { imprime(tela); });
    for (const int vazia : {0, 1, 2})
        QCOMPARE(CRW->formula(vazia), QString());
    QCOMPARE(CRW->formula(3), u"TotalDevolucoes= 60"_s);
    QCOMPARE(CRW->formula(4), u"PercentualDev=' 4.18%'"_s);
    QCOMPARE(CRW->formula(5), u"Outra='x'"_s);
    QCOMPARE(CRW->windowState(), 2);
    QVERIFY(CRW->reportFileName().endsWith(u"\\rpt\\ExtratoVendedorDistribuidora.RPT"));
}

void TstImpressao::slotsStayForTheNextReport() {
    noExtrato([this](QWidget* tela) { imprime(tela); });
    apura();
    imprime(comissao.get());
    QCOMPARE(CRW->formula(0), u"Titulo='PERÍODO DE 01/02/2024 À 29/02/2024'"_s);
    QCOMPARE(CRW->formula(3), u"TotalDevolucoes= 60"_s);
    QCOMPARE(CRW->formula(4), u"PercentualDev=' 4.18%'"_s);
}

void TstImpressao::statementPages() {
    if (!Movimento::leitorDePdf())
        QSKIP("no tool here reads a PDF's text");
    noExtrato([this](QWidget* tela) { imprime(tela); });
    const QString texto = m->textoDoPdf();
    for (const QString& parte :
         {u"1 - ANA"_s, u"PERÍODO DE 01/02/2024 A 29/02/2024"_s, u"PADARIA UM"_s, u"PADARIA DOIS"_s,
          u"10/02/2024"_s, u"1.234,50"_s, u"200,00"_s, u"1.434,50"_s, u"60,00"_s})
        QVERIFY2(texto.contains(parte), qPrintable(parte + u" missing in:\n"_s + texto));
}

void TstImpressao::statementWithoutSalesIsADivisionByZero() {
    m->servidor().executa(u"DELETE FROM movsaient"_s);
    noExtrato([](QWidget* tela) {
        ModalHelper modal;
        modal.esperaContendo(u"Divisão por zero."_s, QMessageBox::Ok);
        QTest::mouseClick(controle<QPushButton>(tela, "Command1"), Qt::LeftButton);
        QCOMPARE(modal.confere(), QString());
        QVERIFY(tela->isVisible());
    });
    QCOMPARE(m->fechaPrevias(), 0);
}

void TstImpressao::statementNameWithAnApostrophe() {
    m->servidor().executa(u"UPDATE nfsaida SET razsoc='BAR D''ÁGUA' WHERE nrnf=12"_s);
    noExtrato([](QWidget* tela) {
        ModalHelper modal;
        modal.esperaContendo(u"BAR D'ÁGUA"_s, QMessageBox::Ok);
        QTest::mouseClick(controle<QPushButton>(tela, "Command1"), Qt::LeftButton);
        QCOMPARE(modal.confere(), QString());
    });
    QCOMPARE(m->servidor().consulta(u"SELECT Valor1 FROM relat2"_s), QList<QStringList>({{u"11.00"_s}}));
    QCOMPARE(m->fechaPrevias(), 0);
}

void TstImpressao::statementIntoADateColumn() {
    m->servidor().executa(u"ALTER TABLE relat2 MODIFY Data1 DATE"_s);
    noExtrato([this](QWidget* tela) { imprime(tela); });
    const auto guardados = m->servidor().consulta(u"SELECT COUNT(*) FROM relat2"_s);
    m->servidor().executa(u"DELETE FROM relat2; ALTER TABLE relat2 MODIFY Data1 VARCHAR(10)"_s);
    QCOMPARE(guardados[0][0], u"2"_s);
}

void TstImpressao::missingLayoutIsAnErrorReport() {
    apura();
    const QString pasta = QString::fromUtf8(TARVESSA_SOURCE_DIR);
    FixaPastaDoPrograma(pasta + u"/docs"_s);
    ModalHelper modal;
    modal.esperaContendo(u"COMISSAO.RPT"_s, QMessageBox::Ok);
    QTest::mouseClick(controle<QPushButton>(comissao.get(), "Command1"), Qt::LeftButton);
    FixaPastaDoPrograma(pasta);
    QCOMPARE(modal.confere(), QString());
    QCOMPARE(m->servidor().consulta(u"SELECT COUNT(*) FROM relat2"_s)[0][0], u"2"_s);
    imprime(comissao.get());
}

QTEST_MAIN(TstImpressao)
#include "tst_impressao.moc"
