#include "closing/NumberingLock.h"

#include "base/RuntimeError.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

// The lock covers two short statements. A station that keeps it longer hangs between them, and numbering
// without the lock could then hand out one number twice.
constexpr int waitSeconds = 10;

} // namespace

NumberingLock::NumberingLock() : m_lock(u"numero"_s, waitSeconds) {
    if (m_lock.isTaken())
        throw RuntimeError(ErrorNumber::PermissionDenied,
                           u"Outra estação está numerando documentos há muito tempo. "
                           "Nenhum número foi usado: tente novamente em instantes."_s);
}

} // namespace tarvessa
