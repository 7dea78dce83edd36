#include "closing/ClosingLog.h"

#include "base/Numeros.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

void ClosingLog::begin() {
    m_firstFailure.reset();
    m_unwritten.clear();
    m_file.cria(u"LogFechamento.txt"_s);
    m_file.linha(u"LOG DE FECHAMENTO:"_s);
    m_file.linha(u"------------------"_s);
    m_file.linha({});
}

void ClosingLog::refuse(const QString& pedido, const QString& reason) {
    const QString line = u"PRÉ-VENDA: "_s + Formata(ValorNumerico(pedido), u"0000000") + reason;
    try {
        m_file.linha(line);
    } catch (const RuntimeError& error) {
        if (!m_firstFailure)
            m_firstFailure = error;
        m_unwritten.append(line);
    }
}

std::optional<RuntimeError> ClosingLog::failure() const {
    if (!m_firstFailure)
        return {};
    return RuntimeError(m_firstFailure->number(),
                        m_firstFailure->text() + u"\n\nNão foi gravado:\n"_s + m_unwritten.join(u'\n'), {},
                        {});
}

} // namespace tarvessa
