#include "base/Clock.h"
#include "printing/ReportBench.h"
#include "printing/ReportControl.h"
#include "printing/preview/PreviewWindow.h"
#include "support/ErrorOf.h"
#include "support/Preview.h"

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

/// The report control as the screens drive it, and the four printed reports over staged rows.
class TstReportControl : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void actionShowsThePreviewAndReturns();
    void otherActionsDoNothing();
    void previewAndItsModalScreenTakeInput();
    void previewIsClosedWithItsScreen();
    void previewOfAPreviewBelongsToTheScreen();
    void documentNameIsProposedOnce();
    void windowStateIsFollowed();
    void fileNameTakesEitherSlash();
    void missingLayoutIsAnErrorAndLeavesTheLastReport();
    void previewThatFailsLeavesTheLastReport();
    void formulasStaySetUntilCleared();
    void unknownFormulaIsIgnored();
    void formulaMayHoldAnApostrophe();
    void wrongFormulaIsAnError_data();
    void wrongFormulaIsAnError();
    void replacementQueryBelongsToItsLayout();
    void replacementQueryStaysWithAReportThatFailed_data();
    void replacementQueryStaysWithAReportThatFailed();
    void reportReadsOnAConnectionOfItsOwn();
    void unreachableDatabaseIsAnError();
    void eachReportConnectsAgain();

    void commissionIsPrinted();
    void commissionOfManySellersIsPrinted_data();
    void commissionOfManySellersIsPrinted();
    void commissionDataAreSavedAsPrinted();
    void commissionReturnsAreRoundedOnce();
    void commissionOfNobodyIsPrinted();
    void statementIsPrinted();
    void statementCommissionsAddUp_data();
    void statementCommissionsAddUp();
    void statementOfManyInvoicesIsPrinted_data();
    void statementOfManyInvoicesIsPrinted();
    void statementWithoutPercentagesIsPrinted();
    void customersByLevelArePrinted();
    void customersOfAnEmptyLevelArePrinted();
    void emptyLevelIsNamed();
    void targetsArePrinted();
    void targetsOfManyProductsArePrinted_data();
    void targetsOfManyProductsArePrinted();
    void targetsOfManySellersArePrinted();
    void longSellerIsRepeatedWhole();
    void nothingIsLostAtExtremeValues_data();
    void nothingIsLostAtExtremeValues();

  private:
    static QString supplied(const QString& name) {
        return QStringLiteral(TARVESSA_SOURCE_DIR "/rpt/") + name;
    }
    static report::PreviewWindow* preview() { return qobject_cast<report::PreviewWindow*>(openPreview()); }

    /// Runs the control on a layout, closes the preview and gives the printed text.
    QString printed(const QString& layout);

    std::unique_ptr<PrivateServer> m_server;
    std::unique_ptr<QWidget> m_owner;
    std::unique_ptr<ReportControl> m_control;
    ReportBench m_bench;
};

void TstReportControl::initTestCase() {
    m_server = std::make_unique<PrivateServer>();
}

void TstReportControl::init() {
    m_owner = std::make_unique<QWidget>();
    m_owner->show();
    m_control = std::make_unique<ReportControl>(m_owner.get());
    clock::fix(QDateTime(QDate(2024, 3, 5), QTime(14, 30)));
    m_control->setWindowState(2);
    m_server->execute(u"TRUNCATE relat2"_s);
}

void TstReportControl::cleanup() {
    m_control.reset();
    m_owner.reset();
    clock::fix({});
}

void TstReportControl::cleanupTestCase() {
    m_server.reset();
}

QString TstReportControl::printed(const QString& layout) {
    m_control->setReportFileName(layout);
    m_control->setAction(1);
    if (QWidget* window = preview())
        window->close();
    const QString path = m_bench.path(u"impresso.pdf"_s);
    report::savePdf(*m_control->lastReport(), path);
    return ReportBench::pdfText(path);
}

void TstReportControl::actionShowsThePreviewAndReturns() {
    QVERIFY(!m_control->lastReport());
    m_control->setReportFileName(supplied(u"COMISSAO.RPT"_s));
    m_control->setAction(1);
    QPointer<report::PreviewWindow> window = preview();
    QVERIFY(window);
    QVERIFY(window->isVisible());
    QVERIFY(window->isMaximized());
    QCOMPARE(window->parentWidget(), m_owner.get());
    QCOMPARE(window->windowTitle(), u"Comissão dos vendedores - visualização"_s);
    QVERIFY(m_control->lastReport());
    window->close();
    QTRY_VERIFY(!window);
    QVERIFY(m_control->lastReport());
}

void TstReportControl::otherActionsDoNothing() {
    m_control->setReportFileName(supplied(u"COMISSAO.RPT"_s));
    m_control->setAction(0);
    QVERIFY(!preview());
    QVERIFY(!m_control->lastReport());
}

void TstReportControl::previewAndItsModalScreenTakeInput() {
    QDialog screen(m_owner.get());
    auto* box = new QLineEdit(&screen);
    screen.setModal(true);
    screen.show();
    m_control->setReportFileName(supplied(u"COMISSAO.RPT"_s));
    m_control->setAction(1);
    QPointer<report::PreviewWindow> window = preview();
    QVERIFY(window);
    QCOMPARE(window->parentWidget(), &screen);
    QVERIFY(QTest::qWaitForWindowActive(window));
    // Paper and screen side by side: neither blocks the other.
    QCOMPARE(window->windowModality(), Qt::NonModal);
    QTest::mouseClick(box, Qt::LeftButton);
    QTest::keyClick(box, Qt::Key_7);
    QCOMPARE(box->text(), u"7"_s);
    QTest::keyClick(window->centralWidget(), Qt::Key_Escape);
    QTRY_VERIFY(!window);
    QVERIFY(screen.isVisible());
}

