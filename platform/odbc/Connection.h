#pragma once

#include "platform/odbc/Handles.h"

#include <QString>

namespace tarvessa::odbc {

/// How texts travel to and from the driver.
enum class Encoding {
    Utf8,        ///< narrow calls, UTF-8 bytes
    Windows1252, ///< narrow calls, the server's "latin1"
    Wide,        ///< wide calls, UTF-16; the driver converts
};

/// One connection to an ODBC data source, closed when the object goes. Statements are committed as they run.
class Connection {
  public:
    Connection() = default;
    Connection(Connection&&) = default;
    Connection& operator=(Connection&& other) noexcept;
    ~Connection();

    /// Connects with a connection string such as "dsn=NAME". Raises RuntimeError when it cannot; the object
    /// is then closed. `preferWide` asks for the wide calls even where narrow ones would do.
    void open(const QString& connectionString, bool preferWide = false);

    /// Disconnects; does nothing on a closed connection.
    void close();

    bool isOpen() const { return static_cast<bool>(m_connection); }

    /// Runs a statement that changes data; nothing is read back. Raises RuntimeError with the statement.
    void execute(const QString& sql);

    /// A new statement of this connection. Raises RuntimeError when the connection is closed.
    StatementHandle newStatement() const;

    /// Sends `sql` on `statement`, letter by letter (no escape scanning). Raises RuntimeError.
    void executeOn(const StatementHandle& statement, const QString& sql) const;

    Encoding encoding() const { return m_encoding; }

    /// The text of a cell or a name that came as bytes in this connection's narrow encoding.
    QString decode(const char* bytes, qsizetype length) const;

  private:
    void connectWith(const QString& connectionString, bool useWideCalls);
    Encoding detectEncoding() const;

    EnvironmentHandle m_environment;
    ConnectionHandle m_connection;
    Encoding m_encoding = Encoding::Wide;
};

} // namespace tarvessa::odbc
