#include "closing/ClosingBatch.h"

#include "base/Datas.h"
#include "base/Numeros.h"
#include "base/RuntimeError.h"
#include "closing/ClosingChecks.h"
#include "closing/ClosingLog.h"
#include "core/AcessoDados.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

QDate dueDate(Dinheiro days) {
    constexpr int lastYear = 9999;
    const QDate date = Hoje().addDays(days.inteiro());
    if (!date.isValid() || date.year() > lastYear)
        throw RuntimeError(ErrorNumber::Overflow,
                           u"Estouro: o prazo de %1 dias é grande demais."_s.arg(days.inteiro()));
    return date;
}

} // namespace

void ClosingBatch::process(const ListedPv& pv) {
    const std::optional<QString> document = documentDigits(pv.codigoCli);
    if (document && isPrivatePerson(*document)) {
        cancel(pv);
        return;
    }
    const qint32 number = ValorInteiro(pv.pedido);
    if (!pv.selected || m_history.closed.contains(number))
        return;
    if (m_history.interrupted.contains(number)) {
        refuse(pv, u" - FECHAMENTO INTERROMPIDO POR ERRO. CONFIRA ESTOQUE E FINANCEIRO."_s);
        return;
    }
    // Without a customer record nobody could be charged; it is never taken for a private person.
    if (!document) {
        refuse(pv, u" - CLIENTE NÃO CADASTRADO."_s);
        return;
    }
    const bool payment = isPaymentValid(pv);
    const bool stock = isStockSufficient(pv.pedido);
    if (payment && stock) {
        closePv(
            {number, pv.formaPagto, ValorNumerico(pv.total), dueDate(ValorNumerico(pv.diasVenc)), pv.cliente},
            m_settings, m_history);
        return;
    }
    if (!payment)
        refuse(pv, u" - FORMA DE PAGAMENTO INVÁLIDA."_s);
    if (!stock)
        refuse(pv, u" - O PEDIDO NÃO POSSUI ESTOQUE DISPONÍVEL"_s);
}

void ClosingBatch::cancel(const ListedPv& pv) {
    Executa(u"Update Orcamento Set SituacaoOrc='X', databaixa='"_s + TextoSQL(Hoje()) +
            u"' Where nrpedido="_s + pv.pedido + u" And TipoOperacao='P'"_s);
    refuse(pv, u" - O PEDIDO É DE PESSOA FÍSICA E FOI CANCELADO"_s);
}

void ClosingBatch::refuse(const ListedPv& pv, const QString& reason) {
    m_log.refuse(pv.pedido, reason);
    m_hasRefusals = true;
}

} // namespace tarvessa
