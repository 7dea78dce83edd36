#include "ui/Refusal.h"

#include "ui/MessageBoxes.h"

#include <QLineEdit>

namespace tarvessa {

void refuse(QWidget* field, const QString& text) {
    boxes::inform(field->window(), text);
    focusToRetype(field);
}

void focusToRetype(QWidget* field) {
    field->setFocus();
    if (auto* edit = qobject_cast<QLineEdit*>(field))
        edit->selectAll();
}

} // namespace tarvessa
