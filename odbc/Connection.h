#pragma once

#include "odbc/Statement.h"

#include <QString>

namespace tarvessa::odbc {

/// How texts travel to and from the driver.
enum class Encoding {
    Utf8, ///< narrow calls, UTF-8 bytes
    Wide, ///< wide calls, UTF-16; the driver converts
};

/// One connection to an ODBC data source, closed when the object goes. Statements are committed as they run.
class Connection {
  public:
    Connection() = default;
    Connection(Connection&&) = default;
    Connection& operator=(Connection&& other) noexcept;
    ~Connection();

    /// Connects with a connection string such as "dsn=NAME". Raises RuntimeError when it cannot; the object
    /// is then closed. Whatever character set the data source names, texts come and go as Unicode.
    /// `preferWide` asks for the wide calls even where narrow ones would do.
    void open(const QString& connectionString, bool preferWide = false);

    /// Disconnects; does nothing on a closed connection. Results of it that are still open can no longer be
    /// read, which raises RuntimeError; the same goes for open().
    void close();

    bool isOpen() const { return static_cast<bool>(m_connection); }

    /// Runs a statement that changes data; nothing is read back. Raises RuntimeError with the statement.
    void execute(const QString& sql);

    /// A statement of this connection, meant for `sql`: with a static cursor, optimistic concurrency asked
    /// for and nothing bound. Raises RuntimeError with `sql` when the connection is closed, and when a
    /// statement has to be made and the connection is known to be lost.
    Statement takeStatement(const QString& sql) const;

    /// Sends `sql` on `statement`, letter by letter (no escape scanning). Raises RuntimeError.
    void executeOn(const Statement& statement, const QString& sql) const;

    Encoding encoding() const { return m_encoding; }

  private:
    void connectWith(const QString& connectionString, bool useWideCalls);
    bool speaksUtf8mb4() const;

    EnvironmentHandle m_environment;
    ConnectionHandle m_connection;
    std::shared_ptr<IdleStatements> m_idle;
    Encoding m_encoding = Encoding::Wide;
};

} // namespace tarvessa::odbc
