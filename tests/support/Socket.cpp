#include "support/Socket.h"

#include <algorithm>

#ifdef _WIN32
#include <winsock2.h>
#else
#include <cerrno>
#include <poll.h>
#include <sys/socket.h>
#endif

namespace tarvessa::test::sockets {

namespace {

constexpr qsizetype BlockSize = 65536;
using Patience = std::optional<std::chrono::nanoseconds>;

#ifdef _WIN32

using Native = SOCKET;
using PollRequest = WSAPOLLFD;
constexpr int NoSignal = 0;

int query(std::vector<PollRequest>& requests, const Patience& patience) {
    const int timeout =
        patience ? static_cast<int>(std::chrono::ceil<std::chrono::milliseconds>(*patience).count()) : -1;
    return WSAPoll(requests.data(), static_cast<ULONG>(requests.size()), timeout);
}
bool interrupted() {
    return false;
}
bool wouldBlock() {
    return WSAGetLastError() == WSAEWOULDBLOCK;
}

#else

using Native = int;
using PollRequest = pollfd;
constexpr int NoSignal = MSG_NOSIGNAL;

int query(std::vector<PollRequest>& requests, const Patience& patience) {
    timespec limit{};
    if (patience) {
        const auto seconds = std::chrono::floor<std::chrono::seconds>(*patience);
        limit.tv_sec = seconds.count();
        limit.tv_nsec = (*patience - seconds).count();
    }
    return ::ppoll(requests.data(), requests.size(), patience ? &limit : nullptr, nullptr);
}
bool interrupted() {
    return errno == EINTR;
}
bool wouldBlock() {
    return errno == EAGAIN || errno == EWOULDBLOCK;
}

#endif

} // namespace

bool wait(std::vector<Watch>& watched, std::optional<std::chrono::nanoseconds> patience) {
    std::vector<PollRequest> requests;
    for (const Watch& watch : watched) {
        const int events = (watch.read ? POLLIN : 0) | (watch.write ? POLLOUT : 0);
        requests.push_back({static_cast<Native>(watch.handle), static_cast<short>(events), 0});
    }
    if (query(requests, patience) < 0) {
        return false;
    }
    for (size_t i = 0; i < requests.size(); ++i) {
        watched[i].arrived = (requests[i].revents & (POLLIN | POLLHUP | POLLERR)) != 0;
    }
    return true;
}

bool receive(Handle handle, QByteArray& target) {
    for (;;) {
        const qsizetype before = target.size();
        target.resize(before + BlockSize);
        const auto count =
            static_cast<qsizetype>(::recv(static_cast<Native>(handle), target.data() + before, BlockSize, 0));
        target.resize(before + std::max<qsizetype>(count, 0));
        if (count > 0 && (count < BlockSize || target.size() > PendingLimit)) {
            return true;
        }
        if (count == 0) {
            return false;
        }
        if (count < 0 && !interrupted()) {
            return wouldBlock();
        }
    }
}

bool send(Handle handle, QByteArray& source) {
    qsizetype sent = 0;
    bool open = true;
    while (sent < source.size()) {
        const auto now = static_cast<qsizetype>(
            ::send(static_cast<Native>(handle), source.constData() + sent, source.size() - sent, NoSignal));
        if (now > 0) {
            sent += now;
        } else if (!interrupted()) {
            open = wouldBlock();
            break;
        }
    }
    source.remove(0, sent);
    return open;
}

} // namespace tarvessa::test::sockets
