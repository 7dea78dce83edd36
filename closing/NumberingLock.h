#pragma once

#include "closing/ServerLock.h"

namespace tarvessa {

/// Held from the advance of a counter in `empresa` until its value was read, so that two workstations of one
/// database never get the same document number.
class NumberingLock {
  public:
    /// Waits some seconds for another workstation. Raises RuntimeError when the lock is still taken (no
    /// counter was touched) and when the connection is lost.
    NumberingLock();

  private:
    ServerLock m_lock;
};

} // namespace tarvessa
