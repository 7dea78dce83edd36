#pragma once

#include <QByteArray>

#include <chrono>

struct xcb_connection_t;

namespace tarvessa::bench {

/// Watches from outside, over the X protocol, when another program's window has its picture on the screen.
/// Works where no window manager puts frames around windows.
class WindowWatch {
  public:
    using Clock = std::chrono::steady_clock;

    /// Starts listening on the display of the environment. Raises std::runtime_error when there is none.
    WindowWatch();
    ~WindowWatch();
    WindowWatch(const WindowWatch&) = delete;
    WindowWatch& operator=(const WindowWatch&) = delete;

    /// Waits for the next window that appears and until its picture no longer changes. Gives the moment from
    /// which it looked as it does in the end, to within a few milliseconds. Only a strip at its left is
    /// compared, where the first column of a listing lies. Raises std::runtime_error when none appears.
    Clock::time_point firstComplete();

  private:
    unsigned nextMapped();
    QByteArray strip(unsigned window);

    xcb_connection_t* m_connection;
};

} // namespace tarvessa::bench
