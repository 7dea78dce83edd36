#pragma once

#include <QString>

class QFont;
class QWidget;

namespace tarvessa {

/// Twips (1/1440 inch) to the logical pixels of the widget's screen, to the nearest.
int twipsToPixels(const QWidget* widget, int twips);

/// Logical pixels of the widget's screen to twips.
int pixelsToTwips(const QWidget* widget, int pixels);

/// Printed width of a text in a font on the primary screen, in twips.
double textTwips(const QFont& font, const QString& text);

} // namespace tarvessa
