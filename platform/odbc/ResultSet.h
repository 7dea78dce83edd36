#pragma once

#include "platform/odbc/Buffer.h"
#include "platform/odbc/Connection.h"
#include "platform/odbc/Field.h"

#include <QStringList>

#include <memory>
#include <vector>

namespace tarvessa::odbc {

/// The rows of one query: static cursor, optimistic concurrency asked for, walked forward from the first row.
/// Rows arrive in blocks into bound buffers; a text that may not fit its buffer is fetched on its own. It
/// may be released after its connection, but not read.
class ResultSet {
  public:
    ResultSet() = default;
    ResultSet(ResultSet&&) = default;
    ResultSet& operator=(ResultSet&&) = default;

    /// Runs the query and stands on its first row, or at the end when there is none; an earlier result is
    /// released. Raises RuntimeError with the statement.
    void open(const Connection& connection, const QString& sql);

    bool isOpen() const { return static_cast<bool>(m_statement); }

    /// True past the last row. Raises RuntimeError on a closed result.
    bool atEnd() const;

    /// Goes to the next row. Raises RuntimeError at the end, on a closed result or when the server is lost.
    void moveNext();

    /// Goes back to the first row. Raises RuntimeError on a closed result.
    void moveFirst();

    /// Releases the result; does nothing on a closed one.
    void close();

    /// The place of a column by its name, letter case ignored; of two with one name, the first. Resolve it
    /// once before a long walk.
    /// Raises RuntimeError when the query has no such column.
    int column(QStringView name) const;

    /// All column names as the query gives them.
    const QStringList& columnNames() const { return m_names; }

    /// The cell of the current row. Raises RuntimeError at the end and for an unknown name.
    Field field(int column) const;
    Field field(QStringView name) const { return field(column(name)); }

  private:
    struct Column {
        SQLLEN cellBytes = 0;  // 0: not bound, every cell is fetched on its own
        char* cells = nullptr; // of one block of rows, in m_cells
        SQLLEN* indicators = nullptr;
    };

    void describeColumns();
    void allocateCells();
    void bindColumns();
    void fetchBlock(SQLSMALLINT orientation, SQLULEN firstRow);
    void standOnRowAlone() const;
    Field longCell(int column) const;

    Encoding m_encoding = Encoding::Wide;
    // The buffers outlive the statement that writes into them.
    Buffer<char> m_cells;
    Buffer<SQLLEN> m_indicators;
    std::vector<Column> m_columns;
    std::unique_ptr<SQLULEN> m_rowsFetched;
    Statement m_statement;
    QString m_sql;
    QStringList m_names;
    SQLULEN m_firstRowOfBlock = 0;
    SQLULEN m_rowInBlock = 0;
    mutable bool m_bound = false; // the driver writes into the buffers; not so after a cell fetched alone
    bool m_atEnd = true;
    bool m_empty = true;
};

} // namespace tarvessa::odbc
