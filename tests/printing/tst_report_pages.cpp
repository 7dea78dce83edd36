#include "printing/ReportBench.h"
#include "printing/output/XlsxFile.h"
#include "printing/preview/TextSearch.h"
#include "support/ErrorOf.h"
#include "support/SavedGrid.h"
#include "support/StatementLog.h"

#include <QDir>
#include <QPrinter>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

// Ten details of 20 mm fill the 277 mm between the margins under heads of 50 and over feet of 27 mm.
const QByteArray tenToAPage =
    "<pageHead height=\"50\"><text x=\"0\" y=\"0\" width=\"90\">"
    "{title} {page}/{pages}</text></pageHead>"
    "<detail height=\"20\"><field x=\"0\" y=\"0\" width=\"90\" value=\"n\"/></detail>"
    "<pageFoot height=\"27\"><text x=\"0\" y=\"0\" width=\"90\">pé {page}</text></pageFoot>";

QString rows(int count) {
    return count == 0 ? u"SELECT 1 AS n FROM seq_1_to_1 WHERE seq=0"_s
                      : u"SELECT seq AS n FROM seq_1_to_%1"_s.arg(count);
}

/// The colours of what is filled on a page, in the order of drawing.
class Fills : public report::PageSink {
  public:
    void text(const report::PlacedText&) override {}
    void line(const report::Line&) override {}
    void box(const report::Box& box) override { colours.append(box.fill.name()); }

    QStringList colours;
};

} // namespace

/// Running reports: where pages break, groups, totals, formats, and the files they are saved to.
class TstReportPages : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();

    void pagesBreakWhereTheyAreFull_data();
    void pagesBreakWhereTheyAreFull();
    void firstPageIsThereBeforeTheLastRow();
    void everyRowOfALongReportIsPrintedOnce();
    void reportHeadStandsOnTheFirstPageOnly();
    void noDataBandStandsForNoRows();
    void groupsHaveHeadsFeetAndSums();
    void groupByInitialIgnoresAccentsAndCase();
    void rowsWithoutAnInitialAreOneGroup();
    void fixedColumnIsPrintedWithoutRows();
    void noLineHasASingleLetter_data();
    void noLineHasASingleLetter();
    void groupHeadIsRepeatedOnItsNextPage();
    void groupIsKeptTogether();
    void groupTallerThanAPageIsParted();
    void groupMayStartAPage();
    void firstGroupStandsUnderTheReportHead();
    void everySecondRowOfAGroupIsStriped();
    void footIsNeverAloneOnAPage();
    void detailIsChosenByCondition();
    void nullsCountButAddNothing();
    void sumOverATextIsAnError();
    void sumTooLargeIsAnError();
    void overflowIsToldWithFileLineAndName_data();
    void overflowIsToldWithFileLineAndName();
    void errorPastTheFirstPageIsRepeated();
    void calculationsUseTotalsAndFormulas();
    void roundedCalculationsAddUp();
    void valuesFollowTheirMasks_data();
    void valuesFollowTheirMasks();
    void longTextIsCutAndLongNumberSqueezed();
    void longTextIsShrunkWhenItMay();
    void optionalTextNeedsItsValues();
    void longTextWrapsAndItsBandGrows();
    void textIsFoundAcrossItsLines();
    void numbersAreAlignedAtTheRight();
    void columnThatTheQueryLacksIsAnError();
    void describedColumnMayBeMissing();
    void wrongQueryIsTheDatabasesError();
    void pdfHasTextFontsAndTitle();
    void pdfThatCannotBeWrittenIsAnError();
    void printingFollowsTheChosenPages();
    void pageThatFailsLeavesNothingOnThePrinter();
    void csvIsWrittenByteForByte();
    void xlsxHoldsNumbersAndDates();
    void csvOfNoRowsHasItsHeadings();
    void csvHasNoFormulas();
    void queryThatWritesIsNotSent();

  private:
    std::unique_ptr<PrivateServer> m_server;
    ReportBench m_bench;
};

void TstReportPages::initTestCase() {
    m_server = std::make_unique<PrivateServer>();
    m_bench.uses(*m_server);
}

void TstReportPages::cleanupTestCase() {
    m_server.reset();
}

void TstReportPages::pagesBreakWhereTheyAreFull_data() {
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("pages");
    QTest::newRow("none") << 0 << 1;
    QTest::newRow("1") << 1 << 1;
    QTest::newRow("a page but one row") << 9 << 1;
    QTest::newRow("exactly a page") << 10 << 1;
    QTest::newRow("a page and a row") << 11 << 2;
    QTest::newRow("22") << 22 << 3;
    QTest::newRow("23") << 23 << 3;
    QTest::newRow("24") << 24 << 3;
    QTest::newRow("500 pages") << 5000 << 500;
    QTest::newRow("10,000 rows") << 10000 << 1000;
}

void TstReportPages::pagesBreakWhereTheyAreFull() {
    QFETCH(const int, count);
    QFETCH(const int, pages);
    const auto report = m_bench.run(rows(count), {}, tenToAPage);
    QCOMPARE(report->pageCount(), pages);
    int next = 1;
    for (int page = 0; page < pages; ++page) {
        QStringList expected{u"Teste %1/%2"_s.arg(page + 1).arg(pages)};
        for (; next <= qMin(count, (page + 1) * 10); ++next)
            expected.append(QString::number(next));
        expected.append(u"pé %1"_s.arg(page + 1));
        QCOMPARE(ReportBench::texts(*report, page), expected);
    }
    QCOMPARE(next, count + 1);
}

void TstReportPages::firstPageIsThereBeforeTheLastRow() {
    m_server->provideSequences(rows(10000));
    report::Report report(report::readLayout(m_bench.write(u"t.RPT"_s, ReportBench::layout({}, tenToAPage))),
                          u"dsn=QDX"_s, rows(10000), {}, QDateTime::currentDateTime());
    report.readPage();
    QVERIFY(!report.complete());
    QVERIFY(report.data().rows().size() < 1000);
    QVERIFY(report.pageCount() >= 1);
    QCOMPARE(ReportBench::texts(report, 0).first(), u"Teste 1/…"_s);
    report.readAll();
    QVERIFY(report.complete());
    QCOMPARE(ReportBench::texts(report, 0).first(), u"Teste 1/1000"_s);
}

