#pragma once

#include "bench/support/Measure.h"

#include <QObject>
#include <QStringList>

#include <vector>

namespace tarvessa::bench {

/// While it lives, presses the default button of every message box as soon as the box is on the screen, and
/// keeps when each one was begun, came and went: the operator's time is not the program's. It watches the
/// boxes of main windows.
class BoxAnswerer : public QObject {
    Q_OBJECT

  public:
    struct Box {
        QString text;
        Taken begun; ///< its making began
        Taken shown;
        Taken answered; ///< it left the screen
        Taken gone;     ///< it is taken apart, and its caller goes on
    };

    BoxAnswerer();

    const std::vector<Box>& boxes() const { return m_boxes; }

    /// The time between two boxes, which is what the program did of itself.
    static Taken between(const Box& first, const Box& second);

    /// The time of taking the one apart and making the other.
    static Taken around(const Box& first, const Box& second);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    std::vector<Box> m_boxes;
    const QObject* m_last = nullptr;
    Taken m_lastBegun;
};

} // namespace tarvessa::bench
