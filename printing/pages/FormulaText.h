#pragma once

#include <QHash>
#include <QString>

namespace tarvessa::report {

/// Values by the formulas' names in lower case; a number is its text in point form.
using FormulaValues = QHash<QString, QString>;

/// Adds the value of a formula slot, "name='text'" or "name=number". The text is everything between the first
/// and the last quote, so that a name with an apostrophe can be printed. Raises RuntimeError (TypeMismatch)
/// for a slot of any other form.
void addFormula(const QString& slotText, FormulaValues& values);

} // namespace tarvessa::report
