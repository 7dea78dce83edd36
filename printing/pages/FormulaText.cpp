#include "printing/pages/FormulaText.h"

#include "base/Dinheiro.h"
#include "base/RuntimeError.h"

using namespace Qt::StringLiterals;

namespace tarvessa::report {

namespace {

bool isNumber(const QString& text) {
    try {
        Dinheiro::dePonto(text);
        return !text.isEmpty();
    } catch (const RuntimeError&) {
        return false;
    }
}

} // namespace

void addFormula(const QString& slotText, FormulaValues& values) {
    const qsizetype equals = slotText.indexOf(u'=');
    const QString name = slotText.first(qMax<qsizetype>(equals, 0)).trimmed().toLower();
    const QString value = slotText.sliced(equals + 1).trimmed();
    const bool isText = value.size() >= 2 && value.startsWith(u'\'') && value.endsWith(u'\'');
    if (name.isEmpty() || (!isText && !isNumber(value)))
        throw RuntimeError(ErrorNumber::TypeMismatch,
                           u"A fórmula do relatório não pode ser entendida: %1"_s.arg(slotText));
    values.insert(name, isText ? value.sliced(1, value.size() - 2) : value);
}

} // namespace tarvessa::report
