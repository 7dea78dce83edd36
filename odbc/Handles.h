#pragma once

#ifdef _WIN32
#define SQL_NOUNICODEMAP // a call without W is the narrow one here too
#include <windows.h>
#endif
#include <sql.h>
#include <sqlext.h>

#include <QString>

#include <utility>

namespace tarvessa::odbc {

/// Owns one ODBC handle of the given kind (SQL_HANDLE_ENV, SQL_HANDLE_DBC or SQL_HANDLE_STMT) and frees it.
template <SQLSMALLINT Kind>
class Handle {
  public:
    Handle() = default;

    /// Allocates below `parent` (SQL_NULL_HANDLE for an environment). Raises RuntimeError when there is none,
    /// with the SQL text that the handle was meant for.
    explicit Handle(SQLHANDLE parent, const QString& statement = {});

    Handle(Handle&& other) noexcept : m_handle(std::exchange(other.m_handle, nullptr)) {}
    Handle& operator=(Handle&& other) noexcept {
        std::swap(m_handle, other.m_handle);
        return *this;
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    ~Handle() {
        if (m_handle)
            SQLFreeHandle(Kind, m_handle);
    }

    SQLHANDLE get() const { return m_handle; }

    /// Lets go of a handle that is freed already.
    void forget() { m_handle = nullptr; }

    explicit operator bool() const { return m_handle != nullptr; }

  private:
    SQLHANDLE m_handle = nullptr;
};

using EnvironmentHandle = Handle<SQL_HANDLE_ENV>;
using ConnectionHandle = Handle<SQL_HANDLE_DBC>;
using StatementHandle = Handle<SQL_HANDLE_STMT>;

/// Raises RuntimeError with the diagnostics of the handle: driver's number, texts, first SQLSTATE.
/// `statement` is the SQL text that failed, empty when there was none.
[[noreturn]] void raise(SQLSMALLINT kind, SQLHANDLE handle, const QString& statement);

/// Passes on a return code that means success, with or without information, or "no data"; raises otherwise.
SQLRETURN check(SQLRETURN code, SQLSMALLINT kind, SQLHANDLE handle, const QString& statement = {});

/// UTF-16 text as the wide calls take it; the result lives as long as `text`.
SQLWCHAR* wide(const QString& text);

} // namespace tarvessa::odbc