void TstReportPages::everyRowOfALongReportIsPrintedOnce() {
    const auto report = m_bench.run(rows(10000), {}, tenToAPage);
    const QString path = m_bench.path(u"longo.pdf"_s);
    report::savePdf(*report, path);
    const QStringList pages = ReportBench::pdfText(path).split(u'\f');
    QCOMPARE(pages.size(), 1001); // a form feed ends the last page too
    QStringList numbers;
    for (const QString& line : pages.join(u'\n').split(u'\n')) {
        bool isNumber = false;
        line.trimmed().toInt(&isNumber);
        if (isNumber)
            numbers.append(line.trimmed());
    }
    QCOMPARE(numbers.size(), 10000);
    for (int i = 0; i < numbers.size(); ++i)
        QCOMPARE(numbers[i].toInt(), i + 1);
}

void TstReportPages::reportHeadStandsOnTheFirstPageOnly() {
    const auto report = m_bench.run(
        rows(11), {},
        "<reportHead height=\"20\"><text x=\"0\" y=\"0\" width=\"90\">início</text></reportHead>" +
            tenToAPage);
    QCOMPARE(report->pageCount(), 2);
    QCOMPARE(ReportBench::texts(*report, 0).first(2), (QStringList{u"início"_s, u"Teste 1/2"_s}));
    QCOMPARE(ReportBench::texts(*report, 0).size(), 2 + 9 + 1);
    QCOMPARE(ReportBench::texts(*report, 1), (QStringList{u"Teste 2/2"_s, u"10"_s, u"11"_s, u"pé 2"_s}));
}

void TstReportPages::noDataBandStandsForNoRows() {
    const QByteArray bands =
        "<detail height=\"5\"><field x=\"0\" y=\"0\" width=\"9\" value=\"n\"/></detail>"
        "<noData height=\"5\"><text x=\"0\" y=\"0\" width=\"90\">Nada</text></noData>"
        "<reportFoot height=\"5\"><text x=\"0\" y=\"0\" width=\"90\">{T} em {Linhas}</text>"
        "</reportFoot>";
    const QByteArray totals = "<total name=\"T\" of=\"n\" over=\"report\"/>"
                              "<total name=\"Linhas\" kind=\"count\" over=\"report\"/>";
    QCOMPARE(ReportBench::texts(*m_bench.run(rows(0), totals, bands), 0),
             (QStringList{u"Nada"_s, u"0,00 em 0"_s}));
    QCOMPARE(ReportBench::texts(*m_bench.run(rows(1), totals, bands), 0),
             (QStringList{u"1"_s, u"1,00 em 1"_s}));
}

void TstReportPages::groupsHaveHeadsFeetAndSums() {
    const auto report = m_bench.run(
        u"SELECT 'N' AS regiao, 'AM' AS uf, 10.10 AS v UNION ALL SELECT 'N', 'AM', -0.05 UNION ALL "
        "SELECT 'N', 'PA', 5 UNION ALL SELECT 'S', 'PA', 1000.5 UNION ALL SELECT 'N', 'AM', 2"_s,
        "<total name=\"TotUf\" of=\"v\" over=\"UF\"/><total name=\"Linhas\" kind=\"count\" over=\"UF\"/>"
        "<total name=\"TotRegiao\" of=\"v\" over=\"REGIAO\"/><total name=\"Tudo\" of=\"v\" over=\"report\"/>",
        "<group name=\"REGIAO\" by=\"regiao\"><head height=\"5\"><text x=\"0\" y=\"0\" width=\"90\">"
        "[{REGIAO}</text></head><foot height=\"5\"><text x=\"0\" y=\"0\" width=\"90\">{regiao}] "
        "{TotRegiao}</text>"
        "</foot></group>"
        "<group name=\"UF\" by=\"uf\"><head height=\"5\"><text x=\"0\" y=\"0\" "
        "width=\"90\">({uf}</text></head>"
        "<foot height=\"5\"><text x=\"0\" y=\"0\" width=\"90\">{uf}) {TotUf} {Linhas}</text></foot></group>"
        "<detail height=\"5\"><field x=\"0\" y=\"0\" width=\"90\" value=\"v\"/></detail>"
        "<reportFoot height=\"5\"><field x=\"0\" y=\"0\" width=\"90\" value=\"Tudo\"/></reportFoot>");
    // Same UF under another region is another group.
    QCOMPARE(ReportBench::texts(*report, 0),
             (QStringList{u"[N"_s,  u"(AM"_s,     u"10.10"_s,          u"-0.05"_s,       u"AM) 10,05 2"_s,
                          u"(PA"_s, u"5.00"_s,    u"PA) 5,00 1"_s,     u"N] 15,05"_s,    u"[S"_s,
                          u"(PA"_s, u"1000.50"_s, u"PA) 1.000,50 1"_s, u"S] 1.000,50"_s, u"[N"_s,
                          u"(AM"_s, u"2.00"_s,    u"AM) 2,00 1"_s,     u"N] 2,00"_s,     u"1.017,55"_s}));
}

void TstReportPages::groupByInitialIgnoresAccentsAndCase() {
    const auto report =
        m_bench.run(u"SELECT ' COSTA' AS nome UNION ALL SELECT '99 LANCHES' UNION ALL SELECT NULL UNION ALL "
                    u"SELECT 'ÁGUA' UNION ALL "
                    u"SELECT 'alves' UNION ALL "
                    "SELECT 'ÇA VA' UNION ALL SELECT 'COSTA'"_s,
                    {},
                    "<group name=\"Letra\" by=\"nome\" key=\"initial\"><head height=\"5\"><text x=\"0\" "
                    "y=\"0\" width=\"90\">"
                    "-{Letra}-</text></head></group>"
                    "<detail height=\"5\"><field x=\"0\" y=\"0\" width=\"90\" value=\"nome\"/></detail>");
    QCOMPARE(ReportBench::texts(*report, 0),
             (QStringList{u"-#-"_s, u" COSTA"_s, u"99 LANCHES"_s, u"-A-"_s, u"ÁGUA"_s, u"alves"_s, u"-C-"_s,
                          u"ÇA VA"_s, u"COSTA"_s}));
}

