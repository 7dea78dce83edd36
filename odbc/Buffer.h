#pragma once

#include <cstddef>
#include <memory>
#include <utility>

namespace tarvessa::odbc {

/// Memory that is used again and again: it grows to the most asked for. Its contents are whatever was there.
class Buffer {
  public:
    Buffer() = default;
    Buffer(Buffer&& other) noexcept
        : m_memory(std::move(other.m_memory)), m_bytes(std::exchange(other.m_bytes, 0)) {}
    Buffer& operator=(Buffer&& other) noexcept {
        std::swap(m_memory, other.m_memory);
        std::swap(m_bytes, other.m_bytes);
        return *this;
    }

    size_t bytes() const { return m_bytes; }

    /// Room for so many bytes; what an earlier call gave may be gone.
    char* room(size_t bytes) {
        if (bytes > m_bytes) {
            m_memory = std::make_unique_for_overwrite<char[]>(bytes);
            m_bytes = bytes;
        }
        return m_memory.get();
    }

  private:
    std::unique_ptr<char[]> m_memory;
    size_t m_bytes = 0;
};

} // namespace tarvessa::odbc
