#include "printing/ReportBench.h"
#include "printing/layout/QueryText.h"
#include "support/ErrorOf.h"

#include <QDir>
#include <QRandomGenerator>
#include <QTest>

#include <cmath>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

/// Reading layout files: what they may say, and what is told about those that say something else.
class TstReportLayout : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void suppliedLayoutsAreValid_data();
    void suppliedLayoutsAreValid();
    void documentedExampleIsValid();
    void documentedElementsAreValid();
    void schemaMayBeNamedInTheFile();
    void schemaRefusesWhatTheReaderRefuses();
    void missingFileIsNamed();
    void fileOfAnotherKindIsRefused_data();
    void fileOfAnotherKindIsRefused();
    void onlyAnOrdinaryFileIsRead_data();
    void onlyAnOrdinaryFileIsRead();
    void truncatedLayoutIsToldAsSuch_data();
    void truncatedLayoutIsToldAsSuch();
    void queryMayOnlyRead_data();
    void queryMayOnlyRead();
    void comparedValueIsFound_data();
    void comparedValueIsFound();
    void mistakeIsToldWithFileAndLine_data();
    void mistakeIsToldWithFileAndLine();
    void pageAndMarginsAreRead();
    void fontsAreRead();
    void valuesAreFoundByNameInAnyLetterCase();
    void valueMayBeDeclaredFurtherDown();
    void textIsSplitAtItsValues();
    void doubledBraceIsABrace();
    void expressionIsCalculated_data();
    void expressionIsCalculated();
    void expressionTooLargeIsAnError();
    void leastNumberIsAnErrorToo();
    void quotientsAreRoundedOnce();
    void sumsTooLongForExactnessStayClose();
    void expressionWithoutAValueHasNone();
    void expressionMayHaveTwoHundredLevels();
    void wrongExpressionIsTold_data();
    void wrongExpressionIsTold();

  private:
    ReportBench m_bench;
};

void TstReportLayout::suppliedLayoutsAreValid_data() {
    QTest::addColumn<QString>("name");
    for (const char* name : {"COMISSAO", "ExtratoVendedorDistribuidora", "Metas", "RelatNivelPreco"})
        QTest::newRow(name) << QString::fromUtf8(name) + u".RPT"_s;
}

void TstReportLayout::suppliedLayoutsAreValid() {
    QFETCH(const QString, name);
    const QString folder = QStringLiteral(TARVESSA_SOURCE_DIR "/rpt/");
    outputOf(u"xmllint"_s, {u"--noout"_s, u"--schema"_s, folder + u"layout.xsd"_s, folder + name});
    const report::Layout layout = report::readLayout(folder + name);
    QVERIFY(!layout.title.isEmpty());
    QVERIFY(!layout.details.empty());
}

