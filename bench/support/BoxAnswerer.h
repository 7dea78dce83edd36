#pragma once

#include <QObject>
#include <QStringList>

#include <chrono>
#include <vector>

namespace tarvessa::bench {

/// While it lives, presses the default button of every message box as soon as the box is on the screen, and
/// keeps when each one was begun, came and went: the operator's time is not the program's. It watches the
/// boxes of main windows.
class BoxAnswerer : public QObject {
    Q_OBJECT

  public:
    using Clock = std::chrono::steady_clock;

    struct Box {
        QString text;
        Clock::time_point begun; ///< its making began
        Clock::time_point shown;
        Clock::time_point answered; ///< it left the screen
        Clock::time_point gone;     ///< it is taken apart, and its caller goes on
    };

    BoxAnswerer();

    const std::vector<Box>& boxes() const { return m_boxes; }

    /// Seconds between two boxes, which is what the program did of itself.
    static double between(const Box& first, const Box& second);

    /// Seconds of taking the one apart and making the other.
    static double around(const Box& first, const Box& second);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    std::vector<Box> m_boxes;
    const QObject* m_last = nullptr;
    Clock::time_point m_lastBegun;
};

} // namespace tarvessa::bench
