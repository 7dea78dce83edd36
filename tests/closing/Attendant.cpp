#include "closing/Attendant.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QMessageBox>
#include <QPointer>
#include <QTimer>

namespace tarvessa::test {

Attendant::Attendant() {
    qApp->installEventFilter(this);
}

void Attendant::forget() {
    m_texts.clear();
    m_windows.clear();
}

bool Attendant::eventFilter(QObject* object, QEvent* event) {
    if (event->type() != QEvent::Show)
        return false;
    if (auto* box = qobject_cast<QMessageBox*>(object)) {
        m_texts.append(box->text() + u'\n' + box->informativeText() + u'\n' + box->detailedText());
        QTimer::singleShot(0, box, [box] {
            QAbstractButton* yes = box->button(QMessageBox::Yes);
            QAbstractButton* answer = yes ? yes : box->button(QMessageBox::Ok);
            if (answer)
                answer->click();
            else
                box->reject();
        });
    } else if (auto* window = qobject_cast<QDialog*>(object); window && window->isModal()) {
        m_windows.append(window->objectName());
        QTimer::singleShot(0, this, [this, target = QPointer<QDialog>(window)] {
            if (target)
                attend(target);
        });
    }
    return false;
}

void Attendant::attend(QWidget* window) {
    const QPointer<QWidget> target(window);
    const Action action = m_actions.value(window->objectName());
    if (action)
        action(window);
    if (target && target->isVisible())
        target->close();
}

} // namespace tarvessa::test
