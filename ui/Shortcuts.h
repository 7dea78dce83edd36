#pragma once

#include <Qt>

class QAbstractButton;
class QTabWidget;

namespace tarvessa {

/// Lets Alt and a letter press the button, and adds the key to the button's tool tip.
void setAltKey(QAbstractButton* button, Qt::Key letter);

/// Gives a button another caption. Qt would drop the Alt key with the old one.
void setCaption(QAbstractButton* button, const QString& caption);

/// Lets keys change the tabs from anywhere in the window: Ctrl+Tab, Ctrl+Shift+Tab, and Alt+1, Alt+2 and so
/// on for one tab each, which its tool tip tells.
void setTabKeys(QTabWidget* tabs);

} // namespace tarvessa
