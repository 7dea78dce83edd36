#include "base/Windows1252.h"

#include <algorithm>
#include <array>

namespace tarvessa::windows1252 {

namespace {

constexpr unsigned char firstSpecial = 0x80;
constexpr unsigned char lastSpecial = 0x9F;

constexpr std::array<char16_t, 32> special = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                              0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                              0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                              0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

} // namespace

std::optional<unsigned char> codeOf(char32_t character) {
    if (character < firstSpecial || (character > lastSpecial && character <= 0xFF))
        return static_cast<unsigned char>(character);
    const auto* found = std::find(special.begin(), special.end(), character);
    if (found == special.end())
        return std::nullopt;
    return static_cast<unsigned char>(firstSpecial + (found - special.begin()));
}

} // namespace tarvessa::windows1252