void TstReportControl::previewIsClosedWithItsScreen() {
    auto screen = std::make_unique<QDialog>(m_owner.get());
    screen->setModal(true);
    screen->show();
    m_control->setReportFileName(supplied(u"COMISSAO.RPT"_s));
    m_control->setAction(1);
    const QPointer<report::PreviewWindow> window = preview();
    QVERIFY(window);
    screen.reset();
    QVERIFY(!window);
}

void TstReportControl::previewOfAPreviewBelongsToTheScreen() {
    m_control->setReportFileName(supplied(u"COMISSAO.RPT"_s));
    m_control->setAction(1);
    QPointer<report::PreviewWindow> first = preview();
    QVERIFY(QTest::qWaitForWindowActive(first));
    m_control->setAction(1); // the first preview is the active window
    const auto all = m_owner->findChildren<report::PreviewWindow*>(Qt::FindDirectChildrenOnly);
    QCOMPARE(all.size(), 2);
    first->close();
    QTRY_VERIFY(!first);
    QVERIFY(preview());
    preview()->close();
}

void TstReportControl::documentNameIsProposedOnce() {
    m_control->setReportFileName(supplied(u"COMISSAO.RPT"_s));
    m_control->setDocumentName(u"Comissão - 2024-02"_s);
    m_control->setAction(1);
    QCOMPARE(proposedFileName(), u"Comissão - 2024-02.pdf"_s);
    preview()->close();
    m_control->setAction(1);
    QCOMPARE(proposedFileName(), u"Comissão dos vendedores.pdf"_s);
    preview()->close();
    // A report that cannot be shown takes its name with it.
    m_control->setDocumentName(u"Outro"_s);
    m_control->setReportFileName(m_bench.path(u"nada.RPT"_s));
    QVERIFY(errorOf([&] { m_control->setAction(1); }));
    m_control->setReportFileName(supplied(u"Metas.RPT"_s));
    m_control->setAction(1);
    QCOMPARE(proposedFileName(), u"Metas por vendedor.pdf"_s);
    preview()->close();
}

void TstReportControl::windowStateIsFollowed() {
    m_control->setWindowState(0);
    m_control->setReportFileName(supplied(u"COMISSAO.RPT"_s));
    m_control->setAction(1);
    QVERIFY(preview());
    QVERIFY(!preview()->isMaximized());
}

void TstReportControl::fileNameTakesEitherSlash() {
    QVERIFY(printed(QString(supplied(u"COMISSAO.RPT"_s)).replace(u'/', u'\\')).contains(u"Comissão"_s));
    QVERIFY(printed(QStringLiteral(TARVESSA_SOURCE_DIR) + u"\\rpt\\COMISSAO.RPT"_s).contains(u"Comissão"_s));
}

void TstReportControl::missingLayoutIsAnErrorAndLeavesTheLastReport() {
    printed(supplied(u"COMISSAO.RPT"_s));
    const auto before = m_control->lastReport();
    m_control->setReportFileName(m_bench.path(u"nada.RPT"_s));
    QCOMPARE(errorNumberOf([&] { m_control->setAction(1); }), number(ErrorNumber::FileNotFound));
    QVERIFY(!preview());
    QCOMPARE(m_control->lastReport(), before);
    QVERIFY(!QApplication::overrideCursor());
}

void TstReportControl::previewThatFailsLeavesTheLastReport() {
    printed(supplied(u"COMISSAO.RPT"_s));
    const auto before = m_control->lastReport();
    m_control->setReportFileName(
        m_bench.write(u"estouro.RPT"_s,
                      ReportBench::layout(
                          "<calculation name=\"Q\" value=\"900000000000 * 900000000000\"/>",
                          "<detail height=\"5\"><field x=\"0\" y=\"0\" width=\"9\" value=\"Q\"/></detail>")));
    QCOMPARE(errorNumberOf([&] { m_control->setAction(1); }), number(ErrorNumber::Overflow));
    QVERIFY(!preview());
    QCOMPARE(m_control->lastReport(), before);
    QVERIFY(!QApplication::overrideCursor());
}

void TstReportControl::formulasStaySetUntilCleared() {
    m_control->setFormula(0, u"Titulo='PERÍODO DE 01/02/2024 À 29/02/2024'"_s);
    m_control->setFormula(3, u"TotalDevolucoes= 5"_s);
    QVERIFY(printed(supplied(u"COMISSAO.RPT"_s)).contains(u"PERÍODO DE 01/02/2024 À 29/02/2024"_s));
    // Another report finds it still set.
    QVERIFY(printed(supplied(u"Metas.RPT"_s)).contains(u"PERÍODO DE 01/02/2024 À 29/02/2024"_s));
    QCOMPARE(m_control->formula(0), u"Titulo='PERÍODO DE 01/02/2024 À 29/02/2024'"_s);
    m_control->setFormula(0, QString());
    QCOMPARE(m_control->formula(0), QString());
    QCOMPARE(m_control->formula(3), u"TotalDevolucoes= 5"_s);
    QVERIFY(!printed(supplied(u"Metas.RPT"_s)).contains(u"PERÍODO"_s));
}

void TstReportControl::unknownFormulaIsIgnored() {
    m_control->setFormula(0, u"Desconhecida='x'"_s);
    QVERIFY(printed(supplied(u"COMISSAO.RPT"_s)).contains(u"Comissão dos vendedores"_s));
}

