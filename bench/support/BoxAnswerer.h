#pragma once

#include <QObject>
#include <QStringList>

#include <chrono>
#include <vector>

namespace tarvessa::bench {

/// While it lives, presses the default button of every message box as soon as the box is on the screen, and
/// keeps when each one was begun, came and went: the operator's time is not the program's.
class BoxAnswerer : public QObject {
    Q_OBJECT

  public:
    using Clock = std::chrono::steady_clock;

    struct Box {
        QString text;
        Clock::time_point begun; ///< its making began
        Clock::time_point shown;
        Clock::time_point gone;
    };

    BoxAnswerer();

    const std::vector<Box>& boxes() const { return m_boxes; }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    std::vector<Box> m_boxes;
    Clock::time_point m_lastBegun;
};

} // namespace tarvessa::bench
