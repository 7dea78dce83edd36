#include "printing/pages/RowStore.h"

#include <algorithm>
#include <cstring>

namespace tarvessa::report {

namespace {

constexpr size_t blockBytes = size_t{256} * 1024;

// Precedes the bytes of each cell: their number plus one, 0 for NULL.
using Length = quint32;

} // namespace

void RowStore::append(const std::vector<std::optional<QByteArray>>& cells) {
    size_t needed = 0;
    for (const auto& cell : cells)
        needed += sizeof(Length) + (cell ? static_cast<size_t>(cell->size()) : 0);
    char* at = reserve(needed);
    m_rows.push_back(at);
    for (const auto& cell : cells) {
        const Length length = cell ? static_cast<Length>(cell->size()) + 1 : 0;
        std::memcpy(at, &length, sizeof length);
        at += sizeof length;
        if (length > 1) {
            std::memcpy(at, cell->constData(), length - 1);
            at += length - 1;
        }
    }
}

QByteArrayView RowStore::bytes(qsizetype row, int column) const {
    const char* at = m_rows[static_cast<size_t>(row)];
    Length length = 0;
    for (int i = 0;; ++i) {
        std::memcpy(&length, at, sizeof length);
        at += sizeof length;
        if (i == column)
            return length == 0 ? QByteArrayView() : QByteArrayView(at, static_cast<qsizetype>(length) - 1);
        if (length > 0)
            at += length - 1;
    }
}

QString RowStore::text(qsizetype row, int column) const {
    return QString::fromUtf8(bytes(row, column));
}

char* RowStore::reserve(size_t bytes) {
    if (bytes > m_left) {
        m_left = std::max(bytes, blockBytes);
        m_blocks.push_back(std::make_unique_for_overwrite<char[]>(m_left));
        m_next = m_blocks.back().get();
    }
    char* result = m_next;
    m_next += bytes;
    m_left -= bytes;
    return result;
}

} // namespace tarvessa::report
