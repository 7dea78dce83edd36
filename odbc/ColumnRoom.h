#pragma once

#include "base/Dinheiro.h"
#include "odbc/Handles.h"

#include <QStringView>

namespace tarvessa::odbc {

/// What a column can store, as far as the driver's description of a result tells. A column that nothing is
/// known of is taken to hold nothing for sure.
class ColumnRoom {
  public:
    ColumnRoom() = default;

    /// From what SQLDescribeCol gives: the SQL type, its size (digits or characters) and its decimals.
    ColumnRoom(SQLSMALLINT type, SQLULEN size, SQLSMALLINT decimals)
        : m_type(type), m_size(size), m_decimals(decimals) {}

    /// Whether the number is surely stored as it is, neither clipped nor rounded.
    bool holds(Dinheiro number) const;

    /// Whether the text is surely stored whole; false for a column of numbers.
    bool holds(QStringView text) const;

  private:
    SQLSMALLINT m_type = SQL_UNKNOWN_TYPE;
    SQLULEN m_size = 0;
    SQLSMALLINT m_decimals = 0;
};

} // namespace tarvessa::odbc
