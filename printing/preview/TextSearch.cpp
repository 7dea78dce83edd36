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

// The place of the text at this index when it has what is sought: one line, or all lines of a text that has
// it only across them, which is then found at its first.
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

std::optional<Hit> TextSearch::find(const Report& report, const QString& sought, int page, int index,
                                    Direction direction) {
    const QString plain = withoutAccents(sought.trimmed());
    const int pages = report.pageCount();
    if (plain.isEmpty() || pages == 0)
        return {};
    const int step = direction == Direction::Forward ? 1 : -1;
    // The first page comes again at the end, for the texts before (or after) the starting point.
    for (int turn = 0; turn <= pages; ++turn, page = (page + step + pages) % pages, index = -1) {
        const std::vector<PlacedText> texts = report.texts(page);
        const auto count = static_cast<int>(texts.size());
        int at = step > 0 ? index + 1 : (index < 0 ? count : index) - 1;
        for (; at >= 0 && at < count; at += step)
            if (const auto place = placeOf(plain, texts, at))
                return Hit{page, at, *place};
    }
    return {};
}

} // namespace tarvessa::report
