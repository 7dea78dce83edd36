#pragma once

#include <QObject>
#include <QWidget>

#include <functional>

namespace tarvessa {

/// The keyboard convention of a form, which sees keys before its controls: Enter moves to the next control,
/// an apostrophe is typed as "´", other characters in upper case, Escape runs the given action.
class Teclado : public QObject {
    Q_OBJECT

  public:
    /// Serves `form` for as long as the form lives.
    Teclado(QWidget* form, std::function<void()> aoEscape);

    /// Keys of this control's form come here first: true swallows the key. Used by cell editors, whose Enter
    /// and Escape mean something of their own.
    using Antes = std::function<bool(QWidget* controle, int tecla)>;
    void setAntes(Antes antes) { m_antes = std::move(antes); }

    bool eventFilter(QObject* receptor, QEvent* evento) override;

  private:
    QWidget* m_form;
    std::function<void()> m_aoEscape;
    Antes m_antes;
    const QEvent* m_reenviada = nullptr;
};

} // namespace tarvessa