void TstReportPages::rowsWithoutAnInitialAreOneGroup() {
    // "[" and "~" sort after the letters, digits before them.
    const auto report = m_bench.run(
        u"SELECT '9' AS nome, 1 AS v UNION ALL SELECT 'ANA', 2 UNION ALL SELECT 'BIA', 4 UNION ALL "
        "SELECT '[X', 8 UNION ALL SELECT '~Y', 16"_s,
        "<total name=\"T\" of=\"v\" over=\"Letra\"/><total name=\"Tudo\" of=\"v\" over=\"report\"/>",
        "<group name=\"Letra\" by=\"nome\" key=\"initial\"><head height=\"5\"><text x=\"0\" y=\"0\" "
        "width=\"90\">-{Letra}-</text></head><foot height=\"5\"><text x=\"0\" y=\"0\" width=\"90\">"
        "{Letra}: {T}</text></foot></group>"
        "<detail height=\"5\"><field x=\"0\" y=\"0\" width=\"90\" value=\"nome\"/></detail>"
        "<reportFoot height=\"5\"><field x=\"0\" y=\"0\" width=\"90\" value=\"Tudo\"/></reportFoot>");
    QCOMPARE(ReportBench::texts(*report, 0),
             (QStringList{u"-#-"_s, u"9"_s, u"[X"_s, u"~Y"_s, u"#: 25,00"_s, u"-A-"_s, u"ANA"_s, u"A: 2,00"_s,
                          u"-B-"_s, u"BIA"_s, u"B: 4,00"_s, u"31,00"_s}));
}

void TstReportPages::fixedColumnIsPrintedWithoutRows() {
    const QByteArray bands = "<pageHead height=\"5\"><text x=\"0\" y=\"0\" width=\"90\" optional=\"true\">"
                             "Nível {nivel}</text></pageHead><detail height=\"5\"/>";
    const QString none = u"SELECT t.nivel FROM (SELECT 5 AS nivel) t WHERE t.`nivel`= 2"_s;
    const QByteArray fixed = "<column name=\"nivel\" fixed=\"true\"/>";
    QCOMPARE(ReportBench::texts(*m_bench.run(none, fixed, bands), 0), QStringList(u"Nível 2"_s));
    QCOMPARE(ReportBench::texts(*m_bench.run(none, {}, bands), 0), QStringList());
    const QString some = u"SELECT t.nivel FROM (SELECT 5 AS nivel) t WHERE t.nivel = 5"_s;
    QCOMPARE(ReportBench::texts(*m_bench.run(some, fixed, bands), 0), QStringList(u"Nível 5"_s));
}

void TstReportPages::noLineHasASingleLetter_data() {
    QTest::addColumn<QString>("text");
    QTest::newRow("one word") << QString(60, u'W');
    QTest::newRow("letter at the end") << u"MERCADO BOM PREÇO DA PRAÇA E"_s;
    QTest::newRow("letter after a long word") << u"SUPERMERCADOS E"_s;
    QTest::newRow("letters alone") << u"A B C D E F G H I J K L M N O P Q R S T U V"_s;
}

// In a column of every width.
void TstReportPages::noLineHasASingleLetter() {
    QFETCH(const QString, text);
    report::Font font{u"f"_s, QFont(u"DejaVu Sans"_s), QColor(Qt::black)};
    font.font.setPixelSize(qRound(8 * report::dotsPerPoint));
    const report::FontSet fonts({font});
    int wrapped = 0;
    for (double width = fonts.width(0, u"WWWW"_s); width < fonts.width(0, text); width += 7) {
        const QStringList lines = fonts.wrap(0, text, width);
        wrapped += lines.size() > 1 ? 1 : 0;
        for (qsizetype line = 1; line < lines.size(); ++line)
            QVERIFY2(lines[line].size() > 1, qPrintable(lines.join(u'|')));
        QCOMPARE(lines.join(QString()).remove(u' '), QString(text).remove(u' '));
        for (const QString& line : lines)
            QVERIFY2(fonts.width(0, line) <= width + fonts.width(0, u" W"_s), qPrintable(lines.join(u'|')));
    }
    QVERIFY(wrapped > 10);
}

namespace {

QByteArray grouped(const QByteArray& groupAttributes, const QByteArray& headAttributes) {
    return "<group name=\"G\" by=\"g\" " + groupAttributes + "><head height=\"20\" " + headAttributes +
           "><text x=\"0\" y=\"0\" width=\"90\">g{G}</text></head></group>"
           "<detail height=\"20\"><field x=\"0\" y=\"0\" width=\"90\" value=\"n\"/></detail>";
}

// 277 mm hold 13 bands of 20 mm.
constexpr int bandsToAPage = 13;

QString groupsOf(int rows, int groupRows) {
    return u"SELECT seq AS n, FLOOR((seq-1)/%2) AS g FROM seq_1_to_%1"_s.arg(rows).arg(groupRows);
}

} // namespace

void TstReportPages::groupHeadIsRepeatedOnItsNextPage() {
    const auto repeated = m_bench.run(groupsOf(20, 100), {}, grouped({}, "repeat=\"true\""));
    QCOMPARE(repeated->pageCount(), 2);
    QCOMPARE(ReportBench::texts(*repeated, 0).size(), bandsToAPage);
    QCOMPARE(ReportBench::texts(*repeated, 1).first(2), (QStringList{u"g0"_s, u"13"_s}));
    const auto once = m_bench.run(groupsOf(20, 100), {}, grouped({}, {}));
    QCOMPARE(ReportBench::texts(*once, 1).first(), u"13"_s);
}

void TstReportPages::groupIsKeptTogether() {
    // Three groups of a head and four details: two and three bands of the third would fit on the first page.
    const auto kept = m_bench.run(groupsOf(12, 4), {}, grouped("keepTogether=\"true\"", "repeat=\"true\""));
    QCOMPARE(ReportBench::texts(*kept, 0).size(), 10);
    QCOMPARE(ReportBench::texts(*kept, 1), (QStringList{u"g2"_s, u"9"_s, u"10"_s, u"11"_s, u"12"_s}));
    const auto parted = m_bench.run(groupsOf(12, 4), {}, grouped({}, {}));
    QCOMPARE(ReportBench::texts(*parted, 0).size(), bandsToAPage);
}

void TstReportPages::groupTallerThanAPageIsParted() {
    const auto report =
        m_bench.run(groupsOf(33, 30), {}, grouped("keepTogether=\"true\"", "repeat=\"true\""));
    QCOMPARE(report->pageCount(), 3);
    QStringList numbers;
    for (int page = 0; page < 3; ++page)
        for (const QString& text : ReportBench::texts(*report, page))
            if (!text.startsWith(u'g'))
                numbers.append(text);
    QCOMPARE(numbers.size(), 33);
    QCOMPARE(ReportBench::texts(*report, 1).first(2), (QStringList{u"g0"_s, u"13"_s}));
    // The next group fits whole under what is left of the tall one.
    QVERIFY(ReportBench::texts(*report, 2).contains(u"g1"_s));
}

