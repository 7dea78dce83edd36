#include "bench/support/Painted.h"

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>

namespace tarvessa::bench {

namespace {

class PaintSeen : public QObject {
  public:
    bool seen = false;

  protected:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        seen = seen || event->type() == QEvent::Paint;
        return false;
    }
};

} // namespace

void waitPainted(QWidget* widget) {
    PaintSeen paint;
    widget->installEventFilter(&paint);
    widget->update();
    while (!paint.seen)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

} // namespace tarvessa::bench
