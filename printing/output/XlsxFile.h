#pragma once

class QString;

namespace tarvessa::report {

class Report;

/// Writes the report's rows as an XLSX file, after reading those that are still missing: every column of the
/// query under the heading that the layout gives it. Columns with a format hold numbers and dates where the
/// database does, all others texts. Raises RuntimeError: FileNotWritable, or what reading raises; no file is
/// left then.
void saveXlsx(Report& report, const QString& path);

} // namespace tarvessa::report
