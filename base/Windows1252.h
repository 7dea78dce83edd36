#pragma once

#include <optional>

namespace tarvessa::windows1252 {

/// The code of one character in the Windows-1252 code page, or nothing when it has no such character.
std::optional<unsigned char> codeOf(char32_t character);

} // namespace tarvessa::windows1252
