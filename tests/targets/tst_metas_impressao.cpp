#include "base/ProgramFolder.h"
#include "core/PrintLayout.h"
#include "printing/output/PdfFile.h"
#include "printing/pages/Report.h"
#include "support/EventWatcher.h"
#include "support/ModalHelper.h"
#include "support/Preview.h"
#include "support/Program.h"
#include "support/StatementLog.h"
#include "targets/MetasQuadro.h"
#include "targets/TargetsBench.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

QString sqlLinha(const QString& values) {
    return u"Insert into relat2 (codigo1,codigo2,texto1,texto2,texto3,texto4,texto5,texto6,texto7) "
           "Values ("_s +
           values + u")"_s;
}

} // namespace

/// Printing the board: staged rows, formula and layout.
class TstMetasImpressao : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { b = std::make_unique<TargetsBench>(); }
    void cleanupTestCase() { b.reset(); }
    void init() {
        b->reset();
        b->shop().basicoDasMetas();
    }

    void stagedRows();
    void reportControl();
    void paperProposesItsFileName();
    void periodAsItStandsWhenPrinted();
    void namesWithApostrophesPrint();
    void failedStagingPrintsNothing();
    void missingControl();
    void missingLayout();
    void missingLayoutLeavesTheScreenUsable();
    void printedText();
    void waitingLabelComesFirst();

  private:
    void run();
    void imprime();

    std::unique_ptr<TargetsBench> b;
};

void TstMetasImpressao::run() {
    b->shop().meta(1, u"P1"_s, u"100"_s);
    b->shop().meta(2, u"P3"_s, u"2.5"_s);
    b->shop().venda({.vendedor = 1, .produto = u"P1"_s, .quantidade = u"150"_s, .total = u"1234.50"_s});
    b->shop().devolucao({.vendedor = 1, .produto = u"P1"_s, .quantidade = u"7.5"_s});
    b->open();
    b->goToTab(1);
    b->press(u"Command4"_s);
}

// The preview is a window of its own: closed again, whatever its modality.
void TstMetasImpressao::imprime() {
    b->press(u"Command2"_s);
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window != b->screen() && window->isVisible())
            window->close();
    b->settle();
}

void TstMetasImpressao::stagedRows() {
    run();
    StatementLog log(b->server());
    imprime();
    const QString empty = u"'', '', '', '', '', '', '', ''"_s;
    const QStringList expectedRows{
        u"Truncate Relat2"_s,
        sqlLinha(u"'1 - ANA', 'P1', 'PAO FRANCES', '100', '150', '150,0%', '1.234,50', '7,500', '5,0%'"_s),
        sqlLinha(u"'1 - ANA', "_s + empty),
        sqlLinha(u"'1 - ANA', '', '*** TOTAIS DE 1 - ANA ***', '100', '150', '150,0%', '1.234,50', '7,500', "
                 "'5,0%'"_s),
        sqlLinha(u"'2 - BRUNO', 'P3', 'LEITE', '2,500', '0', '0,0%', '0,00', '0', '0,0%'"_s),
        sqlLinha(u"'2 - BRUNO', "_s + empty),
        sqlLinha(
            u"'2 - BRUNO', '', '*** TOTAIS DE 2 - BRUNO ***', '2,500', '1', '40,0%', '0,00', '0', '0,0%'"_s)};
    // The report's own connection follows with the layout's query.
    QCOMPARE(log.texts().first(expectedRows.size()), StatementLog::expected(expectedRows));
    const QString v;
    QCOMPARE(b->shop().estagio().size(), 6);
    QCOMPARE(b->shop().estagio()[1], QStringList({u"1 - ANA"_s, v, v, v, v, v, v, v, v}));
    QCOMPARE(b->shop().estagio()[3], QStringList({u"2 - BRUNO"_s, u"P3"_s, u"LEITE"_s, u"2,500"_s, u"0"_s,
                                                  u"0,0%"_s, u"0,00"_s, u"0"_s, u"0,0%"_s}));
}

void TstMetasImpressao::paperProposesItsFileName() {
    run();
    b->press(u"Command2"_s);
    QCOMPARE(proposedFileName(), u"Metas - 2024-03-01 a 2024-03-15.pdf"_s);
    openPreview()->close();
}

void TstMetasImpressao::reportControl() {
    b->reportControl()->setFormula(1, u"Outra='FICA'"_s);
    run();
    imprime();
    QCOMPARE(b->reportControl()->reportFileName(), programFolder() + u"\\rpt\\Metas.RPT"_s);
    QCOMPARE(b->reportControl()->windowState(), 2);
    QVERIFY(b->reportControl()->lastReport());
    // Its own slot is cleared afterwards, another screen's is left alone.
    QCOMPARE(b->reportControl()->formula(0), QString());
    QCOMPARE(b->reportControl()->formula(1), u"Outra='FICA'"_s);
}