void TstReportPages::groupMayStartAPage() {
    const auto report = m_bench.run(groupsOf(6, 2), {}, grouped("startsPage=\"true\"", {}));
    QCOMPARE(report->pageCount(), 3);
    QCOMPARE(ReportBench::texts(*report, 2), (QStringList{u"g2"_s, u"5"_s, u"6"_s}));
}

void TstReportPages::firstGroupStandsUnderTheReportHead() {
    const auto report =
        m_bench.run(groupsOf(4, 2), {},
                    "<reportHead height=\"20\"><text x=\"0\" y=\"0\" width=\"90\">capa</text></reportHead>" +
                        grouped("startsPage=\"true\"", {}));
    QCOMPARE(report->pageCount(), 2);
    QCOMPARE(ReportBench::texts(*report, 0), (QStringList{u"capa"_s, u"g0"_s, u"1"_s, u"2"_s}));
}

void TstReportPages::everySecondRowOfAGroupIsStriped() {
    const auto report = m_bench.run(
        groupsOf(5, 3), {},
        "<group name=\"G\" by=\"g\"><head height=\"20\"><text x=\"0\" y=\"0\" width=\"90\">g</text></head>"
        "</group><detail height=\"20\" fill=\"#FFFFFF\" stripe=\"#FF0000\"><field x=\"0\" y=\"0\" "
        "width=\"90\" value=\"n\"/></detail>");
    Fills fills;
    report->compose(0, fills);
    QCOMPARE(fills.colours,
             (QStringList{u"#ffffff"_s, u"#ff0000"_s, u"#ffffff"_s, u"#ffffff"_s, u"#ff0000"_s}));
}

void TstReportPages::footIsNeverAloneOnAPage() {
    const auto report =
        m_bench.run(rows(bandsToAPage), {},
                    "<detail height=\"20\"><field x=\"0\" y=\"0\" width=\"90\" value=\"n\"/></detail>"
                    "<reportFoot height=\"20\"><text x=\"0\" y=\"0\" width=\"90\">fim</text></reportFoot>");
    QCOMPARE(report->pageCount(), 2);
    QCOMPARE(ReportBench::texts(*report, 1), (QStringList{u"13"_s, u"fim"_s}));
}

void TstReportPages::detailIsChosenByCondition() {
    const auto report = m_bench.run(
        u"SELECT 'a' AS t UNION ALL SELECT '*** TOTAL' UNION ALL SELECT '' UNION ALL SELECT NULL "
        "UNION ALL SELECT 'b'"_s,
        {},
        "<detail height=\"5\" when=\"t\" begins=\"***\"><text x=\"0\" y=\"0\" width=\"90\">total "
        "{t}</text></detail>"
        "<detail height=\"5\" when=\"t\" equals=\"\"><text x=\"0\" y=\"0\" width=\"90\">vazio</text></detail>"
        "<detail height=\"5\"><text x=\"0\" y=\"0\" width=\"90\">linha {t}</text></detail>");
    QCOMPARE(ReportBench::texts(*report, 0),
             (QStringList{u"linha a"_s, u"total *** TOTAL"_s, u"vazio"_s, u"vazio"_s, u"linha b"_s}));
}

void TstReportPages::nullsCountButAddNothing() {
    const auto report = m_bench.run(
        u"SELECT NULL AS n UNION ALL SELECT 3"_s,
        "<total name=\"T\" of=\"n\" over=\"report\"/><total name=\"Linhas\" kind=\"count\" over=\"report\"/>",
        "<detail height=\"5\"/><reportFoot height=\"5\"><text x=\"0\" y=\"0\" width=\"90\">{T} "
        "{Linhas}</text>"
        "</reportFoot>");
    QCOMPARE(ReportBench::texts(*report, 0), (QStringList{u"3,00 2"_s}));
}

void TstReportPages::sumOverATextIsAnError() {
    const auto error = errorOf([&] {
        m_bench.run(u"SELECT 'doze' AS n"_s, "\n<total name=\"T\" of=\"n\" over=\"report\"/>",
                    "<detail height=\"5\"/>");
    });
    QVERIFY(error);
    QCOMPARE(error->number(), number(ErrorNumber::InvalidLayout));
    QVERIFY2(error->text().contains(u"test.RPT, linha 6: \"n\""_s) && error->text().contains(u"\"doze\""_s),
             error->what());
}

void TstReportPages::sumTooLargeIsAnError() {
    QCOMPARE(errorNumberOf([&] {
                 m_bench.run(u"SELECT 900000000000000 AS n UNION ALL SELECT 900000000000000"_s,
                             "<total name=\"T\" of=\"n\" over=\"report\"/>", "<detail height=\"5\"/>");
             }),
             number(ErrorNumber::Overflow));
}

void TstReportPages::overflowIsToldWithFileLineAndName_data() {
    QTest::addColumn<QByteArray>("declarations");
    QTest::addColumn<QString>("place");
    // What ReportBench::layout() puts before the declarations ends with line 4.
    QTest::newRow("total") << QByteArray("\n<total name=\"T\" of=\"n\" over=\"report\"/>")
                           << u"linha 6: \"T\": Estouro"_s;
    QTest::newRow("calculation") << QByteArray("\n\n<calculation name=\"T\" value=\"n * n\"/>")
                                 << u"linha 7: \"T\": Estouro"_s;
    QTest::newRow("calculation over another")
        << QByteArray(
               "\n<calculation name=\"Q\" value=\"n * n\"/>\n<calculation name=\"T\" value=\"Q / n\"/>")
        << u"linha 6: \"Q\": Estouro"_s;
}

void TstReportPages::overflowIsToldWithFileLineAndName() {
    QFETCH(const QByteArray, declarations);
    QFETCH(const QString, place);
    const auto error = errorOf([&] {
        const auto report = m_bench.run(
            u"SELECT 900000000000000 AS n UNION ALL SELECT 900000000000000"_s, declarations,
            "<detail height=\"5\"/>"
            "<reportFoot height=\"5\"><field x=\"0\" y=\"0\" width=\"9\" value=\"T\"/></reportFoot>");
        report->texts(0);
    });
    QVERIFY(error);
    QCOMPARE(error->number(), number(ErrorNumber::Overflow));
    QVERIFY2(
        error->text().startsWith(QDir::toNativeSeparators(m_bench.path(u"test.RPT"_s)) + u", "_s + place),
        error->what());
}

