#pragma once

#include <QString>

namespace tarvessa::sheet {

/// A text as a spreadsheet may read it from a CSV file: one that would be taken for a formula or a command,
/// because it begins with "=", "+", "-", "@", a tab or a line break, gets an apostrophe before it. Signed
/// numbers, with decimals and a per cent sign, are returned unchanged.
QString withoutFormula(const QString& text);

} // namespace tarvessa::sheet
