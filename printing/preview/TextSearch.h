#pragma once

#include "printing/pages/Report.h"

namespace tarvessa::report {

/// Looks for a text in a report, ignoring letter case and accents. A place that has it is one line of text,
/// or a text of several lines that has it only across them.
class TextSearch {
  public:
    enum class Direction { Forward, Backward };

    struct Found {
        int page = 0;         // from 0
        QRectF place;         // dots from the paper's top left corner
        int number = 0;       // among all places, from 1
        int count = 0;        // of all places
        bool wrapped = false; // the search has gone past the end or the beginning of the report
    };

    explicit TextSearch(const Report& report) : m_report(report) {}

    /// The place after (or before) the one found last; the first (or last) one on `page` (from 0) or beyond
    /// it when the text is another one or startAgain() was called. All rows must have been read. Nothing when
    /// no page has the text. Raises RuntimeError when a value cannot be calculated.
    std::optional<Found> find(const QString& sought, int page, Direction direction);

    /// Forgets the place found last.
    void startAgain() { m_last.reset(); }

  private:
    struct Hit {
        int page = 0;
        int index = 0; // among the page's texts
    };

    void collect(const QString& plain);
    Found step(Direction direction);
    Found begin(int page, Direction direction);
    Found found(size_t hit, bool wrapped);

    const Report& m_report;
    QString m_plain; // of the hits
    std::vector<Hit> m_hits;
    std::optional<size_t> m_last;
};

} // namespace tarvessa::report
