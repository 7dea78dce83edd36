#include "sheets/CsvFile.h"

#include "base/WholeFile.h"
#include "sheets/CsvText.h"
#include "sheets/Sheet.h"

#include <QIODevice>

namespace tarvessa::sheet {

namespace {

const QByteArray byteOrderMark("\xEF\xBB\xBF");

QByteArray quoted(const QString& text) {
    QByteArray bytes = withoutFormula(text).toUtf8();
    if (!bytes.contains(';') && !bytes.contains('"') && !bytes.contains('\n') && !bytes.contains('\r'))
        return bytes;
    bytes.replace("\"", "\"\"");
    return '"' + bytes + '"';
}

template <typename TextOf>
QByteArray lineOf(qsizetype columns, TextOf textOf) {
    QByteArray line;
    for (qsizetype column = 0; column < columns; ++column)
        line += (column > 0 ? ";" : "") + quoted(textOf(column));
    return line + "\r\n";
}

} // namespace

void saveCsv(const Source& source, const QString& path) {
    writeWholeFile(path, [&source](QIODevice& file) {
        const QList<Column>& columns = source.columns();
        file.write(byteOrderMark +
                   lineOf(columns.size(), [&columns](qsizetype column) { return columns[column].heading; }));
        for (qsizetype row = 0; row < source.rowCount(); ++row)
            file.write(lineOf(columns.size(),
                              [&source, row](qsizetype column) { return source.cell(row, column).text; }));
    });
}

} // namespace tarvessa::sheet
