#pragma once

#include <cstddef>
#include <memory>
#include <utility>

namespace tarvessa::odbc {

/// Memory that is used again and again: it grows to the most asked for. Its contents are whatever was there.
template <typename T>
class Buffer {
  public:
    Buffer() = default;
    Buffer(Buffer&& other) noexcept
        : m_items(std::move(other.m_items)), m_count(std::exchange(other.m_count, 0)) {}
    Buffer& operator=(Buffer&& other) noexcept {
        std::swap(m_items, other.m_items);
        std::swap(m_count, other.m_count);
        return *this;
    }

    size_t bytes() const { return m_count * sizeof(T); }

    /// Room for `count` items; what an earlier call gave may be gone.
    T* room(size_t count) {
        if (count > m_count) {
            m_items = std::make_unique_for_overwrite<T[]>(count);
            m_count = count;
        }
        return m_items.get();
    }

  private:
    std::unique_ptr<T[]> m_items;
    size_t m_count = 0;
};

} // namespace tarvessa::odbc
