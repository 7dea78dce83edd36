#include "closing/ClosingRehearsal.h"

#include "base/Clock.h"
#include "base/Numeros.h"
#include "base/RuntimeError.h"
#include "base/Text.h"
#include "closing/PvClosing.h"
#include "closing/PvFacts.h"
#include "core/Esquema.h"
#include "core/Rotinas.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

// The column `produtos`.`Quantidade` rounds what is written to it.
Dinheiro asStored(Dinheiro stock) {
    constexpr int places = 3;
    return Proporcao(stock, Dinheiro(1), Dinheiro(1), places);
}

// A number out of range in the pre-sale's own data; the database goes on answering.
bool isOfThePv(const RuntimeError& error) {
    return error.statement().isEmpty() && error.sqlState().isEmpty() && !error.isConnectionLost();
}

} // namespace

bool RehearsedPv::hasLetters() const {
    return outcome == Outcome::Cancel &&
           std::any_of(document.cbegin(), document.cend(), [](QChar c) { return c.isLetter(); });
}

RehearsedPv ClosingRehearsal::rehearse(const ListedPv& pv) {
    if (m_stopped)
        return {};
    try {
        return decide(pv);
    } catch (const RuntimeError& error) {
        if (!isOfThePv(error))
            throw;
        m_stopped = true;
        RehearsedPv result;
        result.outcome = RehearsedPv::Outcome::Stop;
        result.error = error.text();
        return result;
    }
}

RehearsedPv ClosingRehearsal::decide(const ListedPv& pv) {
    std::optional<PvFacts> facts;
    RehearsedPv result;
    ClosingQuestions questions;
    questions.document = [&] {
        std::optional<QString> document;
        if (pv.selected) {
            facts = PvFacts::read(pv);
            document = facts->document;
        } else {
            document = customerDocument(pv.codigoCli);
        }
        result.document = document.value_or(QString());
        return document;
    };
    questions.stock = [&] { return checkStock(*facts, result); };
    const ClosingDecision decision = decideClosing(pv, m_answer, m_settings, questions);
    result.reasons = decision.reasons;
    switch (decision.outcome) {
    case ClosingDecision::Outcome::Cancel:
        result.outcome = RehearsedPv::Outcome::Cancel;
        break;
    case ClosingDecision::Outcome::LeaveAlone:
        result.outcome = RehearsedPv::Outcome::LeaveAlone;
        break;
    case ClosingDecision::Outcome::Refuse:
        result.outcome = RehearsedPv::Outcome::Refuse;
        break;
    case ClosingDecision::Outcome::Close:
        close(pv, decision.vencto, *facts, result);
        break;
    }
    return result;
}

StockCheck ClosingRehearsal::checkStock(const PvFacts& facts, RehearsedPv& result) const {
    StockCheck check;
    QSet<QString> seen;
    for (const PvFacts::Line& line : facts.lines) {
        const QString code = line.group.text();
        if (seen.contains(code))
            continue;
        seen.insert(code);
        const Dinheiro before = line.isCounted ? taken(line.codFabr) : Dinheiro();
        const qsizetype shortages = check.shortages.size();
        check.add(code, line.needed.decimal(), line.available.decimal() - before, m_answer);
        if (check.shortages.size() > shortages)
            result.shortages.append({check.shortages.last(), line.descricao, !before.zero()});
    }
    return check;
}

void ClosingRehearsal::close(const ListedPv& pv, QDate vencto, const PvFacts& facts, RehearsedPv& result) {
    LinesCheck check(pv, m_listedSince);
    for (const PvFacts::Line& line : facts.lines)
        check.add(line.codigoCli, line.situacao, line.dataAbertura, line.totalPed);
    if (const std::optional<ClosingReason> objection = check.objection()) {
        result.outcome = RehearsedPv::Outcome::Refuse;
        result.reasons = {*objection};
        result.total = check.total();
        return;
    }
    // The closing raises what this raises.
    sellerCode(facts.lines.first().vendedor);
    if (!m_settings.pafEcf)
        takeFromStock(facts);
    result.outcome = RehearsedPv::Outcome::Close;
    result.receivable = receivableTerms(pv.formaPagto, facts.avista, vencto, clock::today(),
                                        m_settings.cashAccount(), m_settings.receivablesAccount());
}

void ClosingRehearsal::takeFromStock(const PvFacts& facts) {
    for (const PvFacts::Line& line : facts.lines) {
        const QString code = line.codigo.text();
        if (code.startsWith(esquema::notaDoPedido))
            continue;
        QList<ComponenteDaFicha> sheet;
        QList<PvFacts::StockRow> changed;
        for (const PvFacts::Component& component : line.sheet) {
            sheet.append({component.codigo.text(), component.quantidade.decimal()});
            changed.append(component.stock);
        }
        if (changed.isEmpty())
            changed.append(line.stock);
        const QList<MovimentoDeEstoque> movements =
            MovimentosPelaFicha(trimBlanks(code), line.quantidade.decimal(), sheet);
        for (qsizetype i = 0; i < movements.size(); ++i) {
            const auto& [codFabr, shop] = changed[i];
            if (codFabr.isEmpty() || shop.isNull())
                continue;
            const Dinheiro stored = shop.decimal();
            m_taken.insert(codFabr, stored - asStored(stored - taken(codFabr) - movements[i].quantidade));
        }
    }
}

} // namespace tarvessa
