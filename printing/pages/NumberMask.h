#pragma once

#include <QString>

namespace tarvessa::report {

/// A number of the database in point form ("1234.50") by a mask such as "###,##0.00"; a per cent sign at its
/// end is kept. A number beyond the range of Dinheiro keeps its digits and gets a decimal comma. Any other
/// text is returned unchanged.
QString numberByMask(const QString& text, const QString& mask);

} // namespace tarvessa::report
