#pragma once

#include <QMessageBox>

/// The program's modal boxes, titled "Atenção!!!". Texts are shown as they are, never as rich text; one that
/// would fill the screen scrolls within its box.
namespace tarvessa::boxes {

/// Information icon, OK.
void inform(QWidget* parent, const QString& text);

/// Exclamation icon, OK; titled `title` in place of the usual one where given.
void exclaim(QWidget* parent, const QString& text, const QString& title = {});

/// Yes and No; true for Yes. Escape and closing the box mean No.
bool ask(QWidget* parent, const QString& text, QMessageBox::Icon icon);

} // namespace tarvessa::boxes
