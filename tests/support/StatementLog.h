#pragma once

#include "support/AdminConnection.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace tarvessa::test {

class PrivateServer;

/// What the server received from the program's user, in order and letter by letter, read from the
/// server's general log (mysql.general_log).
///
/// The server writes a statement down before it runs it, with three exceptions to "letter by letter":
/// it cuts blanks and ";" off the ends (see `expected`), a query that is prepared and refused by the
/// parser never gets there, and from a latin1 connection each byte beyond ASCII becomes "\xHH".
/// FaultProxy sees all of these as they were sent.
class StatementLog {
  public:
    /// Switches the general log of `server` on, if it is not, and marks the present position.
    /// `server` must outlive the log. Raises TestError.
    explicit StatementLog(PrivateServer& server);

    /// Forgets what came before. Raises TestError.
    void mark();

    /// The statements since the last mark, one entry each even when prepared and then executed, without those
    /// that the driver sends on its own account at connect: which these are is found out by connecting, in
    /// the two ways in which the program does. Raises TestError.
    QStringList texts();

    /// `sqls` as the server writes them down: blanks and ";" cut off the ends, nothing else.
    static QStringList expected(const QStringList& sqls);

  private:
    void connect();
    QString lastEntry();
    QList<QStringList> rowsSince(const QString& mark);
    QStringList sentByDriver();

    PrivateServer& m_server;
    AdminConnection m_connection;
    QString m_mark;
};

} // namespace tarvessa::test
