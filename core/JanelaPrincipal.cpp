#include "core/JanelaPrincipal.h"

#include "ui/Pictures.h"

#include <QApplication>
#include <QPointer>
#include <QWidget>

namespace tarvessa {

namespace {

struct Emprestimo {
    QPointer<const QWidget> form;
    QIcon picSucesso;
};

Emprestimo& emprestimo() {
    static Emprestimo unico;
    return unico;
}

} // namespace

void EmprestaJanelaPrincipal(const QWidget* form, const QIcon& picSucesso) {
    emprestimo() = {form, picSucesso};
}

QIcon PicSucesso() {
    return emprestimo().form ? emprestimo().picSucesso : pictures::check();
}

TextMeasure MedidaImpressa() {
    const QWidget* form = emprestimo().form;
    return TextMeasure(form ? form->font() : QApplication::font());
}

} // namespace tarvessa
