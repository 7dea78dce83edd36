#pragma once

#include "odbc/Buffer.h"
#include "odbc/Handles.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace tarvessa::odbc {

/// A statement with the memory that the driver writes into; the memory goes last.
struct StatementAndRoom {
    Buffer block;
    std::unique_ptr<SQLULEN> rowsFetched;
    StatementHandle handle;
};

/// What the statements of one open connection share.
struct Session {
    /// Those between two uses: making one costs as much as a short command.
    std::vector<StatementAndRoom> idle;

    /// The newest operation at the moment when the connection was found to be lost.
    std::optional<quint64> lostDuring;

    /// Told when the connection is found to be lost; may be empty.
    std::function<void()> watcher;

    /// Marks the connection as lost.
    void lose();
};

/// A statement in use. When it goes, it is laid back among the idle ones of its connection, without its rows
/// and bindings; it is freed when a call on it has failed or enough are idle. A connection that closes frees
/// all of its statements, and this one is then only let go of.
class Statement {
  public:
    Statement() = default;
    Statement(StatementAndRoom body, std::weak_ptr<Session> session)
        : m_body(std::move(body)), m_session(std::move(session)) {}
    Statement(Statement&& other) noexcept { swap(other); }
    Statement& operator=(Statement&& other) noexcept;
    ~Statement();

    SQLHANDLE get() const { return m_body.handle.get(); }

    /// Whether calls may be made on it: not without a connection, nor once that is closed.
    bool isAlive() const { return !m_session.expired(); }

    /// Memory for a block of rows, with whatever was there; what an earlier call gave may be gone.
    char* block(size_t bytes) { return m_body.block.room(bytes); }

    /// How many rows the last fetch brought; to be set to 0 before one.
    SQLULEN& rowsFetched() const { return *m_body.rowsFetched; }

    /// Passes on a return code of a call on this statement that means success or "no data"; raises
    /// RuntimeError with the driver's diagnostics and `sql` otherwise, and marks the connection as lost when
    /// they say so.
    SQLRETURN check(SQLRETURN code, const QString& sql) const;

  private:
    void swap(Statement& other) noexcept;

    StatementAndRoom m_body;
    std::weak_ptr<Session> m_session;
    mutable bool m_failed = false;
};

} // namespace tarvessa::odbc
