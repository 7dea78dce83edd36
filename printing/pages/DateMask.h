#pragma once

#include <QString>

namespace tarvessa::report {

/// A date of the database ("2024-02-29", with or without a time) by a mask such as "dd/mm/yyyy". Any other
/// text comes back as it is.
QString dateByMask(const QString& text, const QString& mask);

} // namespace tarvessa::report
