#pragma once

#include "platform/odbc/Handles.h"

#include <memory>
#include <vector>

namespace tarvessa::odbc {

/// The statements of one connection that are between two uses: making one costs as much as a short command.
using IdleStatements = std::vector<StatementHandle>;

/// A statement in use. When it goes, it is laid back among the idle ones of its connection, without its rows
/// and bindings, if the connection is still open and no call on it has failed; freed otherwise.
class Statement {
  public:
    Statement() = default;
    Statement(StatementHandle handle, std::weak_ptr<IdleStatements> idle)
        : m_handle(std::move(handle)), m_idle(std::move(idle)) {}
    Statement(Statement&& other) noexcept = default;
    Statement& operator=(Statement&& other) noexcept;
    ~Statement();

    SQLHANDLE get() const { return m_handle.get(); }
    explicit operator bool() const { return static_cast<bool>(m_handle); }

    /// Passes on a return code of a call on this statement that means success or "no data"; raises
    /// RuntimeError with the driver's diagnostics and `sql` otherwise.
    SQLRETURN check(SQLRETURN code, const QString& sql) const;

  private:
    StatementHandle m_handle;
    std::weak_ptr<IdleStatements> m_idle;
    mutable bool m_failed = false;
};

} // namespace tarvessa::odbc
