#pragma once

class QString;

namespace tarvessa::sheet {

class Source;

/// Writes an XLSX file of one sheet: a bold heading that stays in sight, columns as wide as the source says,
/// texts as texts whatever they begin with, numbers and dates as values with their format. Rows are not kept
/// in memory. Raises RuntimeError: FileNotWritable (also for more rows than a sheet holds), or what the
/// source raises; no file is left then, and one that was there stays.
void saveXlsx(const Source& source, const QString& path);

} // namespace tarvessa::sheet
