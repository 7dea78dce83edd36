#include "bench/support/Relay.h"

#include "support/TestError.h"

#include <algorithm>
#include <tuple>

#ifdef __linux__
#include <sys/prctl.h>
#endif

namespace tarvessa::bench {

namespace sockets = test::sockets;

namespace {

constexpr size_t up = 0;
constexpr size_t down = 1;

// The kernel rounds waits up by 50 microseconds otherwise, half of the shortest delay measured.
void waitExactly() {
#ifdef __linux__
    prctl(PR_SET_TIMERSLACK, 1UL);
#endif
}

} // namespace

Relay::Relay(const QString& server) : m_server(server), m_folder(QStringLiteral("/tmp/tarvessa-XXXXXX")) {
    if (!m_folder.isValid())
        throw test::TestError(m_folder.errorString());
    std::tie(m_listener, m_socket) = sockets::listen(m_folder.path());
    std::tie(m_waker, m_woken) = sockets::wakerPair();
    m_thread = std::thread([this] { run(); });
}

Relay::~Relay() {
    m_stopping = true;
    QByteArray signal(1, '\0');
    sockets::send(m_waker, signal);
    m_thread.join();
    sockets::close(m_listener);
    sockets::close(m_waker);
    sockets::close(m_woken);
}

void Relay::run() {
    waitExactly();
    std::vector<sockets::Watch> watched;
    while (!m_stopping) {
        watched = {{m_listener, true, false}, {m_woken, true, false}};
        for (const Link& link : m_links)
            for (const size_t way : {up, down})
                // An end is read until it closes, and written to while it has not taken everything.
                watched.push_back({link.ways[way].ended ? sockets::None : link.ways[way].from, true,
                                   !link.ways[1 - way].arrived.isEmpty()});
        if (!sockets::wait(watched, untilNextDue()))
            continue;
        for (size_t i = 0; i < m_links.size(); ++i)
            for (const size_t way : {up, down})
                if (watched[2 + 2 * i + way].arrived)
                    receive(m_links[i], way);
        std::erase_if(m_links, [](Link& link) {
            if (deliver(link))
                return false;
            for (const Way& way : link.ways)
                sockets::close(way.from);
            return true;
        });
        if (watched[0].arrived)
            accept();
    }
    for (const Link& link : m_links)
        for (const Way& way : link.ways)
            sockets::close(way.from);
}

void Relay::accept() {
    const sockets::Handle client = sockets::accept(m_listener);
    if (client == sockets::None)
        return;
    const sockets::Handle server = sockets::connect(m_server);
    if (server == sockets::None) {
        sockets::close(client);
        return;
    }
    Link link;
    link.ways[up].from = client;
    link.ways[down].from = server;
    m_links.push_back(std::move(link));
}

void Relay::receive(Link& link, size_t direction) {
    Way& way = link.ways[direction];
    Chunk chunk;
    way.ended = !sockets::receive(way.from, chunk.bytes);
    chunk.due = Clock::now() + m_roundTrip.load() / 2;
    if (chunk.bytes.isEmpty())
        return;
    if (direction == up) {
        link.asked = true;
    } else if (link.asked) {
        link.asked = false;
        ++m_answers;
    }
    // A shorter round trip set meanwhile must not let a chunk overtake another.
    if (!way.underWay.empty())
        chunk.due = std::max(chunk.due, way.underWay.back().due);
    way.underWay.push_back(std::move(chunk));
}

// False when the link is over: one side has closed, and the other has got all that it had sent.
bool Relay::deliver(Link& link) {
    const Clock::time_point now = Clock::now();
    for (const size_t direction : {up, down}) {
        Way& way = link.ways[direction];
        for (; !way.underWay.empty() && way.underWay.front().due <= now; way.underWay.pop_front())
            way.arrived += way.underWay.front().bytes;
        const Way& opposite = link.ways[1 - direction];
        if (!way.arrived.isEmpty() && (opposite.ended || !sockets::send(opposite.from, way.arrived)))
            return false;
    }
    return !link.ways[up].isDone() && !link.ways[down].isDone();
}

std::optional<std::chrono::nanoseconds> Relay::untilNextDue() const {
    std::optional<Clock::time_point> next;
    for (const Link& link : m_links)
        for (const Way& way : link.ways)
            if (!way.underWay.empty())
                next = std::min(next.value_or(Clock::time_point::max()), way.underWay.front().due);
    if (!next)
        return std::nullopt;
    return std::max(std::chrono::nanoseconds(0),
                    std::chrono::duration_cast<std::chrono::nanoseconds>(*next - Clock::now()));
}

} // namespace tarvessa::bench
