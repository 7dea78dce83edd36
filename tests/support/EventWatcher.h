#pragma once

#include <QEvent>
#include <QObject>

#include <functional>

namespace tarvessa::test {

/// Tells of the events of an object before they are handled, as long as it lives.
class EventWatcher : public QObject {
  public:
    EventWatcher(QObject* target, std::function<void(QEvent::Type)> onSeen) : m_onSeen(std::move(onSeen)) {
        target->installEventFilter(this);
    }

    bool eventFilter(QObject* /*target*/, QEvent* event) override {
        m_onSeen(event->type());
        return false;
    }

  private:
    std::function<void(QEvent::Type)> m_onSeen;
};

} // namespace tarvessa::test
