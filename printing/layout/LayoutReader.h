#pragma once

#include "printing/layout/Layout.h"

namespace tarvessa::report {

/// Reads a layout file. Raises RuntimeError: FileNotFound when there is no such file, InvalidLayout with
/// file, line and problem when its contents are not a valid layout, InvalidLayout when it is not a regular
/// file.
Layout readLayout(const QString& path);

/// The display format that a mask stands for: none for "", a number for one of "#", "0", "," and "." only, a
/// date for "dd/mm/yyyy" and "dd/mm/yy". Nothing for any other text.
std::optional<Format> formatOfMask(const QString& mask);

} // namespace tarvessa::report
