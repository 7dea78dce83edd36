#include "printing/output/CsvFile.h"

#include "printing/output/CsvText.h"
#include "printing/output/WholeFile.h"
#include "printing/pages/DateMask.h"
#include "printing/pages/NumberMask.h"
#include "printing/pages/Report.h"

#include <QIODevice>

namespace tarvessa::report {

namespace {

const QByteArray byteOrderMark("\xEF\xBB\xBF");

struct CsvColumn {
    QString heading;
    Format format;
};

std::vector<CsvColumn> columnsOf(const Report& report) {
    std::vector<CsvColumn> columns;
    for (const QString& name : report.data().columnNames()) {
        CsvColumn column{name, {}};
        for (const Column& described : report.layout().columns) {
            if (described.name.compare(name, Qt::CaseInsensitive) != 0)
                continue;
            column.format = described.format;
            if (!described.heading.isEmpty())
                column.heading = described.heading;
        }
        columns.push_back(column);
    }
    return columns;
}

QByteArray quoted(const QString& text) {
    QByteArray bytes = withoutFormula(text).toUtf8();
    if (!bytes.contains(';') && !bytes.contains('"') && !bytes.contains('\n') && !bytes.contains('\r'))
        return bytes;
    bytes.replace("\"", "\"\"");
    return '"' + bytes + '"';
}

// Not every spreadsheet reads points between the thousands.
QString withoutPoints(QString mask) {
    return mask.remove(u',');
}

QString cellText(const QString& stored, const Format& format) {
    if (format.kind == Format::Kind::Number)
        return numberByMask(stored, withoutPoints(format.mask));
    if (format.kind == Format::Kind::Date)
        return dateByMask(stored, format.mask);
    return stored;
}

QByteArray lineOf(const RowStore& rows, qsizetype row, const std::vector<CsvColumn>& columns) {
    QByteArray line;
    for (size_t i = 0; i < columns.size(); ++i)
        line += (i > 0 ? ";" : "") + quoted(cellText(rows.text(row, static_cast<int>(i)), columns[i].format));
    return line + "\r\n";
}

} // namespace

void saveCsv(Report& report, const QString& path) {
    report.readAll();
    writeWholeFile(path, [&report](QIODevice& file) {
        const std::vector<CsvColumn> columns = columnsOf(report);
        QByteArrayList headings;
        for (const CsvColumn& column : columns)
            headings.append(quoted(column.heading));
        file.write(byteOrderMark + headings.join(';') + "\r\n");
        const RowStore& rows = report.data().rows();
        for (qsizetype row = 0; row < rows.size(); ++row)
            file.write(lineOf(rows, row, columns));
    });
}

} // namespace tarvessa::report
