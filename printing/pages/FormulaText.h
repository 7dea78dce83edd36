#pragma once

#include <QHash>
#include <QString>

namespace tarvessa::report {

/// Values by the formulas' names in lower case; a number is its text in point form.
using FormulaValues = QHash<QString, QString>;

/// Adds what a formula slot says: "name='text'" or "name=number". The text is all between the first and the
/// last quote, so that a name with an apostrophe can be printed. Raises RuntimeError (TypeMismatch) for a
/// text that is neither.
void addFormula(const QString& slotText, FormulaValues& values);

} // namespace tarvessa::report
