#include "closing/ClosingBatch.h"

#include "base/Clock.h"
#include "base/Datas.h"
#include "base/Numeros.h"
#include "base/RuntimeError.h"
#include "closing/ClosingChecks.h"
#include "closing/ClosingJournal.h"
#include "closing/ClosingLog.h"
#include "closing/ClosingSettings.h"
#include "core/AcessoDados.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

const QString interrupted = u" - FECHAMENTO INTERROMPIDO POR ERRO. CONFIRA ESTOQUE E FINANCEIRO."_s;

} // namespace

void ClosingBatch::process(const ListedPv& pv) {
    try {
        decide(pv);
    } catch (const RuntimeError& error) {
        throw error.about(u"Pré-venda %1"_s.arg(pv.pedido));
    }
}

void ClosingBatch::decide(const ListedPv& pv) {
    if (!isQuotable(pv.codigoCli)) {
        refuse(pv, u" - CÓDIGO DE CLIENTE INVÁLIDO."_s);
        return;
    }
    const std::optional<QString> document = documentDigits(pv.codigoCli);
    if (document && isPrivatePerson(*document)) {
        cancel(pv);
        return;
    }
    if (!pv.selected)
        return;
    if (m_answer.begun.contains(ValorInteiro(pv.pedido))) {
        m_hasInterrupted = true;
        refuse(pv, interrupted);
        return;
    }
    // Without a customer record nobody could be charged; it is never taken for a private person.
    if (!document) {
        refuse(pv, u" - CLIENTE NÃO CADASTRADO."_s);
        return;
    }
    const bool payment = isPaymentValid(pv);
    const StockCheck stock = checkStock(pv.pedido, m_answer);
    const std::optional<QDate> vencto = dueDate(pv.diasVenc);
    const bool movable = stock.movable || m_settings.pafEcf;
    const bool accounts = isQuotable(m_settings.cashAccount()) && isQuotable(m_settings.receivablesAccount());
    if (payment && stock.sufficient && vencto && movable && accounts) {
        close(pv, *vencto);
        return;
    }
    if (!payment)
        refuse(pv, u" - FORMA DE PAGAMENTO INVÁLIDA."_s);
    if (!stock.sufficient)
        refuse(pv, u" - O PEDIDO NÃO POSSUI ESTOQUE DISPONÍVEL"_s);
    if (!vencto)
        refuse(pv, u" - PRAZO DE PAGAMENTO INVÁLIDO."_s);
    if (!movable)
        refuse(pv, u" - CÓDIGO DE PRODUTO INVÁLIDO."_s);
    if (!accounts)
        refuse(pv, u" - CONTA CONTÁBIL INVÁLIDA."_s);
}

// The list may be older than what other programs and stations have done since. The note only spares questions
// after a cut: one that cannot be written stops nothing.
void ClosingBatch::close(const ListedPv& pv, QDate vencto) {
    const Sale sale{ValorInteiro(pv.pedido), pv.formaPagto, ValorNumerico(pv.total), vencto, pv.cliente};
    bool begun = false;
    ClosingHooks hooks;
    hooks.objection = [&](odbc::ResultSet& lines) { return objectionToLines(lines, pv, m_listedSince); };
    hooks.beforeFirstWrite = [&] {
        closingjournal::begin(sale);
        begun = true;
    };
    try {
        const QString objection = closePv(sale, m_settings, m_history, hooks);
        if (!objection.isEmpty())
            refuse(pv, objection);
    } catch (const RuntimeError&) {
        if (begun)
            m_log.refuse(pv.pedido, interrupted);
        throw;
    }
    if (begun)
        closingjournal::end(sale.nrPedido);
}

void ClosingBatch::cancel(const ListedPv& pv) {
    Executa(u"Update Orcamento Set SituacaoOrc='X', databaixa='"_s + TextoSQL(clock::today()) +
            u"' Where nrpedido="_s + pv.pedido + u" And TipoOperacao='P'"_s);
    m_history.settled.insert(ValorInteiro(pv.pedido));
    refuse(pv, u" - O PEDIDO É DE PESSOA FÍSICA E FOI CANCELADO"_s);
}

void ClosingBatch::refuse(const ListedPv& pv, const QString& reason) {
    m_log.refuse(pv.pedido, reason);
    m_hasRefusals = true;
}

} // namespace tarvessa
