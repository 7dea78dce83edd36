#include "printing/layout/LayoutReader.h"

#include "printing/layout/BandReader.h"
#include "printing/layout/LayoutFile.h"
#include "printing/layout/LayoutNames.h"
#include "printing/layout/LayoutXml.h"
#include "printing/layout/QueryText.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarvessa::report {

namespace {

constexpr double defaultMarginMillimetres = 10;
constexpr double defaultFontPoints = 9;

// The elements inside <report>, in their order.
enum class Part {
    Page,
    Font,
    Query,
    Column,
    Formula,
    Total,
    Calculation,
    ReportHead,
    PageHead,
    Group,
    Detail,
    NoData,
    ReportFoot,
    PageFoot
};

struct PartRule {
    QStringView name;
    bool isRequired;
    bool mayRepeat;
};

constexpr PartRule parts[] = {
    {u"page", true, false},        {u"font", true, true},         {u"query", true, false},
    {u"column", false, true},      {u"formula", false, true},     {u"total", false, true},
    {u"calculation", false, true}, {u"reportHead", false, false}, {u"pageHead", false, false},
    {u"group", false, true},       {u"detail", true, true},       {u"noData", false, false},
    {u"reportFoot", false, false}, {u"pageFoot", false, false},
};

class Reader {
  public:
    Reader(const QString& path, const QByteArray& contents)
        : m_xml(path, contents), m_names(path, contents), m_bands(m_xml, m_names, m_layout) {
        m_layout.fileName = path;
    }

    Layout run() {
        m_xml.enterRoot(u"report");
        m_xml.expectAttributes({u"title"});
        m_layout.title = m_xml.requiredText(u"title");
        size_t expected = 0;
        while (m_xml.nextElement()) {
            const size_t part = partOfElement();
            checkOrder(part, expected);
            readPart(static_cast<Part>(part));
            expected = parts[part].mayRepeat ? part : part + 1;
            m_seen[part] = true;
        }
        checkRequired(std::size(parts));
        checkHeights();
        return std::move(m_layout);
    }

  private:
    size_t partOfElement() const {
        const auto* const found =
            std::find_if(std::begin(parts), std::end(parts),
                         [this](const PartRule& part) { return part.name == m_xml.element(); });
        if (found == std::end(parts))
            m_xml.failUnknownElement();
        return static_cast<size_t>(found - std::begin(parts));
    }

    void checkOrder(size_t part, size_t expected) const {
        if (part < expected)
            m_xml.fail(m_seen[part] && !parts[part].mayRepeat
                           ? u"o elemento \"%1\" só pode aparecer uma vez."_s.arg(parts[part].name)
                           : u"o elemento \"%1\" está fora de ordem."_s.arg(parts[part].name));
        checkRequired(part);
    }

    void checkRequired(size_t end) const {
        for (size_t part = 0; part < end; ++part)
            if (parts[part].isRequired && !m_seen[part])
                m_xml.fail(u"falta o elemento \"%1\"."_s.arg(parts[part].name));
    }

    void readPart(Part part) {
        switch (part) {
        case Part::Page:
            return readPage();
        case Part::Font:
            return readFont();
        case Part::Query:
            return readQuery();
        case Part::Column:
            return readColumn();
        case Part::Formula:
            m_xml.expectAttributes({u"name"});
            m_layout.formulas.push_back(m_xml.requiredText(u"name"));
            return m_xml.expectEmpty();
        case Part::Total:
            return readTotal();
        case Part::Calculation:
            return readCalculation();
        case Part::ReportHead:
            m_layout.reportHead = m_bands.read(BandReader::Kind::Page);
            return;
        case Part::PageHead:
            m_layout.pageHead = m_bands.read(BandReader::Kind::Page);
            return;
        case Part::Group:
            return readGroup();
        case Part::Detail:
            m_layout.details.push_back(m_bands.read(BandReader::Kind::Detail));
            return;
        case Part::NoData:
            m_layout.noData = m_bands.read(BandReader::Kind::Page);
            return;
        case Part::ReportFoot:
            m_layout.reportFoot = m_bands.read(BandReader::Kind::Foot);
            return;
        case Part::PageFoot:
            m_layout.pageFoot = m_bands.read(BandReader::Kind::Page);
            return;
        }
    }

