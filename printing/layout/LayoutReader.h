#pragma once

#include "printing/layout/Layout.h"

namespace tarvessa::report {

/// Reads a layout file. Raises RuntimeError: FileNotFound when there is no such file, InvalidLayout with
/// file, line and problem when it is no layout or says something that no layout can say.
Layout readLayout(const QString& path);

/// A display format: "" for none, a number mask made of "#", "0", "," and ".", or a date mask. Nothing for
/// any other text.
std::optional<Format> formatOfMask(const QString& mask);

} // namespace tarvessa::report
