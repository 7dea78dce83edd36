#pragma once

#include <QString>

namespace tarvessa {

/// Writes one line for whoever looks after the program: to the standard error, on Windows to the debug
/// output.
void tellDeveloper(const QString& line);

} // namespace tarvessa