void TstReportControl::formulaMayHoldAnApostrophe() {
    m_control->setFormula(0, u"Titulo='3 - D'ÁVILA    -   PERÍODO'"_s);
    QVERIFY(printed(supplied(u"ExtratoVendedorDistribuidora.RPT"_s)).contains(u"3 - D'ÁVILA - PERÍODO"_s));
}

void TstReportControl::wrongFormulaIsAnError_data() {
    QTest::addColumn<QString>("text");
    QTest::newRow("no name") << u"='x'"_s;
    QTest::newRow("no value") << u"Titulo="_s;
    QTest::newRow("no equals sign") << u"Titulo"_s;
    QTest::newRow("quote not closed") << u"Titulo='x"_s;
    QTest::newRow("comma") << u"Porc= 5,5"_s;
}

void TstReportControl::wrongFormulaIsAnError() {
    QFETCH(const QString, text);
    m_control->setFormula(0, text);
    m_control->setReportFileName(supplied(u"COMISSAO.RPT"_s));
    QCOMPARE(errorNumberOf([&] { m_control->setAction(1); }), number(ErrorNumber::TypeMismatch));
    QVERIFY(!preview());
}

void TstReportControl::replacementQueryBelongsToItsLayout() {
    m_server->execute(u"INSERT INTO relat2 SET Codigo1='1', Texto1='MARIA'"_s);
    const QString query = u"SELECT '7' AS codigo, 'ANA' AS nome, '' AS fantasia, '4' AS colunapreco"_s;
    m_control->setSQLQuery(query);
    QVERIFY(printed(supplied(u"RelatNivelPreco.RPT"_s)).contains(u"7 ANA"_s));
    QVERIFY(printed(supplied(u"COMISSAO.RPT"_s)).contains(u"1 MARIA"_s));
    QVERIFY(printed(supplied(u"RelatNivelPreco.RPT"_s)).contains(u"7 ANA"_s));
    QCOMPARE(m_control->sqlQuery(), query);
    m_control->setSQLQuery(QString());
    QVERIFY(printed(supplied(u"RelatNivelPreco.RPT"_s)).contains(u"Não há clientes"_s));
}

void TstReportControl::replacementQueryStaysWithAReportThatFailed_data() {
    QTest::addColumn<QString>("layout");
    QTest::addColumn<QString>("formula");
    QTest::newRow("layout missing") << m_bench.path(u"RelatNivelPreco.RPT"_s) << QString();
    QTest::newRow("no name at all") << QString() << QString();
    QTest::newRow("no layout") << m_bench.write(u"binario.RPT"_s, QByteArray("\xD0\xCF\x11\xE0", 4))
                               << QString();
    QTest::newRow("formula that is none") << supplied(u"RelatNivelPreco.RPT"_s) << u"Porc= 5,5"_s;
}

void TstReportControl::replacementQueryStaysWithAReportThatFailed() {
    QFETCH(const QString, layout);
    QFETCH(const QString, formula);
    m_server->execute(u"INSERT INTO relat2 SET Codigo1='1', Texto1='MARIA'"_s);
    m_control->setSQLQuery(u"SELECT '7' AS codigo, 'ANA' AS nome, '' AS fantasia, '4' AS colunapreco"_s);
    m_control->setFormula(0, formula);
    m_control->setReportFileName(layout);
    QVERIFY(errorOf([&] { m_control->setAction(1); }));
    m_control->setFormula(0, QString());
    QVERIFY(printed(supplied(u"COMISSAO.RPT"_s)).contains(u"1 MARIA"_s));
}

void TstReportControl::reportReadsOnAConnectionOfItsOwn() {
    // No other connection of the program's user is open, so the report made its own, and closed it again.
    printed(supplied(u"COMISSAO.RPT"_s));
    QTRY_COMPARE(m_server->query(u"SELECT COUNT(*) FROM information_schema.processlist WHERE user='%1'"_s.arg(
                     m_server->user())),
                 QList<QStringList>{{u"0"_s}});
}

void TstReportControl::unreachableDatabaseIsAnError() {
    m_server->useSocket(m_bench.path(u"nada.sock"_s));
    m_control->setReportFileName(supplied(u"COMISSAO.RPT"_s));
    const auto error = errorOf([&] { m_control->setAction(1); });
    m_server->useSocket(m_server->socket());
    QVERIFY(error);
    QVERIFY(!preview());
}

// The rows of a report that is open are with the driver, so its loss is not even noticed; the next report has
// a connection of its own.
void TstReportControl::eachReportConnectsAgain() {
    m_server->execute(u"INSERT INTO relat2 (Codigo1, Texto1) SELECT seq, 'MARIA' FROM seq_1_to_3000"_s);
    m_control->setReportFileName(supplied(u"COMISSAO.RPT"_s));
    m_control->setAction(1);
    const QPointer<report::PreviewWindow> first = preview();
    QVERIFY(first);
    m_server->killProgramConnections();
    m_control->lastReport()->readAll();
    QVERIFY(m_control->lastReport()->pageCount() > 10);
    first->close();

    m_server->useSocket(m_bench.path(u"nada.sock"_s));
    QVERIFY(errorOf([&] { m_control->setAction(1); }));
    m_server->useSocket(m_server->socket());
    QVERIFY(printed(supplied(u"COMISSAO.RPT"_s)).contains(u"3000 MARIA"_s));
}

