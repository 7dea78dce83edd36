#include "bench/support/BoxAnswerer.h"

#include <QApplication>
#include <QEvent>
#include <QMainWindow>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>

namespace tarvessa::bench {

BoxAnswerer::BoxAnswerer() {
    qApp->installEventFilter(this);
}

bool BoxAnswerer::eventFilter(QObject* watched, QEvent* event) {
    // A box joins the panel before anything else of it is made.
    if (event->type() == QEvent::ChildAdded && qobject_cast<QMainWindow*>(watched))
        m_lastBegun = now();
    if (event->type() == QEvent::ChildRemoved && m_last &&
        static_cast<QChildEvent*>(event)->child() == m_last) {
        m_boxes.back().gone = now();
        m_last = nullptr;
    }
    if (event->type() != QEvent::Show && event->type() != QEvent::Hide)
        return false;
    auto* box = qobject_cast<QMessageBox*>(watched);
    if (!box)
        return false;
    if (event->type() == QEvent::Hide) {
        m_boxes.back().answered = now();
        return false;
    }
    m_last = box;
    m_boxes.push_back({box->text(), m_lastBegun, now(), {}, {}});
    QMetaObject::invokeMethod(
        this,
        [box = QPointer<QMessageBox>(box)] {
            if (box)
                box->buttons().constFirst()->click();
        },
        Qt::QueuedConnection);
    return false;
}

Taken BoxAnswerer::between(const Box& first, const Box& second) {
    return second.begun - first.gone;
}

Taken BoxAnswerer::around(const Box& first, const Box& second) {
    return (first.gone - first.answered) + (second.shown - second.begun);
}

} // namespace tarvessa::bench
