#pragma once

#include <QDateTime>

/// The clock of the whole program.
namespace tarvessa::clock {

/// Now, by the machine's clock unless another moment is fixed.
QDateTime now();

/// The date of now().
QDate today();

/// Stops the clock at a moment; an invalid one gives the machine's clock back.
void fix(const QDateTime& moment);

} // namespace tarvessa::clock
