#pragma once

#include <QSize>

class QWidget;

namespace tarvessa {

/// Gives a window that is not shown yet the size `wanted`, or what its screen has room for with the window's
/// frame around it. Without `wanted` it is the window's preferred size.
void fitToScreen(QWidget* window, QSize wanted = {});

} // namespace tarvessa
