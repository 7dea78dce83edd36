#pragma once

#include "support/Socket.h"

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include <array>
#include <atomic>
#include <chrono>
#include <deque>
#include <optional>
#include <thread>
#include <vector>

namespace tarvessa::bench {

/// A link of some length in front of the server, on a socket and in a thread of its own. What comes from
/// either side leaves half a round trip later, in order; whatever is under way overlaps, and there is room
/// for all of it: a link with latency only, of any width.
class Relay {
  public:
    using Clock = std::chrono::steady_clock;

    /// Listens in front of the server at `server`; what comes is passed on at once. Raises TestError.
    explicit Relay(const QString& server);
    ~Relay();
    Relay(const Relay&) = delete;
    Relay& operator=(const Relay&) = delete;

    /// The address to connect to instead of the server's.
    QString socket() const { return m_socket; }

    /// Sets the round trip for what arrives from now on.
    void setRoundTrip(std::chrono::nanoseconds roundTrip) { m_roundTrip = roundTrip; }

    /// How often so far the server has begun to answer after something was sent to it: each time a client
    /// has waited for one round trip.
    qint64 answers() const { return m_answers; }

  private:
    struct Chunk {
        QByteArray bytes;
        Clock::time_point due;
    };

    /// One direction of a connection.
    struct Way {
        test::sockets::Handle from = test::sockets::None;
        std::deque<Chunk> underWay;
        QByteArray arrived; // at the far end, which has not taken it yet
        bool ended = false;

        bool isDone() const { return ended && underWay.empty() && arrived.isEmpty(); }
    };

    /// One connection: the way to the server and the way back.
    struct Link {
        std::array<Way, 2> ways;
        bool asked = false; // something went up, and no answer has come
    };

    void run();
    void accept();
    void receive(Link& link, size_t direction);
    static bool deliver(Link& link);
    std::optional<std::chrono::nanoseconds> untilNextDue() const;

    QString m_server;
    QTemporaryDir m_folder;
    QString m_socket;
    test::sockets::Handle m_listener = test::sockets::None;
    test::sockets::Handle m_waker = test::sockets::None;
    test::sockets::Handle m_woken = test::sockets::None;
    std::vector<Link> m_links; // the thread's alone
    std::atomic<std::chrono::nanoseconds> m_roundTrip = std::chrono::nanoseconds(0);
    std::atomic<qint64> m_answers = 0;
    std::atomic<bool> m_stopping = false;
    std::thread m_thread;
};

} // namespace tarvessa::bench
