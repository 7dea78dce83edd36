#pragma once

#include <QDateTime>

/// The clock of the whole program.
namespace tarvessa::clock {

/// Now, in whole seconds of local time, by the machine's clock unless another moment is fixed. For one
/// thread.
QDateTime now();

/// The date of now().
QDate today();

/// Stops the clock at a moment; an invalid one gives the machine's clock back.
void fix(const QDateTime& moment);

} // namespace tarvessa::clock
