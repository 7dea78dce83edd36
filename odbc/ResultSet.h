#pragma once

#include "odbc/ColumnRoom.h"
#include "odbc/Connection.h"
#include "odbc/Field.h"

#include <QAnyStringView>
#include <QStringList>

#include <vector>

namespace tarvessa::odbc {

/// The rows of one query: static cursor, optimistic concurrency asked for, walked forward from the first row.
/// Rows arrive in blocks into bound buffers; a text that may not fit its buffer is fetched on its own. A
/// result may be released after its connection was closed, but no longer read.
class ResultSet {
  public:
    ResultSet() = default;
    ResultSet(ResultSet&&) = default;
    ResultSet& operator=(ResultSet&&) = default;

    /// Runs the query and stands on its first row, or at the end when there is none; an earlier result is
    /// released. Opens a lost connection again where that is due. Raises RuntimeError with the statement.
    void open(Connection& connection, const QString& sql);

    bool isOpen() const { return m_statement.isAlive(); }

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

    /// What the column can store where it is a table's own; `column` is one that column() gave.
    const ColumnRoom& room(int column) const { return m_columns[static_cast<size_t>(column)].room; }
    const ColumnRoom& room(QStringView name) const { return room(column(name)); }

    /// The cell of the current row. Raises RuntimeError at the end, on a closed result and for an unknown
    /// name; `column` is one that column() gave.
    Field field(int column) const;
    Field field(QStringView name) const { return field(column(name)); }

    /// The text of a cell where it lies, without making one of its own: for walking many rows. Empty for
    /// NULL; good until the row is left. Raises RuntimeError as field() does.
    QAnyStringView textView(int column) const;

  private:
    struct Column {
        SQLLEN cellBytes = 0; // 0: not bound, every cell is fetched on its own
        size_t cell = 0;      // where it starts in a row
        ColumnRoom room;
        mutable QString longText; // what textView gives of a cell fetched on its own
    };

    void describeColumns();
    void layOutRow();
    void bindColumns();
    void fetchBlock(SQLSMALLINT orientation, SQLULEN firstRow);
    const char* row() const { return m_block + m_rowInBlock * m_rowBytes; }
    SQLLEN boundLength(int column) const;
    const char* boundCell(int column) const { return row() + m_columns[static_cast<size_t>(column)].cell; }
    void standOnRowAlone() const;
    Field longCell(int column) const;

    Encoding m_encoding = Encoding::Wide;
    Statement m_statement;
    std::vector<Column> m_columns;
    char* m_block = nullptr; // rows one after the other: the indicators of all columns, then their cells
    size_t m_rowBytes = 0;
    QString m_sql;
    QStringList m_names;
    SQLULEN m_firstRowOfBlock = 0;
    SQLULEN m_rowInBlock = 0;
    SQLULEN m_rowsInBlock = 0;
    mutable bool m_bound = false; // the driver writes into the buffers; not so after a cell fetched alone
    bool m_atEnd = true;
    bool m_empty = true;
};

} // namespace tarvessa::odbc
