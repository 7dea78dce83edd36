#pragma once

#include <QColor>
#include <QPalette>

/// Colours made of those of the desktop, each readable on its ground.
namespace tarvessa::shades {

/// Text that stands back, on the ground of text boxes and grids.
QColor quietText(const QPalette& palette);

/// The ground of a grid's current row.
QColor currentRow(const QPalette& palette);

/// A text that was found, and its ground.
inline constexpr QColor foundText(0, 0, 0);
inline constexpr QColor foundGround(255, 224, 130);

} // namespace tarvessa::shades
