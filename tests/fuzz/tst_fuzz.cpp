#include "fuzz/Mutator.h"
#include "printing/layout/LayoutReader.h"
#include "printing/layout/QueryText.h"
#include "printing/output/CsvFile.h"
#include "printing/pages/DateMask.h"
#include "printing/pages/NumberMask.h"
#include "printing/pages/Report.h"
#include "printing/preview/TextSearch.h"
#include "products/ProductQuery.h"
#include "support/ErrorOf.h"
#include "support/PrivateServer.h"
#include "support/TestError.h"
#include "ui/TextBox.h"

#include <QDir>
#include <QElapsedTimer>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <memory>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

/// Inputs made by chance. TARVESSA_FUZZ_SECONDS (60) is shared by the tests; TARVESSA_FUZZ_SEED repeats a
/// run.
class TstFuzz : public QObject {
    Q_OBJECT

  public:
    static void initMain();

  private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();

    void layoutIsReadOrRefusedWithItsLine();
    void layoutIsComposedInsideThePaper();
    void numbersFollowTheirMasks();
    void datesFollowTheirMasks();
    void productSearchIsOneSelect();

  private:
    /// Calls `attempt` with the number of the round until this test's share of the time is over, or it has
    /// failed.
    void repeat(int shares, const std::function<void()>& attempt);

    QString write(const QByteArray& contents) const;
    std::unique_ptr<report::Report> reportOf(const report::Layout& layout);

    std::unique_ptr<PrivateServer> m_server;
    std::unique_ptr<Mutator> m_chance;
    QTemporaryDir m_folder;
    QList<QByteArray> m_layouts;
};

namespace {

int wholeSeconds() {
    bool isNumber = false;
    const int given = qEnvironmentVariableIntValue("TARVESSA_FUZZ_SECONDS", &isNumber);
    return isNumber && given > 0 ? given : 60;
}

constexpr int allShares = 10; // of the time

// One input must not take longer, however odd it is.
constexpr qint64 longestMilliseconds = 20000;

} // namespace

void TstFuzz::initMain() {
    constexpr qint64 leastMilliseconds = 300'000;
    qputenv("QTEST_FUNCTION_TIMEOUT", QByteArray::number(qMax(leastMilliseconds, wholeSeconds() * 2000LL)));
}

void TstFuzz::initTestCase() {
    bool isNumber = false;
    uint seed = qEnvironmentVariable("TARVESSA_FUZZ_SEED").toUInt(&isNumber);
    if (!isNumber)
        seed = QRandomGenerator::global()->generate();
    qInfo("TARVESSA_FUZZ_SEED=%u", seed);
    m_chance = std::make_unique<Mutator>(seed);
    m_server = std::make_unique<PrivateServer>();
    const QDir folder(QStringLiteral(TARVESSA_SOURCE_DIR "/rpt"));
    for (const QString& name : folder.entryList({u"*.RPT"_s}, QDir::Files, QDir::Name)) {
        QFile file(folder.filePath(name));
        QVERIFY(file.open(QIODevice::ReadOnly));
        m_layouts.append(file.readAll());
    }
    QCOMPARE(m_layouts.size(), 4);
}

void TstFuzz::cleanupTestCase() {
    m_server.reset();
}

void TstFuzz::repeat(int shares, const std::function<void()>& attempt) {
    const qint64 milliseconds = wholeSeconds() * 1000LL * shares / allShares;
    QElapsedTimer whole;
    whole.start();
    int rounds = 0;
    for (; rounds == 0 || (whole.elapsed() < milliseconds && !QTest::currentTestFailed()); ++rounds) {
        QElapsedTimer one;
        one.start();
        attempt();
        QVERIFY2(one.elapsed() < longestMilliseconds, "took too long");
    }
    qInfo("%d rounds", rounds);
}

QString TstFuzz::write(const QByteArray& contents) const {
    QFile file(m_folder.filePath(u"fuzz.RPT"_s));
    if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size())
        throw TestError(file.errorString());
    return file.fileName();
}

void TstFuzz::layoutIsReadOrRefusedWithItsLine() {
    static const QRegularExpression told(u"\\ALayout de relatório inválido: .+, linha [0-9]+: ."_s,
                                         QRegularExpression::DotMatchesEverythingOption);
    repeat(3, [this] {
        QByteArray contents = m_chance->oneOf(m_layouts);
        if (m_chance->once(2))
            contents = m_chance->varied(contents);
        if (!m_chance->once(4))
            contents = m_chance->damaged(contents, m_chance->oneOf(m_layouts));
        const auto error = errorOf([&] { report::readLayout(write(contents)); });
        if (error)
            QVERIFY2(error->number() == number(ErrorNumber::InvalidLayout) &&
                         told.match(error->text()).hasMatch(),
                     contents + "\n" + error->what());
    });
}

