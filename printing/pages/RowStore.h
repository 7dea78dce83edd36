#pragma once

#include <QByteArrayView>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace tarvessa::report {

/// The rows of a report, packed into large blocks because a long report stays in memory while its preview is
/// open.
class RowStore {
  public:
    /// Adds a row; an empty optional is NULL.
    void append(const std::vector<std::optional<QByteArray>>& cells);

    qsizetype size() const { return static_cast<qsizetype>(m_rows.size()); }

    /// A cell as UTF-8, a null view for NULL; valid as long as the store. The row must be below size(), the
    /// column below the number of cells given to append().
    QByteArrayView bytes(qsizetype row, int column) const;
    QString text(qsizetype row, int column) const;
    bool isNull(qsizetype row, int column) const { return bytes(row, column).isNull(); }

  private:
    char* reserve(size_t bytes);

    std::vector<std::unique_ptr<char[]>> m_blocks;
    size_t m_left = 0; // free bytes at the end of the last block
    char* m_next = nullptr;
    std::vector<const char*> m_rows;
};

} // namespace tarvessa::report
