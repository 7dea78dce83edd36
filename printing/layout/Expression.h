#pragma once

#include "base/Dinheiro.h"
#include "printing/layout/ValueRef.h"

#include <QString>

#include <functional>
#include <optional>
#include <vector>

namespace tarvessa::report {

/// An arithmetic expression over values of a report: numbers in point form, names, + - * / and parentheses,
/// at most 200 of them (signs included) within each other.
class Expression {
  public:
    using NameLookup = std::function<ValueRef(const QString& name)>;
    using ValueLookup = std::function<std::optional<Dinheiro>(ValueRef value)>;

    /// Reads the text. Gives the problem in Portuguese, without a full stop, when it is not an expression; an
    /// empty text when it is.
    QString parse(const QString& text, const NameLookup& names);

    /// The exact result, rounded once to this many decimal places (0 to 4), halves away from zero; nothing
    /// when a value is missing or a divisor is zero. Raises RuntimeError (overflow).
    std::optional<Dinheiro> evaluate(const ValueLookup& values, int decimals) const;

    /// The values it uses, in the order of the text.
    std::vector<ValueRef> values() const;

  private:
    enum class Operation { Number, Value, Add, Subtract, Multiply, Divide, Negate };
    struct Step {
        Operation operation = Operation::Number;
        Dinheiro number;
        ValueRef value;
    };
    class Parser;

    std::vector<Step> m_steps; // in postfix order
};

} // namespace tarvessa::report
