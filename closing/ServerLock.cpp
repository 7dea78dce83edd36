#include "closing/ServerLock.h"

#include "base/RuntimeError.h"
#include "core/AcessoDados.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

// What servers answer that have no such function, or a cluster that forbids it.
bool isUnsupported(const RuntimeError& error) {
    constexpr int noSuchFunction = 1305;
    constexpr int notSupported = 1235;
    constexpr int forbidden = 1105;
    return error.number() == noSuchFunction || error.number() == notSupported ||
           (error.number() == forbidden && error.text().contains(u"GET_LOCK"_s));
}

} // namespace

// Lock names are global to the server and limited to 64 characters, hence the digest of the database's name.
ServerLock::ServerLock(const QString& name, int waitSeconds)
    : m_name(u"CONCAT('tarvessa_%1_', MD5(DATABASE()))"_s.arg(name)) {
    try {
        const odbc::ResultSet lock = NovoRS(u"SELECT GET_LOCK(%1, %2)"_s.arg(m_name).arg(waitSeconds));
        // NULL: the wait was broken off, by an administrator or a limit of the server's.
        m_held = !lock.field(0).isNull() && lock.field(0).integer() != 0;
        m_taken = !m_held;
    } catch (const RuntimeError& error) {
        if (!isUnsupported(error))
            throw;
    }
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
