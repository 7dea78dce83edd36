#pragma once

#include <QString>

namespace tarvessa {

/// The text without the blanks at its ends; tabs and line breaks are no blanks and stay.
QString trimBlanks(const QString& texto);

} // namespace tarvessa
