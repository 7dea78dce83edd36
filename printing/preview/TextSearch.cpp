#include "printing/preview/TextSearch.h"

#include <algorithm>

namespace tarvessa::report {

namespace {

QString withoutAccents(const QString& text) {
    QString result;
    for (const QChar c : text.normalized(QString::NormalizationForm_KD))
        if (!c.isMark())
            result.append(c.toLower());
    return result;
}

// The place of the text at this index when it contains what is sought: one line, or all lines of a text that
// contains it only across lines; such a text is found at its first line.
std::optional<QRectF> placeOf(const QString& plain, const std::vector<PlacedText>& texts, int index) {
    const auto first = texts.begin() + index;
    const auto hasIt = [&](const PlacedText& text) { return withoutAccents(text.text).contains(plain); };
    if (hasIt(*first))
        return first->place;
    const auto end = first + first->lines;
    if (first->lines == 1 || std::any_of(first, end, hasIt) ||
        !withoutAccents(first->whole.simplified()).contains(plain))
        return {};
    QRectF place;
    for (auto line = first; line != end; ++line)
        place |= line->place;
    return place;
}

} // namespace

std::optional<TextSearch::Found> TextSearch::find(const QString& sought, int page, Direction direction) {
    const QString plain = withoutAccents(sought.trimmed());
    if (plain.isEmpty())
        return {};
    if (plain != m_plain)
        collect(plain);
    if (m_hits.empty())
        return {};
    return m_last ? step(direction) : begin(page, direction);
}

void TextSearch::collect(const QString& plain) {
    m_last.reset();
    m_hits.clear();
    m_plain.clear(); // should a page not be composed, the next search collects again
    for (int page = 0; page < m_report.pageCount(); ++page) {
        const std::vector<PlacedText> texts = m_report.texts(page);
        for (int index = 0; index < static_cast<int>(texts.size()); ++index)
            if (placeOf(plain, texts, index))
                m_hits.push_back({page, index});
    }
    m_plain = plain;
}

TextSearch::Found TextSearch::step(Direction direction) {
    const size_t end = m_hits.size() - 1;
    if (direction == Direction::Forward)
        return *m_last == end ? found(0, true) : found(*m_last + 1, false);
    return *m_last == 0 ? found(end, true) : found(*m_last - 1, false);
}

TextSearch::Found TextSearch::begin(int page, Direction direction) {
    if (direction == Direction::Forward) {
        const auto hit =
            std::find_if(m_hits.begin(), m_hits.end(), [page](Hit hit) { return hit.page >= page; });
        return hit == m_hits.end() ? found(0, true) : found(static_cast<size_t>(hit - m_hits.begin()), false);
    }
    const auto hit =
        std::find_if(m_hits.rbegin(), m_hits.rend(), [page](Hit hit) { return hit.page <= page; });
    return hit == m_hits.rend() ? found(m_hits.size() - 1, true)
                                : found(static_cast<size_t>(m_hits.rend() - hit) - 1, false);
}

TextSearch::Found TextSearch::found(size_t hit, bool wrapped) {
    const auto [page, index] = m_hits[hit];
    const QRectF place = placeOf(m_plain, m_report.texts(page), index).value_or(QRectF());
    m_last = hit;
    return {page, place, static_cast<int>(hit) + 1, static_cast<int>(m_hits.size()), wrapped};
}

} // namespace tarvessa::report
