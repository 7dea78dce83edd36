#include "ui/TextMeasure.h"

#include <QGuiApplication>
#include <QScreen>

namespace tarvessa {

namespace {
constexpr double twipsPerInch = 1440.0;
constexpr double notMeasured = -1;
} // namespace

TextMeasure::TextMeasure(const QFont& font)
    : m_metrics(font),
      m_twipsPerPixel(twipsPerInch / QGuiApplication::primaryScreen()->logicalDotsPerInchX()) {
    m_pixels.fill(notMeasured);
}

double TextMeasure::twips(QStringView text) {
    double width = 0;
    for (const QChar character : text)
        width += pixels(character);
    return width * m_twipsPerPixel;
}

double TextMeasure::pixels(QChar character) {
    if (character.unicode() >= remembered)
        return m_metrics.horizontalAdvance(character);
    double& width = m_pixels[character.unicode()];
    if (width == notMeasured)
        width = m_metrics.horizontalAdvance(character);
    return width;
}

} // namespace tarvessa
