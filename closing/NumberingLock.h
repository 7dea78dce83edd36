#pragma once

namespace tarvessa {

/// A named lock of the server, held from the advance of a counter in `empresa` until its value was read, so
/// that two workstations of one database never get the same document number. A server without such locks is
/// used without one.
class NumberingLock {
  public:
    /// Waits some seconds for another workstation. Raises RuntimeError when the lock is still taken (no
    /// counter was touched) and when the connection is lost.
    NumberingLock();

    /// Releases the lock; never raises.
    ~NumberingLock();

    NumberingLock(const NumberingLock&) = delete;
    NumberingLock& operator=(const NumberingLock&) = delete;

  private:
    bool m_held = false;
};

} // namespace tarvessa
