#pragma once

#include <QString>

namespace tarvessa::report {

/// A date of the database ("2024-02-29", with or without a time) by a mask such as "dd/mm/yyyy"; empty for
/// the zero date ("0000-00-00"). Any other text is returned unchanged.
QString dateByMask(const QString& text, const QString& mask);

} // namespace tarvessa::report
