#include "closing/ClosingLog.h"

#include "base/Numeros.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

void ClosingLog::begin() {
    m_file.cria(u"LogFechamento.txt"_s);
    m_file.linha(u"LOG DE FECHAMENTO:"_s);
    m_file.linha(u"------------------"_s);
    m_file.linha({});
}

void ClosingLog::refuse(const QString& pedido, const QString& reason) {
    m_file.linha(u"PRÉ-VENDA: "_s + Formata(ValorNumerico(pedido), u"0000000") + reason);
}

} // namespace tarvessa
