#pragma once

#include <QtGlobal>

namespace tarvessa {

/// One operation of the operator, from the event that sets it off to its end. One made while another runs is
/// part of that one, unless it comes out of an event loop of its own (a modal window or a box): then the
/// operator has begun something new.
class Operation {
  public:
    Operation();
    ~Operation();
    Operation(const Operation&) = delete;
    Operation& operator=(const Operation&) = delete;

    /// The operator has left a window that the running operation showed: what it does from now on counts as a
    /// new one.
    static void renew();

    /// The number of the running operation; later ones have greater numbers. 0 while none runs.
    static quint64 current();

    /// The number of the operation that began last; 0 before the first.
    static quint64 latest();

  private:
    quint64 m_outer;
    int m_outerLoopLevel;
};

} // namespace tarvessa
