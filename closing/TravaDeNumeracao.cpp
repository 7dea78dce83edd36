#include "closing/TravaDeNumeracao.h"

#include "base/RuntimeError.h"
#include "core/AcessoDados.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

// Lock names hold for the whole server and have at most 64 characters, hence the digest of the database.
const QString nomeDaTrava = u"CONCAT('tarvessa_numero_', MD5(DATABASE()))"_s;
// The lock is held for two short statements. Whoever holds it longer hangs between them, and to go on in
// spite of that could hand out one number twice.
constexpr int esperaEmSegundos = 10;

} // namespace

TravaDeNumeracao::TravaDeNumeracao() {
    odbc::Field resposta;
    try {
        odbc::ResultSet trava = NovoRS(u"SELECT GET_LOCK(%1, %2)"_s.arg(nomeDaTrava).arg(esperaEmSegundos));
        resposta = trava.field(0);
    } catch (const RuntimeError& erro) {
        if (erro.isConnectionLost())
            throw;
    }
    if (!resposta.isNull() && resposta.integer() == 0)
        throw RuntimeError(ErrorNumber::PermissionDenied,
                           u"Outra estação está numerando documentos há muito tempo. "
                           "Nenhum número foi usado: tente novamente em instantes."_s);
    m_minha = !resposta.isNull();
}

TravaDeNumeracao::~TravaDeNumeracao() {
    if (!m_minha)
        return;
    try {
        NovoRS(u"SELECT RELEASE_LOCK(%1)"_s.arg(nomeDaTrava));
    } catch (const RuntimeError&) {
        // The server releases the locks of a connection that ends.
    }
}

} // namespace tarvessa
