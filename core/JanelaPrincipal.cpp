#include "core/JanelaPrincipal.h"

#include "platform/Pictures.h"
#include "platform/Twips.h"

#include <QApplication>
#include <QFontMetricsF>
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

double LarguraImpressa(const QString& texto) {
    const QWidget* form = emprestimo().form;
    return textTwips(form ? form->font() : QApplication::font(), texto);
}

} // namespace tarvessa
