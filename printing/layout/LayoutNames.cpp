#include "printing/layout/LayoutNames.h"

#include "printing/layout/LayoutXml.h"

#include <QXmlStreamReader>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarvessa::report {

LayoutNames::LayoutNames(const QString& fileName, const QByteArray& contents)
    : m_declared{{u"page"_s, {Source::Page, 0}},
                 {u"pages"_s, {Source::Pages, 0}},
                 {u"date"_s, {Source::Date, 0}},
                 {u"time"_s, {Source::Time, 0}},
                 {u"title"_s, {Source::Title, 0}}} {
    const QHash<QString, Source> declaring = {{u"formula"_s, Source::Formula},
                                              {u"total"_s, Source::Total},
                                              {u"calculation"_s, Source::Calculation},
                                              {u"group"_s, Source::Group}};
    QHash<Source, int> count;
    QXmlStreamReader reader(contents);
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement)
            continue;
        const auto source = declaring.constFind(reader.name().toString());
        if (source == declaring.constEnd())
            continue;
        const QString name = reader.attributes().value("name"_L1).toString();
        if (m_declared.contains(name.toLower()))
            raiseLayoutError(fileName, reader.lineNumber(), u"o nome \"%1\" já está em uso."_s.arg(name));
        m_declared.insert(name.toLower(), {*source, count[*source]++});
    }
    // Reported first: a truncated file lacks names that other elements use.
    if (reader.hasError())
        raiseXmlError(fileName, reader);
}

ValueRef LayoutNames::lookup(const QString& name, int line, std::vector<Column>& columns) const {
    const auto declared = m_declared.constFind(name.toLower());
    if (declared != m_declared.constEnd())
        return *declared;
    return requiredColumn(name, line, columns);
}

ValueRef requiredColumn(const QString& name, int line, std::vector<Column>& columns) {
    const int place = columnPlace(name, line, columns);
    Column& column = columns[static_cast<size_t>(place)];
    if (!column.required)
        column.line = line;
    column.required = true;
    return {Source::Column, place};
}

int columnPlace(const QString& name, int line, std::vector<Column>& columns) {
    const auto found = std::find_if(columns.begin(), columns.end(), [&name](const Column& column) {
        return column.name.compare(name, Qt::CaseInsensitive) == 0;
    });
    const auto place = static_cast<int>(found - columns.begin());
    if (found == columns.end())
        columns.push_back({name, {}, {}, false, false, line});
    return place;
}

} // namespace tarvessa::report