void TstReportControl::commissionIsPrinted() {
    m_server->execute(
        u"INSERT INTO relat2 SET Codigo1='3', Texto1='JOÃO', Valor1=1000.10, Valor2=3.5, Valor3=35.00, "
        "Valor4=2000.20, Valor5=1.2, Valor6=24.00, Valor7=3000.30, Valor8=59.00, Valor9=150.02, "
        "Texto2='5,00';"
        "INSERT INTO relat2 SET Codigo1='1', Texto1='ADRIANA', Valor1=-10, Valor2=0, Valor3=0, Valor4=110, "
        "Valor5=10, Valor6=11, Valor7=100, Valor8=11, Valor9=0, Texto2='0,00'"_s);
    m_control->setFormula(0, u"Titulo='PERÍODO DE 01/02/2024 À 29/02/2024'"_s);
    const QString text = printed(supplied(u"COMISSAO.RPT"_s));
    for (const auto& expected :
         {u"Comissão dos vendedores"_s, u"PERÍODO DE 01/02/2024 À 29/02/2024"_s, u"Página 1 de 1"_s,
          u"Impresso em 05/03/2024 às 14:30"_s,
          u"3 JOÃO 1.000,10 3,5 35,00 2.000,20 1,2 24,00 3.000,30 59,00 150,02 5,00"_s,
          u"1 ADRIANA -10,00 0,0 0,00 110,00 10,0 11,00 100,00 11,00 0,00 0,00"_s,
          // 100 * 150.02 / 3100.30 = 4.8388...
          u"TOTAL (vendedores: 2) 990,10 35,00 2.110,20 35,00 3.100,30 70,00 150,02 4,84"_s})
        QVERIFY2(text.contains(expected), qPrintable(expected + u" in\n"_s + text));
    QVERIFY(text.indexOf(u"JOÃO"_s) < text.indexOf(u"ADRIANA"_s)); // as the rows were written
}

namespace {

// The pages of a printed text, blanks and line ends run together.
QStringList pagesOf(const QString& text) {
    QStringList pages = text.split(u'\f');
    pages.removeLast(); // a form feed ends the last page too
    for (QString& page : pages)
        page = page.simplified();
    return pages;
}

} // namespace

void TstReportControl::commissionOfManySellersIsPrinted_data() {
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("pages");
    // A page holds 32 sellers, the last one 30 over the totals.
    QTest::newRow("23") << 23 << 1;
    QTest::newRow("24") << 24 << 1;
    QTest::newRow("30") << 30 << 1;
    QTest::newRow("31") << 31 << 2;
    QTest::newRow("1,000") << 1000 << 32;
}

void TstReportControl::commissionOfManySellersIsPrinted() {
    QFETCH(const int, count);
    QFETCH(const int, pages);
    m_server->execute(
        u"INSERT INTO relat2 (Codigo1, Texto1, Valor1, Valor2, Valor3, Valor4, Valor5, Valor6, "
        "Valor7, Valor8, Valor9, Texto2) SELECT seq, CONCAT('V', seq), seq * 1.25, 10, 1, 2, 5, "
        "0.1, 3, 1.1, 0.3, '10,00' FROM seq_1_to_%1"_s.arg(count));
    const QStringList texts = pagesOf(printed(supplied(u"COMISSAO.RPT"_s)));
    QCOMPARE(texts.size(), pages);
    const QLocale brazilian(QLocale::Portuguese, QLocale::Brazil);
    const auto money = [&](double value) { return brazilian.toString(value, 'f', 2); };
    int next = 1;
    for (int page = 1; page <= pages; ++page) {
        const QString& text = texts[page - 1];
        QVERIFY2(text.contains(u"Página %1 de %2"_s.arg(page).arg(pages)), qPrintable(text));
        QCOMPARE(text.count(u"Código Vendedor R$ total % com. R$ comissão"_s), 1);
        QCOMPARE(text.count(u"TOTAL (vendedores:"_s), page == pages ? 1 : 0);
        while (next <= count &&
               text.contains(u" %1 V%1 %2 10,0 1,00 2,00 5,0 0,10 3,00 1,10 0,30 10,00"_s.arg(
                   QString::number(next), money(next * 1.25))))
            ++next;
    }
    QCOMPARE(next, count + 1);
    const double sum = count * (count + 1.0) / 2;
    QVERIFY2(texts.last().endsWith(
                 u"TOTAL (vendedores: %1) %2 %3 %4 %5 %6 %7 %8 10,00"_s
                     .arg(brazilian.toString(count), money(sum * 1.25), money(count), money(count * 2))
                     .arg(money(count * 0.1), money(count * 3), money(count * 1.1), money(count * 0.3))),
             qPrintable(texts.last()));
}

void TstReportControl::commissionDataAreSavedAsPrinted() {
    m_server->execute(
        u"INSERT INTO relat2 SET Codigo1='3', Texto1='JOÃO', Valor1=1000.10, Valor2=3.5, Valor3=35.00, "
        "Valor4=2000.20, Valor5=12, Valor6=240.02, Valor7=3000.30, Valor8=275.02, Valor9=150.02, "
        "Texto2='5,00'"_s);
    printed(supplied(u"COMISSAO.RPT"_s));
    const QString path = m_bench.path(u"comissao.csv"_s);
    report::saveCsv(*m_control->lastReport(), path);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(QString::fromUtf8(file.readAll()).section(u"\r\n"_s, 1, 1),
             u"3;JOÃO;1000,10;3,5;35,00;2000,20;12,0;240,02;3000,30;275,02;150,02;5,00"_s);
}

