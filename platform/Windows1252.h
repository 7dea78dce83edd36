#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace tarvessa::windows1252 {

/// Text of bytes in the Windows-1252 code page; the five codes it leaves free become C1 controls.
QString decode(const char* bytes, qsizetype length);

/// The code of one character, or nothing when the code page has no such character.
std::optional<unsigned char> codeOf(char32_t character);

/// Bytes of a text, or nothing when a character has no code.
std::optional<QByteArray> encode(const QString& text);

} // namespace tarvessa::windows1252
