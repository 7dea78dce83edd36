#include "printing/pages/Values.h"

#include "base/Formata.h"
#include "base/RuntimeError.h"
#include "printing/layout/QueryText.h"
#include "printing/pages/DateMask.h"
#include "printing/pages/NumberMask.h"

using namespace Qt::StringLiterals;

namespace tarvessa::report {

namespace {

// The first letter of a name, without accent and in upper case. A leading blank is not skipped, because a
// query that sorts by the name puts it before all letters.
QString initialOf(const QString& text) {
    const QString name = text.normalized(QString::NormalizationForm_D);
    return QString(name.isEmpty() || !name[0].isLetter() ? Values::noInitial : name[0].toUpper());
}

} // namespace

Values::Values(const Layout& layout, const DataSource& data, const FormulaValues& formulas, QDateTime printed)
    : m_layout(layout), m_data(data), m_printed(std::move(printed)) {
    for (const Column& column : layout.columns) {
        const int place = data.column(column.name);
        if (place < 0 && column.required)
            raiseLayoutError(layout.fileName, column.line,
                             u"a consulta não tem a coluna \"%1\"."_s.arg(column.name));
        m_columns.push_back(place);
        m_withoutRows.push_back(column.isFixed ? comparedValue(data.query(), column.name) : QString());
    }
    for (const QString& name : layout.formulas)
        m_formulas.push_back(formulas.value(name.toLower()));
}

QString Values::text(const Text& element, const Context& context) const {
    if (element.pieces.size() == 1)
        return formatted(element.pieces.front(), context);
    QString result;
    for (const Piece& piece : element.pieces) {
        const QString part = formatted(piece, context);
        if (element.isOptional && part.isEmpty())
            return {};
        result += part;
    }
    return result;
}

QString Values::formatted(const Piece& piece, const Context& context) const {
    if (!piece.value)
        return piece.fixed;
    if (piece.value->source == Source::Total)
        return Formata(context.totals[piece.value->index], piece.format.mask);
    if (piece.value->source == Source::Calculation) {
        const std::optional<Dinheiro> result = calculated(piece.value->index, context);
        return result ? Formata(*result, piece.format.mask) : QString();
    }
    QString text = raw(*piece.value, context);
    if (piece.format.kind == Format::Kind::AsItStands || text.isEmpty())
        return text;
    if (piece.format.kind == Format::Kind::Date)
        return dateByMask(text, piece.format.mask);
    return numberByMask(text, piece.format.mask);
}

QString Values::raw(ValueRef value, const Context& context) const {
    const auto index = static_cast<size_t>(value.index);
    switch (value.source) {
    case Source::Column:
        return context.row < 0 ? m_withoutRows[index] : m_data.rows().text(context.row, m_columns[index]);
    case Source::Formula:
        return m_formulas[index];
    case Source::Group:
        return context.row < 0 ? QString() : groupKey(value.index, context.row);
    case Source::Page:
        return QString::number(context.page);
    case Source::Pages:
        return context.pages > 0 ? QString::number(context.pages) : u"…"_s;
    case Source::Date:
        return m_printed.date().toString(u"dd/MM/yyyy");
    case Source::Time:
        return m_printed.time().toString(u"HH:mm");
    case Source::Title:
        return m_layout.title;
    case Source::Total:
    case Source::Calculation:
        break;
    }
    return {};
}

bool Values::holds(const Condition& condition, const Context& context) const {
    const QString text = raw(condition.value, context);
    return condition.begins ? text.startsWith(condition.text) : text == condition.text;
}

std::optional<Dinheiro> Values::columnNumber(int column, qsizetype row, int line) const {
    const auto index = static_cast<size_t>(column);
    return numberOf(m_data.rows().text(row, m_columns[index]), m_layout.columns[index].name, line);
}

QString Values::groupKey(int group, qsizetype row) const {
    const Group& described = m_layout.groups[static_cast<size_t>(group)];
    const QString text = m_data.rows().text(row, m_columns[static_cast<size_t>(described.by.index)]);
    return described.byInitial ? initialOf(text) : text;
}

std::optional<Dinheiro> Values::number(ValueRef value, const Context& context, int line) const {
    if (value.source == Source::Total)
        return context.totals[value.index];
    if (value.source == Source::Calculation)
        return calculated(value.index, context);
    if (value.source == Source::Formula)
        return numberOf(raw(value, context), m_layout.formulas[static_cast<size_t>(value.index)], line);
    return context.row < 0 ? std::nullopt : columnNumber(value.index, context.row, line);
}

std::optional<Dinheiro> Values::numberOf(const QString& text, const QString& name, int line) const {
    if (text.trimmed().isEmpty())
        return {};
    try {
        return Dinheiro::dePonto(text);
    } catch (const RuntimeError& error) {
        raiseLayoutError(m_layout.fileName, line, u"\"%1\": %2"_s.arg(name, error.text()));
    }
}

std::optional<Dinheiro> Values::calculated(int calculation, const Context& context) const {
    const Calculation& described = m_layout.calculations[static_cast<size_t>(calculation)];
    bool isLookingUp = false;
    const auto lookUp = [&](ValueRef value) {
        isLookingUp = true;
        const std::optional<Dinheiro> found = number(value, context, described.line);
        isLookingUp = false;
        return found;
    };
    try {
        return described.expression.evaluate(lookUp, described.decimals);
    } catch (const RuntimeError& error) {
        if (isLookingUp)
            throw; // already names its place
        raiseAtLine(m_layout.fileName, described.line, described.name, error);
    }
}

} // namespace tarvessa::report
