#pragma once

#include <QString>

namespace tarvessa::report {

/// A number of the database in point form ("1234.50"; with a per cent sign at its end, which stays) by a mask
/// such as "###,##0.00". One that is too large for four decimal places keeps its digits and gets the decimal
/// comma only. Any other text comes back as it is.
QString numberByMask(const QString& text, const QString& mask);

} // namespace tarvessa::report