    void readPage() {
        m_xml.expectAttributes({u"size", u"orientation", u"left", u"top", u"right", u"bottom"});
        constexpr QPageSize::PageSizeId sizes[] = {QPageSize::A4, QPageSize::A5, QPageSize::Letter,
                                                   QPageSize::Legal};
        const QPageSize size(sizes[m_xml.choice(u"size", {u"A4", u"A5", u"Letter", u"Legal"})]);
        const bool landscape = m_xml.choice(u"orientation", {u"portrait", u"landscape"}) == 1;
        const auto margin = [this](QStringView name) {
            return m_xml.length(name, defaultMarginMillimetres, 1);
        };
        m_layout.page = QPageLayout(size, landscape ? QPageLayout::Landscape : QPageLayout::Portrait,
                                    {margin(u"left"), margin(u"top"), margin(u"right"), margin(u"bottom")},
                                    QPageLayout::Millimeter);
        if (!m_layout.page.isValid() || m_layout.printable().isEmpty())
            m_xml.fail(u"as margens não deixam espaço na página."_s);
        m_xml.expectEmpty();
    }

    void readFont() {
        m_xml.expectAttributes({u"name", u"family", u"size", u"bold", u"italic", u"colour"});
        Font font;
        font.name = m_xml.requiredText(u"name");
        QStringList families = m_xml.requiredText(u"family").split(u',');
        for (QString& family : families)
            family = family.trimmed();
        font.font.setFamilies(families);
        font.font.setPixelSize(qMax(1, qRound(m_xml.length(u"size", defaultFontPoints, dotsPerPoint))));
        font.font.setBold(m_xml.flag(u"bold"));
        font.font.setItalic(m_xml.flag(u"italic"));
        // So that a text has the same width on the screen, on paper and in a file.
        font.font.setHintingPreference(QFont::PreferNoHinting);
        font.colour = m_xml.colour(u"colour", QColor(0, 0, 0));
        m_layout.fonts.push_back(font);
        m_xml.expectEmpty();
    }

    void readQuery() {
        m_xml.expectAttributes({});
        const int line = m_xml.line();
        m_layout.query = m_xml.readText().trimmed();
        if (m_layout.query.isEmpty())
            m_xml.fail(u"a consulta está vazia."_s);
        if (const QString problem = queryProblem(m_layout.query); !problem.isEmpty())
            raiseLayoutError(m_xml.fileName(), line, problem + u'.');
    }

    void readColumn() {
        m_xml.expectAttributes({u"name", u"heading", u"format", u"fixed"});
        const int place = columnPlace(m_xml.requiredText(u"name"), m_xml.line(), m_layout.columns);
        const std::optional<Format> format = formatOfMask(m_xml.text(u"format"));
        if (!format)
            m_xml.fail(u"\"%1\" não é uma máscara de formato."_s.arg(m_xml.text(u"format")));
        Column& column = m_layout.columns[static_cast<size_t>(place)];
        column.heading = m_xml.text(u"heading");
        column.format = *format;
        column.isFixed = m_xml.flag(u"fixed");
        m_xml.expectEmpty();
    }

    void readTotal() {
        m_xml.expectAttributes({u"name", u"kind", u"of", u"over"});
        Total total;
        total.name = m_xml.requiredText(u"name");
        total.line = m_xml.line();
        if (m_xml.choice(u"kind", {u"sum", u"count"}) == 1) {
            total.kind = Total::Kind::Count;
            if (m_xml.has(u"of"))
                m_xml.fail(u"uma contagem conta linhas e não tem o atributo \"of\"."_s);
        } else {
            total.of = requiredColumn(m_xml.requiredText(u"of"), m_xml.line(), m_layout.columns);
        }
        const QString over = m_xml.requiredText(u"over");
        if (over != "report"_L1) {
            const ValueRef group = m_names.lookup(over, m_xml.line(), m_layout.columns);
            if (group.source != Source::Group)
                m_xml.fail(u"não há grupo com o nome \"%1\"."_s.arg(over));
            total.group = group.index;
        }
        m_layout.totals.push_back(total);
        m_xml.expectEmpty();
    }

