#include "printing/output/ReportRows.h"

#include "printing/pages/DateMask.h"
#include "printing/pages/NumberMask.h"
#include "printing/pages/Report.h"

using namespace Qt::StringLiterals;

namespace tarvessa::report {

namespace {

constexpr int pixelsPerLetter = 7;
constexpr int pixelsAround = 12;
constexpr qsizetype fewestLetters = 6;
constexpr qsizetype mostLetters = 60;
constexpr qsizetype rowsMeasured = 200;

// Not every spreadsheet reads points between the thousands.
QString withoutPoints(QString mask) {
    return mask.remove(u',');
}

int decimalsOf(const QString& mask) {
    const qsizetype point = mask.lastIndexOf(u'.');
    return point < 0 ? 0 : static_cast<int>(mask.size() - point - 1);
}

sheet::Cell numberCell(const QString& stored, const QString& mask) {
    sheet::Cell cell;
    cell.text = numberByMask(stored, withoutPoints(mask));
    cell.percent = stored.endsWith(u'%');
    bool isNumber = false;
    const double number = QStringView(stored).chopped(cell.percent ? 1 : 0).trimmed().toDouble(&isNumber);
    if (isNumber) {
        constexpr double hundred = 100;
        cell.kind = sheet::Cell::Kind::Number;
        cell.number = cell.percent ? number / hundred : number;
        cell.decimals = decimalsOf(mask);
    }
    return cell;
}

sheet::Cell dateCell(const QString& stored, const QString& mask) {
    constexpr qsizetype dateLength = 10;
    sheet::Cell cell;
    cell.text = dateByMask(stored, mask);
    cell.date = QDate::fromString(stored.left(dateLength), Qt::ISODate);
    if (cell.date.isValid())
        cell.kind = sheet::Cell::Kind::Date;
    return cell;
}

} // namespace

ReportRows::ReportRows(const Report& report) : m_report(report) {
    for (const QString& name : report.data().columnNames())
        addColumn(name);
}

void ReportRows::addColumn(const QString& name) {
    sheet::Column column;
    column.heading = name;
    Format format;
    for (const Column& described : m_report.layout().columns) {
        if (described.name.compare(name, Qt::CaseInsensitive) != 0)
            continue;
        format = described.format;
        if (!described.heading.isEmpty())
            column.heading = described.heading;
    }
    if (format.kind == Format::Kind::Number)
        column.alignment = sheet::Column::Alignment::Right;
    m_formats.push_back(format);
    m_columns.append(column);
    m_columns.last().pixels = widthOf(static_cast<int>(m_columns.size() - 1));
}

// A report has no widths of columns; the first rows tell what its texts need.
int ReportRows::widthOf(int column) const {
    qsizetype letters = qMax(fewestLetters, m_columns[column].heading.size());
    for (qsizetype row = 0; row < qMin(rowCount(), rowsMeasured); ++row)
        letters = qMax(letters, ReportRows::cell(row, column).text.size());
    return static_cast<int>(qMin(letters, mostLetters)) * pixelsPerLetter + pixelsAround;
}

qsizetype ReportRows::rowCount() const {
    return m_report.data().rows().size();
}

sheet::Cell ReportRows::cell(qsizetype row, qsizetype column) const {
    const QString stored = m_report.data().rows().text(row, static_cast<int>(column));
    const Format& format = m_formats[static_cast<size_t>(column)];
    if (format.kind == Format::Kind::Number)
        return numberCell(stored, format.mask);
    if (format.kind == Format::Kind::Date)
        return dateCell(stored, format.mask);
    sheet::Cell cell;
    cell.text = stored;
    return cell;
}

} // namespace tarvessa::report
