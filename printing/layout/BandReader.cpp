#include "printing/layout/BandReader.h"

#include "printing/layout/LayoutReader.h"

#include <QFontMetricsF>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarvessa::report {

namespace {

constexpr double thinLineMillimetres = 0.2;
const QColor black(0, 0, 0);

} // namespace

Band BandReader::read(Kind kind) {
    m_kind = kind;
    Band band;
    band.height = m_xml.requiredLength(u"height");
    band.fill = m_xml.colour(u"fill", {});
    if (kind == Kind::Detail) {
        m_xml.expectAttributes({u"height", u"fill", u"stripe", u"when", u"equals", u"begins"});
        band.stripe = m_xml.colour(u"stripe", {});
        readCondition(band);
    } else if (kind == Kind::Head) {
        m_xml.expectAttributes({u"height", u"fill", u"repeat"});
        band.repeats = m_xml.flag(u"repeat");
    } else {
        m_xml.expectAttributes({u"height", u"fill"});
    }
    while (m_xml.nextElement()) {
        if (m_xml.element() == "text"_L1)
            readText(band);
        else if (m_xml.element() == "field"_L1)
            readField(band);
        else if (m_xml.element() == "line"_L1)
            readLine(band);
        else if (m_xml.element() == "box"_L1)
            readBox(band);
        else
            m_xml.failUnknownElement();
    }
    return band;
}

void BandReader::readCondition(Band& band) {
    const bool begins = m_xml.has(u"begins");
    if (!m_xml.has(u"when")) {
        if (begins || m_xml.has(u"equals"))
            m_xml.fail(u"\"equals\" e \"begins\" precisam do atributo \"when\"."_s);
        return;
    }
    if (begins == m_xml.has(u"equals"))
        m_xml.fail(u"\"when\" pede um dos atributos \"equals\" e \"begins\"."_s);
    const QString name = m_xml.requiredText(u"when");
    const ValueRef value = m_names.lookup(name, m_xml.line(), m_layout.columns);
    if (value.source != Source::Column && value.source != Source::Formula)
        m_xml.fail(u"\"%1\" não pode decidir qual faixa é impressa."_s.arg(name));
    band.when = Condition{value, m_xml.text(begins ? u"begins" : u"equals"), begins};
}

void BandReader::readText(Band& band) {
    m_xml.expectAttributes(
        {u"x", u"y", u"width", u"height", u"font", u"align", u"colour", u"wrap", u"fit", u"optional"});
    Text text = textFrame(band);
    text.isOptional = m_xml.flag(u"optional");
    text.pieces = pieces(m_xml.readText().simplified());
    band.texts.push_back(std::move(text));
}

void BandReader::readField(Band& band) {
    m_xml.expectAttributes({u"x", u"y", u"width", u"height", u"font", u"align", u"colour", u"wrap", u"fit",
                            u"value", u"format"});
    Text text = textFrame(band);
    text.pieces.push_back(piece(m_xml.requiredText(u"value"), m_xml.text(u"format")));
    text.shrinks |= text.pieces.front().format.kind == Format::Kind::Number;
    m_xml.expectEmpty();
    band.texts.push_back(std::move(text));
}

void BandReader::readLine(Band& band) const {
    m_xml.expectAttributes({u"x1", u"y1", u"x2", u"y2", u"thickness", u"colour"});
    Line line;
    line.line = QLineF(m_xml.requiredLength(u"x1"), m_xml.requiredLength(u"y1"), m_xml.requiredLength(u"x2"),
                       m_xml.requiredLength(u"y2"));
    line.thickness = m_xml.length(u"thickness", thinLineMillimetres);
    line.colour = m_xml.colour(u"colour", black);
    checkInside(band, QRectF(line.line.p1(), line.line.p2()).normalized());
    m_xml.expectEmpty();
    band.lines.push_back(line);
}

void BandReader::readBox(Band& band) const {
    m_xml.expectAttributes({u"x", u"y", u"width", u"height", u"thickness", u"colour", u"fill", u"radius"});
    Box box;
    box.place = QRectF(m_xml.requiredLength(u"x"), m_xml.requiredLength(u"y"), m_xml.requiredLength(u"width"),
                       m_xml.requiredLength(u"height"));
    box.thickness = m_xml.length(u"thickness", thinLineMillimetres);
    box.colour = m_xml.colour(u"colour", black);
    box.fill = m_xml.colour(u"fill", {});
    box.radius = m_xml.length(u"radius", 0);
    checkInside(band, box.place);
    m_xml.expectEmpty();
    band.boxes.push_back(box);
}

