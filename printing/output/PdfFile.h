#pragma once

class QString;

namespace tarvessa::report {

class Report;

/// Writes all pages as a PDF file with real text, embedded fonts and the report's title, after reading the
/// rows that are still missing. Raises RuntimeError: FileNotWritable, or what reading or composing raises; no
/// file is left then.
void savePdf(Report& report, const QString& path);

} // namespace tarvessa::report
