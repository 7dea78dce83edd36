#include "bench/PrintingBench.h"

#include "base/Formata.h"
#include "bench/support/Measure.h"
#include "bench/support/Painted.h"
#include "printing/ReportControl.h"
#include "printing/layout/LayoutReader.h"
#include "printing/output/PdfFile.h"
#include "printing/preview/PageView.h"
#include "printing/preview/PreviewWindow.h"
#include "support/PrivateServer.h"

#include <QApplication>
#include <QFile>
#include <QPainter>
#include <QPdfWriter>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QTextDocument>
#include <QTextTable>

#include <algorithm>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace tarvessa::bench {

namespace {

constexpr int columns = 12;
constexpr int textColumns = 8;
constexpr int pdfRows = 10000;
constexpr int longReport = 100000;
constexpr int rounds = 5;
constexpr double painterGoal = 1.5;
constexpr double documentGoal = 20;
constexpr double firstPageGoalSeconds = 0.150;
constexpr double noiseSeconds = 0.010;
constexpr double memoryGoalMegabytes = 200;
constexpr int readingLimitMilliseconds = 60000;

constexpr double columnMillimetres = 23;
constexpr double cellMillimetres = 22;
constexpr double rowMillimetres = 5;
const QString moneyMask = u"###,##0.00"_s;

QString queryOf(int rows) {
    return u"SELECT * FROM impressao WHERE linha <= %1 ORDER BY linha"_s.arg(rows);
}

// Eight columns of text and four of money, as wide as an A4 page on its side takes them.
QByteArray layoutText() {
    QByteArray text = "<report title=\"Bench\">\n<page size=\"A4\" orientation=\"landscape\"/>\n"
                      "<font name=\"n\" family=\"DejaVu Sans\" size=\"8\"/>\n<query>" +
                      queryOf(longReport).replace(u"<"_s, u"&lt;"_s).toUtf8() +
                      "</query>\n<pageHead height=\"10\"><text x=\"0\" y=\"0\" width=\"100\">"
                      "{title} {page} / {pages}</text></pageHead>\n<detail height=\"5\">\n";
    for (int i = 0; i < columns; ++i) {
        const QByteArray money =
            i < textColumns ? "" : " align=\"right\" format=\"" + moneyMask.toUtf8() + '"';
        text += "<field x=\"" + QByteArray::number(i * columnMillimetres) +
                "\" y=\"0\" width=\"22\" height=\"5\" value=\"c" + QByteArray::number(i + 1) + '"' + money +
                "/>\n";
    }
    return text + "</detail>\n</report>\n";
}

class Printing {
  public:
    explicit Printing(test::PrivateServer& server) {
        QStringList cells;
        for (int i = 0; i < columns; ++i)
            cells.append(i < textColumns ? u"CONCAT('Item ', seq, '-%1') AS c%1"_s.arg(i + 1)
                                         : u"CAST(seq * %1.37 AS DECIMAL(15,2)) AS c%1"_s.arg(i + 1));
        server.execute(
            u"CREATE TABLE impressao (PRIMARY KEY (linha)) AS SELECT seq AS linha, %1 FROM seq_1_to_%2"_s
                .arg(cells.join(u", "_s))
                .arg(longReport));
        for (const QStringList& row : server.query(queryOf(pdfRows))) {
            QStringList texts = row.sliced(1);
            for (int i = textColumns; i < columns; ++i)
                texts[i] = Formata(Dinheiro::dePonto(texts[i]), moneyMask);
            m_rows.append(texts);
        }
        QFile file(layoutPath());
        if (!file.open(QIODevice::WriteOnly) || file.write(layoutText()) < 0)
            throw std::runtime_error("the layout cannot be written");
    }

    QString layoutPath() const { return m_folder.filePath(u"bench.RPT"_s); }
    QString pdfPath() const { return m_folder.filePath(u"bench.pdf"_s); }

    /// From the rows that the driver holds to the closed file.
    double reportToPdf() const {
        report::Report report(report::readLayout(layoutPath()), u"dsn=QDX"_s, queryOf(pdfRows), {},
                              QDateTime::currentDateTime());
        const double seconds = secondsOf([&] { report::savePdf(report, pdfPath()); });
        if (report.data().rows().size() != pdfRows || report.pageCount() < 2)
            throw std::runtime_error("the report did not print what there is");
        return seconds;
    }

    /// The same cells at the same places, their texts ready in memory.
    double painterToPdf() const {
        return secondsOf([this] {
            QPdfWriter writer(pdfPath());
            preparePaper(writer);
            QPainter painter(&writer);
            QFont font(u"DejaVu Sans"_s);
            font.setPixelSize(qRound(8 * report::dotsPerPoint));
            painter.setFont(font);
            constexpr double top = 20;
            constexpr double bottom = 200;
            double y = top;
            for (const QStringList& row : m_rows) {
                if (y + rowMillimetres > bottom) {
                    writer.newPage();
                    y = top;
                }
                for (int i = 0; i < columns; ++i)
                    painter.drawText(
                        QRectF(QPointF(10 + i * columnMillimetres, y) * report::dotsPerMillimetre,
                               QSizeF(cellMillimetres, rowMillimetres) * report::dotsPerMillimetre),
                        Qt::AlignVCenter | (i < textColumns ? Qt::AlignLeft : Qt::AlignRight), row[i]);
                y += rowMillimetres;
            }
        });
    }

