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
///
/// A statement that fails because the server is gone or does not answer leaves the connection lost: all that
/// follows in the same operation fails too, and nothing is sent. The first statement of a later operation
/// opens the data source again, once; results of before can then no longer be read. No statement is ever
/// repeated.
class Connection {
  public:
    Connection() = default;
    Connection(Connection&&) = default;
    Connection& operator=(Connection&& other) noexcept;
    ~Connection();

    /// Connects with a connection string such as "dsn=NAME". Raises RuntimeError when it cannot, at the
    /// latest after 15 seconds without an answer; the object is then closed. Whatever character set the data
    /// source names, texts come and go as Unicode. `preferWide` asks for the wide calls even where narrow
    /// ones would do.
    void open(const QString& connectionString, bool preferWide = false);

    /// Disconnects; does nothing on a closed connection. Results of it that are still open can no longer be
    /// read, which raises RuntimeError; the same goes for open().
    void close();

    /// False also while the connection is known to be lost.
    bool isOpen() const { return m_connection && !m_session->lostDuring; }

    /// Where the connection leads (the server of a list that answered) and its database, as the driver tells
    /// them without asking the server. Empty before the first connect, and where the driver does not know.
    const QString& server() const { return m_server; }
    const QString& database() const { return m_database; }

    /// Calls `watcher` whenever the connection has been opened, opened again, or found to be lost; an empty
    /// function ends that. It must not raise, nor use the connection for a statement.
    void watch(std::function<void()> watcher);

    /// Runs a statement that changes data; nothing is read back. Gives how many records it changed, those
    /// that had these values already not counted by most data sources; -1 when the driver cannot tell.
    /// Raises RuntimeError with the statement. Opens a lost connection again where that is due.
    qint64 execute(const QString& sql);

    /// A statement of this connection, meant for `sql`: with a static cursor, optimistic concurrency asked
    /// for and nothing bound. Opens a lost connection again where that is due. Raises RuntimeError with `sql`
    /// when the connection is closed, or lost and not to be had again.
    Statement takeStatement(const QString& sql);

    /// Sends `sql` on `statement`, letter by letter (no escape scanning). Raises RuntimeError, also for a
    /// text with a null character in it.
    void executeOn(const Statement& statement, const QString& sql) const;

    Encoding encoding() const { return m_encoding; }

  private:
    void connectWith(const QString& connectionString, bool useWideCalls);
    void reopen(const QString& sql);
    bool speaksUtf8mb4() const;
    void opened();
    QString information(SQLUSMALLINT kind) const;

    EnvironmentHandle m_environment;
    ConnectionHandle m_connection;
    std::shared_ptr<Session> m_session;
    QString m_connectionString; // the one that succeeded
    QString m_server;
    QString m_database;
    std::function<void()> m_watcher;
    Encoding m_encoding = Encoding::Wide;
};

} // namespace tarvessa::odbc
