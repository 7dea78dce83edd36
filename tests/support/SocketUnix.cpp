#include "support/Socket.h"
#include "support/TestError.h"

#include <QFile>
#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace tarvessa::test::sockets {

namespace {

TestError systemError(const char* call) {
    return TestError(
        QStringLiteral("%1: %2").arg(QLatin1String(call), QString::fromLocal8Bit(strerror(errno))));
}

sockaddr_un address(const QString& path) {
    const QByteArray name = QFile::encodeName(path);
    sockaddr_un result{};
    result.sun_family = AF_UNIX;
    if (name.size() >= static_cast<qsizetype>(sizeof result.sun_path)) {
        throw TestError(QStringLiteral("too long for a socket: %1").arg(path));
    }
    std::copy(name.begin(), name.end(), result.sun_path);
    return result;
}

Handle newSocket() {
    const int handle = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (handle < 0) {
        throw systemError("socket");
    }
    return handle;
}

} // namespace

std::pair<Handle, QString> listen(const QString& folder) {
    const QString path = folder + QStringLiteral("/s");
    const sockaddr_un local = address(path);
    const Handle handle = newSocket();
    if (::bind(static_cast<int>(handle), reinterpret_cast<const sockaddr*>(&local), sizeof local) != 0 ||
        ::listen(static_cast<int>(handle), 16) != 0) {
        const TestError error = systemError("listen");
        close(handle);
        throw error;
    }
    return {handle, path};
}

Handle accept(Handle listen) {
    return ::accept4(static_cast<int>(listen), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
}

Handle connect(const QString& path) {
    const sockaddr_un target = address(path);
    const Handle handle = newSocket();
    if (::connect(static_cast<int>(handle), reinterpret_cast<const sockaddr*>(&target), sizeof target) != 0) {
        close(handle);
        return None;
    }
    return handle;
}

std::pair<Handle, Handle> wakerPair() {
    std::array<int, 2> ends{};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends.data()) != 0) {
        throw systemError("socketpair");
    }
    return {ends[0], ends[1]};
}

void close(Handle handle) {
    ::close(static_cast<int>(handle));
}

QStringList dataSourceLines(const QString& path) {
    return {QStringLiteral("SERVER = localhost"), QStringLiteral("SOCKET = ") + path};
}

} // namespace tarvessa::test::sockets