// A report of up to 30 rows of odd texts and numbers in the columns that the layout uses.
std::unique_ptr<report::Report> TstFuzz::reportOf(const report::Layout& layout) {
    QStringList rows;
    for (int row = m_chance->below(30); row >= 0; --row) {
        QStringList cells{u"1 AS `outra coluna`"_s};
        for (const report::Column& column : layout.columns) {
            QString value = m_chance->once(3) ? m_chance->text(60) : m_chance->number();
            value.replace(u'\\', u"\\\\"_s).replace(u'\'', u"''"_s);
            cells.append((m_chance->once(8) ? u"NULL"_s : u'\'' + value + u'\'') + u" AS `"_s +
                         QString(column.name).replace(u'`', u"``"_s) + u'`');
        }
        rows.append(u"SELECT "_s + cells.join(u", "_s));
    }
    report::FormulaValues formulas;
    for (const QString& name : layout.formulas)
        if (!m_chance->once(3))
            formulas.insert(name.toLower(), m_chance->once(2) ? m_chance->text(80) : m_chance->number());
    auto result = std::make_unique<report::Report>(layout, u"dsn=QDX"_s, rows.join(u" UNION ALL "_s),
                                                   formulas, QDateTime(QDate(2024, 3, 5), QTime(14, 30)));
    result->readAll();
    return result;
}

void TstFuzz::layoutIsComposedInsideThePaper() {
    int composed = 0;
    repeat(4, [&] {
        const QByteArray contents = m_chance->varied(m_chance->oneOf(m_layouts));
        std::unique_ptr<report::Report> report;
        // Whatever the program tells about such a layout, its columns or their contents is well.
        if (errorOf([&] { report = reportOf(report::readLayout(write(contents))); }))
            return;
        QVERIFY(report->pageCount() >= 1);
        const QSizeF paper = report->layout().paper();
        QString some;
        for (int page = 0; page < report->pageCount(); ++page) {
            std::vector<report::PlacedText> texts;
            if (errorOf([&] { texts = report->texts(page); }))
                return;
            for (const report::PlacedText& text : texts) {
                QVERIFY2(std::isfinite(text.baseline.x()) && std::isfinite(text.baseline.y()), contents);
                QVERIFY2(text.place.left() >= -1 &&
                             text.place.right() <= paper.width() + report::dotsPerMillimetre,
                         contents);
                QVERIFY2(text.squeeze >= 0 && text.squeeze <= 1, contents);
                QVERIFY2(text.font >= 0 && text.font < static_cast<int>(report->layout().fonts.size()),
                         contents);
                if (m_chance->once(50))
                    some = text.text.section(u' ', 0, 0);
            }
        }
        ++composed;
        if (!some.trimmed().isEmpty() && !some.contains(u'…')) {
            const auto found =
                report::TextSearch(*report).find(some, 0, report::TextSearch::Direction::Forward);
            QVERIFY2(found && found->number == 1, qPrintable(some));
        }
        const QString csv = m_folder.filePath(u"fuzz.csv"_s);
        report::saveCsv(*report, csv);
        QFile file(csv);
        QVERIFY(file.open(QIODevice::ReadOnly));
        static const QRegularExpression formula(u"(?:^|;)\"?[=@\\t]"_s);
        const QString written = QString::fromUtf8(file.readAll());
        QVERIFY2(!formula.match(written.section(u"\r\n"_s, 0, 0)).hasMatch(), qPrintable(written));
    });
    QVERIFY(composed > 0);
}

