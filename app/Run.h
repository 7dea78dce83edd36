#pragma once

namespace tarvessa {

/// The program from its start to its end: opens the panel and runs until it is closed, or ends at once when
/// the database cannot be reached. Gives the process's exit code.
int run();

} // namespace tarvessa
