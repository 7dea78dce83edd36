#include "ui/Shades.h"

namespace tarvessa::shades {

namespace {

QColor mixed(const QColor& one, const QColor& other, double shareOfOther) {
    const auto part = [shareOfOther](float of, float with) {
        return static_cast<float>(of + (with - of) * shareOfOther);
    };
    return QColor::fromRgbF(part(one.redF(), other.redF()), part(one.greenF(), other.greenF()),
                            part(one.blueF(), other.blueF()));
}

} // namespace

QColor quietText(const QPalette& palette) {
    constexpr double shareOfGround = 0.4;
    return mixed(palette.color(QPalette::Text), palette.color(QPalette::Base), shareOfGround);
}

QColor currentRow(const QPalette& palette) {
    constexpr double shareOfHighlight = 0.15;
    return mixed(palette.color(QPalette::Base), palette.color(QPalette::Highlight), shareOfHighlight);
}

} // namespace tarvessa::shades