namespace {

QString textOf(report::Report& printed) {
    QTemporaryDir folder;
    const QString pdf = folder.filePath(u"metas.pdf"_s);
    report::savePdf(printed, pdf);
    return pdfText(pdf).simplified();
}

} // namespace

void TstMetasImpressao::periodAsItStandsWhenPrinted() {
    run();
    b->period(u"02/03/2024"_s, u"14/03/2024"_s);
    imprime();
    const QString text = textOf(*b->reportControl()->lastReport());
    QVERIFY2(text.contains(u"PERÍODO DE 02/03/2024 A 14/03/2024"_s), qPrintable(text));
}

void TstMetasImpressao::printedText() {
    run();
    imprime();
    const QString text = textOf(*b->reportControl()->lastReport());
    for (const auto& part :
         {u"PERÍODO DE 01/03/2024 A 15/03/2024"_s, u"1 - ANA"_s,
          u"P1 PAO FRANCES 100 150 150,0% 1.234,50 7,500 5,0%"_s, u"*** TOTAIS DE 1 - ANA ***"_s,
          u"2 - BRUNO"_s, u"P3 LEITE 2,500 0 0,0% 0,00 0 0,0%"_s, u"*** TOTAIS DE 2 - BRUNO ***"_s})
        QVERIFY2(text.contains(part), qPrintable(part + u" in "_s + text));
}

void TstMetasImpressao::namesWithApostrophesPrint() {
    b->server().execute(u"UPDATE vendedores SET vendedor = 'D''ÁVILA' WHERE codigovend = 2; "
                        "UPDATE produtos SET descricao = CONCAT('PÃO D''ÁGUA', CHAR(92), 'SAL') "
                        "WHERE codfabr = 'P3'"_s);
    run();
    imprime();
    const QList<QStringList> staged = b->shop().estagio();
    QCOMPARE(staged.size(), 6);
    QCOMPARE(staged[3].first(3), QStringList({u"2 - D´ÁVILA"_s, u"P3"_s, u"PÃO D´ÁGUA/SAL"_s}));
    QCOMPARE(staged[5][2], u"*** TOTAIS DE 2 - D´ÁVILA ***"_s);
    // The screen shows what is stored.
    QCOMPARE(b->row(u"Grid2"_s, 5)[1], u"2 - D'ÁVILA"_s);
    const QString text = textOf(*b->reportControl()->lastReport());
    QVERIFY2(text.contains(u"2 - D´ÁVILA"_s), qPrintable(text));
}

void TstMetasImpressao::failedStagingPrintsNothing() {
    run();
    b->server().execute(u"RENAME TABLE relat2 TO guardada"_s);
    ModalHelper boxes;
    boxes.expectContaining(u"Erro em tempo de execução"_s, QMessageBox::Ok);
    imprime();
    b->server().execute(u"RENAME TABLE guardada TO relat2"_s);
    QCOMPARE(boxes.problem(), QString());
    QVERIFY(!b->reportControl()->lastReport());
    QVERIFY(!b->control(u"Label7"_s)->isVisible());
    QVERIFY(b->control(u"Command2"_s)->isEnabled());
}

void TstMetasImpressao::missingControl() {
    run();
    ReportControl* const crw = std::exchange(CRW, nullptr);
    ModalHelper boxes;
    boxes.expectContaining(u"Erro em tempo de execução 424:"_s, QMessageBox::Ok);
    // Such an error ends the program.
    QTimer::singleShot(0, b->screen(), [this] { imprime(); });
    const int fim = QApplication::exec();
    CRW = crw;
    QCOMPARE(fim, EXIT_FAILURE);
    QCOMPARE(boxes.problem(), QString());
    QCOMPARE(b->shop().estagio().size(), 6);
    QVERIFY(!b->control(u"Label7"_s)->isVisible());
}

void TstMetasImpressao::missingLayout() {
    const QTemporaryDir empty;
    const QString folder = programFolder();
    setProgramFolder(empty.path());
    run();
    ModalHelper boxes;
    boxes.expectContaining(u"Metas.RPT"_s, QMessageBox::Ok);
    imprime();
    setProgramFolder(folder);
    QCOMPARE(boxes.problem(), QString());
    QCOMPARE(b->shop().estagio().size(), 6);
    QVERIFY(!b->control(u"Label7"_s)->isVisible());
}

void TstMetasImpressao::missingLayoutLeavesTheScreenUsable() {
    missingLayout();
    imprime();
    QVERIFY(b->reportControl()->lastReport());
}

void TstMetasImpressao::waitingLabelComesFirst() {
    run();
    b->mark();
    QList<bool> staging; // at each painting of the label: whether staging had begun
    const EventWatcher watcher(b->control(u"Label7"_s), [&](QEvent::Type type) {
        if (type == QEvent::Paint)
            staging.append(b->texts().contains(u"Truncate Relat2"_s));
    });
    imprime();
    QCOMPARE(staging.value(0, true), false);
    QVERIFY(!b->control(u"Label7"_s)->isVisible());
}

QTEST_MAIN(TstMetasImpressao)
#include "tst_metas_impressao.moc"
