#include "closing/NumberingLock.h"

#include "base/RuntimeError.h"
#include "core/AcessoDados.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

// Lock names are global to the server and limited to 64 characters, hence the digest of the database's name.
const QString lockName = u"CONCAT('tarvessa_numero_', MD5(DATABASE()))"_s;
// The lock covers two short statements. A station that keeps it longer hangs between them, and numbering
// without the lock could then hand out one number twice.
constexpr int waitSeconds = 10;

} // namespace

NumberingLock::NumberingLock() {
    odbc::Field answer;
    try {
        odbc::ResultSet lock = NovoRS(u"SELECT GET_LOCK(%1, %2)"_s.arg(lockName).arg(waitSeconds));
        answer = lock.field(0);
    } catch (const RuntimeError& error) {
        if (error.isConnectionLost())
            throw;
    }
    if (!answer.isNull() && answer.integer() == 0)
        throw RuntimeError(ErrorNumber::PermissionDenied,
                           u"Outra estação está numerando documentos há muito tempo. "
                           "Nenhum número foi usado: tente novamente em instantes."_s);
    m_held = !answer.isNull();
}

NumberingLock::~NumberingLock() {
    if (!m_held)
        return;
    try {
        NovoRS(u"SELECT RELEASE_LOCK(%1)"_s.arg(lockName));
    } catch (const RuntimeError&) {
        // A connection that ends releases its locks; the error that led here must reach the operator.
    }
}

} // namespace tarvessa
