#include "odbc/Statement.h"

namespace tarvessa::odbc {

namespace {

// A block of the widest rows takes tens of megabytes, which are not kept for what may never come again.
constexpr size_t largestIdleBlock = 8 * 1024 * 1024;

} // namespace

void Statement::swap(Statement& other) noexcept {
    std::swap(m_body, other.m_body);
    std::swap(m_idle, other.m_idle);
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
    const std::shared_ptr<IdleStatements> idle = m_idle.lock();
    if (!idle)
        m_body.handle.forget(); // freed with the connection, and its place may be another statement's by now
    else if (!m_failed && idle->size() < idle->capacity() && SQL_SUCCEEDED(SQLFreeStmt(get(), SQL_CLOSE)) &&
             SQL_SUCCEEDED(SQLFreeStmt(get(), SQL_UNBIND))) {
        if (m_body.block.bytes() > largestIdleBlock)
            m_body.block = {};
        idle->push_back(std::move(m_body));
    }
}

SQLRETURN Statement::check(SQLRETURN code, const QString& sql) const {
    m_failed = m_failed || (!SQL_SUCCEEDED(code) && code != SQL_NO_DATA);
    return odbc::check(code, SQL_HANDLE_STMT, get(), sql);
}

} // namespace tarvessa::odbc