void TstReportPages::errorPastTheFirstPageIsRepeated() {
    const QString layout = m_bench.write(
        u"soma.RPT"_s,
        ReportBench::layout(
            "<total name=\"T\" of=\"n\" over=\"report\"/>",
            "<detail height=\"20\"><field x=\"0\" y=\"0\" width=\"90\" value=\"n\"/></detail>"));
    m_server->provideSequences(u"seq_1_to_1000"_s);
    report::Report report(report::readLayout(layout), u"dsn=QDX"_s,
                          u"SELECT IF(seq=400, '1.234,50', seq) AS n FROM seq_1_to_1000"_s, {},
                          QDateTime::currentDateTime());
    report.readPage();
    const QString pdf = m_bench.path(u"soma.pdf"_s);
    const QString csv = m_bench.path(u"soma.csv"_s);
    const std::vector<std::function<void()>> attempts = {[&] { report.readAll(); },
                                                         [&] { report::savePdf(report, pdf); },
                                                         [&] { report::saveCsv(report, csv); },
                                                         [&] { report.readAll(); },
                                                         [&] { report.readFor(10000); },
                                                         [&] { report.readPage(); }};
    for (const auto& attempt : attempts) {
        const auto error = errorOf(attempt);
        QVERIFY(error);
        QCOMPARE(error->number(), number(ErrorNumber::InvalidLayout));
        QVERIFY2(error->text().contains(u"\"1.234,50\""_s), error->what());
        QVERIFY(!report.complete());
    }
    QVERIFY(!QFile::exists(pdf));
    QVERIFY(!QFile::exists(csv));
    QCOMPARE(ReportBench::texts(report, 0).first(), u"1"_s); // what was shown stays
}

void TstReportPages::calculationsUseTotalsAndFormulas() {
    const QByteArray declarations = "<formula name=\"Porc\"/><total name=\"T\" of=\"n\" over=\"report\"/>"
                                    "<calculation name=\"Com\" value=\"T * Porc / 100\"/>"
                                    "<calculation name=\"Liquido\" value=\"T - Com\"/>"
                                    "<calculation name=\"Dobro\" value=\"n * 2\"/>";
    const QByteArray bands =
        "<detail height=\"5\"><field x=\"0\" y=\"0\" width=\"90\" value=\"Dobro\"/></detail>"
        "<reportFoot height=\"5\"><text x=\"0\" y=\"0\" width=\"90\">"
        "{Porc|##0.0#}% {Com} {Liquido|###,##0.0000}</text></reportFoot>";
    const QString query = u"SELECT 1234.56 AS n"_s;
    QCOMPARE(ReportBench::texts(*m_bench.run(query, declarations, bands, {{u"porc"_s, u"5.5"_s}}), 0),
             (QStringList{u"2.469,12"_s, u"5,5% 67,90 1.166,6592"_s}));
    // Without the formula there is nothing to calculate, and nothing is printed for it.
    QCOMPARE(ReportBench::texts(*m_bench.run(query, declarations, bands), 0),
             (QStringList{u"2.469,12"_s, u"%  "_s}));
}

void TstReportPages::roundedCalculationsAddUp() {
    const QByteArray declarations = "<total name=\"T\" of=\"n\" over=\"report\"/>"
                                    "<calculation name=\"Com\" value=\"T * 1.5 / 100\" decimals=\"2\"/>"
                                    "<calculation name=\"Soma\" value=\"Com + Com\"/>"
                                    "<calculation name=\"Exata\" value=\"T * 3 / 100\"/>"
                                    "<calculation name=\"Inteira\" value=\"T\" decimals=\"0\"/>";
    const QByteArray bands =
        "<detail height=\"5\"/><reportFoot height=\"5\"><text x=\"0\" y=\"0\" width=\"90\">"
        "{Com} {Soma} {Exata} {Inteira}</text></reportFoot>";
    const auto printed = [&](const QString& query) {
        return ReportBench::texts(*m_bench.run(query, declarations, bands), 0).value(0);
    };
    QCOMPARE(printed(u"SELECT 10.30 AS n"_s), u"0,15 0,30 0,31 10,00"_s);
    QCOMPARE(printed(u"SELECT 100.33 AS n"_s), u"1,50 3,00 3,01 100,00"_s);
    QCOMPARE(printed(u"SELECT -100.50 AS n"_s), u"-1,51 -3,02 -3,02 -101,00"_s);
}

void TstReportPages::valuesFollowTheirMasks_data() {
    QTest::addColumn<QString>("value");
    QTest::addColumn<QByteArray>("mask");
    QTest::addColumn<QString>("shown");
    QTest::newRow("none") << u"'1234.50'"_s << QByteArray() << u"1234.50"_s;
    QTest::newRow("money") << u"1234.5"_s << QByteArray("###,##0.00") << u"1.234,50"_s;
    QTest::newRow("negative") << u"-0.5"_s << QByteArray("###,##0.00") << u"-0,50"_s;
    QTest::newRow("whole") << u"1200.00"_s << QByteArray("0") << u"1200"_s;
    QTest::newRow("percentage as text") << u"' 1.37%'"_s << QByteArray("##0.00") << u"1,37%"_s;
    QTest::newRow("no number") << u"'***'"_s << QByteArray("##0.00") << u"***"_s;
    QTest::newRow("null") << u"NULL"_s << QByteArray("##0.00") << QString();
    QTest::newRow("date") << u"DATE '2024-02-29'"_s << QByteArray("dd/mm/yyyy") << u"29/02/2024"_s;
    QTest::newRow("date and time") << u"TIMESTAMP '2024-02-29 10:11:12'"_s << QByteArray("dd/mm/yy")
                                   << u"29/02/24"_s;
    QTest::newRow("zero date") << u"'0000-00-00'"_s << QByteArray("dd/mm/yyyy") << QString();
    QTest::newRow("zero date and time") << u"'0000-00-00 00:00:00'"_s << QByteArray("dd/mm/yy") << QString();
    QTest::newRow("date as it is typed") << u"'29/02/2024'"_s << QByteArray("dd/mm/yyyy") << u"29/02/2024"_s;
    QTest::newRow("percentage with a blank") << u"'-12.5 %'"_s << QByteArray("##0.00") << u"-12,50%"_s;
    QTest::newRow("sign without a number") << u"'%'"_s << QByteArray("##0.00") << u"%"_s;
    QTest::newRow("too large for four places")
        << u"'12345678901234567.89'"_s << QByteArray("###,##0.00") << u"12345678901234567,89"_s;
    QTest::newRow("too large and none")
        << u"'12345678901234567.8x'"_s << QByteArray("###,##0.00") << u"12345678901234567.8x"_s;
    QTest::newRow("accents") << u"'PÃO DE AÇÚCAR €'"_s << QByteArray() << u"PÃO DE AÇÚCAR €"_s;
}

