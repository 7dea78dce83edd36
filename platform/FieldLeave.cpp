#include "platform/FieldLeave.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

namespace tarvessa {

namespace {

/// Keeps one mouse press from its control; lives until the event at hand is done with.
class PressEater : public QObject {
  public:
    PressEater() {
        qApp->installEventFilter(this);
        deleteLater();
    }

    bool eventFilter(QObject*, QEvent* event) override { return event->type() == QEvent::MouseButtonPress; }
};

} // namespace

FieldLeave::FieldLeave(QWidget* field) : QObject(field), m_field(field) {
    connect(qApp, &QApplication::focusChanged, this, &FieldLeave::focusChanged);
}

void FieldLeave::focusChanged(QWidget* old, QWidget* now) {
    const auto isOfField = [this](QWidget* widget) {
        return widget && (widget == m_field || m_field->isAncestorOf(widget));
    };
    const QWidget* form = m_field->window();
    if (!isOfField(old) || !now || isOfField(now) || now->window() != form || !form->isVisible())
        return;
    const bool pressed = QApplication::mouseButtons() != Qt::NoButton;
    Q_EMIT left();
    // A box took the release of the press that moved the focus. The press alone would hold a button down for
    // ever.
    if (pressed && QApplication::mouseButtons() == Qt::NoButton)
        new PressEater;
}

} // namespace tarvessa
