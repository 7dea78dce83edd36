#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QMessageBox>

#include <functional>
#include <utility>

namespace tarvessa::test {

/// Sees every event of the program while it lives.
class EventSpy : public QObject {
  public:
    explicit EventSpy(std::function<void(QObject*, QEvent*)> seen) : m_seen(std::move(seen)) {
        qApp->installEventFilter(this);
    }
    bool eventFilter(QObject* object, QEvent* event) override {
        m_seen(object, event);
        return false;
    }

  private:
    std::function<void(QObject*, QEvent*)> m_seen;
};

inline bool isBoxShown(QObject* object, QEvent* event) {
    return event->type() == QEvent::Show && qobject_cast<QMessageBox*>(object);
}

} // namespace tarvessa::test
