#pragma once

#include "printing/layout/Layout.h"
#include "printing/pages/DataSource.h"
#include "printing/pages/FormulaText.h"

#include <QDateTime>

namespace tarvessa::report {

/// Where on the report a value is asked for.
struct Context {
    qsizetype row = -1;               // -1 before the first row of an empty report
    const Dinheiro* totals = nullptr; // in the layout's order; null where totals may not be used
    int page = 0;                     // counted from 1
    int pages = 0;                    // 0 while it is not yet known
};

/// Gives the values that the names of a layout stand for.
class Values {
  public:
    /// Raises RuntimeError (InvalidLayout) when an element uses a column that the query lacks. Formulas that
    /// the layout does not know are left out; those not given stay empty.
    Values(const Layout& layout, const DataSource& data, const FormulaValues& formulas, QDateTime printed);

    /// The text of an element. Raises RuntimeError (InvalidLayout) for a calculation over what is no number.
    QString text(const Text& element, const Context& context) const;

    bool holds(const Condition& condition, const Context& context) const;

    /// A column as a number, nothing for NULL or an empty text. Raises RuntimeError (InvalidLayout) when it
    /// is none; `line` is where the layout asks for it.
    std::optional<Dinheiro> columnNumber(int column, qsizetype row, int line) const;

    /// What the rows of a group have in common.
    QString groupKey(int group, qsizetype row) const;

  private:
    QString raw(ValueRef value, const Context& context) const;
    QString formatted(const Piece& piece, const Context& context) const;
    std::optional<Dinheiro> number(ValueRef value, const Context& context, int line) const;
    std::optional<Dinheiro> numberOf(const QString& text, const QString& name, int line) const;
    std::optional<Dinheiro> calculated(int calculation, const Context& context) const;

    const Layout& m_layout;
    const DataSource& m_data;
    std::vector<int> m_columns; // in the query, by the layout's order
    std::vector<QString> m_formulas;
    QDateTime m_printed;
};

} // namespace tarvessa::report
