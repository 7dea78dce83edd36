#include "base/SearchText.h"

#include <array>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

// Up to here lie the letters of the alphabets in use; beyond it a letter is only made small.
constexpr size_t tableSize = 0x2000;
constexpr char16_t none = 0;

char16_t formOf(char16_t code) {
    const QChar letter(code);
    if (code == u'´')
        return u'\'';
    if (letter.isMark())
        return none;
    const QString parts = letter.decomposition();
    if (parts.isEmpty() || parts[0].isSpace())
        return letter.toLower().unicode();
    return formOf(parts[0].unicode());
}

const std::array<char16_t, tableSize>& forms() {
    static const auto table = [] {
        std::array<char16_t, tableSize> made{};
        for (size_t code = 0; code < tableSize; ++code)
            made[code] = formOf(static_cast<char16_t>(code));
        return made;
    }();
    return table;
}

} // namespace

void appendSearchForm(QStringView text, QString& form) {
    const auto& table = forms();
    for (const QChar letter : text) {
        const char16_t code = letter.unicode();
        const char16_t plain = code < tableSize ? table[code] : letter.toLower().unicode();
        if (plain != none)
            form.append(QChar(plain));
    }
}

QString searchForm(QStringView text) {
    QString form;
    form.reserve(text.size());
    appendSearchForm(text, form);
    return form;
}

} // namespace tarvessa
