#include "printing/pages/Paginator.h"

#include "base/RuntimeError.h"

#include <algorithm>

namespace tarvessa::report {

namespace {

// Lengths converted from millimetres do not add up exactly.
constexpr double roundingDots = 2;

double heightOfBand(const std::optional<Band>& band) {
    return band ? band->height : 0;
}

} // namespace

Paginator::Paginator(const Layout& layout, const Values& values, const FontSet& fonts, const DataSource& data)
    : m_layout(layout), m_values(values), m_fonts(fonts), m_data(data), m_groupKeys(layout.groups.size()),
      m_totals(layout.totals.size()) {
    const auto kept = std::find_if(layout.groups.begin(), layout.groups.end(),
                                   [](const Group& group) { return group.keepTogether; });
    if (kept != layout.groups.end())
        m_keptGroup = static_cast<int>(kept - layout.groups.begin());
    m_pages.push_back({});
    m_y = bodyTop(0);
    m_pageHeight = footTop() - bodyTop(1);
    m_pageHasItems = layout.reportHead.has_value();
}

double Paginator::bodyTop(int page) const {
    return m_layout.printable().top() + heightOfBand(m_layout.pageHead) +
           (page == 0 ? heightOfBand(m_layout.reportHead) : 0);
}

double Paginator::footTop() const {
    return m_layout.printable().bottom() - heightOfBand(m_layout.pageFoot);
}

void Paginator::advance() {
    if (!m_layout.groups.empty() && m_layout.groups.front().byInitial) {
        if (m_data.complete() && !m_complete)
            takeRowsByInitial();
    } else {
        while (m_taken < m_data.rows().size())
            takeRow(m_taken++);
    }
    if (m_data.complete() && !m_complete)
        finish();
}

void Paginator::takeRowsByInitial() {
    std::vector<qint32> withInitial;
    for (qint32 row = 0; row < m_data.rows().size(); ++row)
        if (m_values.groupKey(0, row) == Values::noInitial)
            takeRow(row);
        else
            withInitial.push_back(row);
    for (const qint32 row : withInitial)
        takeRow(row);
}

int Paginator::pageCount() const {
    return static_cast<int>(m_pages.size()) - (m_complete ? 0 : 1);
}

std::span<const Item> Paginator::items(int page) const {
    const auto index = static_cast<size_t>(page);
    const size_t end = index + 1 < m_pages.size() ? m_pages[index + 1].firstItem : m_items.size();
    return std::span(m_items).subspan(m_pages[index].firstItem, end - m_pages[index].firstItem);
}

const Dinheiro* Paginator::totals(const Item& item) const {
    return item.totals < 0 ? nullptr : m_noted.data() + static_cast<size_t>(item.totals) * m_totals.size();
}

void Paginator::takeRow(qint32 row) {
    const int changed = firstChangedGroup(row);
    const auto groups = static_cast<int>(m_layout.groups.size());
    const bool isFirst = m_lastRow < 0;
    if (!isFirst) {
        closeGroups(changed, m_lastRow);
        endBlock();
        if (changed <= m_keptGroup)
            endChunk();
    }
    m_block = {};
    m_block.openGroups = changed;
    if (changed < groups || isFirst)
        m_detailsInGroup = 0;
    for (int group = changed; group < groups; ++group) {
        const Group& described = m_layout.groups[static_cast<size_t>(group)];
        m_block.startsPage |= described.startsPage && !isFirst;
        if (described.head)
            addItem(*described.head, row);
    }
    addTotals(row);
    if (const Band* detail = detailFor(row))
        addItem(*detail, row);
    m_lastRow = row;
}

void Paginator::finish() {
    if (m_lastRow >= 0)
        closeGroups(0, m_lastRow);
    else if (m_layout.noData)
        addItem(*m_layout.noData, -1);
    if (m_layout.reportFoot)
        addItem(*m_layout.reportFoot, m_lastRow, noteTotals());
    endBlock();
    endChunk();
    m_complete = true;
}

// The outermost group that this row begins; the number of groups when it begins none.
int Paginator::firstChangedGroup(qint32 row) {
    auto changed = static_cast<int>(m_layout.groups.size());
    for (int group = static_cast<int>(m_layout.groups.size()) - 1; group >= 0; --group) {
        QString key = m_values.groupKey(group, row);
        QString& last = m_groupKeys[static_cast<size_t>(group)];
        if (m_lastRow < 0 || key != last) {
            last = std::move(key);
            changed = group;
        }
    }
    return changed;
}

void Paginator::addTotals(qint32 row) {
    for (size_t i = 0; i < m_totals.size(); ++i) {
        const Total& total = m_layout.totals[i];
        if (total.kind == Total::Kind::Count)
            m_totals[i] += Dinheiro(1);
        else if (const auto value = m_values.columnNumber(total.of->index, row, total.line))
            addTo(m_totals[i], *value, total);
    }
}

void Paginator::addTo(Dinheiro& sum, Dinheiro value, const Total& total) const {
    try {
        sum += value;
    } catch (const RuntimeError& error) {
        raiseAtLine(m_layout.fileName, total.line, total.name, error);
    }
}

qint32 Paginator::noteTotals() {
    m_noted.insert(m_noted.end(), m_totals.begin(), m_totals.end());
    return m_notedSets++;
}

void Paginator::closeGroups(int from, qint32 row) {
    const auto groups = static_cast<int>(m_layout.groups.size());
    if (from >= groups)
        return;
    const bool hasFoot = std::any_of(m_layout.groups.begin() + from, m_layout.groups.end(),
                                     [](const Group& group) { return group.foot.has_value(); });
    const qint32 totals = hasFoot ? noteTotals() : -1;
    for (int group = groups - 1; group >= from; --group)
        if (const auto& foot = m_layout.groups[static_cast<size_t>(group)].foot)
            addItem(*foot, row, totals);
    for (size_t i = 0; i < m_totals.size(); ++i)
        if (m_layout.totals[i].group >= from)
            m_totals[i] = Dinheiro();
}

void Paginator::addItem(const Band& band, qint32 row, qint32 totals) {
    Item item{&band, row, totals, 0, 0, false};
    if (band.stripe.isValid())
        item.striped = m_detailsInGroup++ % 2 == 1;
    const double height = heightOf(band, {row, this->totals(item), 0, 0});
    item.height = static_cast<float>(height);
    m_block.height += height;
    m_block.items.push_back(item);
}

double Paginator::heightOf(const Band& band, const Context& context) const {
    if (!band.hasWrappingText())
        return band.height;
    double growth = 0;
    for (const Text& text : band.texts) {
        if (!text.wraps)
            continue;
        const QString content = m_values.text(text, context);
        if (m_fonts.surelyFits(text.font, content, text.place.width()) && !content.contains(u'\n'))
            continue;
        const auto lines = m_fonts.wrap(text.font, content, text.place.width()).size();
        growth = qMax(growth, static_cast<double>(lines - 1) * m_fonts.lineHeight(text.font));
    }
    return qMin(band.height + growth, m_pageHeight);
}

const Band* Paginator::detailFor(qint32 row) const {
    const Context context{row, nullptr, 0, 0};
    const auto found =
        std::find_if(m_layout.details.begin(), m_layout.details.end(), [&](const Band& detail) {
            return !detail.when || m_values.holds(*detail.when, context);
        });
    return found == m_layout.details.end() ? nullptr : &*found;
}

void Paginator::endBlock() {
    if (m_keptGroup < 0 || m_chunkTooTall) {
        place(m_block);
    } else {
        m_chunkHeight += m_block.height;
        m_chunk.push_back(std::move(m_block));
        if (m_chunkHeight > m_pageHeight + roundingDots) {
            for (const Block& block : m_chunk)
                place(block);
            m_chunk.clear();
            m_chunkTooTall = true;
        }
    }
    m_block = {};
}

void Paginator::endChunk() {
    if (!m_chunk.empty()) {
        Block whole = std::move(m_chunk.front());
        for (size_t i = 1; i < m_chunk.size(); ++i)
            whole.items.insert(whole.items.end(), m_chunk[i].items.begin(), m_chunk[i].items.end());
        whole.height = m_chunkHeight;
        place(whole);
    }
    m_chunk.clear();
    m_chunkHeight = 0;
    m_chunkTooTall = false;
}

void Paginator::place(const Block& block) {
    if (block.items.empty())
        return;
    if (m_pageHasItems && (block.startsPage || m_y + block.height > footTop() + roundingDots))
        beginPage(block);
    for (const Item& item : block.items) {
        // Only a block taller than a page is split.
        if (m_pageHasItems && m_y + static_cast<double>(item.height) > footTop() + roundingDots)
            beginPage({{item}, 0, block.openGroups, false});
        put(item);
        m_pageHasItems = true;
    }
}

// The heads of groups that continue are repeated at the top of the page.
void Paginator::beginPage(const Block& block) {
    m_pages.push_back({m_items.size(), -1, -1});
    m_y = bodyTop(1);
    m_pageHasItems = false;
    for (int group = 0; group < block.openGroups; ++group) {
        const auto& head = m_layout.groups[static_cast<size_t>(group)].head;
        if (head && head->repeats) {
            const qint32 row = block.items.front().row;
            put({&*head, row, -1, 0, static_cast<float>(heightOf(*head, {row, nullptr, 0, 0})), false});
        }
    }
}

void Paginator::put(Item item) {
    item.top = static_cast<float>(m_y);
    m_y += static_cast<double>(item.height);
    Page& page = m_pages.back();
    if (page.firstRow < 0)
        page.firstRow = item.row;
    page.lastRow = item.row;
    m_items.push_back(item);
}

} // namespace tarvessa::report