void TstReportPages::valuesFollowTheirMasks() {
    QFETCH(const QString, value);
    QFETCH(const QByteArray, mask);
    QFETCH(const QString, shown);
    const auto report =
        m_bench.run(u"SELECT %1 AS n"_s.arg(value), {},
                    "<detail height=\"5\"><field x=\"0\" y=\"0\" width=\"90\" value=\"n\" format=\"" + mask +
                        "\"/></detail>");
    QCOMPARE(ReportBench::texts(*report, 0), shown.isEmpty() ? QStringList() : QStringList(shown));
}

void TstReportPages::longTextIsCutAndLongNumberSqueezed() {
    const auto report = m_bench.run(
        u"SELECT REPEAT('ABC ', 30) AS t, 123456789.12 AS v"_s, {},
        "<detail height=\"5\"><field x=\"0\" y=\"0\" width=\"20\" value=\"t\"/>"
        "<field x=\"30\" y=\"0\" width=\"10\" align=\"right\" value=\"v\" format=\"###,##0.00\"/></detail>");
    const auto texts = report->texts(0);
    QCOMPARE(texts.size(), size_t(2));
    QVERIFY(texts[0].text.startsWith(u"ABC ABC"_s));
    QVERIFY2(texts[0].text.endsWith(u'…'), qPrintable(texts[0].text));
    QCOMPARE(texts[1].text, u"123.456.789,12"_s);
    QVERIFY(texts[1].squeeze < 1);
    QVERIFY(texts[1].squeeze > 0.3);
}

void TstReportPages::longTextIsShrunkWhenItMay() {
    const auto report =
        m_bench.run(u"SELECT '99999900000,0%' AS t, '1,0%' AS c"_s, {},
                    "<detail height=\"5\">"
                    "<field x=\"0\" y=\"0\" width=\"9\" align=\"right\" fit=\"shrink\" value=\"t\"/>"
                    "<text x=\"20\" y=\"0\" width=\"20\" fit=\"shrink\">Meta: {t} de {t}</text>"
                    "<field x=\"50\" y=\"0\" width=\"9\" fit=\"shrink\" value=\"c\"/>"
                    "<field x=\"60\" y=\"0\" width=\"9\" fit=\"cut\" value=\"t\"/></detail>");
    const auto texts = report->texts(0);
    QCOMPARE(texts.size(), size_t(4));
    QCOMPARE(texts[0].text, u"99999900000,0%"_s);
    QCOMPARE(texts[1].text, u"Meta: 99999900000,0% de 99999900000,0%"_s);
    QCOMPARE(texts[2].squeeze, 1.0); // only as far as need be
    QVERIFY(texts[3].text.endsWith(u'…'));
    const report::FontSet fonts(report->layout().fonts);
    for (size_t i = 0; i < 2; ++i) {
        QVERIFY(texts[i].squeeze < 1);
        const double width = fonts.width(texts[i].font, texts[i].text) * texts[i].squeeze;
        QVERIFY(qAbs(width - texts[i].place.width()) < 1);
        QVERIFY(qAbs(texts[i].baseline.x() - texts[i].place.left()) < 1);
    }
}

void TstReportPages::optionalTextNeedsItsValues() {
    const QByteArray bands =
        "<pageHead height=\"10\"><text x=\"0\" y=\"0\" width=\"90\" optional=\"true\">Nível {n}, "
        "{Titulo}</text>"
        "<text x=\"0\" y=\"5\" width=\"90\">Sempre {n}</text></pageHead>"
        "<detail height=\"5\"><text x=\"0\" y=\"0\" width=\"90\" wrap=\"true\" optional=\"true\">"
        "Linha {m}</text></detail>";
    const QByteArray declared = "<formula name=\"Titulo\"/>";
    const auto printed = [&](const QString& query, const report::FormulaValues& formulas) {
        return ReportBench::texts(*m_bench.run(query, declared, bands, formulas), 0);
    };
    const report::FormulaValues title = {{u"titulo"_s, u"MARÇO"_s}};
    const QString two = u"SELECT 7 AS n, 'a' AS m UNION ALL SELECT 7, NULL"_s;
    QCOMPARE(printed(two, title), QStringList({u"Nível 7, MARÇO"_s, u"Sempre 7"_s, u"Linha a"_s}));
    QCOMPARE(printed(two, {}), QStringList({u"Sempre 7"_s, u"Linha a"_s}));
    QCOMPARE(printed(u"SELECT 7 AS n, 'a' AS m FROM seq_1_to_1 WHERE seq=0"_s, title),
             QStringList({u"Sempre "_s}));
}

void TstReportPages::longTextWrapsAndItsBandGrows() {
    const auto report = m_bench.run(
        u"SELECT 'SUPERMERCADO BOM PREÇO DE ARARAQUARA COMÉRCIO LTDA' AS t UNION ALL SELECT 'CURTO'"_s, {},
        "<detail height=\"5\"><field x=\"0\" y=\"0\" width=\"40\" height=\"5\" wrap=\"true\" "
        "value=\"t\"/></detail>");
    const auto texts = report->texts(0);
    QVERIFY(texts.size() > 2);
    QStringList words;
    for (const auto& text : texts)
        words.append(text.text);
    QCOMPARE(words.join(u' '), u"SUPERMERCADO BOM PREÇO DE ARARAQUARA COMÉRCIO LTDA CURTO"_s);
    for (size_t i = 1; i < texts.size(); ++i)
        QVERIFY(texts[i].baseline.y() > texts[i - 1].baseline.y());
    // Without growth the second row would begin 5 mm below the first.
    QVERIFY(texts.back().place.top() - texts.front().place.top() > 8 * report::dotsPerMillimetre);
}

