#pragma once

#include "printing/layout/Layout.h"
#include "printing/pages/DataSource.h"
#include "printing/pages/FormulaText.h"

#include <QDateTime>

namespace tarvessa::report {

/// The place on the report for which a value is wanted.
struct Context {
    qsizetype row = -1;               // -1 before the first row of an empty report
    const Dinheiro* totals = nullptr; // in the layout's order; null where no totals can be used
    int page = 0;                     // counted from 1
    int pages = 0;                    // 0 while it is not yet known
};

/// The values of the names used in a layout.
class Values {
  public:
    /// Raises RuntimeError (InvalidLayout) when an element uses a column that the query lacks. Formulas that
    /// the layout does not know are left out; those not given stay empty.
    Values(const Layout& layout, const DataSource& data, const FormulaValues& formulas, QDateTime printed);

    /// The text of an element. Raises RuntimeError (InvalidLayout) for a calculation with a text that is not
    /// a number.
    QString text(const Text& element, const Context& context) const;

    bool holds(const Condition& condition, const Context& context) const;

    /// A column as a number, nothing for NULL or an empty text. Raises RuntimeError (InvalidLayout) for any
    /// other text; `line` is the line of the layout that uses it.
    std::optional<Dinheiro> columnNumber(int column, qsizetype row, int line) const;

    /// What the rows of a group have in common.
    QString groupKey(int group, qsizetype row) const;

    /// The key of a group by initials for the rows whose column does not begin with a letter.
    static constexpr QChar noInitial = u'#';

  private:
    QString raw(ValueRef value, const Context& context) const;
    QString formatted(const Piece& piece, const Context& context) const;
    std::optional<Dinheiro> number(ValueRef value, const Context& context, int line) const;
    std::optional<Dinheiro> numberOf(const QString& text, const QString& name, int line) const;
    std::optional<Dinheiro> calculated(int calculation, const Context& context) const;

    const Layout& m_layout;
    const DataSource& m_data;
    std::vector<int> m_columns;         // in the query, by the layout's order
    std::vector<QString> m_withoutRows; // what each column is when there are no rows
    std::vector<QString> m_formulas;
    QDateTime m_printed;
};

} // namespace tarvessa::report
