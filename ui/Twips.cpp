#include "ui/Twips.h"

#include <QWidget>

namespace tarvessa {

namespace {
constexpr double twipsPerInch = 1440.0;
}

int twipsToPixels(const QWidget* widget, int twips) {
    return qRound(twips * widget->logicalDpiX() / twipsPerInch);
}

int pixelsToTwips(const QWidget* widget, int pixels) {
    return qRound(pixels * twipsPerInch / widget->logicalDpiX());
}

} // namespace tarvessa