Text BandReader::textFrame(const Band& band) const {
    Text text;
    text.line = m_xml.line();
    if (m_xml.has(u"font")) {
        const auto& fonts = m_layout.fonts;
        const QString name = m_xml.text(u"font");
        const auto found =
            std::find_if(fonts.begin(), fonts.end(), [&name](const Font& font) { return font.name == name; });
        if (found == fonts.end())
            m_xml.fail(u"a fonte \"%1\" não foi declarada."_s.arg(name));
        text.font = static_cast<int>(found - fonts.begin());
    }
    const Font& font = m_layout.fonts[static_cast<size_t>(text.font)];
    text.colour = m_xml.colour(u"colour", font.colour);
    const double lineHeight = QFontMetricsF(font.font).height() / dotsPerMillimetre;
    text.place = QRectF(m_xml.requiredLength(u"x"), m_xml.requiredLength(u"y"),
                        m_xml.requiredLength(u"width"), m_xml.length(u"height", lineHeight));
    constexpr Qt::Alignment alignments[] = {Qt::AlignLeft, Qt::AlignRight, Qt::AlignHCenter};
    text.alignment = alignments[m_xml.choice(u"align", {u"left", u"right", u"centre"})];
    text.wraps = m_xml.flag(u"wrap");
    text.shrinks = m_xml.choice(u"fit", {u"cut", u"shrink"}) == 1;
    checkInside(band, text.place);
    return text;
}

// Splits "Total de {Vendedor}: {Valor1|###,##0.00}" at its values; "{{" is a literal brace.
std::vector<Piece> BandReader::pieces(const QString& text) {
    std::vector<Piece> result;
    QString fixed;
    const auto endFixed = [&] {
        if (!fixed.isEmpty())
            result.push_back({fixed, {}, {}});
        fixed.clear();
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != u'{') {
            fixed.append(text[i]);
        } else if (i + 1 < text.size() && text[i + 1] == u'{') {
            fixed.append(text[++i]);
        } else {
            const qsizetype end = text.indexOf(u'}', i);
            if (end < 0)
                m_xml.fail(u"falta \"}\" no texto \"%1\"."_s.arg(text));
            const QStringView inside = QStringView(text).sliced(i + 1, end - i - 1);
            const qsizetype bar = inside.indexOf(u'|');
            endFixed();
            result.push_back(piece(inside.first(bar < 0 ? inside.size() : bar).trimmed().toString(),
                                   bar < 0 ? QString() : inside.sliced(bar + 1).trimmed().toString()));
            i = end;
        }
    }
    endFixed();
    return result;
}

Piece BandReader::piece(const QString& name, const QString& mask) {
    if (name.isEmpty())
        m_xml.fail(u"falta o nome do valor entre \"{\" e \"}\"."_s);
    const ValueRef value = m_names.lookup(name, m_xml.line(), m_layout.columns);
    checkAllowed(name, value);
    if (mask.isEmpty())
        return {{}, value, defaultFormat(value)};
    const std::optional<Format> format = formatOfMask(mask);
    if (!format)
        m_xml.fail(u"\"%1\" não é uma máscara de formato."_s.arg(mask));
    return {{}, value, *format};
}

Format BandReader::defaultFormat(ValueRef value) const {
    const auto index = static_cast<size_t>(value.index);
    switch (value.source) {
    case Source::Column:
        return m_layout.columns[index].format;
    case Source::Calculation:
        return {Format::Kind::Number, u"###,##0.00"_s};
    case Source::Total:
        return {Format::Kind::Number,
                m_layout.totals[index].kind == Total::Kind::Count ? u"###,##0"_s : u"###,##0.00"_s};
    default:
        return {};
    }
}

// A total is complete only after the last of its rows.
void BandReader::checkAllowed(const QString& name, ValueRef value) const {
    const bool needsTotals =
        value.source == Source::Total || (value.source == Source::Calculation &&
                                          m_layout.calculations[static_cast<size_t>(value.index)].usesTotals);
    if (needsTotals && m_kind != Kind::Foot)
        m_xml.fail(u"o total \"%1\" só pode ser impresso em um rodapé de grupo ou de relatório."_s.arg(name));
}

void BandReader::checkInside(const Band& band, const QRectF& place) const {
    // Sizes are typed with few decimals, so a rounding difference is accepted.
    constexpr double tolerance = dotsPerMillimetre / 10;
    if (place.right() > m_layout.printable().width() + tolerance)
        m_xml.fail(u"o elemento passa da largura da página entre as margens (%1 mm)."_s.arg(
            m_layout.printable().width() / dotsPerMillimetre, 0, 'f', 1));
    if (place.bottom() > band.height + tolerance)
        m_xml.fail(u"o elemento passa da altura da faixa (%1 mm)."_s.arg(band.height / dotsPerMillimetre, 0,
                                                                         'f', 1));
}

} // namespace tarvessa::report
