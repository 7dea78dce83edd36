#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

namespace tarvessa::test {

/// The database nodes that demo/cluster has started; numbered from 1.
class Nodes {
  public:
    static constexpr int count = 3;

    /// Asks demo/cluster for the nodes' sockets. Raises TestError.
    Nodes();
    ~Nodes();
    Nodes(const Nodes&) = delete;
    Nodes& operator=(const Nodes&) = delete;

    /// Runs statements on a node as root, in the shop's database. Raises TestError.
    void execute(int node, const QString& sql) const;
    /// One value, as the whole cluster has it. Raises TestError.
    QString value(int node, const QString& sql) const;
    /// The same from any living node. Raises TestError when there is none.
    QString value(const QString& sql) const;

    /// The nodes that have sessions of the program.
    QList<int> withSessions() const;

    /// Ends a node at once.
    void kill(int node);
    /// Begins to bring it back.
    void bringBack(int node);
    /// True while a node is dead or on its way back. Raises TestError when it does not come.
    bool isOneMissing();

  private:
    static QString command(const QStringList& arguments);

    QStringList m_sockets;
    int m_missing = 0;
    QProcess m_back;
};

} // namespace tarvessa::test