namespace {

// The number by the mask, calculated on its digits; nothing when its rounding is not to be told from four
// places.
QString byMask(const QString& number, const QString& mask) {
    const bool isNegative = number.startsWith(u'-');
    const QString whole = number.section(u'.', 0, 0).remove(u'-');
    const QString beforePoint = mask.section(u'.', 0, 0);
    const QString afterPoint = mask.section(u'.', 1).remove(u',').remove(u'.');
    const qsizetype most = afterPoint.size();
    const qsizetype least = afterPoint.lastIndexOf(u'0') + 1;
    QString digits = whole + number.section(u'.', 1).leftJustified(qMax<qsizetype>(most, 6), u'0');
    const qsizetype kept = whole.size() + most;
    bool carries = kept < digits.size() && digits[kept] >= u'5';
    digits.truncate(kept);
    for (qsizetype i = digits.size() - 1; i >= 0 && carries; --i) {
        carries = digits[i] == u'9';
        digits[i] = carries ? u'0' : QChar(digits[i].unicode() + 1);
    }
    if (carries)
        digits.prepend(u'1');
    QString decimals = digits.last(most);
    QString integers = digits.chopped(most);
    while (integers.startsWith(u'0'))
        integers.remove(0, 1);
    integers = integers.rightJustified(qMax<qsizetype>(1, beforePoint.count(u'0')), u'0');
    while (decimals.size() > least && decimals.endsWith(u'0'))
        decimals.chop(1);
    if (mask.contains(u','))
        for (qsizetype i = integers.size() - 3; i > 0; i -= 3)
            integers.insert(i, u'.');
    static const QRegularExpression anyDigit(u"[1-9]"_s);
    return (isNegative && digits.contains(anyDigit) ? u"-"_s : QString()) + integers +
           (decimals.isEmpty() ? QString() : u',' + decimals);
}

} // namespace

void TstFuzz::numbersFollowTheirMasks() {
    const QStringList masks = {u"###,##0.00"_s, u"###,##0.000"_s, u"##0.0"_s, u"0"_s,      u"#"_s,
                               u"##0.0#"_s,     u"0000000"_s,     u"#,#"_s,   u"0.0000"_s, u"#.####"_s};
    repeat(1, [&] {
        const QString mask = m_chance->oneOf(masks);
        const QString number = m_chance->number();
        const QString shown = report::numberByMask(number, mask);
        const QString about = number + u" | "_s + mask + u" | "_s + shown;
        const QString whole = number.section(u'.', 0, 0).remove(u'-');
        if (whole.size() <= 14 && number.section(u'.', 1).size() <= 4)
            QVERIFY2(shown == byMask(number, mask), qPrintable(about + u" | "_s + byMask(number, mask)));
        // Any other text is left alone, unless it is a number too large, which keeps its digits.
        const QString text = m_chance->text(12);
        static const QRegularExpression numeric(u"\\A\\s*[-+]?[0-9]*(\\.[0-9]*)?\\s*%?\\s*\\z"_s);
        static const QRegularExpression exponent(u"[0-9]"_s);
        if (!numeric.match(text).hasMatch() && !text.contains(exponent))
            QCOMPARE(report::numberByMask(text, mask), text);
        if (whole.size() > 15 && !whole.startsWith(u'0'))
            QVERIFY2(shown == QString(number).replace(u'.', u','), qPrintable(about));
    });
}

void TstFuzz::datesFollowTheirMasks() {
    repeat(1, [&] {
        const QDate date = QDate(1900, 1, 1).addDays(m_chance->below(100000));
        const QString stored =
            date.toString(u"yyyy-MM-dd"_s) + (m_chance->once(2) ? u" 10:11:12"_s : QString());
        QCOMPARE(report::dateByMask(stored, u"dd/mm/yyyy"_s), date.toString(u"dd/MM/yyyy"_s));
        QCOMPARE(report::dateByMask(stored, u"dd/mm/yy"_s), date.toString(u"dd/MM/yy"_s));
        const QString text = m_chance->text(12);
        QCOMPARE(report::dateByMask(text, u"dd/mm/yyyy"_s), text);
    });
}

// As typed: the text boxes let no apostrophe through.
void TstFuzz::productSearchIsOneSelect() {
    repeat(1, [&] {
        QString text = m_chance->once(5) ? m_chance->number() : m_chance->text(30);
        if (m_chance->once(6))
            text += u'\\';
        // No text reaches the search but through a text box.
        text = TextBox::conventional(text);
        const QString typed = text;
        const ProductQuery search = productQuery(text);
        QVERIFY2(search.refusal.isEmpty() != search.sql.isEmpty(), qPrintable(typed));
        if (search.sql.isEmpty())
            return;
        QVERIFY2(report::queryProblem(search.sql).isEmpty(), qPrintable(search.sql));
        m_server->query(search.sql); // raises when the server refuses it
    });
}

QTEST_MAIN(TstFuzz)
#include "tst_fuzz.moc"
