#pragma once

#include <QObject>
#include <QWidget>

#include <functional>

namespace tarvessa {

/// The keyboard convention of a form, which sees keys before its controls: Enter moves to the next control,
/// an apostrophe is typed as "´", other characters in upper case, Escape runs the given action. Enter and
/// Escape are left to a control that claims them, as a grid and its find line do while it is open. Escape
/// acts once however long it is held, and the wheel changes no list whose drop-down is closed.
class Teclado : public QObject {
    Q_OBJECT

  public:
    /// Serves `form` for as long as the form lives.
    Teclado(QWidget* form, std::function<void()> onEscape);

    /// Takes a control of the form and the key pressed in it; true swallows the key.
    using KeyFilter = std::function<bool(QWidget* control, int key)>;

    /// Lets `filter` see the form's keys before the convention does. Used by cell editors, whose Enter and
    /// Escape mean something of their own. A filter that raises RuntimeError has swallowed its key; the error
    /// is reported.
    void setKeyFilter(KeyFilter filter) { m_keyFilter = std::move(filter); }

    bool eventFilter(QObject* receiver, QEvent* event) override;

  private:
    bool keyPressed(QWidget* control, QKeyEvent* event);
    bool typed(QWidget* control, const QKeyEvent* event);

    QWidget* m_form;
    std::function<void()> m_onEscape;
    KeyFilter m_keyFilter;
    const QEvent* m_resent = nullptr;
};

} // namespace tarvessa