// Compared with whole-number arithmetic: hundredths of a per cent, halves away from zero.
void TstReportControl::commissionReturnsAreRoundedOnce() {
    QRandomGenerator chance(2024);
    QList<std::pair<qint64, qint64>> cases = {{105, 100001}, {1, 20000}, {3, 20000}, {-105, 100001}};
    for (int i = 0; i < 20; ++i)
        cases.append({chance.bounded(1000000), chance.bounded(1, 10000000)});
    for (const auto& [returns, sales] : cases) {
        const auto point = [](qint64 cents) {
            return u"%1%2.%3"_s.arg(cents < 0 ? u"-"_s : u""_s)
                .arg(qAbs(cents) / 100)
                .arg(qAbs(cents) % 100, 2, 10, QLatin1Char('0'));
        };
        m_server->execute(u"TRUNCATE relat2; INSERT INTO relat2 SET Codigo1='1', Valor7=%1, Valor9=%2"_s.arg(
            point(sales), point(returns)));
        const qint64 share = (2 * qAbs(returns) * 10000 + sales) / (2 * sales) * (returns < 0 ? -1 : 1);
        m_control->setReportFileName(supplied(u"COMISSAO.RPT"_s));
        m_control->setAction(1);
        preview()->close();
        const QString printedShare = m_control->lastReport()->texts(0).back().text;
        QCOMPARE(printedShare, point(share).replace(u'.', u','));
    }
}

void TstReportControl::commissionOfNobodyIsPrinted() {
    const QString text = printed(supplied(u"COMISSAO.RPT"_s));
    QVERIFY(text.contains(u"Não há vendedores a imprimir."_s));
    // No sales to divide by: the percentage stays empty.
    QVERIFY2(text.contains(u"TOTAL (vendedores: 0) 0,00 0,00 0,00 0,00 0,00 0,00 0,00\n"_s),
             qPrintable(text));
}

void TstReportControl::statementIsPrinted() {
    m_server->execute(u"INSERT INTO relat2 (Data1,Valor1,Texto1,Valor2,valor3,valor4) values "
                      "('29/02/2024', 1234 , 'PADARIA D´OURO', 100.50 , 200 , 300.5),"
                      "('01/03/2024', 1235 , 'MERCADO', -20.5 , 0 , -20.5)"_s);
    m_control->setFormula(0, u"Titulo='3 - JOÃO    -   PERÍODO DE 01/02/2024 A 01/03/2024'"_s);
    m_control->setFormula(1, u"PorcComissaoPao= 3.5"_s);
    m_control->setFormula(2, u"PorcComissaoOutros= 1.25"_s);
    m_control->setFormula(3, u"TotalDevolucoes= 14"_s);
    m_control->setFormula(4, u"PercentualDev=' 5%'"_s);
    const QString text = printed(supplied(u"ExtratoVendedorDistribuidora.RPT"_s));
    for (const auto& expected :
         {u"Extrato do vendedor"_s, u"3 - JOÃO - PERÍODO DE 01/02/2024 A 01/03/2024"_s,
          u"29/02/2024 1234 PADARIA D´OURO 100,50 200,00 300,50"_s,
          u"01/03/2024 1235 MERCADO -20,50 0,00 -20,50"_s, u"TOTAL (notas: 2) 80,00 200,00 280,00"_s,
          u"Pão 80,00 3,5% 2,80"_s, u"Outros 200,00 1,25% 2,50"_s, u"Total 280,00 5,30"_s,
          u"Devoluções 14,00 5,00%"_s})
        QVERIFY2(text.contains(expected), qPrintable(expected + u" in\n"_s + text));
}

void TstReportControl::statementCommissionsAddUp_data() {
    QTest::addColumn<QString>("bread");
    QTest::addColumn<QString>("others");
    QTest::addColumn<QString>("breadLine");
    QTest::addColumn<QString>("othersLine");
    QTest::addColumn<QString>("total");
    QTest::newRow("0.1545 twice") << u"10.30"_s << u"10.30"_s << u"Pão 10,30 1,5% 0,15"_s
                                  << u"Outros 10,30 1,5% 0,15"_s << u"Total 20,60 0,30"_s;
    QTest::newRow("1.50495 twice") << u"100.33"_s << u"100.33"_s << u"Pão 100,33 1,5% 1,50"_s
                                   << u"Outros 100,33 1,5% 1,50"_s << u"Total 200,66 3,00"_s;
    QTest::newRow("halves go up") << u"1.00"_s << u"3.00"_s << u"Pão 1,00 1,5% 0,02"_s
                                  << u"Outros 3,00 1,5% 0,05"_s << u"Total 4,00 0,07"_s;
    QTest::newRow("halves below zero") << u"-1.00"_s << u"-3.00"_s << u"Pão -1,00 1,5% -0,02"_s
                                       << u"Outros -3,00 1,5% -0,05"_s << u"Total -4,00 -0,07"_s;
}

void TstReportControl::statementCommissionsAddUp() {
    QFETCH(const QString, bread);
    QFETCH(const QString, others);
    m_server->execute(u"INSERT INTO relat2 (Data1,Valor1,Texto1,Valor2,valor3,valor4) values "
                      "('29/02/2024', 1, 'PADARIA', %1, %2, %1+%2)"_s.arg(bread, others));
    m_control->setFormula(1, u"PorcComissaoPao= 1.5"_s);
    m_control->setFormula(2, u"PorcComissaoOutros= 1.5"_s);
    const QString text = printed(supplied(u"ExtratoVendedorDistribuidora.RPT"_s));
    for (const char* column : {"breadLine", "othersLine", "total"}) {
        const QString expected = *static_cast<const QString*>(QTest::qData(column, qMetaTypeId<QString>()));
        QVERIFY2(text.contains(expected + u'\n'), qPrintable(expected + u" in\n"_s + text));
    }
}

void TstReportControl::statementOfManyInvoicesIsPrinted_data() {
    QTest::addColumn<int>("count");
    for (const int count : {0, 1, 22, 23, 24, 10000})
        QTest::addRow("%d", count) << count;
}

