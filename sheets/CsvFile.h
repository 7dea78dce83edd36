#pragma once

class QString;

namespace tarvessa::sheet {

class Source;

/// Writes a CSV file: UTF-8 with byte order mark, a line of headings, ";" between the cells, lines ended by
/// CR LF. A text that a spreadsheet would take for a formula gets an apostrophe before it. Raises
/// RuntimeError: FileNotWritable, or what the source raises; no file is left then, and one that was there
/// stays.
void saveCsv(const Source& source, const QString& path);

} // namespace tarvessa::sheet
