#pragma once

class QString;

namespace tarvessa::report {

class Report;

/// Writes the report's rows as a CSV file, after reading those that are still missing: every column of the
/// query under the heading that the layout gives it. UTF-8 with byte order mark, ";" between the cells, lines
/// ended by CR LF. Columns with a format are written as printed but without points between the thousands, all
/// others as the database has them. Raises RuntimeError: FileNotWritable, or what reading raises; no file is
/// left then.
void saveCsv(Report& report, const QString& path);

} // namespace tarvessa::report
