#include "printing/output/CsvFile.h"

#include "base/RuntimeError.h"
#include "printing/pages/DateMask.h"
#include "printing/pages/NumberMask.h"

#include <QSaveFile>

using namespace Qt::StringLiterals;

namespace tarvessa::report {

namespace {

const QByteArray byteOrderMark("\xEF\xBB\xBF");

QByteArray quoted(const QString& text) {
    QByteArray bytes = text.toUtf8();
    if (!bytes.contains(';') && !bytes.contains('"') && !bytes.contains('\n') && !bytes.contains('\r'))
        return bytes;
    bytes.replace("\"", "\"\"");
    return '"' + bytes + '"';
}

// Without points between the thousands, which not every spreadsheet reads.
QString withoutPoints(QString mask) {
    return mask.remove(u',');
}

} // namespace

CsvFile::CsvFile(const Layout& layout, const DataSource& data) : m_data(data) {
    for (const QString& name : data.columnNames()) {
        CsvColumn column{name, {}};
        for (const Column& described : layout.columns) {
            if (described.name.compare(name, Qt::CaseInsensitive) != 0)
                continue;
            column.format = described.format;
            if (!described.heading.isEmpty())
                column.heading = described.heading;
        }
        m_columns.push_back(column);
    }
}

void CsvFile::save(const QString& path) const {
    QSaveFile file(path);
    const auto fail = [&] {
        throw RuntimeError(ErrorNumber::FileNotWritable,
                           u"Não foi possível gravar %1: %2"_s.arg(path, file.errorString()));
    };
    if (!file.open(QIODevice::WriteOnly))
        fail();
    QByteArrayList headings;
    for (const CsvColumn& column : m_columns)
        headings.append(quoted(column.heading));
    file.write(byteOrderMark + headings.join(';') + "\r\n");
    for (qsizetype row = 0; row < m_data.rows().size(); ++row)
        file.write(line(row));
    // Tells of any write that has failed.
    if (!file.commit())
        fail();
}

QByteArray CsvFile::line(qsizetype row) const {
    QByteArray result;
    for (size_t i = 0; i < m_columns.size(); ++i) {
        QString text = m_data.rows().text(row, static_cast<int>(i));
        if (m_columns[i].format.kind == Format::Kind::Number)
            text = numberByMask(text, withoutPoints(m_columns[i].format.mask));
        else if (m_columns[i].format.kind == Format::Kind::Date)
            text = dateByMask(text, m_columns[i].format.mask);
        result += (i > 0 ? ";" : "") + quoted(text);
    }
    return result + "\r\n";
}

} // namespace tarvessa::report
