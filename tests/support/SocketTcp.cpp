#include "support/Socket.h"
#include "support/TestError.h"

#include <optional>
#include <winsock2.h>

namespace tarvessa::test::sockets {

namespace {

/// Winsock wants to be opened before the first call of a program.
void startUp() {
    static const bool Started = [] {
        WSADATA data{};
        return WSAStartup(MAKEWORD(2, 2), &data) == 0;
    }();
    if (!Started) {
        throw TestError(QStringLiteral("no sockets on this machine"));
    }
}

TestError systemError(const char* call) {
    return TestError(QStringLiteral("%1: %2").arg(QLatin1String(call)).arg(WSAGetLastError()));
}

std::optional<quint16> portOf(const QString& address) {
    const QString start = QStringLiteral("127.0.0.1:");
    bool isNumber = false;
    const quint16 port = QStringView(address).mid(start.size()).toUShort(&isNumber);
    return isNumber && address.startsWith(start) ? std::optional(port) : std::nullopt;
}

sockaddr_in local(quint16 port) {
    sockaddr_in result{};
    result.sin_family = AF_INET;
    result.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    result.sin_port = htons(port);
    return result;
}

void setNonBlocking(Handle handle) {
    u_long yes = 1;
    ioctlsocket(static_cast<SOCKET>(handle), FIONBIO, &yes);
}

Handle newSocket(int kind) {
    startUp();
    const SOCKET handle = ::socket(AF_INET, kind, 0);
    if (handle == INVALID_SOCKET) {
        throw systemError("socket");
    }
    return static_cast<Handle>(handle);
}

quint16 boundPort(Handle handle) {
    sockaddr_in own{};
    int size = sizeof own;
    ::getsockname(static_cast<SOCKET>(handle), reinterpret_cast<sockaddr*>(&own), &size);
    return ntohs(own.sin_port);
}

bool bindToAny(Handle handle) {
    const sockaddr_in any = local(0);
    return ::bind(static_cast<SOCKET>(handle), reinterpret_cast<const sockaddr*>(&any), sizeof any) == 0;
}

} // namespace

std::pair<Handle, QString> listen(const QString& /*folder*/) {
    const Handle handle = newSocket(SOCK_STREAM);
    if (!bindToAny(handle) || ::listen(static_cast<SOCKET>(handle), 16) != 0) {
        const TestError error = systemError("listen");
        close(handle);
        throw error;
    }
    setNonBlocking(handle);
    return {handle, QStringLiteral("127.0.0.1:%1").arg(boundPort(handle))};
}

Handle accept(Handle listen) {
    const SOCKET accepted = ::accept(static_cast<SOCKET>(listen), nullptr, nullptr);
    if (accepted == INVALID_SOCKET) {
        return None;
    }
    const auto handle = static_cast<Handle>(accepted);
    setNonBlocking(handle);
    return handle;
}

Handle connect(const QString& address) {
    const auto port = portOf(address);
    if (!port) {
        return None;
    }
    const sockaddr_in target = local(*port);
    const Handle handle = newSocket(SOCK_STREAM);
    if (::connect(static_cast<SOCKET>(handle), reinterpret_cast<const sockaddr*>(&target), sizeof target) !=
        0) {
        close(handle);
        return None;
    }
    setNonBlocking(handle);
    return handle;
}

// A datagram socket connected to itself.
std::pair<Handle, Handle> wakerPair() {
    const Handle handle = newSocket(SOCK_DGRAM);
    if (!bindToAny(handle)) {
        throw systemError("bind");
    }
    const sockaddr_in own = local(boundPort(handle));
    if (::connect(static_cast<SOCKET>(handle), reinterpret_cast<const sockaddr*>(&own), sizeof own) != 0) {
        throw systemError("connect");
    }
    setNonBlocking(handle);
    return {handle, handle};
}

void close(Handle handle) {
    ::closesocket(static_cast<SOCKET>(handle));
}

QStringList dataSourceLines(const QString& address) {
    if (const auto port = portOf(address)) {
        return {QStringLiteral("SERVER = 127.0.0.1"), QStringLiteral("PORT = %1").arg(*port)};
    }
    return {QStringLiteral("SERVER = localhost"), QStringLiteral("SOCKET = ") + address};
}

} // namespace tarvessa::test::sockets
