#pragma once

#include "closing/BatchQuestion.h"
#include "closing/ClosingChecks.h"

#include <functional>

namespace tarvessa {

struct ClosingSettings;

/// What a batch does with a listed pre-sale, as far as it can be told before its lines are read for closing.
struct ClosingDecision {
    enum class Outcome { Cancel, LeaveAlone, Refuse, Close };

    Outcome outcome = Outcome::LeaveAlone;
    QList<ClosingReason> reasons; ///< why it is refused, in the order of the log
    QDate vencto;                 ///< the due date of one that is closed
};

/// What the decision asks about the pre-sale, each at most once and only when it comes to it. Both may raise
/// RuntimeError.
struct ClosingQuestions {
    /// The customer's tax number; nothing when there is no such customer.
    std::function<std::optional<QString>()> document;
    std::function<StockCheck()> stock;
};

/// Decides on a pre-sale; `answer` is that of `askBeforeBatch`. Raises what the questions raise, and
/// RuntimeError for numbers out of range.
ClosingDecision decideClosing(const ListedPv& pv, const BatchAnswer& answer, const ClosingSettings& settings,
                              const ClosingQuestions& questions);

} // namespace tarvessa
