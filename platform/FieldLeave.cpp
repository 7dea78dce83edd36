#include "platform/FieldLeave.h"

#include <QApplication>
#include <QWidget>

namespace tarvessa {

FieldLeave::FieldLeave(QWidget* field) : QObject(field), m_field(field) {
    connect(qApp, &QApplication::focusChanged, this, &FieldLeave::focusChanged);
}

void FieldLeave::focusChanged(QWidget* old, QWidget* now) {
    const auto isOfField = [this](QWidget* widget) {
        return widget && (widget == m_field || m_field->isAncestorOf(widget));
    };
    const QWidget* form = m_field->window();
    if (isOfField(old) && now && !isOfField(now) && now->window() == form && form->isVisible())
        Q_EMIT left();
}

} // namespace tarvessa