void TstReportControl::statementOfManyInvoicesIsPrinted() {
    QFETCH(const int, count);
    if (count > 0)
        m_server->execute(u"INSERT INTO relat2 (Data1,Valor1,Texto1,Valor2,Valor3,Valor4) "
                          "SELECT '29/02/2024', seq, 'CLIENTE', 1.25, 2, 3.25 FROM seq_1_to_%1"_s.arg(count));
    const QString text = printed(supplied(u"ExtratoVendedorDistribuidora.RPT"_s));
    QCOMPARE(text.count(u"CLIENTE 1,25 2,00 3,25"_s), count);
    const QLocale brazilian(QLocale::Portuguese, QLocale::Brazil);
    const auto money = [&](double value) { return brazilian.toString(value, 'f', 2); };
    const QString total = u"TOTAL (notas: %1) %2 %3 %4"_s.arg(brazilian.toString(count), money(count * 1.25),
                                                              money(count * 2.0), money(count * 3.25));
    QVERIFY2(text.contains(total), qPrintable(total + u" in\n"_s + text.right(1000)));
    const int pages = m_control->lastReport()->pageCount();
    for (int page = 1; page <= pages; ++page)
        QVERIFY(text.contains(u"Página %1 de %2\n"_s.arg(page).arg(pages)));
    QCOMPARE(text.count(u"Nº NF Cliente"_s), pages);
}

void TstReportControl::statementWithoutPercentagesIsPrinted() {
    m_server->execute(u"INSERT INTO relat2 (Data1,Valor1,Texto1,Valor2,valor3,valor4) values "
                      "('29/02/2024', 1234 , 'PADARIA', 1 , 2 , 3)"_s);
    const QString text = printed(supplied(u"ExtratoVendedorDistribuidora.RPT"_s));
    QVERIFY2(text.contains(u"Pão 1,00\n"_s), qPrintable(text));
}

void TstReportControl::customersByLevelArePrinted() {
    m_server->execute(
        u"DELETE FROM clientes; INSERT INTO clientes (codigo, nome, fantasia, colunapreco, ativocad) VALUES "
        "('000001','ALVES LTDA','ALVES','2','S'),('000002','ÁGUIA LTDA',NULL,'2','S'),"
        "('000003','BAR DO ZÉ','ZÉ','2','S'),('000004','CAFÉ','CAFÉ','1','S'),"
        "('000005','BOTECO','BOTECO','2','N')"_s);
    m_control->setSQLQuery(
        u"SELECT clientes1.`codigo`, clientes1.`nome`, clientes1.`fantasia`, "
        "clientes1.`colunapreco` From `clientes` clientes1 Where clientes1.`colunapreco`= 2 And "
        "clientes1.ativocad='S' order By clientes1.`nome` ASC"_s);
    const QString text = printed(supplied(u"RelatNivelPreco.RPT"_s));
    QString lines = text;
    lines.replace(QRegularExpression(u"\\s*\n\\s*"_s), u"\n"_s);
    const QString list =
        u"Código Nome Nome fantasia\nA\n000002 ÁGUIA LTDA\n000001 ALVES LTDA ALVES\nLetra A: 2\n"
        "B\n000003 BAR DO ZÉ ZÉ\nLetra B: 1\nTotal de clientes: 3\n"_s;
    QVERIFY2(lines.contains(list), qPrintable(lines));
    QVERIFY2(lines.contains(u"Clientes ativos, em ordem alfabética Nível de preço: 2\n"_s),
             qPrintable(lines));
}

void TstReportControl::customersOfAnEmptyLevelArePrinted() {
    m_control->setSQLQuery(
        u"SELECT codigo, nome, fantasia, colunapreco FROM clientes WHERE codigo='nenhum'"_s);
    const QString text = printed(supplied(u"RelatNivelPreco.RPT"_s));
    QVERIFY2(text.contains(u"Clientes ativos, em ordem alfabética\n"_s), qPrintable(text));
    QVERIFY2(!text.contains(u"Nível de preço:"_s), qPrintable(text));
    QVERIFY(text.contains(u"Não há clientes ativos neste nível de preço."_s));
    QVERIFY(text.contains(u"Total de clientes: 0"_s));
}

void TstReportControl::emptyLevelIsNamed() {
    m_server->execute(u"DELETE FROM clientes"_s);
    m_control->setSQLQuery(
        u"SELECT clientes1.`codigo`, clientes1.`nome`, clientes1.`fantasia`, "
        "clientes1.`colunapreco` From `clientes` clientes1 Where clientes1.`colunapreco`=4 And "
        "clientes1.ativocad='S' order By clientes1.`nome` ASC"_s);
    const QString text = printed(supplied(u"RelatNivelPreco.RPT"_s));
    QVERIFY2(text.contains(u"Clientes ativos, em ordem alfabética Nível de preço: 4\n"_s), qPrintable(text));
    QVERIFY(text.contains(u"Não há clientes ativos neste nível de preço."_s));
}