    double documentToPdf() const {
        return secondsOf([this] {
            QTextDocument document;
            document.setDefaultFont(QFont(u"DejaVu Sans"_s, 8));
            QTextCursor cursor(&document);
            const QTextTable* table = cursor.insertTable(static_cast<int>(m_rows.size()), columns);
            for (int row = 0; row < m_rows.size(); ++row)
                for (int i = 0; i < columns; ++i)
                    table->cellAt(row, i).firstCursorPosition().insertText(m_rows[row][i]);
            QPdfWriter writer(pdfPath());
            preparePaper(writer);
            document.print(&writer);
        });
    }

    /// From the screen's call to the painted first page.
    double firstPage(int rows) const {
        ReportControl control(nullptr);
        control.setReportFileName(layoutPath());
        control.setSQLQuery(queryOf(rows));
        control.setWindowState(2);
        report::PreviewWindow* window = nullptr;
        const double seconds = secondsOf([&] {
            control.setAction(1);
            for (QWidget* widget : QApplication::topLevelWidgets())
                if (auto* preview = qobject_cast<report::PreviewWindow*>(widget))
                    window = preview;
            waitPainted(window->findChild<report::PageView*>()->viewport());
        });
        delete window;
        return seconds;
    }

    /// The same query on a connection made for it, up to its first row.
    static double queryAlone(int rows) {
        return secondsOf([rows] {
            odbc::Connection connection;
            connection.open(u"dsn=QDX"_s);
            odbc::ResultSet result;
            result.open(connection, queryOf(rows));
            if (result.atEnd())
                throw std::runtime_error("the query has no rows");
        });
    }

  private:
    static void preparePaper(QPdfWriter& writer) {
        writer.setResolution(report::dotsPerInch);
        writer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Landscape, {}));
    }

    QTemporaryDir m_folder;
    QList<QStringList> m_rows;
};

QList<Row> pdfFigures(const Printing& printing) {
    const QString what = countText(pdfRows) + u" rows of 12 columns to PDF, against "_s;
    const std::vector<double> times = interleaved(
        rounds, {[&] { return printing.reportToPdf(); }, [&] { return printing.painterToPdf(); }});
    const double ratio = times[0] / times[1];
    // Half a minute each: once is enough to tell twenty times from less.
    const double document = printing.documentToPdf();
    return {{what + u"a bare painter"_s, timeText(times[0]), timeText(times[1]), ratioText(ratio),
             u"at most 1.5 times"_s, ratio <= painterGoal},
            {what + u"a text document"_s, timeText(times[0]), timeText(document),
             ratioText(document / times[0]), u"at least 20 times faster"_s,
             document / times[0] >= documentGoal}};
}

QList<Row> firstPageFigures(const Printing& printing) {
    QList<Row> figures;
    double shortReport = 0;
    for (const int rows : {1000, pdfRows, longReport}) {
        const std::vector<double> times = interleaved(
            rounds, {[&] { return printing.firstPage(rows); }, [&] { return Printing::queryAlone(rows); }});
        const double beyond = times[0] - times[1];
        if (rows == 1000)
            shortReport = beyond;
        figures.append({u"first page of "_s + countText(rows) + u" rows on the screen, beyond the query"_s,
                        timeText(times[0]), timeText(times[1]), timeText(beyond), u"under 150 ms more"_s,
                        beyond < firstPageGoalSeconds});
        if (rows == longReport)
            figures.append({u"- the time beyond the query, against that of 1,000 rows"_s, timeText(beyond),
                            timeText(shortReport), ratioText(beyond / shortReport),
                            u"no more, but for 10 ms of noise"_s, beyond <= shortReport + noiseSeconds});
    }
    return figures;
}

Row memoryFigure(const Printing& printing) {
    QProcess process;
    process.start(QApplication::applicationFilePath(),
                  {QString::fromUtf8(previewMemoryWord), printing.layoutPath()});
    if (!process.waitForFinished(2 * readingLimitMilliseconds) || process.exitCode() != 0)
        throw std::runtime_error("the preview's process failed: " +
                                 process.readAllStandardError().toStdString());
    const double megabytes = process.readAllStandardOutput().trimmed().toDouble();
    return {u"memory of a preview of "_s + countText(longReport) + u" rows"_s,
            u"%1 MB"_s.arg(megabytes, 0, 'f', 1),
            {},
            {},
            u"under 200 MB"_s,
            megabytes > 0 && megabytes < memoryGoalMegabytes};
}

} // namespace

QList<Row> printingRows(test::PrivateServer& server) {
    const Printing printing(server);
    QList<Row> rows = pdfFigures(printing);
    rows += firstPageFigures(printing);
    rows += memoryFigure(printing);
    server.execute(u"DROP TABLE impressao"_s);
    return rows;
}

int previewMemory() {
    ReportControl control(nullptr);
    control.setReportFileName(QApplication::arguments().at(2));
    control.setWindowState(2);
    control.setAction(1);
    if (!QTest::qWaitFor([&] { return control.lastReport()->complete(); }, readingLimitMilliseconds))
        return 1;
    QTest::qWait(200);
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QIODevice::ReadOnly))
        return 1;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmRSS:"))
            printf("%.1f\n", line.simplified().split(' ').at(1).toDouble() * 1024 / 1e6);
    return 0;
}

} // namespace tarvessa::bench
