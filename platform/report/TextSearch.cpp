#include "platform/report/TextSearch.h"

namespace tarvessa::report {

namespace {

QString withoutAccents(const QString& text) {
    QString result;
    for (const QChar c : text.normalized(QString::NormalizationForm_KD))
        if (!c.isMark())
            result.append(c.toLower());
    return result;
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
            if (withoutAccents(texts[static_cast<size_t>(at)].text).contains(plain))
                return Hit{page, at, texts[static_cast<size_t>(at)].place};
    }
    return {};
}

} // namespace tarvessa::report
