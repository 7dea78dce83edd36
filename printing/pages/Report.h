#pragma once

#include "printing/pages/Composer.h"

#include <exception>

namespace tarvessa::report {

/// A report that has been run: its data and its pages. Rows are read in parts, so that the first page can be
/// shown before the last row has arrived. After a failed read every call that needs more rows raises the same
/// error again: a report is never shown or written as complete with rows missing.
class Report {
  public:
    /// Runs `query` on a connection of its own. Raises RuntimeError.
    Report(Layout layout, const QString& connectionString, const QString& query,
           const FormulaValues& formulas, QDateTime printed);
    Report(const Report&) = delete;
    Report& operator=(const Report&) = delete;

    const Layout& layout() const { return m_layout; }
    QString title() const { return m_layout.title; }

    /// Reads until one more page is final, or to the end. Raises RuntimeError.
    void readPage();

    /// Reads for about this many milliseconds. Raises RuntimeError.
    void readFor(int milliseconds);

    /// Reads all rows. Raises RuntimeError.
    void readAll();

    /// True when all rows are read and the number of pages is known.
    bool complete() const { return m_paginator.complete(); }

    /// Pages known so far.
    int pageCount() const { return m_paginator.pageCount(); }

    const DataSource& data() const { return m_data; }

    /// The fonts of the layout with their measures.
    const FontSet& fonts() const { return m_fonts; }

    /// Hands what a page (from 0) shows to the sink. Raises RuntimeError when a value cannot be calculated.
    void compose(int page, PageSink& sink) const { m_composer.compose(page, sink); }

    /// The texts of a page (from 0) in their order of drawing. Raises RuntimeError as compose() does.
    std::vector<PlacedText> texts(int page) const;

  private:
    void readRows(qsizetype rows);

    Layout m_layout;
    DataSource m_data;
    Values m_values;
    FontSet m_fonts;
    Paginator m_paginator;
    Composer m_composer;
    std::exception_ptr m_failure; // of the reading
};

} // namespace tarvessa::report