void TstReportPages::textIsFoundAcrossItsLines() {
    const auto report = m_bench.run(
        u"SELECT 'SUPERMERCADO BOM PREÇO DE ARARAQUARA COMÉRCIO LTDA' AS t UNION ALL SELECT 'PREÇO'"_s, {},
        "<detail height=\"5\"><field x=\"0\" y=\"0\" width=\"40\" height=\"5\" wrap=\"true\" "
        "value=\"t\"/></detail>");
    const auto texts = report->texts(0);
    QVERIFY(texts.size() > 3);
    const auto last = static_cast<int>(texts.size()) - 1;
    using Direction = report::TextSearch::Direction;
    report::TextSearch search(*report);
    const auto found = [&](const QString& sought, Direction direction = Direction::Forward) {
        return search.find(sought, 0, direction);
    };
    QRectF whole;
    for (int i = 0; i < last; ++i)
        whole |= texts[static_cast<size_t>(i)].place;
    for (const QString& sought :
         {u"supermercado bom preco de araraquara comercio ltda"_s,
          texts[0].text.section(u' ', -1) + u' ' + texts[1].text.section(u' ', 0, 0)}) {
        for (const Direction direction : {Direction::Forward, Direction::Backward}) {
            search.startAgain();
            const auto hit = found(sought, direction);
            QVERIFY2(hit, qPrintable(sought));
            QCOMPARE(hit->place, whole);
            QCOMPARE(hit->number, 1);
            QCOMPARE(hit->count, 1); // nowhere else
            QVERIFY(!hit->wrapped);
        }
        const auto again = found(sought);
        QCOMPARE(again->place, whole);
        QVERIFY(again->wrapped);
    }
    // What one line has by itself is found on that line.
    const auto word = found(u"ltda"_s);
    QVERIFY(word);
    QCOMPARE(word->place, texts[static_cast<size_t>(last - 1)].place);
    const auto first = found(u"preço"_s);
    QVERIFY(first && first->place.top() < texts.back().place.top());
    QCOMPARE(first->count, 2);
    const auto second = found(u"preço"_s);
    QCOMPARE(second->place, texts.back().place);
    QCOMPARE(second->number, 2);
    QVERIFY(!found(u"ltda preço"_s)); // texts of two rows
}

void TstReportPages::numbersAreAlignedAtTheRight() {
    const auto report =
        m_bench.run(u"SELECT 1 AS n UNION ALL SELECT 1234567.89"_s, {},
                    "<detail height=\"5\"><field x=\"10\" y=\"0\" width=\"40\" align=\"right\" value=\"n\" "
                    "format=\"###,##0.00\"/></detail>");
    const report::FontSet fonts(report->layout().fonts);
    for (const auto& text : report->texts(0)) {
        const double right = text.baseline.x() + fonts.width(text.font, text.text);
        QVERIFY(qAbs(right - 60 * report::dotsPerMillimetre) < 2); // the margin of 10 mm included
    }
}

void TstReportPages::columnThatTheQueryLacksIsAnError() {
    const auto error = errorOf([&] {
        m_bench.run(u"SELECT 1 AS n"_s, {},
                    "<detail height=\"5\">\n<field x=\"0\" y=\"0\" width=\"9\" value=\"Valor7\"/></detail>");
    });
    QVERIFY(error);
    QCOMPARE(error->number(), number(ErrorNumber::InvalidLayout));
    QVERIFY2(error->text().contains(QDir::toNativeSeparators(m_bench.path(u"test.RPT"_s)) +
                                    u", linha 6: a consulta não tem a coluna \"Valor7\"."_s),
             error->what());
}

void TstReportPages::describedColumnMayBeMissing() {
    const auto report =
        m_bench.run(u"SELECT 1 AS n"_s, "<column name=\"x\" heading=\"X\"/>",
                    "<detail height=\"5\"><field x=\"0\" y=\"0\" width=\"9\" value=\"n\"/></detail>");
    QCOMPARE(ReportBench::texts(*report, 0), QStringList(u"1"_s));
}

void TstReportPages::wrongQueryIsTheDatabasesError() {
    const auto error = errorOf([&] { m_bench.run(u"SELECT nada FROM tabela"_s, {}, tenToAPage); });
    QVERIFY(error);
    QCOMPARE(error->sqlState(), u"42S02"_s);
    QCOMPARE(error->statement(), u"SELECT nada FROM tabela"_s);
}

void TstReportPages::pdfHasTextFontsAndTitle() {
    const auto report = m_bench.run(u"SELECT 'PÃO & AÇÚCAR' AS n"_s, {}, tenToAPage);
    const QString path = m_bench.path(u"um.pdf"_s);
    report::savePdf(*report, path);
    QCOMPARE(ReportBench::pdfText(path).simplified(), u"Teste 1/1 PÃO & AÇÚCAR pé 1"_s);
    const QString info = QString::fromUtf8(outputOf(u"pdfinfo"_s, {path}));
    QVERIFY2(info.contains(QRegularExpression(u"Title: +Teste\n"_s)), qPrintable(info));
    QVERIFY2(info.contains(QRegularExpression(u"Page size: +595\\S* x 84[12]\\S* pts \\(A4\\)"_s)),
             qPrintable(info));
    const QStringList fonts = QString::fromUtf8(outputOf(u"pdffonts"_s, {path})).trimmed().split(u'\n');
    QVERIFY(fonts.size() > 2);
    for (const QString& font : fonts.sliced(2))
        QVERIFY2(font.contains(QRegularExpression(u" yes +(yes|no) +yes "_s)),
                 qPrintable(font)); // emb, sub, uni
}

void TstReportPages::pdfThatCannotBeWrittenIsAnError() {
    const auto report = m_bench.run(rows(1), {}, tenToAPage);
    const QString path = m_bench.path(u"nao/existe.pdf"_s);
    QCOMPARE(errorNumberOf([&] { report::savePdf(*report, path); }), number(ErrorNumber::FileNotWritable));
    QCOMPARE(errorNumberOf([&] { report::saveCsv(*report, path); }), number(ErrorNumber::FileNotWritable));
}

void TstReportPages::printingFollowsTheChosenPages() {
    const auto report = m_bench.run(rows(35), {}, tenToAPage);
    const QString path = m_bench.path(u"impresso.pdf"_s);
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(path);
    printer.setPageSize(QPageSize(QPageSize::A5)); // smaller paper: the page is scaled to it
    printer.setPageOrder(QPrinter::LastPageFirst);
    report::print(*report, printer, 1, 2);
    const QStringList pages = ReportBench::pdfText(path).split(u'\f');
    QCOMPARE(pages.size(), 3);
    QVERIFY(pages[0].simplified().startsWith(u"Teste 3/4 21 22"_s));
    QVERIFY(pages[1].simplified().startsWith(u"Teste 2/4 11 12"_s));
    QVERIFY(pages[1].simplified().endsWith(u"20 pé 2"_s));
}

