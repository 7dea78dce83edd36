#pragma once

#include "printing/layout/Layout.h"

#include <QHash>

namespace tarvessa::report {

/// The names that a layout's elements may use; letter case does not matter. A name that is not declared is a
/// column of the query, which is looked for when the query is run.
class LayoutNames {
  public:
    /// Collects the names of all formulas, totals, calculations and groups of the file, so that an element
    /// can use one that is declared further down. Raises RuntimeError (InvalidLayout) for a name given twice
    /// and for contents that are not well-formed XML.
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
