#pragma once

class QPrinter;

namespace tarvessa::report {

class Report;

/// Prints pages `first` to `last` (from 0) as the printer is set up, after reading the rows that are still
/// missing. Pages are scaled when the printer's paper is not the layout's. Raises RuntimeError:
/// FileNotWritable when the printer refuses; what reading or composing raises, in that case before anything
/// is sent.
void print(Report& report, QPrinter& printer, int first, int last);

} // namespace tarvessa::report
