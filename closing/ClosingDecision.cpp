#include "closing/ClosingDecision.h"

#include "base/Numeros.h"
#include "closing/ClosingSettings.h"

namespace tarvessa {

namespace {

ClosingDecision refused(ClosingReason reason) {
    return {ClosingDecision::Outcome::Refuse, {reason}, {}};
}

} // namespace

ClosingDecision decideClosing(const ListedPv& pv, const BatchAnswer& answer, const ClosingSettings& settings,
                              const ClosingQuestions& questions) {
    if (!isQuotable(pv.codigoCli))
        return refused(ClosingReason::CustomerCode);
    const std::optional<QString> document = questions.document();
    if (document && isPrivatePerson(*document)) {
        // The list may be older than a closing: its goods are gone, and somebody owes for them.
        const qint32 number = ValorInteiro(pv.pedido);
        if (const auto settled = answer.settled.constFind(number); settled != answer.settled.cend())
            return refused(*settled ? ClosingReason::PartlySettled : ClosingReason::Settled);
        if (answer.begun.contains(number))
            return refused(ClosingReason::Interrupted);
        if (!answer.isOf(number, pv.codigoCli))
            return refused(ClosingReason::CustomerChanged);
        return {ClosingDecision::Outcome::Cancel, {}, {}};
    }
    if (!pv.selected)
        return {};
    if (answer.begun.contains(ValorInteiro(pv.pedido)))
        return refused(ClosingReason::Interrupted);
    // Without a customer record nobody could be charged; it is never taken for a private person.
    if (!document)
        return refused(ClosingReason::NoCustomer);
    if (pv.total == totalBeyondRange)
        return refused(ClosingReason::TotalBeyondRange);
    const bool payment = isPaymentValid(pv);
    const StockCheck stock = questions.stock();
    const std::optional<QDate> vencto = dueDate(pv.diasVenc);
    ClosingDecision decision;
    if (!payment)
        decision.reasons.append(ClosingReason::Payment);
    if (!stock.isSufficient())
        decision.reasons.append(ClosingReason::Stock);
    if (!vencto)
        decision.reasons.append(ClosingReason::Term);
    if (!settings.pafEcf && !stock.movable)
        decision.reasons.append(ClosingReason::ProductCode);
    if (!isQuotable(settings.cashAccount()) || !isQuotable(settings.receivablesAccount()))
        decision.reasons.append(ClosingReason::Account);
    decision.outcome =
        decision.reasons.isEmpty() ? ClosingDecision::Outcome::Close : ClosingDecision::Outcome::Refuse;
    decision.vencto = vencto.value_or(QDate());
    return decision;
}

} // namespace tarvessa
