#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <chrono>
#include <optional>
#include <utility>
#include <vector>

/// The sockets that the proxy is made of: unix sockets, and on Windows, where the driver has none, TCP
/// within this machine. An address is the path of a unix socket there and "127.0.0.1:port" here.
namespace tarvessa::test::sockets {

using Handle = qintptr;
constexpr Handle None = -1;
constexpr qsizetype PendingLimit = 1 << 20;

/// A socket to be watched, for what, and whether something came or the other side has gone.
struct Watch {
    Handle handle;
    bool read;
    bool write;
    bool arrived = false;
};

/// A socket that listens at an address of its own, the second value; a unix socket lies in `folder`.
/// Raises TestError.
std::pair<Handle, QString> listen(const QString& folder);

/// The next connection that waits at a listening socket; None when there is none.
Handle accept(Handle listen);

/// A connection to `address`, or None.
Handle connect(const QString& address);

/// Two ends for waking a thread out of `wait`: what goes into the first comes out of the second.
/// Raises TestError.
std::pair<Handle, Handle> wakerPair();

/// Waits until one of the sockets has what it is watched for, at most for `patience` where that is given
/// (Windows counts it in whole milliseconds). A handle that is None is passed over. False when interrupted.
bool wait(std::vector<Watch>& watched, std::optional<std::chrono::nanoseconds> patience = std::nullopt);

/// Adds what can be read now to `target`, within reason; false when the other side has closed.
bool receive(Handle handle, QByteArray& target);

/// Sends what can be sent now and takes it off `source`; false when the other side has closed.
bool send(Handle handle, QByteArray& source);

void close(Handle handle);

/// The lines of a data source that lead to `address`. Where it is none, they lead to no server.
QStringList dataSourceLines(const QString& address);

} // namespace tarvessa::test::sockets
