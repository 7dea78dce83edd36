#pragma once

#include <QtGlobal>

namespace tarvessa {

/// While it lives, no other workstation of the same database hands out a document number: holds a named lock
/// of the server from the advance of a counter in `empresa` to its reading. A server that has no such lock
/// is no reason to stop; the numbering then goes on without it.
class TravaDeNumeracao {
  public:
    /// Waits for another workstation to finish. Raises RuntimeError when it has not after some seconds (no
    /// counter was touched then) and when the connection is lost.
    TravaDeNumeracao();

    /// Releases the lock. Never raises: a lost connection has released it already, and must not hide the
    /// error that led here.
    ~TravaDeNumeracao();

    TravaDeNumeracao(const TravaDeNumeracao&) = delete;
    TravaDeNumeracao& operator=(const TravaDeNumeracao&) = delete;

  private:
    bool m_minha = false;
};

} // namespace tarvessa
