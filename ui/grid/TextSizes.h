#pragma once

#include <QFont>
#include <QFontInfo>

namespace tarvessa {

/// By how many pixels a text in this font may be made smaller so that it fits: to three quarters, below which
/// it could hardly be read.
inline int mostReduction(const QFont& font) {
    constexpr int parts = 4;
    return QFontInfo(font).pixelSize() / parts;
}

/// The font, smaller by that many pixels; its letters are as wide in proportion as before.
inline QFont reduced(QFont font, int pixels) {
    if (pixels > 0)
        font.setPixelSize(QFontInfo(font).pixelSize() - pixels);
    return font;
}

} // namespace tarvessa