void TstReportControl::targetsArePrinted() {
    m_server->execute(
        u"insert into relat2 (codigo1,codigo2,texto1,texto2,texto3,texto4,texto5,texto6,texto7) Values "
        "('1 - ANA', '0001', 'PÃO FRANCÊS', '100', '150', '150,0%', '1.234,50', '0', '0,0%'),"
        "('1 - ANA', '', '', '', '', '', '', '', ''),"
        "('1 - ANA', '', '*** TOTAIS DE 1 - ANA ***', '100', '150', '150,0%', '1.234,50', '0', '0,0%'),"
        "('2 - (Nenhum)', '0002', 'BOLO', '10,500', '0', '0,0%', '0,00', '0', '0,0%'),"
        "('2 - (Nenhum)', '', '', '', '', '', '', '', ''),"
        "('2 - (Nenhum)', '', '*** TOTAIS DE 2 - (Nenhum) ***', '10,500', '1', '9,52%', '0,00', '0', "
        "'0,0%')"_s);
    m_control->setFormula(0, u"Titulo='PERÍODO DE 01/02/2024 A 29/02/2024'"_s);
    QString text = printed(supplied(u"Metas.RPT"_s));
    text.replace(QRegularExpression(u"\\s*\n\\s*"_s), u"\n"_s);
    const QString list = u"1 - ANA\n0001 PÃO FRANCÊS 100 150 150,0% 1.234,50 0 0,0%\n"
                         "*** TOTAIS DE 1 - ANA *** 100 150 150,0% 1.234,50 0 0,0%\n"
                         "2 - (Nenhum)\n0002 BOLO 10,500 0 0,0% 0,00 0 0,0%\n"
                         "*** TOTAIS DE 2 - (Nenhum) *** 10,500 1 9,52% 0,00 0 0,0%\n"_s;
    QVERIFY2(text.contains(list), qPrintable(text));
    // The totals are set off in bold: the caption and six figures of each seller, and nothing else.
    const report::Layout& layout = m_control->lastReport()->layout();
    QStringList bold;
    for (const auto& placed : m_control->lastReport()->texts(0))
        if (layout.fonts[static_cast<size_t>(placed.font)].name == u"bold"_s)
            bold.append(placed.text);
    QCOMPARE(bold.size(), 14);
    QCOMPARE(bold[0], u"*** TOTAIS DE 1 - ANA ***"_s);
    QCOMPARE(bold[7], u"*** TOTAIS DE 2 - (Nenhum) ***"_s);
}

void TstReportControl::targetsOfManyProductsArePrinted_data() {
    QTest::addColumn<int>("staged");
    QTest::addColumn<int>("pages");
    // A page holds the seller's head and 31 products; after those come a blank row and the totals.
    QTest::newRow("23") << 23 << 1;
    QTest::newRow("24") << 24 << 1;
    QTest::newRow("1,002") << 1002 << 33;
}

void TstReportControl::targetsOfManyProductsArePrinted() {
    QFETCH(const int, staged);
    QFETCH(const int, pages);
    m_server->execute(
        u"INSERT INTO relat2 (codigo1,codigo2,texto1,texto2,texto3,texto4,texto5,texto6,texto7) SELECT "
        "'1 - ANA', CONCAT('P', seq), 'BOLO', '10', '5', '50,0%', '1,00', '0', '0,0%' FROM seq_1_to_%1; "
        "INSERT INTO relat2 (codigo1,codigo2,texto1,texto2,texto3,texto4,texto5,texto6,texto7) VALUES "
        "('1 - ANA', '', '', '', '', '', '', '', ''), ('1 - ANA', '', '*** TOTAIS DE 1 - ANA ***', '%1', "
        "'7', "
        "'70,0%', '%1,00', '0', '0,0%')"_s.arg(staged - 2));
    const QStringList texts = pagesOf(printed(supplied(u"Metas.RPT"_s)));
    QCOMPARE(texts.size(), pages);
    int next = 1;
    for (int page = 1; page <= pages; ++page) {
        const QString& text = texts[page - 1];
        QVERIFY2(text.contains(u"Página %1 de %2"_s.arg(page).arg(pages)), qPrintable(text));
        QVERIFY2(text.contains(u"% devol. 1 - ANA P%1 BOLO"_s.arg(next)), qPrintable(text));
        while (text.contains(u" P%1 BOLO 10 5 50,0% 1,00 0 0,0%"_s.arg(next)))
            ++next;
        QCOMPARE(text.count(u"*** TOTAIS DE"_s), page == pages ? 1 : 0);
    }
    QCOMPARE(next, staged - 1);
    const QString total = u"*** TOTAIS DE 1 - ANA *** %1 7 70,0% %1,00 0 0,0%"_s.arg(staged - 2);
    QVERIFY2(texts.last().endsWith(total), qPrintable(texts.last()));
}

// 1,000 staged rows of fifty sellers, of whom no two fit on one page.
void TstReportControl::targetsOfManySellersArePrinted() {
    m_server->execute(
        u"INSERT INTO relat2 (codigo1,codigo2,texto1,texto2,texto3,texto4,texto5,texto6,texto7) SELECT "
        "CONCAT(v.seq, ' - V', v.seq), IF(p.seq <= 18, CONCAT('P', p.seq), ''), CASE WHEN p.seq <= 18 THEN "
        "'BOLO' "
        "WHEN p.seq = 19 THEN '' ELSE CONCAT('*** TOTAIS DE ', v.seq, ' - V', v.seq, ' ***') END, '10', '5', "
        "'50,0%', '1,00', '0', '0,0%' FROM seq_1_to_50 v, seq_1_to_20 p ORDER BY v.seq, p.seq"_s);
    const QStringList texts = pagesOf(printed(supplied(u"Metas.RPT"_s)));
    QCOMPARE(texts.size(), 50);
    for (int page = 1; page <= 50; ++page) {
        const QString& text = texts[page - 1];
        QVERIFY2(text.contains(u"Página %1 de 50"_s.arg(page)), qPrintable(text));
        QVERIFY2(text.contains(u"% devol. %1 - V%1 P1 BOLO"_s.arg(page)), qPrintable(text));
        QCOMPARE(text.count(u" BOLO 10 5 50,0% 1,00 0 0,0%"_s), 18);
        QVERIFY2(text.endsWith(u"*** TOTAIS DE %1 - V%1 *** 10 5 50,0% 1,00 0 0,0%"_s.arg(page)),
                 qPrintable(text));
    }
}

