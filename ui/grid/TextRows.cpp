#include "ui/grid/TextRows.h"

#include <QStringEncoder>

#include <algorithm>
#include <cstring>

namespace tarvessa {

namespace {

// So large that the system gives it apart from other memory: it is there only as far as it is used, it goes
// back when the rows go, and rows never lie among what the driver has read and frees again.
constexpr qsizetype blockBytes = qsizetype{1024} * 1024;
constexpr qsizetype mostBytesPerCharacter = 3; // of UTF-16

// A length is one byte, or this mark and four bytes.
constexpr unsigned char longMark = 0xFF;
constexpr qsizetype mostLengthBytes = 5;

struct Packed {
    const char* text;
    qsizetype bytes;

    const char* end() const { return text + bytes; }
};

Packed packedAt(const char* place) {
    const auto length = static_cast<unsigned char>(*place);
    if (length != longMark)
        return {place + 1, length};
    quint32 bytes = 0;
    std::memcpy(&bytes, place + 1, sizeof bytes);
    return {place + mostLengthBytes, bytes};
}

// These three write a text with its length, and give the place behind it.

char* writeUtf8(QByteArrayView text, char* place) {
    if (text.size() < longMark) {
        *place++ = static_cast<char>(text.size());
    } else {
        const auto bytes = static_cast<quint32>(text.size());
        *place = static_cast<char>(longMark);
        std::memcpy(place + 1, &bytes, sizeof bytes);
        place += mostLengthBytes;
    }
    return std::copy(text.begin(), text.end(), place);
}

char* writeUtf16(QStringView text, char* place) {
    if (text.size() * mostBytesPerCharacter >= longMark)
        return writeUtf8(text.toUtf8(), place);
    char* end = place + 1;
    for (const QChar character : text) {
        constexpr char16_t firstBeyondAscii = 0x80;
        if (character.unicode() >= firstBeyondAscii) {
            end = QStringEncoder(QStringEncoder::Utf8).appendToBuffer(place + 1, text);
            break;
        }
        *end++ = static_cast<char>(character.unicode());
    }
    *place = static_cast<char>(end - place - 1);
    return end;
}

char* write(QAnyStringView text, char* place) {
    return text.visit([place](auto view) {
        if constexpr (std::is_same_v<decltype(view), QStringView>)
            return writeUtf16(view, place);
        else if constexpr (std::is_same_v<decltype(view), QLatin1StringView>)
            return writeUtf8(view.toString().toUtf8(), place);
        else
            return writeUtf8(view, place);
    });
}

} // namespace

void TextRows::clear(int columns) {
    *this = TextRows();
    m_columns = columns;
}

void TextRows::append(std::span<const QAnyStringView> texts) {
    m_rows.push_back(stored(packed(texts)));
}

void TextRows::remove(int row) {
    m_unusedBytes += bytesOf(row);
    m_rows.erase(m_rows.begin() + row);
}

void TextRows::cut(int rows) {
    if (rows == 0)
        return clear(m_columns);
    for (int row = rows; row < size(); ++row)
        m_unusedBytes += bytesOf(row);
    m_rows.resize(static_cast<size_t>(rows));
}

void TextRows::reorder(const std::vector<int>& order) {
    std::vector<char*> rows;
    rows.reserve(order.size());
    for (const int row : order)
        rows.push_back(m_rows[static_cast<size_t>(row)]);
    m_rows = std::move(rows);
}

QUtf8StringView TextRows::at(int row, int column) const {
    Packed packed = packedAt(m_rows[static_cast<size_t>(row)]);
    for (int i = 0; i < column; ++i)
        packed = packedAt(packed.end());
    return {packed.text, packed.bytes};
}

void TextRows::set(int row, int column, QStringView text) {
    std::vector<QAnyStringView> texts(static_cast<size_t>(m_columns));
    for (int i = 0; i < m_columns; ++i)
        texts[static_cast<size_t>(i)] = at(row, i);
    texts[static_cast<size_t>(column)] = text;
    const QByteArrayView changed = packed(texts);
    char*& place = m_rows[static_cast<size_t>(row)];
    const qsizetype before = bytesOf(row);
    if (changed.size() <= before) {
        std::copy(changed.begin(), changed.end(), place);
        m_unusedBytes += before - changed.size();
        return;
    }
    m_unusedBytes += before;
    place = stored(changed);
    if (m_unusedBytes > m_usedBytes / 2)
        dropUnused();
}

// A whole row, good until the next one is packed.
QByteArrayView TextRows::packed(std::span<const QAnyStringView> texts) {
    const auto columns = static_cast<size_t>(m_columns);
    const std::span<const QAnyStringView> kept = texts.first(std::min(texts.size(), columns));
    qsizetype most = m_columns * mostLengthBytes;
    for (const QAnyStringView text : kept)
        most += text.size() * mostBytesPerCharacter;
    if (std::ssize(m_packed) < most)
        m_packed.resize(static_cast<size_t>(most));
    char* end = m_packed.data();
    for (const QAnyStringView text : kept)
        end = write(text, end);
    end = std::fill_n(end, columns - kept.size(), '\0');
    return {m_packed.data(), end};
}

char* TextRows::stored(QByteArrayView row) {
    char* const place = room(row.size());
    std::copy(row.begin(), row.end(), place);
    return place;
}

char* TextRows::room(qsizetype bytes) {
    if (bytes > m_freeBytes) {
        m_freeBytes = std::max(bytes, blockBytes);
        m_blocks.push_back(std::make_unique_for_overwrite<char[]>(static_cast<size_t>(m_freeBytes)));
        m_free = m_blocks.back().get();
    }
    char* const place = m_free;
    m_free += bytes;
    m_freeBytes -= bytes;
    m_usedBytes += bytes;
    return place;
}

qsizetype TextRows::bytesOf(int row) const {
    const char* const start = m_rows[static_cast<size_t>(row)];
    const char* end = start;
    for (int i = 0; i < m_columns; ++i)
        end = packedAt(end).end();
    return end - start;
}

void TextRows::dropUnused() {
    TextRows tight;
    tight.m_columns = m_columns;
    for (int row = 0; row < size(); ++row)
        tight.m_rows.push_back(tight.stored({m_rows[static_cast<size_t>(row)], bytesOf(row)}));
    *this = std::move(tight);
}

} // namespace tarvessa
