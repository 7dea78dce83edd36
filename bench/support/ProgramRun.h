#pragma once

#include <QProcess>

namespace tarvessa::bench {

/// The program itself, started as its user starts it, ended when the object goes.
class ProgramRun {
  public:
    /// Starts the program and waits until its listing is on the screen. Raises std::runtime_error.
    ProgramRun();
    ~ProgramRun();
    ProgramRun(const ProgramRun&) = delete;
    ProgramRun& operator=(const ProgramRun&) = delete;

    /// Seconds from the start of the process to the listing on the screen.
    double secondsToListing() const { return m_seconds; }

    /// A figure of the process such as "VmRSS" (resident now) or "VmHWM" (its highest), in megabytes of a
    /// million bytes. Raises std::runtime_error when there is none of this name.
    double memory(const QByteArray& figure) const;

  private:
    QProcess m_process;
    double m_seconds = 0;
};

} // namespace tarvessa::bench
