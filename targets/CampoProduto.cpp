#include "targets/CampoProduto.h"

#include "core/AcessoDados.h"
#include "products/PesquisaProduto.h"
#include "ui/FieldLeave.h"
#include "ui/Guard.h"
#include "ui/MessageBoxes.h"
#include "ui/TextBox.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {
constexpr const char* propriedade = "tag";
}

CampoProduto::CampoProduto(TextBox* caixa, QWidget* form, const QString& inexistente)
    : QObject(form), m_caixa(caixa), m_form(form), m_inexistente(inexistente) {
    m_caixa->setProperty(propriedade, QString());
    // The focus is still on its way when the box is left: a window opened there and then would take the click
    // or the change of tab that is under way apart.
    onSignal(new FieldLeave(caixa), &FieldLeave::left, form, [this] {
        m_pendente = true;
        QMetaObject::invokeMethod(
            this, [this] { guarded(m_form, [this] { conclui(); }); }, Qt::QueuedConnection);
    });
}

QString CampoProduto::codigo() const {
    return m_caixa->property(propriedade).toString();
}

void CampoProduto::limpa() {
    m_caixa->setProperty(propriedade, QString());
    m_caixa->showText({});
}

bool CampoProduto::conclui() {
    if (!std::exchange(m_pendente, false) || !m_form->isVisible())
        return true;
    return procura();
}

bool CampoProduto::procura() {
    m_caixa->setProperty(propriedade, QString());
    QString texto = m_caixa->lookUpText();
    if (texto.isEmpty())
        return true;
    const QString escolhido = PesquisaProduto(texto, m_form);
    TemRegistro = AbreRS(u"Select CodFabr, Descricao from produtos where CodFabr='"_s + escolhido + u"'"_s);
    if (TemRegistro) {
        m_caixa->showText(rs.field(u"Descricao").text());
        m_caixa->home(false);
        m_caixa->setProperty(propriedade, rs.field(u"CodFabr").text());
        rs.close();
        return true;
    }
    rs.close();
    limpa();
    boxes::inform(m_form, m_inexistente);
    return false;
}

} // namespace tarvessa
