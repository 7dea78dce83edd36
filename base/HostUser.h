#pragma once

#include <QString>

namespace tarvessa {

/// The name of the operating system's user who runs the program; empty when the system knows none.
QString hostUserName();

} // namespace tarvessa
