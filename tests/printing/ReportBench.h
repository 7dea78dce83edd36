#pragma once

#include "printing/layout/LayoutReader.h"
#include "printing/output/CsvFile.h"
#include "printing/output/PdfFile.h"
#include "printing/output/Printing.h"
#include "printing/pages/Report.h"
#include "support/PrivateServer.h"
#include "support/Program.h"
#include "support/TestError.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <memory>

namespace tarvessa::test {

/// Layout files of a test's own and the reports run from them.
class ReportBench {
  public:
    /// The server that the reports will ask; it may have to be given the rows that their queries count.
    void uses(PrivateServer& server) { m_server = &server; }

    /// Where a file of this name lies.
    QString path(const QString& name) const { return m_folder.filePath(name); }

    QString write(const QString& name, const QByteArray& contents) const {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size())
            throw TestError(file.errorString());
        return file.fileName();
    }

    /// An A4 layout (190 mm by 277 mm between the margins) around declarations and bands.
    static QByteArray layout(const QByteArray& declarations, const QByteArray& bands) {
        return "<report title=\"Teste\">\n<page/>\n"
               "<font name=\"normal\" family=\"DejaVu Sans\" size=\"8\"/>\n"
               "<query>SELECT 1 AS n</query>\n" +
               declarations + bands + "</report>\n";
    }

    /// Runs a query under such a layout.
    std::unique_ptr<report::Report> run(const QString& query, const QByteArray& declarations,
                                        const QByteArray& bands,
                                        const report::FormulaValues& formulas = {}) const {
        if (m_server != nullptr)
            m_server->provideSequences(query);
        auto result = std::make_unique<report::Report>(
            report::readLayout(write(QStringLiteral("test.RPT"), layout(declarations, bands))),
            QStringLiteral("dsn=QDX"), query, formulas, QDateTime(QDate(2024, 3, 5), QTime(14, 30)));
        result->readAll();
        return result;
    }

    /// What stands on a page (from 0), in the order of drawing.
    static QStringList texts(const report::Report& report, int page) {
        QStringList result;
        for (const report::PlacedText& text : report.texts(page))
            result.append(text.text);
        return result;
    }

    /// The text of a PDF file, blanks between words run together, a form feed after each page.
    static QString pdfText(const QString& path) {
        QString text = test::pdfText(path);
        static const QRegularExpression blanks(QStringLiteral(" +"));
        return text.replace(blanks, QStringLiteral(" "));
    }

  private:
    QTemporaryDir m_folder;
    PrivateServer* m_server = nullptr;
};

} // namespace tarvessa::test
