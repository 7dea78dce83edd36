#include "ui/Shortcuts.h"

#include <QAbstractButton>
#include <QShortcut>
#include <QTabWidget>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

QString keyTip(const QKeySequence& keys) {
    return u"Tecla de atalho: "_s + keys.toString(QKeySequence::NativeText);
}

void turn(QTabWidget* tabs, int step) {
    const int count = tabs->count();
    for (int index = tabs->currentIndex() + step + count; index % count != tabs->currentIndex();
         index += step + count)
        if (tabs->isTabEnabled(index % count)) {
            tabs->setCurrentIndex(index % count);
            return;
        }
}

} // namespace

void setAltKey(QAbstractButton* button, Qt::Key letter) {
    const QKeySequence keys(Qt::ALT | letter);
    button->setShortcut(keys);
    const QString tip = button->toolTip();
    button->setToolTip(tip.isEmpty() ? keyTip(keys) : tip + u'\n' + keyTip(keys));
}

void setCaption(QAbstractButton* button, const QString& caption) {
    const QKeySequence keys = button->shortcut();
    button->setText(caption);
    button->setShortcut(keys);
}

void setTabKeys(QTabWidget* tabs) {
    // A tab widget has these two keys itself, but only while it or one of its pages has the focus.
    const auto step = [tabs](const QKeySequence& keys, int by) {
        const auto* shortcut = new QShortcut(keys, tabs);
        QObject::connect(shortcut, &QShortcut::activated, tabs, [tabs, by] { turn(tabs, by); });
    };
    step(Qt::CTRL | Qt::Key_Tab, 1);
    step(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab, -1);
    for (int index = 0; index < tabs->count(); ++index) {
        const QKeySequence keys(Qt::ALT | static_cast<Qt::Key>(Qt::Key_1 + index));
        const auto* shortcut = new QShortcut(keys, tabs);
        QObject::connect(shortcut, &QShortcut::activated, tabs,
                         [tabs, index] { tabs->setCurrentIndex(index); });
        tabs->setTabToolTip(index, keyTip(keys));
    }
}

} // namespace tarvessa
