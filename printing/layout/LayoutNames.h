#pragma once

#include "printing/layout/Layout.h"

#include <QHash>

namespace tarvessa::report {

/// The names that a layout's elements may use. Letter case does not matter. What is declared nowhere is a
/// column of the query, and whether the query has it shows when it is run.
class LayoutNames {
  public:
    /// Notes the names of all formulas, totals, calculations and groups in the file, so that an element can
    /// use what is declared further down. Raises RuntimeError (InvalidLayout) for a name given twice.
    LayoutNames(const QString& fileName, const QByteArray& contents);

    /// The value of this name; adds a column to `columns` for an undeclared one. `line` is where it is used.
    ValueRef lookup(const QString& name, int line, std::vector<Column>& columns) const;

  private:
    QHash<QString, ValueRef> m_declared;
};

/// The column of this name, which the query must have; added to `columns` when missing.
ValueRef requiredColumn(const QString& name, int line, std::vector<Column>& columns);

/// The place of the column among `columns`, where it is added when missing.
int columnPlace(const QString& name, int line, std::vector<Column>& columns);

} // namespace tarvessa::report
