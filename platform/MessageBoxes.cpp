#include "platform/MessageBoxes.h"

#include <QGridLayout>
#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>

using namespace Qt::StringLiterals;

namespace tarvessa::boxes {

namespace {

const QString usualTitle = u"Atenção!!!"_s;

// The box's own label keeps the whole text, for a screen reader too; only what shows of it at once is
// bounded, so that the buttons never leave the screen.
void scrollLongText(QMessageBox& box) {
    constexpr int screenParts = 2;
    auto* label = box.findChild<QLabel*>(u"qt_msgbox_label"_s);
    auto* layout = qobject_cast<QGridLayout*>(box.layout());
    const QSize room = box.screen()->availableSize() / screenParts;
    if (!label || !layout || label->sizeHint().height() <= room.height())
        return;
    auto* area = new QScrollArea;
    area->setObjectName(u"textoLongo"_s);
    area->setAccessibleName(box.windowTitle());
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    const int bar = area->verticalScrollBar()->sizeHint().width();
    area->setMinimumSize(qMin(label->sizeHint().width() + bar, room.width()), room.height());
    delete layout->replaceWidget(label, area);
    area->setWidget(label);
}

int show(QWidget* parent, const QString& text, QMessageBox::Icon icon, QMessageBox::StandardButtons buttons,
         const QString& title = usualTitle) {
    QMessageBox box(icon, title, text, buttons, parent);
    box.setTextFormat(Qt::PlainText);
    scrollLongText(box);
    return box.exec();
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
