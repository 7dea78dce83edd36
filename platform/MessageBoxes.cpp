#include "platform/MessageBoxes.h"

using namespace Qt::StringLiterals;

namespace tarvessa::boxes {

namespace {

const QString usualTitle = u"Atenção!!!"_s;

int show(QWidget* parent, const QString& text, QMessageBox::Icon icon, QMessageBox::StandardButtons buttons,
         const QString& title = usualTitle) {
    QMessageBox box(icon, title, text, buttons, parent);
    box.setTextFormat(Qt::PlainText);
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
