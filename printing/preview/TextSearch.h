#pragma once

#include "printing/pages/Report.h"

namespace tarvessa::report {

/// A text found on a page.
struct Hit {
    int page = 0;  // from 0
    int index = 0; // among the page's texts
    QRectF place;  // dots from the paper's top left corner
};

/// Looks for a text in a report, whatever its letter case and accents, page by page and round the end to
/// where it began.
class TextSearch {
  public:
    enum class Direction { Forward, Backward };

    /// The next line of text that contains `sought`, or text of several lines that has it across them, after
    /// (or before) text `index` of `page`; an index of -1 begins with that page as a whole. All rows must
    /// have been read. Nothing when no page has it. Raises RuntimeError.
    static std::optional<Hit> find(const Report& report, const QString& sought, int page, int index,
                                   Direction direction);
};

} // namespace tarvessa::report
