#include "closing/ServerLock.h"

#include "base/RuntimeError.h"
#include "core/AcessoDados.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

// Lock names are global to the server and limited to 64 characters, hence the digest of the database's name.
ServerLock::ServerLock(const QString& name, int waitSeconds)
    : m_name(u"CONCAT('tarvessa_%1_', MD5(DATABASE()))"_s.arg(name)) {
    odbc::Field answer;
    try {
        odbc::ResultSet lock = NovoRS(u"SELECT GET_LOCK(%1, %2)"_s.arg(m_name).arg(waitSeconds));
        answer = lock.field(0);
    } catch (const RuntimeError& error) {
        if (error.isConnectionLost())
            throw;
    }
    m_held = !answer.isNull() && answer.integer() != 0;
    m_taken = !answer.isNull() && answer.integer() == 0;
}

ServerLock::~ServerLock() {
    if (!m_held)
        return;
    try {
        NovoRS(u"SELECT RELEASE_LOCK(%1)"_s.arg(m_name));
    } catch (const RuntimeError&) {
        // A connection that ends releases its locks; the error that led here must reach the operator.
    }
}

} // namespace tarvessa
