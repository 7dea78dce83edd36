#pragma once

#include <QFontMetricsF>
#include <QStringView>

#include <array>

namespace tarvessa {

/// The printed width of texts in one font: their characters' widths one after the other, without kerning.
/// Made for measuring thousands of texts in a row.
class TextMeasure {
  public:
    explicit TextMeasure(const QFont& font);

    /// Width in twips on the primary screen.
    double twips(QStringView text);

  private:
    double pixels(QChar character);

    // Characters up to the end of the Latin letters are measured once.
    static constexpr size_t remembered = 0x180;

    QFontMetricsF m_metrics;
    double m_twipsPerPixel;
    std::array<double, remembered> m_pixels;
};

} // namespace tarvessa
