#pragma once

#include "bench/support/Table.h"

namespace tarvessa::test {
class PrivateServer;
}

namespace tarvessa::bench {

/// Reports of 1,000, 10,000 and 100,000 rows of twelve columns: to a PDF file against a bare painter and
/// against a text document, to the first page on the screen against the query alone, and the memory of a
/// preview.
QList<Row> printingRows(test::PrivateServer& server);

/// The word on the command line that asks for previewMemory().
inline constexpr const char* previewMemoryWord = "preview-memory";

/// In a process of its own, started by printingRows(): shows a preview of 100,000 rows until all are read and
/// prints the resident megabytes of the process. The process's exit code.
int previewMemory();

} // namespace tarvessa::bench
