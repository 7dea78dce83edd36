#include "support/ModalHelper.h"

#include "support/Preview.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QTest>
#include <utility>

namespace tarvessa::test {

namespace {

constexpr int IntervalMs = 2;
constexpr int EndTimeoutMs = 2000;

QString describe(const QWidget* window) {
    return QStringLiteral("%1 \"%2\" (%3)")
        .arg(QLatin1String(window->metaObject()->className()), window->windowTitle(), window->objectName());
}

} // namespace

ModalHelper::ModalHelper() {
    m_timer.setInterval(IntervalMs);
    connect(&m_timer, &QTimer::timeout, this, &ModalHelper::watch);
    m_timer.start();
}

void ModalHelper::expect(const QString& text, QMessageBox::StandardButton answer) {
    m_announced += {Announced::Kind::EqualBox, text, answer, {}};
}

void ModalHelper::expectContaining(const QString& part, QMessageBox::StandardButton answer) {
    m_announced += {Announced::Kind::BoxContaining, part, answer, {}};
}

void ModalHelper::onOpen(std::function<void(QWidget*)> action) {
    m_announced += {Announced::Kind::Window, QString(), QMessageBox::NoButton, std::move(action)};
}

QString ModalHelper::problem() const {
    if (!m_error.isEmpty() || m_announced.isEmpty()) {
        return m_error;
    }
    const Announced& first = m_announced.first();
    return QStringLiteral("%1 announced window(s) did not come, first of them: %2")
        .arg(m_announced.size())
        .arg(first.kind == Announced::Kind::Window ? QStringLiteral("a modal window") : first.text);
}

bool ModalHelper::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::Hide) {
        // The same object may be shown again, and is then another window to this helper.
        object->removeEventFilter(this);
        m_handled.removeAll(QPointer<QWidget>(static_cast<QWidget*>(object)));
    }
    return false;
}

void ModalHelper::watch() {
    // The preview of a screen lets that screen go on, but a test answers it like any other window.
    QWidget* window = openPreview();
    if (window == nullptr || window->parentWidget() == nullptr || m_handled.contains(window)) {
        window = QApplication::activeModalWidget();
    }
    if (window == nullptr || m_handled.contains(window)) {
        return;
    }
    m_handled += window;
    window->installEventFilter(this);
    // Not from here: a timer does not fire again while its own slot runs, and the answer may open
    // the next window inside that slot.
    QMetaObject::invokeMethod(
        this,
        [this, target = QPointer<QWidget>(window)] {
            if (target != nullptr && target->isVisible()) {
                handle(target);
            }
        },
        Qt::QueuedConnection);
}

void ModalHelper::handle(QWidget* window) {
    if (auto* box = qobject_cast<QMessageBox*>(window)) {
        handleBox(box);
    } else {
        handleWindow(window);
    }
}

void ModalHelper::handleBox(QMessageBox* box) {
    const Box seen{box->windowTitle(),     box->icon(),         box->text(),
                   box->informativeText(), box->detailedText(), box->standardButtons()};
    m_boxes += seen;
    if (m_announced.isEmpty() || !matches(m_announced.first(), seen)) {
        noteError(QStringLiteral("unannounced box: %1 %2 %3").arg(seen.text, seen.informative, seen.details));
        close(box);
        return;
    }
    const Announced announced = m_announced.takeFirst();
    if (announced.answer == QMessageBox::NoButton) {
        close(box);
    } else if (QAbstractButton* button = box->button(announced.answer)) {
        QTest::mouseClick(button, Qt::LeftButton);
    } else {
        noteError(QStringLiteral("box without the button asked for: %1").arg(seen.text));
        close(box);
    }
}

void ModalHelper::handleWindow(QWidget* window) {
    if (m_announced.isEmpty() || m_announced.first().kind != Announced::Kind::Window) {
        noteError(QStringLiteral("unannounced window: %1").arg(describe(window)));
        close(window);
        return;
    }
    const QPointer<QWidget> target(window);
    const QString which = describe(window);
    m_announced.takeFirst().action(window);
    // The end may be on its way through the event queue.
    if (!QTest::qWaitFor([&target] { return target == nullptr || !target->isVisible(); }, EndTimeoutMs)) {
        noteError(QStringLiteral("window left open: %1").arg(which));
        close(target);
    }
}

void ModalHelper::close(QWidget* window) {
    const QPointer<QWidget> target(window);
    QTest::keyClick(window, Qt::Key_Escape);
    if (target == nullptr || !target->isVisible()) {
        return;
    }
    // Escape was not enough (a box without a way out, a window that swallows the key).
    if (auto* dialog = qobject_cast<QDialog*>(target.data())) {
        dialog->done(QDialog::Rejected);
    } else {
        target->hide();
    }
}

void ModalHelper::noteError(const QString& error) {
    if (m_error.isEmpty()) {
        m_error = error;
    }
}

bool ModalHelper::matches(const Announced& announced, const Box& box) {
    switch (announced.kind) {
    case Announced::Kind::EqualBox:
        return box.text == announced.text;
    case Announced::Kind::BoxContaining:
        return box.text.contains(announced.text) || box.informative.contains(announced.text) ||
               box.details.contains(announced.text);
    case Announced::Kind::Window:
        return false;
    }
    return false;
}

} // namespace tarvessa::test
