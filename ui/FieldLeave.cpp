#include "ui/FieldLeave.h"

#include <QAbstractButton>
#include <QApplication>
#include <QPointer>

namespace tarvessa {

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
    const bool byMouse = QGuiApplication::mouseButtons() != Qt::NoButton;
    const QPointer<QAbstractButton> button = qobject_cast<QAbstractButton*>(now);
    Q_EMIT left();
    // The press that moved the focus reaches the button after this. If a message has consumed its release
    // meanwhile, the button would stay down.
    if (button && byMouse && QGuiApplication::mouseButtons() == Qt::NoButton)
        QMetaObject::invokeMethod(
            button, [button] { button->setDown(false); }, Qt::QueuedConnection);
}

} // namespace tarvessa
