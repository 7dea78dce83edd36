#pragma once

namespace tarvessa {

/// What a grid's column holds. Text stays text wherever it is copied or saved; numbers (in Brazilian form),
/// percentages (with or without "%") and dates (dd/mm/yyyy) become values where a cell shows one. A column of
/// buttons is neither copied nor saved.
enum class ColumnKind { Text, Number, Percentage, Date, Button };

} // namespace tarvessa
