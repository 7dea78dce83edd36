#pragma once

#include <QAnyStringView>
#include <QString>

#include <memory>
#include <span>
#include <vector>

namespace tarvessa {

/// Rows of short texts, small enough for 100,000 of them and quick to add: UTF-8, each text behind its
/// length, packed into blocks of memory of their own. All rows have the same number of texts.
class TextRows {
  public:
    int size() const { return static_cast<int>(m_rows.size()); }

    /// Takes all rows out; those added later have so many texts.
    void clear(int columns);

    /// Adds a row; missing texts are empty, surplus ones are dropped.
    void append(std::span<const QAnyStringView> texts);

    void remove(int row);

    /// Takes out the rows behind the first ones.
    void cut(int rows);

    /// Puts the rows into another order: `order` names, for each new place, the row's place until now.
    void reorder(const std::vector<int>& order);

    /// A text where it lies; good until rows are added, changed or taken out.
    QUtf8StringView at(int row, int column) const;

    void set(int row, int column, QStringView text);

  private:
    QByteArrayView packed(std::span<const QAnyStringView> texts);
    char* stored(QByteArrayView row);
    char* room(qsizetype bytes);
    qsizetype bytesOf(int row) const;
    void dropUnused();

    int m_columns = 0;
    std::vector<char*> m_rows;
    std::vector<std::unique_ptr<char[]>> m_blocks;
    char* m_free = nullptr; // what is left of the last block
    qsizetype m_freeBytes = 0;
    qsizetype m_usedBytes = 0;   // of rows there are and rows there were
    qsizetype m_unusedBytes = 0; // of the latter
    std::vector<char> m_packed;  // where rows are put together
};

} // namespace tarvessa
