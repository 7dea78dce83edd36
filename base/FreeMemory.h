#pragma once

namespace tarvessa {

/// Gives freed memory back to the system where the C library would keep it: for after something large and
/// rare.
void returnFreeMemory();

} // namespace tarvessa
