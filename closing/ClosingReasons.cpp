#include "closing/ClosingReasons.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

QString logText(ClosingReason reason) {
    switch (reason) {
    case ClosingReason::CustomerCode:
        return u" - CÓDIGO DE CLIENTE INVÁLIDO."_s;
    case ClosingReason::PrivatePerson:
        return u" - O PEDIDO É DE PESSOA FÍSICA E FOI CANCELADO"_s;
    case ClosingReason::Interrupted:
        return u" - FECHAMENTO INTERROMPIDO POR ERRO. CONFIRA ESTOQUE E FINANCEIRO."_s;
    case ClosingReason::NoCustomer:
        return u" - CLIENTE NÃO CADASTRADO."_s;
    case ClosingReason::TotalBeyondRange:
        return u" - O TOTAL DO PEDIDO PASSA DO LIMITE. CONFIRA OS ITENS."_s;
    case ClosingReason::Payment:
        return u" - FORMA DE PAGAMENTO INVÁLIDA."_s;
    case ClosingReason::Stock:
        return u" - O PEDIDO NÃO POSSUI ESTOQUE DISPONÍVEL"_s;
    case ClosingReason::Term:
        return u" - PRAZO DE PAGAMENTO INVÁLIDO."_s;
    case ClosingReason::ProductCode:
        return u" - CÓDIGO DE PRODUTO INVÁLIDO."_s;
    case ClosingReason::Account:
        return u" - CONTA CONTÁBIL INVÁLIDA."_s;
    case ClosingReason::Settled:
        return u" - O PEDIDO JÁ FOI ENCERRADO OU CANCELADO."_s;
    case ClosingReason::PartlySettled:
        return u" - O PEDIDO TEM ITENS JÁ ENCERRADOS OU CANCELADOS. CONFIRA O NÚMERO DO PEDIDO."_s;
    case ClosingReason::TotalChanged:
        return u" - O TOTAL DO PEDIDO MUDOU. CARREGUE A LISTA NOVAMENTE."_s;
    case ClosingReason::CustomerChanged:
        break;
    }
    return u" - O CLIENTE DO PEDIDO MUDOU. CARREGUE A LISTA NOVAMENTE."_s;
}

} // namespace tarvessa
