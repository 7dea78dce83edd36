#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <memory>

namespace tarvessa::test {

/// A connection of the tests' own to a private server, as its root and in utf8mb4. It shares no
/// code with the program's data access, so that it can bear witness about it: the server's client library,
/// or, where there is none as on Windows, bare ODBC calls.
class AdminConnection {
  public:
    /// Connects to the server at `address`. Raises TestError.
    explicit AdminConnection(const QString& address);
    ~AdminConnection();
    AdminConnection(const AdminConnection&) = delete;
    AdminConnection& operator=(const AdminConnection&) = delete;

    /// Makes `database` the default database. Raises TestError.
    void select(const QString& database);

    /// Runs one statement or several separated by ";", dropping any rows. Raises TestError with
    /// the server's message at the first one that fails.
    void execute(const QString& sql);

    /// Runs one query and gives its rows, each column as text; NULL is a null QString and an empty
    /// text is an empty one. Raises TestError.
    QList<QStringList> query(const QString& sql);

  private:
    class Session;

    std::unique_ptr<Session> m_session;
};

} // namespace tarvessa::test
