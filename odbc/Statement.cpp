#include "odbc/Statement.h"

#include "base/Operation.h"
#include "base/RuntimeError.h"

namespace tarvessa::odbc {

namespace {

// A block of the widest rows takes tens of megabytes, which are not kept for what may never come again.
constexpr size_t largestIdleBlock = size_t{8} * 1024 * 1024;

} // namespace

void Session::lose() {
    lostDuring = Operation::latest();
    if (watcher)
        watcher();
}

void Statement::swap(Statement& other) noexcept {
    std::swap(m_body, other.m_body);
    std::swap(m_session, other.m_session);
    std::swap(m_failed, other.m_failed);
}

Statement& Statement::operator=(Statement&& other) noexcept {
    Statement taken(std::move(other));
    swap(taken);
    return *this;
}

Statement::~Statement() {
    if (!m_body.handle)
        return;
    const std::shared_ptr<Session> session = m_session.lock();
    if (!session) {
        m_body.handle.forget(); // freed with the connection, and its place may be another statement's by now
        return;
    }
    if (m_failed || session->lostDuring || session->idle.size() == session->idle.capacity() ||
        !SQL_SUCCEEDED(SQLFreeStmt(get(), SQL_CLOSE)) || !SQL_SUCCEEDED(SQLFreeStmt(get(), SQL_UNBIND)))
        return;
    if (m_body.block.bytes() > largestIdleBlock)
        m_body.block = {};
    session->idle.push_back(std::move(m_body));
}

SQLRETURN Statement::check(SQLRETURN code, const QString& sql) const {
    try {
        return odbc::check(code, SQL_HANDLE_STMT, get(), sql);
    } catch (const RuntimeError& error) {
        m_failed = true;
        const std::shared_ptr<Session> session = m_session.lock();
        if (session && error.isConnectionLost())
            session->lose();
        throw;
    }
}

} // namespace tarvessa::odbc
