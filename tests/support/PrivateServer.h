#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <memory>

namespace tarvessa::test {

class AdminConnection;

/// A fresh database of the test program's own on a private MariaDB server, and the data source QDX
/// of this process pointing at it.
///
/// The environment variable TARVESSA_TEST_SERVER names the folder of a server already started with
/// tools/private-server; without it one is started in a temporary folder and stopped at the end. On Windows
/// it must, and TARVESSA_TEST_ADDRESS says where that server listens ("127.0.0.1:port").
/// The database holds demo/schema.sql and nothing else. The program reaches it as a database user
/// that no other test program shares, so that what it sends can be told apart. Database and user
/// are dropped, and ODBCINI is restored, at the end. One object per process at a time.
class PrivateServer {
  public:
    /// Starts or finds the server, creates database and user, writes the data source.
    /// Raises TestError.
    PrivateServer();
    ~PrivateServer();
    PrivateServer(const PrivateServer&) = delete;
    PrivateServer& operator=(const PrivateServer&) = delete;

    /// The server's own address: its unix socket, on Windows "127.0.0.1:port".
    QString socket() const { return m_socket; }
    /// The name of the database.
    QString database() const { return m_name; }
    /// The database user that the data source gives to the program.
    QString user() const { return m_name; }
    /// The statement that the driver runs at connect.
    QString initStmt() const { return m_initStmt; }

    /// The data source's CHARSET; empty for none, which is the start. Holds from the next connect.
    void useCharset(const QString& charset);
    /// The address that the data source leads to, for a proxy in front of the server. Holds from the next
    /// connect.
    void useSocket(const QString& socket);
    /// The data source's INITSTMT; empty for none. Holds from the next connect.
    void useInitStmt(const QString& sql);

    /// Runs one or several statements in the database as root. Raises TestError.
    void execute(const QString& sql);
    /// The rows of one query as root, as texts; NULL is a null QString. Raises TestError.
    QList<QStringList> query(const QString& sql);

    /// MariaDB has tables seq_1_to_N with the numbers from 1 to N. On a server that lacks them this makes
    /// those that a statement names, as execute and query do by themselves. Raises TestError.
    void provideSequences(const QString& sql);

    /// Puts the database back to the empty schema. Connections to it stay usable. Raises TestError.
    void recreate();

    /// Ends every connection of the program's user and returns when they are gone. Raises TestError.
    void killProgramConnections();

  private:
    class OwnServer;

    void writeDataSource();
    void restoreEnvironment();

    QTemporaryDir m_folder;
    QString m_server;                 // folder of the server
    std::unique_ptr<OwnServer> m_own; // null when the environment names a server
    QString m_socket;
    QString m_name;
    std::unique_ptr<AdminConnection> m_connection;
    bool m_hasSequences = true;
    QByteArray m_schema;
    QString m_driver;
    QString m_charset;
    QString m_dataSourceSocket;
    QString m_initStmt;
    bool m_hadOdbcIni;
    QByteArray m_previousOdbcIni;
};

} // namespace tarvessa::test
