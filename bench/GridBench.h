#pragma once

#include "bench/support/Table.h"

namespace tarvessa::bench {

/// A grid of 100,000 rows as the panel has them: saved as XLSX against a Python library that writes row by
/// row (time, and memory of a process of its own), copied to the clipboard, and searched.
QList<Row> gridRows();

/// The word on the command line that asks for gridSavingMemory().
inline constexpr const char* gridMemoryWord = "grid-memory";

/// In a process of its own, started by gridRows(): fills such a grid, saves it to the path given and prints
/// the highest megabytes of the process. The process's exit code.
int gridSavingMemory();

} // namespace tarvessa::bench
