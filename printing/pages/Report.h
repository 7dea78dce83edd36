#pragma once

#include "printing/pages/Composer.h"

#include <exception>

class QPainter;
class QPrinter;

namespace tarvessa::report {

/// A report that has been run: its data, its pages, and the ways to write them. Its rows are read on part by
/// part, so that the first page can be shown before the last row is there. Once reading has failed, whatever
/// needs more rows fails with the same error: a report is never written with rows missing.
class Report {
  public:
    /// Runs `query` on a connection of its own. Raises RuntimeError.
    Report(Layout layout, const QString& connectionString, const QString& query,
           const FormulaValues& formulas, QDateTime printed);
    Report(const Report&) = delete;
    Report& operator=(const Report&) = delete;

    const Layout& layout() const { return m_layout; }
    QString title() const { return m_layout.title; }

    /// Reads on until a page more is sure, or to the end. Raises RuntimeError.
    void readPage();

    /// Reads on for about so many milliseconds. Raises RuntimeError.
    void readFor(int milliseconds);

    /// Reads all rows. Raises RuntimeError.
    void readAll();

    /// True when all rows are read and the number of pages is known.
    bool complete() const { return m_paginator.complete(); }

    /// Pages known so far.
    int pageCount() const { return m_paginator.pageCount(); }

    const DataSource& data() const { return m_data; }

    /// Draws a page (from 0); the painter's unit must be the dot and its origin the paper's corner.
    void paint(QPainter& painter, int page) const;

    /// The texts of a page in their order of drawing.
    std::vector<PlacedText> texts(int page) const;

    /// Writes all pages as a PDF file with real text, embedded fonts and the report's title. Raises
    /// RuntimeError when the file cannot be written.
    void savePdf(const QString& path);

    /// Writes the report's data as a CSV file: UTF-8 with byte order mark, ";" between the cells, lines ended
    /// by CR LF. Raises RuntimeError when the file cannot be written.
    void saveCsv(const QString& path);

    /// Prints pages `first` to `last` (from 0) as the printer is set up; pages are scaled to its paper when
    /// that is another than the layout's. Raises RuntimeError when the printer refuses, and for a page that
    /// cannot be composed, then before the printer has been given any.
    void print(QPrinter& printer, int first, int last);

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
