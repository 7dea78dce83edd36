#include "platform/ReportBench.h"
#include "support/ErroDe.h"

#include <QDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::teste;

/// Reading layout files: what they may say, and what is told about those that say something else.
class TstReportLayout : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void suppliedLayoutsAreValid_data();
    void suppliedLayoutsAreValid();
    void documentedExampleIsValid();
    void schemaRefusesWhatTheReaderRefuses();
    void missingFileIsNamed();
    void fileOfAnotherKindIsRefused_data();
    void fileOfAnotherKindIsRefused();
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
    void expressionWithoutAValueHasNone();
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
    ReportBench::output(u"xmllint"_s, {u"--noout"_s, u"--schema"_s, folder + u"layout.xsd"_s, folder + name});
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
    ReportBench::output(u"xmllint"_s, {u"--noout"_s, u"--schema"_s,
                                       QStringLiteral(TARVESSA_SOURCE_DIR "/rpt/layout.xsd"), path});
    QCOMPARE(report::readLayout(path).totals.size(), size_t(1));
}

void TstReportLayout::schemaRefusesWhatTheReaderRefuses() {
    const QString good = m_bench.write(u"good.RPT"_s, ReportBench::layout({}, "<detail height=\"5\"/>"));
    const QString bad =
        m_bench.write(u"bad.RPT"_s, ReportBench::layout({}, "<detail height=\"5\" heigth=\"5\"/>"));
    const auto check = [](const QString& file) {
        return executaPrograma(u"xmllint"_s, {u"--noout"_s, u"--schema"_s,
                                              QStringLiteral(TARVESSA_SOURCE_DIR "/rpt/layout.xsd"), file})
            .codigo;
    };
    QCOMPARE(check(good), 0);
    QVERIFY(check(bad) != 0);
}

void TstReportLayout::missingFileIsNamed() {
    const QString path = m_bench.path(u"nada.RPT"_s);
    const auto error = erroDe([&] { report::readLayout(path); });
    QVERIFY(error);
    QCOMPARE(error->number(), numero(ErrorNumber::FileNotFound));
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
    const auto error = erroDe([&] { report::readLayout(path); });
    QVERIFY(error);
    QCOMPARE(error->number(), numero(ErrorNumber::InvalidLayout));
    QVERIFY2(error->text().contains(QDir::toNativeSeparators(path) +
                                    u", linha 1: o arquivo não é um layout em XML"_s),
             error->what());
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
    declared("calculation too early",
             "<calculation name=\"a\" value=\"b + 1\"/>\n<calculation name=\"b\" value=\"1\"/>\n", 5,
             u"um cálculo só pode usar cálculos declarados antes dele."_s);
}

void TstReportLayout::mistakeIsToldWithFileAndLine() {
    QFETCH(const QByteArray, contents);
    QFETCH(const int, line);
    QFETCH(const QString, problem);
    const QString path = m_bench.write(u"erro.RPT"_s, contents);
    const auto error = erroDe([&] { report::readLayout(path); });
    QVERIFY(error);
    QCOMPARE(error->number(), numero(ErrorNumber::InvalidLayout));
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
    QTest::addColumn<QString>("result"); // in point form; empty for none
    QTest::newRow("precedence") << u"1 + 2 * 3"_s << u" 7"_s;
    QTest::newRow("left to right") << u"10 - 4 - 3"_s << u" 3"_s;
    QTest::newRow("parentheses") << u"(1 + 2) * 3"_s << u" 9"_s;
    QTest::newRow("sign") << u"-(2 - 5) * -1"_s << u"-3"_s;
    QTest::newRow("decimals") << u"1234.56 * 5.5 / 100"_s << u" 67.9008"_s;
    QTest::newRow("value") << u"x * 2"_s << u" 5"_s;
    QTest::newRow("division by zero") << u"1 / (x - 2.5)"_s << QString();
}

void TstReportLayout::expressionIsCalculated() {
    QFETCH(const QString, text);
    QFETCH(const QString, result);
    report::Expression expression;
    QCOMPARE(expression.parse(text, [](const QString&) { return report::ValueRef(); }), QString());
    const auto value = expression.evaluate([](report::ValueRef) { return Dinheiro::dePonto(u"2.5"); });
    QCOMPARE(value ? value->ponto() : QString(), result);
}

void TstReportLayout::expressionWithoutAValueHasNone() {
    report::Expression expression;
    expression.parse(u"1 + x"_s, [](const QString&) { return report::ValueRef(); });
    QVERIFY(!expression.evaluate([](report::ValueRef) { return std::optional<Dinheiro>(); }));
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
