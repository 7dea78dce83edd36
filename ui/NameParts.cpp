#include "ui/NameParts.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>
#include <QToolBar>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace tarvessa {

void nameParts(QWidget* window) {
    for (QComboBox* list : window->findChildren<QComboBox*>())
        list->view()->setAccessibleName(list->accessibleName());
    for (QLineEdit* box : window->findChildren<QLineEdit*>())
        for (QToolButton* clear : box->findChildren<QToolButton*>())
            clear->setAccessibleName(u"Limpar: "_s + box->accessibleName());
    for (QToolBar* bar : window->findChildren<QToolBar*>())
        for (QToolButton* button : bar->findChildren<QToolButton*>(u"qt_toolbar_ext_button"_s))
            button->setAccessibleName(u"Mais botões: "_s + bar->windowTitle());
}

} // namespace tarvessa
