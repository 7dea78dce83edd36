#pragma once

class QWidget;

namespace tarvessa {

/// Gives a window that is not shown yet its preferred size, or what its screen has room for with the window's
/// frame around it.
void resizeToContents(QWidget* window);

} // namespace tarvessa