void TstReportPages::pageThatFailsLeavesNothingOnThePrinter() {
    const auto report =
        m_bench.run(u"SELECT IF(seq=25, 900000000000000, seq) AS n FROM seq_1_to_35"_s,
                    "<calculation name=\"Q\" value=\"n * n\"/>",
                    "<pageHead height=\"77\"/>"
                    "<detail height=\"20\"><field x=\"0\" y=\"0\" width=\"90\" value=\"Q\"/></detail>");
    QCOMPARE(report->pageCount(), 4);
    const QString path = m_bench.path(u"parcial.pdf"_s);
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(path);
    QCOMPARE(errorNumberOf([&] { report::print(*report, printer, 0, 3); }), number(ErrorNumber::Overflow));
    QVERIFY(!QFile::exists(path));
    const QString saved = m_bench.path(u"salvo.pdf"_s);
    QCOMPARE(errorNumberOf([&] { report::savePdf(*report, saved); }), number(ErrorNumber::Overflow));
    QVERIFY(!QFile::exists(saved));
    report::print(*report, printer, 0, 1); // the pages asked for are whole
    QVERIFY(QFile::exists(path));
}

void TstReportPages::csvIsWrittenByteForByte() {
    const auto report = m_bench.run(
        u"SELECT 'A;B' AS t, 1234.50 AS v, DATE '2024-02-29' AS d, NULL AS x, 3.50 AS p UNION ALL "
        "SELECT 'diz \"PÃO\"', -1, '2024-03-01', 'a\\nb', NULL UNION ALL "
        "SELECT '', 1234567.89, NULL, '1.5', 'n/d' UNION ALL "
        "SELECT '', 12345678901234567.89, '2024-03-02', '', '12.5%'"_s,
        "<column name=\"v\" heading=\"R$ valor\" format=\"###,##0.00\"/><column name=\"D\" "
        "format=\"dd/mm/yyyy\"/><column name=\"p\" format=\"##0.0\"/>",
        "<detail height=\"5\"/>");
    const QString path = m_bench.path(u"dados.csv"_s);
    report::saveCsv(*report, path);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("\xEF\xBB\xBF"
                                        "t;R$ valor;d;x;p\r\n"
                                        "\"A;B\";1234,50;29/02/2024;;3,5\r\n"
                                        "\"diz \"\"PÃO\"\"\";-1,00;01/03/2024;\"a\nb\";\r\n"
                                        ";1234567,89;;1.5;n/d\r\n"
                                        ";12345678901234567,89;02/03/2024;;12,5%\r\n"));
}

void TstReportPages::xlsxHoldsNumbersAndDates() {
    const auto report = m_bench.run(
        u"SELECT '=A;B' AS t, 1234.50 AS v, DATE '2024-02-29' AS d, '00123' AS x, 3.50 AS p UNION ALL "
        "SELECT 'PÃO', -1, NULL, NULL, 'n/d' UNION ALL SELECT '', NULL, '2024-03-02', '', '12.5%'"_s,
        "<column name=\"v\" heading=\"R$ valor\" format=\"###,##0.00\"/><column name=\"D\" "
        "format=\"dd/mm/yyyy\"/><column name=\"p\" format=\"##0.0\"/>",
        "<detail height=\"5\"/>");
    const QString path = m_bench.path(u"dados.xlsx"_s);
    report::saveXlsx(*report, path);
    const QJsonObject book = readXlsx(path);
    QCOMPARE(xlsxRow(book, 0),
             (QStringList{u"text:t"_s, u"text:R$ valor"_s, u"text:d"_s, u"text:x"_s, u"text:p"_s}));
    QCOMPARE(xlsxRow(book, 1), (QStringList{u"text:=A;B"_s, u"number:1234.5"_s, u"date:2024-02-29 00:00:00"_s,
                                            u"text:00123"_s, u"number:3.5"_s}));
    QCOMPARE(xlsxRow(book, 2),
             (QStringList{u"text:PÃO"_s, u"number:-1"_s, QString(), QString(), u"text:n/d"_s}));
    QCOMPARE(xlsxRow(book, 3), (QStringList{QString(), QString(), u"date:2024-03-02 00:00:00"_s, QString(),
                                            u"number:0.125"_s}));
    QCOMPARE(errorNumberOf([&] { report::saveXlsx(*report, u"/não/existe.xlsx"_s); }),
             number(ErrorNumber::FileNotWritable));
}

void TstReportPages::csvOfNoRowsHasItsHeadings() {
    const auto report = m_bench.run(rows(0), {}, tenToAPage);
    const QString path = m_bench.path(u"vazio.csv"_s);
    report::saveCsv(*report, path);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("\xEF\xBB\xBFn\r\n"));
}

// Read back as a spreadsheet would: what begins a formula there is a text, and numbers stay numbers.
void TstReportPages::csvHasNoFormulas() {
    const auto report = m_bench.run(u"SELECT '=1+1' AS a, '+55 16 3322' AS b, '-SOMA(A1)' AS c, '@SUM' AS d, "
                                    u"'\\t=1' AS e, '\\n=1' AS f UNION ALL "
                                    "SELECT '-1.50', '+2', '-1.234,50', '-12.5%', '-', 'a=1' UNION ALL "
                                    "SELECT '=\"x\";y', -7, '', NULL, 'D''ÁGUA', '-1e5'"_s,
                                    "<column name=\"b\" heading=\"=b\"/>", "<detail height=\"5\"/>");
    const QString path = m_bench.path(u"formulas.csv"_s);
    report::saveCsv(*report, path);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("\xEF\xBB\xBF"
                                        "a;'=b;c;d;e;f\r\n"
                                        "'=1+1;'+55 16 3322;'-SOMA(A1);'@SUM;'\t=1;\"'\n=1\"\r\n"
                                        "-1.50;+2;-1.234,50;-12.5%;'-;a=1\r\n"
                                        "\"'=\"\"x\"\";y\";-7;;;D'ÁGUA;'-1e5\r\n"));
}

void TstReportPages::queryThatWritesIsNotSent() {
    m_server->execute(u"CREATE TABLE prova (n INT)"_s);
    StatementLog log(*m_server);
    for (const QString& query : {u"INSERT INTO prova VALUES (1)"_s, u"SELECT 1 AS n; DROP TABLE prova"_s}) {
        const auto error = errorOf([&] { m_bench.run(query, {}, tenToAPage); });
        QVERIFY(error);
        QCOMPARE(error->number(), number(ErrorNumber::InvalidLayout));
        QCOMPARE(error->statement(), query);
    }
    QCOMPARE(log.texts(), QStringList());
    QCOMPARE(m_server->query(u"SELECT COUNT(*) FROM prova"_s), QList<QStringList>{{u"0"_s}});
}

QTEST_MAIN(TstReportPages)
#include "tst_report_pages.moc"
