#include "platform/Twips.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QScreen>
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

double textTwips(const QFont& font, const QString& text) {
    const double dpi = QGuiApplication::primaryScreen()->logicalDotsPerInchX();
    return QFontMetricsF(font).horizontalAdvance(text) * twipsPerInch / dpi;
}

} // namespace tarvessa
