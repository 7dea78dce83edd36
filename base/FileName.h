#pragma once

#include <QString>

namespace tarvessa {

/// A title as a file's name: what some file system does not accept in a name becomes "-".
QString fileNameFor(const QString& title);

} // namespace tarvessa
