#include "products/ProductBox.h"

#include "core/AcessoDados.h"
#include "core/Esquema.h"
#include "products/PesquisaProduto.h"
#include "ui/FieldLeave.h"
#include "ui/Guard.h"
#include "ui/MessageBoxes.h"
#include "ui/TextBox.h"

#include <QScopedValueRollback>

#include <utility>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {
constexpr const char* tag = "tag";
constexpr qsizetype longestText = 200;
} // namespace

ProductBox::ProductBox(TextBox* box, QWidget* form, LookUp lookUp)
    : QObject(form), m_box(box), m_form(form), m_lookUp(std::move(lookUp)) {
    m_box->setProperty(tag, QString());
    // Queued: while the focus is still moving, a window opened here would take the rest of the click or of
    // the change of tab that moved it.
    onSignal(new FieldLeave(box), &FieldLeave::left, form, [this] {
        if (m_searching)
            return;
        m_pending = true;
        QMetaObject::invokeMethod(
            this, [this] { guarded(m_form, [this] { settle(); }); }, Qt::QueuedConnection);
    });
}

QString ProductBox::code() const {
    return m_box->property(tag).toString();
}

void ProductBox::clear() {
    m_box->setProperty(tag, QString());
    m_box->showText({});
}

bool ProductBox::settle() {
    if (!std::exchange(m_pending, false) || !m_form->isVisible())
        return true;
    return search();
}

bool ProductBox::search() {
    const QScopedValueRollback<bool> searching(m_searching, true);
    m_box->setProperty(tag, QString());
    QString text = m_box->lookUpText();
    if (text.isEmpty())
        return true;
    if (text.size() > longestText)
        text = cut(text);
    const QString chosen = PesquisaProduto(text, m_form);
    TemRegistro =
        AbreRS(u"Select "_s + m_lookUp.columns + u" from produtos where CodFabr='"_s + chosen + u"'"_s);
    if (rs.atEnd()) {
        rs.close();
        if (m_lookUp.unknown == Unknown::ClearText)
            clear();
        boxes::inform(m_form, m_lookUp.unknownMessage);
        return false;
    }
    const bool storedCode = rs.columnNames().contains(esquema::produtos::codFabr, Qt::CaseInsensitive);
    const QString code = storedCode ? rs.field(esquema::produtos::codFabr).text() : chosen;
    const QString description = rs.field(esquema::produtos::descricao).text();
    rs.close();
    show(code, description);
    return true;
}

QString ProductBox::cut(const QString& text) {
    const QString kept = text.left(longestText);
    m_box->showText(kept);
    boxes::inform(m_form,
                  u"O texto da pesquisa foi cortado em %1 caracteres. Verifique!!!"_s.arg(longestText));
    return kept;
}

void ProductBox::show(const QString& code, const QString& description) {
    m_box->showText(description);
    m_box->home(false);
    m_box->setProperty(tag, code);
    if (m_lookUp.found)
        m_lookUp.found(code);
}

} // namespace tarvessa