void TstReportControl::longSellerIsRepeatedWhole() {
    const QString seller = u"99999 - "_s + QString(92, u'W');
    m_server->execute(
        u"INSERT INTO relat2 (codigo1,codigo2,texto1,texto2,texto3,texto4,texto5,texto6,texto7) SELECT "
        "'%1', CONCAT('P', seq), 'BOLO', '10', '5', '50,0%', '1,00', '0', '0,0%' FROM seq_1_to_60"_s.arg(
            seller));
    printed(supplied(u"Metas.RPT"_s));
    const auto report = m_control->lastReport();
    QVERIFY(report->pageCount() > 1);
    const report::Layout& layout = report->layout();
    QList<double> firstRows;
    for (int page = 0; page < report->pageCount(); ++page) {
        QStringList head;
        double headBottom = 0;
        double bodyTop = 0;
        for (const report::PlacedText& placed : report->texts(page)) {
            const QString& font = layout.fonts[static_cast<size_t>(placed.font)].name;
            if (font == u"seller") {
                head.append(placed.text);
                headBottom = placed.baseline.y();
            } else if (font == u"normal" && bodyTop == 0) {
                bodyTop = placed.place.top();
            }
        }
        QVERIFY(head.size() > 1); // it has wrapped
        QCOMPARE(head.join(QString()).remove(u' '), QString(seller).remove(u' '));
        QVERIFY(headBottom > 0);
        QVERIFY(bodyTop > headBottom);
        firstRows.append(bodyTop);
    }
    QCOMPARE(firstRows, QList<double>(firstRows.size(), firstRows.first()));
}

void TstReportControl::nothingIsLostAtExtremeValues_data() {
    QTest::addColumn<QString>("layout");
    QTest::addColumn<QString>("rows");
    const QString name(40, u'W');
    const QString figures = u"-9999999999999.99"_s;
    QTest::newRow("commission")
        << u"COMISSAO.RPT"_s
        << u"INSERT INTO relat2 SET Codigo1='2147483647', Texto1='%1', Valor1=%2, Valor2=%2, Valor3=%2, "
           "Valor4=%2, Valor5=%2, Valor6=%2, Valor7=%2, Valor8=%2, Valor9=%2, Texto2='-99999999999,99'"_s.arg(
               name, figures);
    QTest::newRow("statement")
        << u"ExtratoVendedorDistribuidora.RPT"_s
        << u"INSERT INTO relat2 (Data1,Valor1,Texto1,Valor2,valor3,valor4) values ('29/02/2024', 2147483647, "
           "'%1%1', %2, %2, %2)"_s.arg(name, figures);
    QTest::newRow("targets")
        << u"Metas.RPT"_s
        << u"INSERT INTO relat2 (codigo1,codigo2,texto1,texto2,texto3,texto4,texto5,texto6,texto7) VALUES "
           "('99999 - %1', '%2', REPEAT('PRODUTO ', 15), '999.999.999,999', '999.999.999,999', "
           "'99999900000,0%', '-999.999.999.999,99', '999.999.999,999', '99999900000,33%'), "
           "('99999 - %1', '', '*** TOTAIS DE 99999 - %1 ***', '999.999.999,999', '999.999.999,999', "
           "'99999900000,0%', '-999.999.999.999,99', '999.999.999,999', '99999900000,33%')"_s.arg(
               name, QString(20, u'8'));
    QTest::newRow("customers") << u"RelatNivelPreco.RPT"_s
                               << u"DELETE FROM clientes; INSERT INTO clientes (codigo, nome, fantasia, "
                                  u"colunapreco, ativocad) VALUES "
                                  "('WWWWWWWWWWWWWWW', REPEAT('W', 60), REPEAT('W', 60), '1', 'S')"_s;
}

void TstReportControl::nothingIsLostAtExtremeValues() {
    QFETCH(const QString, layout);
    QFETCH(const QString, rows);
    m_server->execute(rows);
    m_control->setFormula(
        0, u"Titulo='2147483647 - %1    -   PERÍODO DE 01/02/2024 A 29/02/2024'"_s.arg(QString(40, u'W')));
    m_control->setFormula(1, u"PorcComissaoPao=-999.999"_s);
    m_control->setFormula(2, u"PorcComissaoOutros=-999.999"_s);
    m_control->setFormula(3, u"TotalDevolucoes=-99999999999.99"_s);
    m_control->setFormula(4, u"PercentualDev='-999999999.99%'"_s);
    const QString text = printed(supplied(layout));
    const auto report = m_control->lastReport();
    const report::FontSet fonts(report->layout().fonts);
    QStringList pieces;
    for (const report::PlacedText& placed : report->texts(0)) {
        QVERIFY2(!placed.text.contains(u'…'), qPrintable(placed.text));
        const double width = fonts.width(placed.font, placed.text) * placed.squeeze;
        QVERIFY2(width <= placed.place.width() + 1, qPrintable(placed.text));
        QVERIFY2(placed.squeeze > 0.35, qPrintable(placed.text)); // still to be read
        if (!placed.text.contains(u"PERÍODO"_s))                  // the title has such a name too
            pieces.append(placed.text);
    }
    QVERIFY(pieces.size() > 10);
    if (layout != u"RelatNivelPreco.RPT")
        QVERIFY2(text.contains(u" - PERÍODO DE 01/02/2024 A 29/02/2024"_s), qPrintable(text));
    // What wraps does so without losing a letter.
    const QString all = pieces.join(QString());
    QVERIFY(all.contains(QString(40, u'W')));
    if (layout == u"Metas.RPT")
        QVERIFY2(QString(all).remove(u' ').contains(u"***TOTAISDE99999-"_s + QString(40, u'W') + u"***"_s),
                 qPrintable(all));
}

QTEST_MAIN(TstReportControl)
#include "tst_report_control.moc"
