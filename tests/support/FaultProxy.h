#pragma once

#include "support/Socket.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QTemporaryDir>
#include <atomic>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace tarvessa::test {

/// A proxy in front of the server, on a socket and in a thread of its own. It reads enough of the
/// protocol to see each statement before it goes on, and can cut the connection there.
///
/// A statement is what the client sends as a query or to be prepared; executing what was prepared is
/// not another one. It is seen as the driver sends it, which is without blanks at its ends. Meant for clear,
/// uncompressed connections, as they are within a machine.
class FaultProxy {
  public:
    /// Listens in front of the server at `server`. Raises TestError.
    explicit FaultProxy(const QString& server);
    ~FaultProxy();
    FaultProxy(const FaultProxy&) = delete;
    FaultProxy& operator=(const FaultProxy&) = delete;

    /// The address to connect to instead of the server's.
    QString socket() const { return m_socket; }

    /// Starts counting anew, forgets what was seen, and cuts the connection on both sides before the
    /// k-th statement from now (the first is 1) reaches the server. It cuts once; connections opened
    /// after that pass.
    void cutBefore(int k);

    /// Calls `watcher` with every statement before it goes on, in the proxy's thread: the program waits for
    /// its answer meanwhile, so what it shows can be looked at. An empty function ends that.
    void onStatement(std::function<void(const QByteArray&)> watcher);

    /// As `cutBefore`, but the server executes the k-th statement, and its answer never reaches the client.
    /// The server may still be at it when the client learns of the cut.
    void cutAfter(int k);

    /// Forgets what was seen and any cut still to come.
    void mark();

    /// The statements that went on to the server since `mark` or `cutBefore`, byte for byte.
    QList<QByteArray> texts() const;

    /// The statement at which the connection was cut, byte for byte; null when none was.
    QByteArray cutAt() const;

  private:
    /// One accepted connection and its counterpart to the server.
    struct Pair {
        sockets::Handle client = sockets::None;
        sockets::Handle server = sockets::None;
        QByteArray received; // from the client, not yet a whole command
        QByteArray toServer;
        QByteArray toClient;
        enum class Cut { None, WhenExecuted, AtAnswer } cut = Cut::None;
    };

    void run();
    void accept();
    bool serve(Pair& pair, bool fromClient, bool fromServer);
    bool forwardCommands(Pair& pair);
    void startCounting(int k, bool execute);
    bool letPass(Pair& pair, const QByteArray& command);
    void wake();
    static void close(Pair& pair);

    QString m_server;
    QTemporaryDir m_folder;
    QString m_socket;
    sockets::Handle m_listener = sockets::None;
    sockets::Handle m_waker = sockets::None;
    sockets::Handle m_woken = sockets::None;
    std::vector<Pair> m_pairs; // the thread's alone
    std::atomic<bool> m_stopping = false;

    mutable std::mutex m_mutex;
    QList<QByteArray> m_texts;
    QByteArray m_cutAt;
    std::function<void(const QByteArray&)> m_watcher;
    int m_remaining = 0;    // statements until the cut, that one included; 0 for no cut
    bool m_execute = false; // the server executes the statement at which the connection is cut

    std::thread m_thread;
};

} // namespace tarvessa::test
