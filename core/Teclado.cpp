#include "core/Teclado.h"

#include "core/AcessoDados.h"
#include "ui/Guard.h"
#include "ui/TextBox.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenuBar>

using namespace Qt::StringLiterals;

namespace tarvessa {

Teclado::Teclado(QWidget* form, std::function<void()> aoEscape)
    : QObject(form), m_form(form), m_aoEscape(std::move(aoEscape)) {
    qApp->installEventFilter(this);
}

bool Teclado::eventFilter(QObject* receptor, QEvent* evento) {
    if (evento->type() != QEvent::KeyPress || evento == m_reenviada)
        return false;
    auto* controle = qobject_cast<QWidget*>(receptor);
    // A drop-down list or a message box is a window of its own and keeps its keys; so does an open menu bar.
    if (!controle || controle->window() != m_form || qobject_cast<QMenuBar*>(controle))
        return false;
    auto* tecla = static_cast<QKeyEvent*>(evento);
    if (m_antes) {
        // A key whose handler failed has had its effect: an Escape must not close the form on top of it.
        bool engolida = true;
        guarded(m_form, [&] { engolida = m_antes(controle, tecla->key()); });
        if (engolida)
            return true;
    }
    if (tecla->key() == Qt::Key_Return || tecla->key() == Qt::Key_Enter) {
        Shell->sendKeys(u"{TAB}"_s);
        return true;
    }
    if (tecla->key() == Qt::Key_Escape) {
        guarded(m_form, m_aoEscape);
        return true;
    }
    const QString texto = tecla->text();
    // Ctrl and Alt together are AltGr, which types characters; alone each makes a shortcut.
    const bool ctrl = tecla->modifiers().testFlag(Qt::ControlModifier);
    const bool alt = tecla->modifiers().testFlag(Qt::AltModifier);
    if (texto.isEmpty() || !texto[0].isPrint() || ctrl != alt)
        return false;
    const QString conforme = TextBox::conventional(texto);
    if (conforme == texto)
        return false;
    QKeyEvent trocada(QEvent::KeyPress, tecla->key(), tecla->modifiers(), conforme, tecla->isAutoRepeat(),
                      static_cast<quint16>(tecla->count()));
    m_reenviada = &trocada;
    QApplication::sendEvent(controle, &trocada);
    m_reenviada = nullptr;
    return true;
}

} // namespace tarvessa
