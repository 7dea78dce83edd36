#pragma once

#include <QMessageBox>

/// The program's modal boxes, titled "Atenção!!!". Texts are shown as plain text, and a long text scrolls
/// within its box.
namespace tarvessa::boxes {

/// Information icon, OK.
void inform(QWidget* parent, const QString& text);

/// Exclamation icon, OK. A `title` replaces the usual one.
void exclaim(QWidget* parent, const QString& text, const QString& title = {});

/// Yes and No; true for Yes. Escape and closing the box mean No.
bool ask(QWidget* parent, const QString& text, QMessageBox::Icon icon);

} // namespace tarvessa::boxes
