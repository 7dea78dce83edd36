#include "core/Teclado.h"

#include "core/AcessoDados.h"
#include "ui/Guard.h"
#include "ui/TextBox.h"

#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QMenuBar>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

// The press has closed the window in which it began; its repetitions must not close the next one.
bool repeatsEscape(const QEvent* event) {
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride)
        return false;
    const auto* key = static_cast<const QKeyEvent*>(event);
    return key->key() == Qt::Key_Escape && key->isAutoRepeat();
}

// A control that claims the key before any shortcut has a meaning of its own for it.
bool claims(QWidget* control, const QKeyEvent* event) {
    QKeyEvent override(QEvent::ShortcutOverride, event->key(), event->modifiers());
    override.ignore();
    static_cast<QObject*>(control)->event(&override);
    return override.isAccepted();
}

} // namespace

Teclado::Teclado(QWidget* form, std::function<void()> onEscape)
    : QObject(form), m_form(form), m_onEscape(std::move(onEscape)) {
    qApp->installEventFilter(this);
}

bool Teclado::eventFilter(QObject* receiver, QEvent* event) {
    auto* control = qobject_cast<QWidget*>(receiver);
    if (!control)
        return false;
    if (event->type() == QEvent::Wheel && control->window() == m_form && qobject_cast<QComboBox*>(control)) {
        // Not accepted, it goes on to what can scroll.
        event->ignore();
        return true;
    }
    if (repeatsEscape(event)) {
        // An accepted override keeps the key from becoming a shortcut.
        event->accept();
        return true;
    }
    return event->type() == QEvent::KeyPress && event != m_resent &&
           keyPressed(control, static_cast<QKeyEvent*>(event));
}

bool Teclado::keyPressed(QWidget* control, QKeyEvent* event) {
    // A drop-down list or a message box is a window of its own and keeps its keys; so does an open menu bar.
    if (control->window() != m_form || qobject_cast<QMenuBar*>(control))
        return false;
    if (m_keyFilter) {
        // A key whose handler failed has had its effect: an Escape must not close the form on top of it.
        bool swallowed = true;
        guarded(m_form, [&] { swallowed = m_keyFilter(control, event->key()); });
        if (swallowed)
            return true;
    }
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if ((enter || event->key() == Qt::Key_Escape) && claims(control, event))
        return false;
    if (enter) {
        Shell->sendKeys(u"{TAB}"_s);
        return true;
    }
    if (event->key() == Qt::Key_Escape) {
        guarded(m_form, m_onEscape);
        return true;
    }
    return typed(control, event);
}

// True when a character was sent on in its converted form.
bool Teclado::typed(QWidget* control, const QKeyEvent* event) {
    const QString text = event->text();
    // Ctrl and Alt together are AltGr, which types characters; alone each makes a shortcut.
    const bool ctrl = event->modifiers().testFlag(Qt::ControlModifier);
    const bool alt = event->modifiers().testFlag(Qt::AltModifier);
    if (text.isEmpty() || !text[0].isPrint() || ctrl != alt)
        return false;
    const QString conventional = TextBox::conventional(text);
    if (conventional == text)
        return false;
    QKeyEvent changed(QEvent::KeyPress, event->key(), event->modifiers(), conventional, event->isAutoRepeat(),
                      static_cast<quint16>(event->count()));
    m_resent = &changed;
    QApplication::sendEvent(control, &changed);
    m_resent = nullptr;
    return true;
}

} // namespace tarvessa
