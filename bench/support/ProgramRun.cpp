#include "bench/support/ProgramRun.h"

#include "bench/support/WindowWatch.h"

#include <QFile>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace tarvessa::bench {

ProgramRun::ProgramRun() {
    WindowWatch watch;
    m_process.setProcessChannelMode(QProcess::ForwardedChannels);
    const auto begin = WindowWatch::Clock::now();
    m_process.start(QStringLiteral(TARVESSA_PROGRAM), QStringList());
    m_process.waitForStarted(-1);
    const auto complete = watch.firstComplete();
    m_seconds = std::chrono::duration<double>(complete - begin).count();
    if (m_process.waitForFinished(0))
        throw std::runtime_error("the program ended by itself");
}

ProgramRun::~ProgramRun() {
    m_process.terminate();
    m_process.waitForFinished(-1);
}

double ProgramRun::memory(const QByteArray& figure) const {
    constexpr double bytesPerKibibyte = 1024;
    constexpr double bytesPerMegabyte = 1e6;
    QFile status(u"/proc/%1/status"_s.arg(m_process.processId()));
    if (status.open(QIODevice::ReadOnly))
        for (const QByteArray& line : status.readAll().split('\n'))
            if (line.startsWith(figure + ':'))
                return line.simplified().split(' ').value(1).toDouble() * bytesPerKibibyte / bytesPerMegabyte;
    throw std::runtime_error("the process has no such memory figure");
}

} // namespace tarvessa::bench
