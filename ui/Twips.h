#pragma once

class QWidget;

namespace tarvessa {

/// Twips (1/1440 inch) to the logical pixels of the widget's screen, to the nearest.
int twipsToPixels(const QWidget* widget, int twips);

/// Logical pixels of the widget's screen to twips.
int pixelsToTwips(const QWidget* widget, int pixels);

} // namespace tarvessa
