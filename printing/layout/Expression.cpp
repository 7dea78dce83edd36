#include "printing/layout/Expression.h"

#include "base/RuntimeError.h"
#include "printing/layout/Fraction.h"

using namespace Qt::StringLiterals;

namespace tarvessa::report {

class Expression::Parser {
  public:
    Parser(QStringView text, const NameLookup& names, std::vector<Step>& steps)
        : m_text(text), m_names(names), m_steps(steps) {}

    QString run() {
        sum();
        if (m_problem.isEmpty() && !atEnd())
            m_problem = u"\"%1\" não é esperado na expressão"_s.arg(m_text.sliced(m_at));
        return m_problem;
    }

  private:
    bool atEnd() {
        while (m_at < m_text.size() && m_text[m_at].isSpace())
            ++m_at;
        return m_at >= m_text.size();
    }

    bool take(char16_t symbol) {
        if (atEnd() || m_text[m_at] != symbol)
            return false;
        ++m_at;
        return true;
    }

    void emitStep(Operation operation) { m_steps.push_back({operation, {}, {}}); }

    void sum() {
        product();
        while (m_problem.isEmpty()) {
            if (take(u'+')) {
                product();
                emitStep(Operation::Add);
            } else if (take(u'-')) {
                product();
                emitStep(Operation::Subtract);
            } else {
                return;
            }
        }
    }

    void product() {
        factor();
        while (m_problem.isEmpty()) {
            if (take(u'*')) {
                factor();
                emitStep(Operation::Multiply);
            } else if (take(u'/')) {
                factor();
                emitStep(Operation::Divide);
            } else {
                return;
            }
        }
    }

    // Parentheses and signs within each other take a call each.
    void factor() {
        if (++m_depth > deepest)
            m_problem = u"a expressão tem mais de %1 níveis"_s.arg(deepest);
        else
            operand();
        --m_depth;
    }

    void operand() {
        if (atEnd()) {
            m_problem = u"a expressão termina antes do fim"_s;
        } else if (take(u'-')) {
            factor();
            emitStep(Operation::Negate);
        } else if (take(u'(')) {
            sum();
            if (m_problem.isEmpty() && !take(u')'))
                m_problem = u"falta \")\" na expressão"_s;
        } else if (m_text[m_at] >= u'0' && m_text[m_at] <= u'9') {
            number();
        } else {
            name();
        }
    }

    void number() {
        const qsizetype start = m_at;
        while (m_at < m_text.size() &&
               ((m_text[m_at] >= u'0' && m_text[m_at] <= u'9') || m_text[m_at] == u'.'))
            ++m_at;
        const QStringView digits = m_text.sliced(start, m_at - start);
        try {
            m_steps.push_back({Operation::Number, Dinheiro::dePonto(digits), {}});
        } catch (const RuntimeError&) {
            m_problem = u"\"%1\" não é um número"_s.arg(digits);
        }
    }

    void name() {
        const qsizetype start = m_at;
        while (m_at < m_text.size() && (m_text[m_at].isLetterOrNumber() || m_text[m_at] == u'_'))
            ++m_at;
        if (m_at == start)
            m_problem = u"\"%1\" não é esperado na expressão"_s.arg(m_text.sliced(start));
        else
            m_steps.push_back({Operation::Value, {}, m_names(m_text.sliced(start, m_at - start).toString())});
    }

    static constexpr int deepest = 200;

    QStringView m_text;
    const NameLookup& m_names;
    std::vector<Step>& m_steps;
    qsizetype m_at = 0;
    int m_depth = 0;
    QString m_problem;
};

QString Expression::parse(const QString& text, const NameLookup& names) {
    m_steps.clear();
    return Parser(text, names, m_steps).run();
}

std::optional<Dinheiro> Expression::evaluate(const ValueLookup& values, int decimals) const {
    std::vector<Fraction> operands;
    for (const Step& step : m_steps) {
        if (step.operation == Operation::Number) {
            operands.emplace_back(step.number);
            continue;
        }
        if (step.operation == Operation::Value) {
            const std::optional<Dinheiro> value = values(step.value);
            if (!value)
                return {};
            operands.emplace_back(*value);
            continue;
        }
        if (step.operation == Operation::Negate) {
            operands.back() = Fraction(Dinheiro()) - operands.back();
            continue;
        }
        const Fraction right = operands.back();
        operands.pop_back();
        Fraction& left = operands.back();
        if (step.operation == Operation::Add)
            left = left + right;
        else if (step.operation == Operation::Subtract)
            left = left - right;
        else if (step.operation == Operation::Multiply)
            left = left * right;
        else if (right.isZero())
            return {};
        else
            left = left / right;
    }
    return operands.empty() ? std::nullopt : std::optional(operands.back().rounded(decimals));
}

std::vector<ValueRef> Expression::values() const {
    std::vector<ValueRef> result;
    for (const Step& step : m_steps)
        if (step.operation == Operation::Value)
            result.push_back(step.value);
    return result;
}

} // namespace tarvessa::report
