#pragma once

#include <QString>

namespace tarvessa {

/// A named lock of the server, of one database, held while this object lives. A server without such locks
/// grants everything.
class ServerLock {
  public:
    /// Waits so many seconds for another station; see `isTaken`. `name` is a short word of ASCII letters.
    /// Raises RuntimeError when the connection is lost or the wait is broken off.
    ServerLock(const QString& name, int waitSeconds);

    /// Releases the lock; never raises.
    ~ServerLock();

    ServerLock(const ServerLock&) = delete;
    ServerLock& operator=(const ServerLock&) = delete;

    /// True when another station still holds it, or may hold it.
    bool isTaken() const { return m_taken; }

  private:
    QString m_name;
    bool m_held = false;
    bool m_taken = false;
};

} // namespace tarvessa