void TstReportLayout::documentedExampleIsValid() {
    QFile document(QStringLiteral(TARVESSA_SOURCE_DIR "/docs/report-layouts.md"));
    QVERIFY(document.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(document.readAll());
    static const QRegularExpression whole(u"    <\\?xml.*?</report>\n"_s,
                                          QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch example = whole.match(text);
    QVERIFY(example.hasMatch());
    const QString path = m_bench.write(u"exemplo.RPT"_s, example.captured().trimmed().toUtf8());
    outputOf(u"xmllint"_s,
             {u"--noout"_s, u"--schema"_s, QStringLiteral(TARVESSA_SOURCE_DIR "/rpt/layout.xsd"), path});
    QCOMPARE(report::readLayout(path).totals.size(), size_t(1));
}

// Every element that the document shows by itself, put where it belongs in a layout.
void TstReportLayout::documentedElementsAreValid() {
    QFile document(QStringLiteral(TARVESSA_SOURCE_DIR "/docs/report-layouts.md"));
    QVERIFY(document.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(document.readAll());
    static const QRegularExpression block(u"(?:^ {4}.*\n)+"_s, QRegularExpression::MultilineOption);
    const QStringList order = {u"page"_s,    u"font"_s,   u"query"_s,       u"column"_s,
                               u"formula"_s, u"total"_s,  u"calculation"_s, u"reportHead"_s,
                               u"group"_s,   u"detail"_s, u"pageFoot"_s};
    const QStringList onBands = {u"text"_s, u"line"_s, u"box"_s};
    QStringList seen;
    for (QRegularExpressionMatchIterator it = block.globalMatch(text); it.hasNext();) {
        const QString snippet = it.next().captured();
        static const QRegularExpression start(u"^ +<(\\w+)"_s);
        const QString element = start.match(snippet).captured(1);
        if (element.isEmpty())
            continue; // a command, or the whole example
        QVERIFY2(element == u"report" || order.contains(element) || onBands.contains(element),
                 qPrintable(snippet));
        seen.append(element);
        const bool isOnBand = onBands.contains(element);
        QString layout = element == u"report" ? snippet : u"<report title=\"Teste\">\n"_s;
        for (const QString& place : order) {
            if (place == element)
                layout += snippet;
            if (place == u"font")
                layout += u"<font name=\"normal\" family=\"DejaVu Sans\"/>"
                          "<font name=\"bold\" family=\"DejaVu Sans\"/>\n"_s;
            else if (place == u"detail" && element != u"detail")
                layout += u"<detail height=\"30\">\n"_s + (isOnBand ? snippet : QString()) + u"</detail>\n"_s;
            else if (place == u"group" && element != u"group")
                layout += u"<group name=\"Letra\" by=\"nome\"/>\n"_s;
            else if (place == u"page" && element != u"page")
                layout += u"<page/>\n"_s;
            else if (place == u"query" && element != u"query")
                layout += u"<query>SELECT 1</query>\n"_s;
        }
        const QString path = m_bench.write(u"trecho.RPT"_s, (layout + u"</report>\n"_s).toUtf8());
        outputOf(u"xmllint"_s,
                 {u"--noout"_s, u"--schema"_s, QStringLiteral(TARVESSA_SOURCE_DIR "/rpt/layout.xsd"), path});
        const auto error = errorOf([&] { report::readLayout(path); });
        QVERIFY2(!error, error ? qPrintable(error->text() + layout) : "");
    }
    for (const QString& element : order + onBands + QStringList{u"report"_s})
        QVERIFY2(seen.contains(element), qPrintable(element));
}

void TstReportLayout::schemaMayBeNamedInTheFile() {
    const auto named = [&](const QByteArray& attribute) {
        return m_bench.write(u"esquema.RPT"_s,
                             ReportBench::layout({}, "<detail height=\"5\"/>")
                                 .replace("<report ", "<report xmlns:xsi=\"http://www.w3.org/2001/"
                                                      "XMLSchema-instance\" xsi:" +
                                                          attribute + "=\"layout.xsd\" "));
    };
    const QString path = named("noNamespaceSchemaLocation");
    outputOf(u"xmllint"_s,
             {u"--noout"_s, u"--schema"_s, QStringLiteral(TARVESSA_SOURCE_DIR "/rpt/layout.xsd"), path});
    QCOMPARE(report::readLayout(path).details.size(), size_t(1));
    QCOMPARE(errorNumberOf([&] { report::readLayout(named("type")); }), number(ErrorNumber::InvalidLayout));
}

void TstReportLayout::schemaRefusesWhatTheReaderRefuses() {
    const QString good = m_bench.write(u"good.RPT"_s, ReportBench::layout({}, "<detail height=\"5\"/>"));
    const QString bad =
        m_bench.write(u"bad.RPT"_s, ReportBench::layout({}, "<detail height=\"5\" heigth=\"5\"/>"));
    const auto check = [](const QString& file) {
        return runProgram(u"xmllint"_s, {u"--noout"_s, u"--schema"_s,
                                         QStringLiteral(TARVESSA_SOURCE_DIR "/rpt/layout.xsd"), file})
            .exitCode;
    };
    QCOMPARE(check(good), 0);
    QVERIFY(check(bad) != 0);
    for (const QByteArray text : {"fit=\"grow\"", "optional=\"sim\"", "fit=\"shrink\" optional=\"true\""}) {
        const QString path = m_bench.write(
            u"text.RPT"_s, ReportBench::layout({}, "<detail height=\"5\"><text x=\"0\" y=\"0\" width=\"9\" " +
                                                       text + ">{n}</text></detail>"));
        const bool isRead = !errorOf([&] { report::readLayout(path); });
        QCOMPARE(check(path) == 0, isRead);
        QCOMPARE(isRead, text.startsWith("fit=\"shrink"));
    }
    for (const QByteArray decimals : {"0", "4", "5", "-1", "dois", ""}) {
        const QString path = m_bench.write(
            u"calculation.RPT"_s,
            ReportBench::layout("<calculation name=\"c\" value=\"1\" decimals=\"" + decimals + "\"/>",
                                "<detail height=\"5\"/>"));
        const bool isRead = !errorOf([&] { report::readLayout(path); });
        QCOMPARE(check(path) == 0, isRead);
        QCOMPARE(isRead, decimals == "0" || decimals == "4");
    }
}

void TstReportLayout::missingFileIsNamed() {
    const QString path = m_bench.path(u"nada.RPT"_s);
    const auto error = errorOf([&] { report::readLayout(path); });
    QVERIFY(error);
    QCOMPARE(error->number(), number(ErrorNumber::FileNotFound));
    QVERIFY2(error->text().contains(QDir::toNativeSeparators(path)), error->what());
}

void TstReportLayout::fileOfAnotherKindIsRefused_data() {
    QTest::addColumn<QByteArray>("contents");
    QTest::newRow("compound file") << QByteArray("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1\0\0\0\0", 12);
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text") << QByteArray("Comissão dos vendedores\n");
    QTest::newRow("zeros after a bracket") << QByteArray("<report\0title", 13);
}

void TstReportLayout::fileOfAnotherKindIsRefused() {
    QFETCH(const QByteArray, contents);
    const QString path = m_bench.write(u"outro.RPT"_s, contents);
    const auto error = errorOf([&] { report::readLayout(path); });
    QVERIFY(error);
    QCOMPARE(error->number(), number(ErrorNumber::InvalidLayout));
    QVERIFY2(error->text().contains(QDir::toNativeSeparators(path) +
                                    u", linha 1: o arquivo não é um layout em XML"_s),
             error->what());
}

void TstReportLayout::onlyAnOrdinaryFileIsRead_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("problem");
    const QString good = m_bench.write(u"bom.RPT"_s, ReportBench::layout({}, "<detail height=\"5\"/>"));
    QVERIFY(!errorOf([&] { report::readLayout(good); }));
#ifndef _WIN32 // where links to files are files of their own
    QVERIFY(QFile::link(good, m_bench.path(u"atalho.RPT"_s)));
    QTest::newRow("symbolic link") << m_bench.path(u"atalho.RPT"_s) << u"é um atalho (link simbólico)"_s;
    QVERIFY(QFile::link(m_bench.path(u"nada.RPT"_s), m_bench.path(u"solto.RPT"_s)));
    QTest::newRow("link to nothing") << m_bench.path(u"solto.RPT"_s) << u"é um atalho (link simbólico)"_s;
    outputOf(u"mkfifo"_s, {m_bench.path(u"canal.RPT"_s)});
    QTest::newRow("pipe") << m_bench.path(u"canal.RPT"_s) << u"é um dispositivo ou um canal"_s;
    QTest::newRow("device") << u"/dev/zero"_s << u"é um dispositivo ou um canal"_s;
#endif
    QVERIFY(QDir().mkdir(m_bench.path(u"pasta.RPT"_s)));
    QTest::newRow("folder") << m_bench.path(u"pasta.RPT"_s) << u"é uma pasta"_s;
    constexpr qsizetype limit = 4194304;
    const QString large = m_bench.write(u"grande.RPT"_s, "<report>" + QByteArray(limit, ' '));
    QTest::newRow("too large") << large << u"tem mais de 4 MB"_s;
}

void TstReportLayout::onlyAnOrdinaryFileIsRead() {
    QFETCH(const QString, name);
    QFETCH(const QString, problem);
    const auto error = errorOf([&] { report::readLayout(name); });
    QVERIFY(error);
    QCOMPARE(error->number(), number(ErrorNumber::InvalidLayout));
    QVERIFY2(error->text().contains(QDir::toNativeSeparators(name) + u' ' + problem), error->what());
}

void TstReportLayout::truncatedLayoutIsToldAsSuch_data() {
    suppliedLayoutsAreValid_data();
}

// Wherever it is cut after its first element, the XML error is told, with the line on which the file ends.
void TstReportLayout::truncatedLayoutIsToldAsSuch() {
    QFETCH(const QString, name);
    QFile file(QStringLiteral(TARVESSA_SOURCE_DIR "/rpt/") + name);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray whole = file.readAll();
    for (qsizetype length = 1; length < whole.lastIndexOf("</report>"); length += 31) {
        const QByteArray cut = whole.first(length);
        const auto error = errorOf([&] { report::readLayout(m_bench.write(u"cortado.RPT"_s, cut)); });
        QVERIFY2(error, qPrintable(QString::number(length)));
        QCOMPARE(error->number(), number(ErrorNumber::InvalidLayout));
        const QString expected = u"cortado.RPT, linha %1: o XML está incorreto: "_s.arg(cut.count('\n') + 1);
        QVERIFY2(error->text().contains(expected), qPrintable(error->text() + u" <> "_s + expected));
    }
}

void TstReportLayout::queryMayOnlyRead_data() {
    QTest::addColumn<QString>("query");
    QTest::addColumn<QString>("problem"); // empty for none
    const QString beginning = u"a consulta deve começar com SELECT ou WITH"_s;
    const QString single = u"a consulta deve ser um único comando"_s;
    const QString executable = u"a consulta não pode ter comentários executáveis (/*! */)"_s;
    const auto changes = [](const QString& word) {
        return u"a consulta não pode alterar dados (%1)"_s.arg(word);
    };
    QTest::newRow("select") << u"select 1"_s << QString();
    QTest::newRow("with") << u"WITH t AS (SELECT 1 AS n) SELECT n FROM t"_s << QString();
    QTest::newRow("comment before") << u"-- as vendas\n/* de */ # hoje\nSELECT 1"_s << QString();
    QTest::newRow("one semicolon") << u"SELECT 1 ; -- fim"_s << QString();
    QTest::newRow("words in quotes") << u"SELECT 'x; UPDATE a', \"INTO\", `delete` FROM t"_s << QString();
    QTest::newRow("escaped quote") << u"SELECT 'a\\'; UPDATE b'"_s << QString();
    QTest::newRow("functions") << u"SELECT REPLACE(a, 'b', 'c'), insert (a, 1, 2, 'x')"_s << QString();
    QTest::newRow("column of such a name") << u"SELECT t.update FROM t"_s << QString();
    QTest::newRow("two minus signs") << u"SELECT 5--3"_s << QString();
    QTest::newRow("update") << u"UPDATE vendedores SET comiss=9"_s << beginning;
    QTest::newRow("nothing") << u" -- só um comentário"_s << beginning;
    QTest::newRow("call") << u"CALL apaga()"_s << beginning;
    QTest::newRow("part of a word") << u"SELECTED"_s << beginning;
    QTest::newRow("two statements") << u"SELECT 1; UPDATE vendedores SET comiss=9"_s << single;
    QTest::newRow("two reading ones") << u"SELECT 1; SELECT 2"_s << single;
    QTest::newRow("into a file") << u"SELECT * INTO OUTFILE '/tmp/x' FROM clientes"_s
                                 << u"a consulta não pode gravar (INTO)"_s;
    QTest::newRow("with and update") << u"WITH t AS (SELECT 1) UPDATE clientes SET nome=''"_s
                                     << changes(u"UPDATE"_s);
    QTest::newRow("with and delete") << u"with t as (select 1) delete from clientes"_s
                                     << changes(u"DELETE"_s);
    QTest::newRow("executable comment") << u"SELECT 1 /*!50000 , f() */"_s << executable;
    QTest::newRow("of one server only") << u"SELECT 1 /*M!100000 , f() */"_s << executable;
    QTest::newRow("no comment to the server")
        << u"SELECT 1 AS x --\u00A0\n INTO OUTFILE 'y'"_s << u"a consulta não pode gravar (INTO)"_s;
}

void TstReportLayout::queryMayOnlyRead() {
    QFETCH(const QString, query);
    QFETCH(const QString, problem);
    QCOMPARE(report::queryProblem(query), problem);
    QByteArray layout = ReportBench::layout({}, "<detail height=\"5\"/>");
    layout.replace("SELECT 1 AS n", query.toHtmlEscaped().toUtf8());
    const auto error = errorOf([&] { report::readLayout(m_bench.write(u"consulta.RPT"_s, layout)); });
    QCOMPARE(error.has_value(), !problem.isEmpty());
    if (error)
        QVERIFY2(error->text().contains(u"consulta.RPT, linha 4: "_s + problem + u'.'), error->what());
}

void TstReportLayout::comparedValueIsFound_data() {
    QTest::addColumn<QString>("query");
    QTest::addColumn<QString>("value");
    QTest::newRow("number") << u"SELECT a.`nivel` FROM t a Where a.`nivel`= 2 And b='S'"_s << u"2"_s;
    QTest::newRow("text") << u"SELECT * FROM t WHERE NIVEL = 'Á'"_s << u"Á"_s;
    QTest::newRow("twice the same") << u"SELECT * FROM t WHERE nivel=2 AND nivel=2"_s << u"2"_s;
    QTest::newRow("two values") << u"SELECT * FROM t WHERE nivel=2 OR nivel=3"_s << QString();
    QTest::newRow("another comparison") << u"SELECT * FROM t WHERE nivel>2"_s << QString();
    QTest::newRow("another column") << u"SELECT nivel FROM t WHERE niveis=2"_s << QString();
    QTest::newRow("a column") << u"SELECT * FROM t, u WHERE nivel=codigo"_s << QString();
    QTest::newRow("within quotes") << u"SELECT * FROM t WHERE obs='nivel=2'"_s << QString();
    QTest::newRow("end") << u"SELECT * FROM t WHERE nivel="_s << QString();
}

void TstReportLayout::comparedValueIsFound() {
    QFETCH(const QString, query);
    QFETCH(const QString, value);
    QCOMPARE(report::comparedValue(query, u"nivel"), value);
}

void TstReportLayout::mistakeIsToldWithFileAndLine_data() {
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<int>("line");
    QTest::addColumn<QString>("problem");
    // What ReportBench::layout() puts before the first band ends with line 4.
    const auto bands = [](const char* name, const QByteArray& bands, int line, const QString& problem) {
        QTest::newRow(name) << ReportBench::layout({}, bands) << line << problem;
    };
    const auto declared = [](const char* name, const QByteArray& declarations, int line,
                             const QString& problem) {
        QTest::newRow(name) << ReportBench::layout(declarations, "<detail height=\"5\"/>\n") << line
                            << problem;
    };
    QTest::newRow("other root") << QByteArray("<?xml version=\"1.0\"?>\n<relatorio/>") << 2
                                << u"o elemento principal é \"relatorio\"; o esperado é \"report\"."_s;
    QTest::newRow("tag not closed") << QByteArray("<report title=\"T\">\n<page/>\n<font\n") << 4
                                    << u"o XML está incorreto"_s;
    QTest::newRow("no title") << QByteArray("<report><page/></report>") << 1
                              << u"falta o atributo \"title\" no elemento \"report\"."_s;
    QTest::newRow("no query") << QByteArray("<report title=\"T\">\n<page/>\n"
                                            "<font name=\"n\" family=\"DejaVu Sans\"/>\n"
                                            "<detail height=\"5\"/>\n</report>")
                              << 4 << u"falta o elemento \"query\"."_s;
    QTest::newRow("no margins left") << QByteArray("<report title=\"T\">\n<page left=\"150\" right=\"90\"/>\n"
                                                   "</report>")
                                     << 2 << u"as margens não deixam espaço na página."_s;
    bands("no detail", "<pageHead height=\"5\"/>\n", 6, u"falta o elemento \"detail\"."_s);
    bands("out of order", "<detail height=\"5\"/>\n<pageHead height=\"5\"/>\n", 6,
          u"o elemento \"pageHead\" está fora de ordem."_s);
    bands("twice", "<pageHead height=\"5\"/>\n<pageHead height=\"5\"/>\n<detail height=\"5\"/>\n", 6,
          u"o elemento \"pageHead\" só pode aparecer uma vez."_s);
    bands("unknown band", "<detail height=\"5\"/>\n<rodape height=\"5\"/>\n", 6,
          u"o elemento \"rodape\" não é conhecido neste lugar."_s);
    bands("unknown element", "<detail height=\"5\">\n<campo/>\n</detail>\n", 6,
          u"o elemento \"campo\" não é conhecido neste lugar."_s);
    bands("unknown attribute", "<detail height=\"5\" altura=\"5\"/>\n", 5,
          u"o elemento \"detail\" não tem o atributo \"altura\"."_s);
    bands("no height", "<detail/>\n", 5, u"falta o atributo \"height\" no elemento \"detail\"."_s);
    bands("decimal comma", "<detail height=\"5,5\"/>\n", 5,
          u"\"5,5\" não é uma medida válida em \"height\""_s);
    bands("negative", "<detail height=\"-5\"/>\n", 5, u"\"-5\" não é uma medida válida em \"height\""_s);
    bands("colour", "<detail height=\"5\" fill=\"azul\"/>\n", 5, u"\"azul\" não é uma cor em \"fill\""_s);
    bands("alignment",
          "<detail height=\"5\">\n<text x=\"0\" y=\"0\" width=\"9\" align=\"meio\">a</text></detail>\n", 6,
          u"\"meio\" não é um valor de \"align\" (left, right, centre)."_s);
    bands("fit", "<detail height=\"5\">\n<text x=\"0\" y=\"0\" width=\"9\" fit=\"grow\">a</text></detail>\n",
          6, u"\"grow\" não é um valor de \"fit\" (cut, shrink)."_s);
    bands("field cannot be optional",
          "<detail height=\"5\">\n<field x=\"0\" y=\"0\" width=\"9\" value=\"n\" "
          "optional=\"true\"/></detail>\n",
          6, u"o elemento \"field\" não tem o atributo \"optional\"."_s);
    bands("font", "<detail height=\"5\">\n\n<text x=\"0\" y=\"0\" width=\"9\" font=\"f\">a</text></detail>\n",
          7, u"a fonte \"f\" não foi declarada."_s);
    bands(
        "mask",
        "<detail height=\"5\"><field x=\"0\" y=\"0\" width=\"9\" value=\"n\" format=\"0.00 R$\"/></detail>\n",
        5, u"\"0.00 R$\" não é uma máscara de formato."_s);
    bands("too wide", "<detail height=\"5\"><text x=\"100\" y=\"0\" width=\"91\">a</text></detail>\n", 5,
          u"o elemento passa da largura da página entre as margens (190.0 mm)."_s);
    bands("too tall", "<detail height=\"5\"><box x=\"0\" y=\"2\" width=\"9\" height=\"4\"/></detail>\n", 5,
          u"o elemento passa da altura da faixa (5.0 mm)."_s);
    bands("bands too tall", "<pageHead height=\"200\"/>\n<detail height=\"78\"/>\n", 7,
          u"as faixas não cabem na altura da página entre as margens (277.0 mm)."_s);
    bands("brace", "<detail height=\"5\"><text x=\"0\" y=\"0\" width=\"9\">Total {n</text></detail>\n", 5,
          u"falta \"}\" no texto \"Total {n\"."_s);
    bands("element in a text",
          "<detail height=\"5\"><text x=\"0\" y=\"0\" width=\"9\">a<b/></text></detail>\n", 5,
          u"o elemento \"b\" não pode estar dentro de um texto."_s);
    bands("stray text", "<detail height=\"5\">abc</detail>\n", 5,
          u"o texto \"abc\" está fora de um elemento de texto."_s);
    bands("condition", "<detail height=\"5\" when=\"n\"/>\n", 5,
          u"\"when\" pede um dos atributos \"equals\" e \"begins\"."_s);
    declared("total in a detail",
             "<total name=\"T\" kind=\"sum\" of=\"n\" over=\"report\"/>\n<pageHead height=\"5\">\n"
             "<field x=\"0\" y=\"0\" width=\"9\" value=\"T\"/></pageHead>\n",
             7, u"o total \"T\" só pode ser impresso em um rodapé de grupo ou de relatório."_s);
    declared("name twice", "<formula name=\"A\"/>\n<total name=\"a\" kind=\"count\" over=\"report\"/>\n", 6,
             u"o nome \"a\" já está em uso."_s);
    declared("own name", "<formula name=\"page\"/>\n", 5, u"o nome \"page\" já está em uso."_s);
    declared("no such group", "<total name=\"a\" kind=\"count\" over=\"Letra\"/>\n", 5,
             u"não há grupo com o nome \"Letra\"."_s);
    declared("decimals", "\n<calculation name=\"a\" value=\"1\" decimals=\"5\"/>\n", 6,
             u"\"5\" não é um valor de \"decimals\" (0, 1, 2, 3, 4)."_s);
    declared("expression too deep",
             "\n<calculation name=\"a\" value=\"" + QByteArray(50000, '(') + "1" + QByteArray(50000, ')') +
                 "\"/>\n",
             6, u"a expressão tem mais de 200 níveis."_s);
    declared("signs too deep", "<calculation name=\"a\" value=\"" + QByteArray(201, '-') + "1\"/>\n", 5,
             u"a expressão tem mais de 200 níveis."_s);
    declared("calculation too early",
             "<calculation name=\"a\" value=\"b + 1\"/>\n<calculation name=\"b\" value=\"1\"/>\n", 5,
             u"um cálculo só pode usar cálculos declarados antes dele."_s);
}

void TstReportLayout::mistakeIsToldWithFileAndLine() {
    QFETCH(const QByteArray, contents);
    QFETCH(const int, line);
    QFETCH(const QString, problem);
    const QString path = m_bench.write(u"erro.RPT"_s, contents);
    const auto error = errorOf([&] { report::readLayout(path); });
    QVERIFY(error);
    QCOMPARE(error->number(), number(ErrorNumber::InvalidLayout));
    const QString expected = u"%1, linha %2: %3"_s.arg(QDir::toNativeSeparators(path)).arg(line).arg(problem);
    QVERIFY2(error->text().contains(expected), qPrintable(error->text() + u" <> "_s + expected));
}

void TstReportLayout::pageAndMarginsAreRead() {
    const QString path = m_bench.write(
        u"pagina.RPT"_s,
        "<report title=\"T\"><page size=\"A5\" orientation=\"landscape\" left=\"15\" top=\"12.5\"/>"
        "<font name=\"n\" family=\"DejaVu Sans\"/><query>SELECT 1</query>"
        "<detail height=\"5\"/></report>");
    const report::Layout layout = report::readLayout(path);
    QCOMPARE(qRound(layout.paper().width() / report::dotsPerMillimetre), 210);
    QCOMPARE(qRound(layout.paper().height() / report::dotsPerMillimetre), 148);
    QCOMPARE(qRound(layout.printable().left() / report::dotsPerMillimetre * 10), 150);
    QCOMPARE(qRound(layout.printable().top() / report::dotsPerMillimetre * 10), 125);
    QCOMPARE(qRound(layout.printable().width() / report::dotsPerMillimetre), 185);
}

void TstReportLayout::fontsAreRead() {
    const QString path = m_bench.write(
        u"fonte.RPT"_s,
        "<report title=\"T\"><page/><font name=\"n\" family=\"Arial, DejaVu Sans\" size=\"7.5\" "
        "bold=\"true\" italic=\"true\" colour=\"#102030\"/><query>SELECT 1</query>"
        "<detail height=\"5\"><text x=\"0\" y=\"0\" width=\"9\">a</text></detail></report>");
    const report::Layout layout = report::readLayout(path);
    const report::Font& font = layout.fonts.front();
    QCOMPARE(font.font.families(), (QStringList{u"Arial"_s, u"DejaVu Sans"_s}));
    QCOMPARE(font.font.pixelSize(), 125); // 7.5 points at 1200 to the inch
    QVERIFY(font.font.bold());
    QVERIFY(font.font.italic());
    QCOMPARE(layout.details.front().texts.front().colour, QColor(0x10, 0x20, 0x30));
}

void TstReportLayout::valuesAreFoundByNameInAnyLetterCase() {
    const QString path = m_bench.write(
        u"nomes.RPT"_s, ReportBench::layout("<column name=\"VALOR1\" format=\"0.00\"/>"
                                            "<formula name=\"Titulo\"/>",
                                            "<detail height=\"5\"><field x=\"0\" y=\"0\" width=\"9\" "
                                            "value=\"valor1\"/><field x=\"0\" y=\"0\" width=\"9\" "
                                            "value=\"TITULO\"/></detail>"));
    const report::Layout layout = report::readLayout(path);
    QCOMPARE(layout.columns.size(), size_t(1));
    const auto& texts = layout.details.front().texts;
    QVERIFY(texts[0].pieces.front().value->source == report::Source::Column);
    QCOMPARE(texts[0].pieces.front().format.mask, u"0.00"_s);
    QVERIFY(texts[1].pieces.front().value->source == report::Source::Formula);
}

void TstReportLayout::valueMayBeDeclaredFurtherDown() {
    const QString path =
        m_bench.write(u"depois.RPT"_s,
                      ReportBench::layout(
                          "<total name=\"Linhas\" kind=\"count\" over=\"Letra\"/>",
                          "<pageHead height=\"5\"><text x=\"0\" y=\"0\" width=\"9\">{Letra}</text></pageHead>"
                          "<group name=\"Letra\" by=\"nome\" key=\"initial\"/><detail height=\"5\"/>"));
    const report::Layout layout = report::readLayout(path);
    QVERIFY(layout.pageHead->texts.front().pieces.front().value->source == report::Source::Group);
    QCOMPARE(layout.totals.front().group, 0);
}

void TstReportLayout::textIsSplitAtItsValues() {
    const QString path = m_bench.write(
        u"texto.RPT"_s, ReportBench::layout({}, "<detail height=\"5\"><text x=\"0\" y=\"0\" width=\"9\">"
                                                "De {a} a {b|0.0}%</text></detail>"));
    const report::Layout layout = report::readLayout(path);
    const auto& pieces = layout.details.front().texts.front().pieces;
    QCOMPARE(pieces.size(), size_t(5));
    QCOMPARE(pieces[0].fixed, u"De "_s);
    QVERIFY(pieces[1].value);
    QCOMPARE(pieces[2].fixed, u" a "_s);
    QCOMPARE(pieces[3].format.mask, u"0.0"_s);
    QCOMPARE(pieces[4].fixed, u"%"_s);
}

void TstReportLayout::doubledBraceIsABrace() {
    const QString path =
        m_bench.write(u"chave.RPT"_s, ReportBench::layout({}, "<detail height=\"5\"><text x=\"0\" y=\"0\" "
                                                              "width=\"9\">{{n}</text></detail>"));
    const report::Layout layout = report::readLayout(path);
    QCOMPARE(layout.details.front().texts.front().pieces.size(), size_t(1));
    QCOMPARE(layout.details.front().texts.front().pieces.front().fixed, u"{n}"_s);
}

void TstReportLayout::expressionIsCalculated_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<QString>("result"); // in point form; empty for none
    QTest::newRow("precedence") << u"1 + 2 * 3"_s << 4 << u" 7"_s;
    QTest::newRow("left to right") << u"10 - 4 - 3"_s << 4 << u" 3"_s;
    QTest::newRow("parentheses") << u"(1 + 2) * 3"_s << 4 << u" 9"_s;
    QTest::newRow("sign") << u"-(2 - 5) * -1"_s << 4 << u"-3"_s;
    QTest::newRow("decimals") << u"1234.56 * 5.5 / 100"_s << 4 << u" 67.9008"_s;
    QTest::newRow("value") << u"x * 2"_s << 4 << u" 5"_s;
    QTest::newRow("division by zero") << u"1 / (x - 2.5)"_s << 4 << QString();
    QTest::newRow("whole number") << u"x"_s << 0 << u" 3"_s;
    QTest::newRow("negative half") << u"-x"_s << 0 << u"-3"_s;
    QTest::newRow("less than a half") << u"x - 0.0001"_s << 0 << u" 2"_s;
    // 1.50495: by way of 1.5050 it would be 1.51.
    QTest::newRow("rounded once") << u"100.33 * 1.5 / 100"_s << 2 << u" 1.5"_s;
    QTest::newRow("half a cent") << u"1.01 / 2"_s << 2 << u" 0.51"_s;
    QTest::newRow("half a cent below zero") << u"-1.01 / 2"_s << 2 << u"-0.51"_s;
    QTest::newRow("thirds are exact") << u"1 / 3 + 1 / 3 + 1 / 3"_s << 4 << u" 1"_s;
    QTest::newRow("negative divisor") << u"1 / -3"_s << 2 << u"-0.33"_s;
    QTest::newRow("large on the way")
        << u"900000000000 * 900000000000 / 900000000000 - 899999999999.99"_s << 2 << u" 0.01"_s;
    // Five divisors without a common factor: the exact sum has 130 bits above the line, 128 below.
    const QString quotients =
        u"1234567.89 / 7654321.01 + 2345678.91 / 8765432.19 + 3456789.12 / 9876543.27 + "
        "4567891.23 / 1987654.33 + 5678912.34 / 2098765.41"_s;
    QTest::newRow("five quotients") << quotients << 4 << u" 5.7829"_s;
    QTest::newRow("five quotients below zero") << u"-("_s + quotients + u")"_s << 4 << u"-5.7829"_s;
    QTest::newRow("two of five") << quotients + u" - ("_s + quotients + u")"_s << 4 << u" 0"_s;
    QTest::newRow("five quotients in a product")
        << u"("_s + quotients + u") * 1000000"_s << 4 << u" 5782900"_s;
    // Ten factors of four places: the exact product has 40 of them.
    QTest::newRow("many factors")
        << u"1.1111 * 3.3333 * 7.7777 * 1.1113 * 3.3337 * 7.7779 * 1.1117 * 3.3339 * 7.7783 * 1.1119"_s << 4
        << u" 26606.6083"_s;
}

void TstReportLayout::expressionIsCalculated() {
    QFETCH(const QString, text);
    QFETCH(const int, decimals);
    QFETCH(const QString, result);
    report::Expression expression;
    QCOMPARE(expression.parse(text, [](const QString&) { return report::ValueRef(); }), QString());
    const auto value =
        expression.evaluate([](report::ValueRef) { return Dinheiro::dePonto(u"2.5"); }, decimals);
    QCOMPARE(value ? value->ponto() : QString(), result);
}

void TstReportLayout::expressionTooLargeIsAnError() {
    // The result itself, and a way to a small one that cannot be gone exactly.
    for (const QString& text :
         {u"900000000000 * 900000000000"_s, u"x * x * x * x * 900000000000000 / x / x / x / x"_s,
          u"x / 0.0001 * 1000"_s}) {
        report::Expression expression;
        QCOMPARE(expression.parse(text, [](const QString&) { return report::ValueRef(); }), QString());
        const auto evaluate = [&] {
            expression.evaluate([](report::ValueRef) { return Dinheiro::dePonto(u"900000000000001.1111"); },
                                2);
        };
        QCOMPARE(errorNumberOf(evaluate), number(ErrorNumber::Overflow));
    }
}

// -2^127 has no opposite among the numbers of 128 bits.
void TstReportLayout::leastNumberIsAnErrorToo() {
    report::Expression expression;
    QCOMPARE(expression.parse(u"1 / (x * 625 * 1099511627776 * 268435456)"_s,
                              [](const QString&) { return report::ValueRef(); }),
             QString());
    const auto least = [](report::ValueRef) {
        return Dinheiro::deDecimosMilesimos(std::numeric_limits<qint64>::min());
    };
    QCOMPARE(errorNumberOf([&] { expression.evaluate(least, 4); }), number(ErrorNumber::Overflow));
}

namespace {

// The value of an expression over amounts given in ten-thousandths and named a, b, c, d, e, f.
std::optional<qint64> tenThousandths(const QString& text, const QList<qint64>& amounts, int decimals) {
    report::Expression expression;
    const QString problem = expression.parse(text, [](const QString& name) {
        return report::ValueRef{report::Source::Column, name[0].unicode() - u'a'};
    });
    if (!problem.isEmpty())
        throw TestError(problem);
    const auto value = expression.evaluate(
        [&](report::ValueRef ref) { return Dinheiro::deDecimosMilesimos(amounts[ref.index]); }, decimals);
    return value ? std::optional(value->decimosMilesimos()) : std::nullopt;
}

} // namespace

// Compared with the quotient and remainder of whole numbers, of both signs and up to a milliard.
void TstReportLayout::quotientsAreRoundedOnce() {
    QRandomGenerator chance(7);
    const auto amount = [&](qint64 most) { return qint64(chance.bounded(1.0) * double(2 * most)) - most; };
    for (int i = 0; i < 2000; ++i) {
        const int decimals = i % 5;
        const QList<qint64> amounts = {amount(10'000'000'000'000), amount(1'000'000'000),
                                       qMax(qint64(1), qAbs(amount(1'000'000'000'000))) *
                                           (i % 2 == 0 ? 1 : -1)};
        qint64 unit = 1; // of the last place, in ten-thousandths
        for (int place = decimals; place < 4; ++place)
            unit *= 10;
        __int128 above = static_cast<__int128>(amounts[0]) * amounts[1];
        const __int128 below = static_cast<__int128>(amounts[2] < 0 ? -amounts[2] : amounts[2]) * unit;
        if (amounts[2] < 0)
            above = -above;
        __int128 units = above / below;
        const __int128 rest = above % below;
        if (2 * (rest < 0 ? -rest : rest) >= below)
            units += above < 0 ? -1 : 1;
        if (units * unit > std::numeric_limits<qint64>::max() ||
            units * unit < -std::numeric_limits<qint64>::max()) {
            QCOMPARE(errorNumberOf([&] { tenThousandths(u"a * b / c"_s, amounts, decimals); }),
                     number(ErrorNumber::Overflow));
            continue;
        }
        QCOMPARE(tenThousandths(u"a * b / c"_s, amounts, decimals), static_cast<qint64>(units * unit));
    }
}

// Three quotients of amounts of 16 digits: the exact sum has more than 150 bits.
void TstReportLayout::sumsTooLongForExactnessStayClose() {
    QRandomGenerator chance(8);
    const auto amount = [&] { return 1'000'000'000'000'000 + qint64(chance.bounded(8e15)); };
    for (int i = 0; i < 500; ++i) {
        const QList<qint64> amounts = {amount(), amount(), amount(), amount(), amount(), amount()};
        const auto ratio = [&](int above) {
            return static_cast<long double>(amounts[above]) / static_cast<long double>(amounts[above + 1]);
        };
        const auto sum = tenThousandths(u"(a / b + c / d + e / f) * 1000"_s, amounts, 4);
        // The sum is rounded to four places before it is multiplied.
        const long double expected = (ratio(0) + ratio(2) + ratio(4)) * 10'000;
        QVERIFY(sum);
        QCOMPARE(*sum, std::llround(expected) * 1000);
    }
}

void TstReportLayout::expressionWithoutAValueHasNone() {
    report::Expression expression;
    expression.parse(u"1 + x"_s, [](const QString&) { return report::ValueRef(); });
    QVERIFY(!expression.evaluate([](report::ValueRef) { return std::optional<Dinheiro>(); }, 4));
}

void TstReportLayout::expressionMayHaveTwoHundredLevels() {
    report::Expression expression;
    const auto noNames = [](const QString&) { return report::ValueRef(); };
    const QString levels(199, u'(');
    QCOMPARE(expression.parse(levels + u"7"_s + QString(199, u')'), noNames), QString());
    QCOMPARE(expression.evaluate([](report::ValueRef) { return Dinheiro(); }, 0), Dinheiro(7));
    // Levels that follow each other do not add up.
    QCOMPARE(expression.parse(QStringList(300, u"(1)"_s).join(u'+'), noNames), QString());
    QCOMPARE(expression.evaluate([](report::ValueRef) { return Dinheiro(); }, 0), Dinheiro(300));
}

void TstReportLayout::wrongExpressionIsTold_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("problem");
    QTest::newRow("ends early") << u"1 +"_s << u"a expressão termina antes do fim"_s;
    QTest::newRow("not closed") << u"(1 + 2"_s << u"falta \")\" na expressão"_s;
    QTest::newRow("closed twice") << u"1 + 2)"_s << u"\")\" não é esperado na expressão"_s;
    QTest::newRow("symbol") << u"1 & 2"_s << u"\"& 2\" não é esperado na expressão"_s;
    QTest::newRow("two points") << u"1.2.3"_s << u"\"1.2.3\" não é um número"_s;
}

void TstReportLayout::wrongExpressionIsTold() {
    QFETCH(const QString, text);
    QFETCH(const QString, problem);
    report::Expression expression;
    QCOMPARE(expression.parse(text, [](const QString&) { return report::ValueRef(); }), problem);
}

QTEST_MAIN(TstReportLayout)
#include "tst_report_layout.moc"