    void readCalculation() {
        m_xml.expectAttributes({u"name", u"value", u"decimals"});
        Calculation calculation;
        calculation.name = m_xml.requiredText(u"name");
        calculation.line = m_xml.line();
        if (m_xml.has(u"decimals"))
            calculation.decimals = m_xml.choice(u"decimals", {u"0", u"1", u"2", u"3", u"4"});
        const QString problem =
            calculation.expression.parse(m_xml.requiredText(u"value"), [this](const QString& name) {
                return m_names.lookup(name, m_xml.line(), m_layout.columns);
            });
        if (!problem.isEmpty())
            m_xml.fail(problem + u'.');
        for (const ValueRef value : calculation.expression.values()) {
            const auto index = static_cast<size_t>(value.index);
            if (value.source == Source::Calculation) {
                // Only those already read, so that no calculation can depend on itself.
                if (index >= m_layout.calculations.size())
                    m_xml.fail(u"um cálculo só pode usar cálculos declarados antes dele."_s);
                calculation.usesTotals |= m_layout.calculations[index].usesTotals;
            } else if (value.source == Source::Total) {
                calculation.usesTotals = true;
            } else if (value.source != Source::Column && value.source != Source::Formula) {
                m_xml.fail(u"a expressão usa um valor que não é número."_s);
            }
        }
        m_layout.calculations.push_back(calculation);
        m_xml.expectEmpty();
    }

    void readGroup() {
        m_xml.expectAttributes({u"name", u"by", u"key", u"keepTogether", u"startsPage"});
        Group group;
        group.name = m_xml.requiredText(u"name");
        group.by = requiredColumn(m_xml.requiredText(u"by"), m_xml.line(), m_layout.columns);
        group.byInitial = m_xml.choice(u"key", {u"value", u"initial"}) == 1;
        group.keepTogether = m_xml.flag(u"keepTogether");
        group.startsPage = m_xml.flag(u"startsPage");
        while (m_xml.nextElement()) {
            if (m_xml.element() == "head"_L1 && !group.head && !group.foot)
                group.head = m_bands.read(BandReader::Kind::Head);
            else if (m_xml.element() == "foot"_L1 && !group.foot)
                group.foot = m_bands.read(BandReader::Kind::Foot);
            else
                m_xml.failUnknownElement();
        }
        m_layout.groups.push_back(std::move(group));
    }

    // Page head, repeated group heads and the tallest other band must fit on a page together.
    void checkHeights() const {
        const auto height = [](const std::optional<Band>& band) { return band ? band->height : 0; };
        double heads = height(m_layout.pageHead) + height(m_layout.pageFoot);
        double tallest = qMax(height(m_layout.reportFoot), height(m_layout.noData));
        for (const Group& group : m_layout.groups) {
            heads += height(group.head);
            tallest = qMax(tallest, height(group.foot));
        }
        for (const Band& detail : m_layout.details)
            tallest = qMax(tallest, detail.height);
        if (heads + qMax(tallest, height(m_layout.reportHead)) > m_layout.printable().height())
            m_xml.fail(u"as faixas não cabem na altura da página entre as margens (%1 mm)."_s.arg(
                m_layout.printable().height() / dotsPerMillimetre, 0, 'f', 1));
    }

    LayoutXml m_xml;
    LayoutNames m_names;
    Layout m_layout;
    BandReader m_bands;
    bool m_seen[std::size(parts)] = {};
};

bool consistsOf(const QString& text, QStringView characters) {
    return std::all_of(text.begin(), text.end(), [characters](QChar c) { return characters.contains(c); });
}

} // namespace

Layout readLayout(const QString& path) {
    return Reader(path, contentsOfLayout(path)).run();
}

std::optional<Format> formatOfMask(const QString& mask) {
    if (mask.isEmpty())
        return Format();
    if (consistsOf(mask, u"#0,."))
        return Format{Format::Kind::Number, mask};
    if (mask == "dd/mm/yyyy"_L1 || mask == "dd/mm/yy"_L1)
        return Format{Format::Kind::Date, mask};
    return {};
}

} // namespace tarvessa::report
