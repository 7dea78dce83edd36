#pragma once

#include "printing/pages/FontSet.h"
#include "printing/pages/Values.h"

#include <span>

namespace tarvessa::report {

/// One band on a page.
struct Item {
    const Band* band = nullptr;
    qint32 row = -1;    // -1 on a report without rows
    qint32 totals = -1; // its set of totals; -1 for none
    float top = 0;      // from the paper's top edge
    float height = 0;
    bool striped = false;
};

/// Finds the page breaks of a report from the heights of the bands, row by row as rows are read, and adds up
/// the totals. Nothing is drawn.
///
/// A page break never separates a detail from the heads before it or from the feet after it, nor a group that
/// is to be kept together and fits on one page.
///
/// When the outermost group is one of initials, the rows whose name begins with no letter come first: some
/// sort before the letters and some after them, and they are one group. Pages are then known only after the
/// last row.
class Paginator {
  public:
    Paginator(const Layout& layout, const Values& values, const FontSet& fonts, const DataSource& data);

    /// Takes in the rows that have been read since the last call. Raises RuntimeError: InvalidLayout for a
    /// sum over a text that is not a number, overflow.
    void advance();

    /// The number of pages that will not change any more; all of them when complete().
    int pageCount() const;
    bool complete() const { return m_complete; }

    /// The bands on a page (from 0), without its head and foot.
    std::span<const Item> items(int page) const;
    qsizetype firstRow(int page) const { return m_pages[static_cast<size_t>(page)].firstRow; }
    qsizetype lastRow(int page) const { return m_pages[static_cast<size_t>(page)].lastRow; }

    /// The totals that an item can show, in the layout's order; null for none.
    const Dinheiro* totals(const Item& item) const;

    /// The top of the first band and of the foot of a page, in dots from the paper's top edge.
    double bodyTop(int page) const;
    double footTop() const;

  private:
    struct Page {
        size_t firstItem = 0;
        qint32 firstRow = -1;
        qint32 lastRow = -1;
    };

    // Items that stay on one page, and the number of groups that were open before them.
    struct Block {
        std::vector<Item> items;
        double height = 0;
        int openGroups = 0;
        bool startsPage = false;
    };

    void takeRow(qint32 row);
    void takeRowsByInitial();
    void finish();
    int firstChangedGroup(qint32 row);
    void addTotals(qint32 row);
    void addTo(Dinheiro& sum, Dinheiro value, const Total& total) const;
    qint32 noteTotals();
    void closeGroups(int from, qint32 row);
    void addItem(const Band& band, qint32 row, qint32 totals = -1);
    double heightOf(const Band& band, const Context& context) const;
    const Band* detailFor(qint32 row) const;

    void endBlock();
    void endChunk();
    void place(const Block& block);
    void beginPage(const Block& block);
    void put(Item item);

    const Layout& m_layout;
    const Values& m_values;
    const FontSet& m_fonts;
    const DataSource& m_data;
    int m_keptGroup = -1; // the outermost group that is kept together
    double m_pageHeight = 0;

    std::vector<Item> m_items;
    std::vector<Page> m_pages;
    std::vector<Dinheiro> m_noted; // sets of totals, one after the other
    qint32 m_notedSets = 0;

    qint32 m_taken = 0;
    qint32 m_lastRow = -1; // the row taken last
    bool m_complete = false;
    std::vector<QString> m_groupKeys;
    std::vector<Dinheiro> m_totals;
    qsizetype m_detailsInGroup = 0;
    Block m_block;
    std::vector<Block> m_chunk; // blocks of a group that is to be kept together
    double m_chunkHeight = 0;
    bool m_chunkTooTall = false;
    double m_y = 0;
    bool m_pageHasItems = false;
};

} // namespace tarvessa::report
