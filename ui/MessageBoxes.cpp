#include "ui/MessageBoxes.h"

#include "ui/Manual.h"

#include <QGridLayout>
#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>

using namespace Qt::StringLiterals;

namespace tarvessa::boxes {

namespace {

const QString usualTitle = u"Atenção!!!"_s;

// The label keeps the whole text, also for a screen reader. Only its visible part is limited, so that the
// buttons stay on the screen.
void scrollLongText(QMessageBox& box) {
    constexpr int screenParts = 2;
    auto* label = box.findChild<QLabel*>(u"qt_msgbox_label"_s);
    auto* layout = qobject_cast<QGridLayout*>(box.layout());
    const QSize room = box.screen()->availableSize() / screenParts;
    if (!label || !layout)
        return;
    // Measuring hundreds of lines takes long, so it is done once.
    const QSize text = label->sizeHint();
    if (text.height() <= room.height())
        return;
    auto* area = new QScrollArea;
    area->setObjectName(u"textoLongo"_s);
    area->setAccessibleName(box.windowTitle());
    area->setFrameShape(QFrame::NoFrame);
    const int bar = area->verticalScrollBar()->sizeHint().width();
    area->setMinimumSize(qMin(text.width() + bar, room.width()), room.height());
    label->resize(text);
    area->setWidgetResizable(text.width() + bar > room.width());
    delete layout->replaceWidget(label, area);
    area->setWidget(label);
}

int show(QWidget* parent, const QString& text, QMessageBox::Icon icon, QMessageBox::StandardButtons buttons,
         const QString& title = usualTitle) {
    int answer = QMessageBox::NoButton;
    {
        QMessageBox box(icon, title, text, buttons, parent);
        box.setTextFormat(Qt::PlainText);
        manual::opensAt(&box, u"avisos"_s);
        scrollLongText(box);
        answer = box.exec();
    }
    // What follows may keep the program busy for long, so the area under the box is repainted first.
    if (parent)
        parent->window()->repaint();
    return answer;
}

} // namespace

void inform(QWidget* parent, const QString& text) {
    show(parent, text, QMessageBox::Information, QMessageBox::Ok);
}

void exclaim(QWidget* parent, const QString& text, const QString& title) {
    show(parent, text, QMessageBox::Warning, QMessageBox::Ok, title.isEmpty() ? usualTitle : title);
}

bool ask(QWidget* parent, const QString& text, QMessageBox::Icon icon) {
    return show(parent, text, icon, QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
}

} // namespace tarvessa::boxes
