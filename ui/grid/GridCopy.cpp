#include "ui/grid/GridCopy.h"

#include <QMimeData>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

constexpr int usualTextLength = 80;
constexpr int usualHtmlLength = 300;

std::vector<int> outputColumns(const Grid& grid) {
    std::vector<int> columns;
    for (int column = 0; column < grid.columns(); ++column)
        if (grid.isOutput(column))
            columns.push_back(column);
    return columns;
}

bool isValueColumn(ColumnKind kind) {
    return kind == ColumnKind::Number || kind == ColumnKind::Percentage || kind == ColumnKind::Date;
}

bool needsQuotes(QStringView cell) {
    return cell.startsWith(u'"') || cell.contains(u'\t') || cell.contains(u'\n') || cell.contains(u'\r');
}

void appendTextRow(const Grid& grid, int row, const std::vector<int>& columns, QString& text) {
    for (const int column : columns) {
        if (column != columns.front())
            text += u'\t';
        QString cell = grid.outputText(row, column);
        if (needsQuotes(cell))
            text += u'"' + cell.replace(u'"', u"\"\""_s) + u'"';
        else
            text += cell;
    }
}

void appendHtmlText(const QString& cell, QString& html) {
    for (const QChar letter : cell) {
        if (letter == u'&')
            html += "&amp;"_L1;
        else if (letter == u'<')
            html += "&lt;"_L1;
        else if (letter == u'>')
            html += "&gt;"_L1;
        else if (letter == u'\n')
            html += "<br>"_L1;
        else
            html += letter;
    }
}

void appendHtmlRow(const Grid& grid, int row, const std::vector<int>& columns, QString& html) {
    html += "<tr>"_L1;
    for (const int column : columns) {
        if (row == 0)
            html += "<th>"_L1;
        else
            html +=
                isValueColumn(grid.columnKind(column)) ? "<td class=\"v\" align=\"right\">"_L1 : "<td>"_L1;
        appendHtmlText(grid.outputText(row, column), html);
        html += row == 0 ? "</th>"_L1 : "</td>"_L1;
    }
    html += "</tr>\n"_L1;
}

} // namespace

QMimeData* copyOf(const Grid& grid, const QList<Grid::RowRange>& ranges, bool withHeader) {
    const std::vector<int> columns = outputColumns(grid);
    QList<Grid::RowRange> all = ranges;
    if (withHeader)
        all.prepend({0, 0});
    qsizetype count = 0;
    for (const auto& [first, last] : all)
        count += last - first + 1;
    QString text;
    text.reserve(count * usualTextLength);
    // The number format "@" makes a cell a text for a spreadsheet: it keeps leading zeros and long numbers
    // and computes nothing.
    QString html = u"<html><head><meta charset=\"utf-8\"><style>td{mso-number-format:\"\\@\"}"
                   "td.v{mso-number-format:General}</style></head><body><table>\n"_s;
    html.reserve(count * usualHtmlLength);
    for (const auto& [first, last] : all)
        for (int row = first; row <= last; ++row) {
            if (!text.isEmpty())
                text += u'\n';
            appendTextRow(grid, row, columns, text);
            appendHtmlRow(grid, row, columns, html);
        }
    html += "</table></body></html>"_L1;
    auto* data = new QMimeData;
    data->setText(text);
    data->setHtml(html);
    return data;
}

} // namespace tarvessa
