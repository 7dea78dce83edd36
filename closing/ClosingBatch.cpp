#include "closing/ClosingBatch.h"

#include "base/Clock.h"
#include "base/Datas.h"
#include "base/Numeros.h"
#include "base/RuntimeError.h"
#include "closing/ClosingDecision.h"
#include "closing/ClosingLog.h"
#include "closing/ClosingSettings.h"
#include "core/AcessoDados.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

void ClosingBatch::process(const ListedPv& pv) {
    try {
        decide(pv);
    } catch (const RuntimeError& error) {
        throw error.about(u"Pré-venda %1"_s.arg(pv.pedido));
    }
}

void ClosingBatch::decide(const ListedPv& pv) {
    ClosingQuestions questions;
    questions.document = [&pv] { return customerDocument(pv.codigoCli); };
    questions.stock = [this, &pv] { return checkStock(pv.pedido, m_answer); };
    const ClosingDecision decision = decideClosing(pv, m_answer, m_settings, questions);
    switch (decision.outcome) {
    case ClosingDecision::Outcome::Cancel:
        cancel(pv);
        break;
    case ClosingDecision::Outcome::LeaveAlone:
        break;
    case ClosingDecision::Outcome::Refuse:
        for (const ClosingReason reason : decision.reasons)
            refuse(pv, reason == ClosingReason::Interrupted ? reasonOfBegun(pv) : reason);
        break;
    case ClosingDecision::Outcome::Close:
        close(pv, decision.vencto);
        break;
    }
}

// The list may be older than what other programs and stations have done since. The note only spares questions
// after a cut: one that cannot be written stops nothing.
void ClosingBatch::close(const ListedPv& pv, QDate vencto) {
    const Sale sale{ValorInteiro(pv.pedido), pv.formaPagto, ValorNumerico(pv.total), vencto, pv.cliente};
    bool begun = false;
    ClosingHooks hooks;
    hooks.objection = [&](odbc::ResultSet& lines) { return objectionToLines(lines, pv, m_listedSince); };
    hooks.beforeFirstWrite = [&] {
        m_note.begin(sale);
        begun = true;
    };
    try {
        if (const std::optional<ClosingReason> objection = closePv(sale, m_settings, m_history, hooks))
            refuse(pv, *objection);
    } catch (const RuntimeError&) {
        if (begun) {
            m_note.keep();
            m_log.refuse(pv.pedido, logText(ClosingReason::Interrupted));
        }
        throw;
    }
    if (begun)
        m_note.end();
}

// The movements are as well those of a station that has closed it whole since the list was made. Whether
// anything is missing, the window finds out.
ClosingReason ClosingBatch::reasonOfBegun(const ListedPv& pv) {
    m_hasInterrupted = true;
    TemRegistro = AbreRS(linesOfPv(ValorInteiro(pv.pedido)));
    const std::optional<ClosingReason> objection = objectionToLines(rs, pv, m_listedSince);
    rs.close();
    return objection == ClosingReason::Settled ? ClosingReason::Settled : ClosingReason::Interrupted;
}

void ClosingBatch::cancel(const ListedPv& pv) {
    settle(m_history, ValorInteiro(pv.pedido),
           u"Update Orcamento Set SituacaoOrc='X', databaixa='"_s + TextoSQL(clock::today()) +
               u"' Where nrpedido="_s + pv.pedido + u" And TipoOperacao='P'"_s);
    refuse(pv, ClosingReason::PrivatePerson);
}

void ClosingBatch::refuse(const ListedPv& pv, ClosingReason reason) {
    m_log.refuse(pv.pedido, logText(reason));
    m_hasRefusals = true;
}

} // namespace tarvessa
