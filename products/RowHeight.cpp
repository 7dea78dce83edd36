#include "products/RowHeight.h"

#include <cmath>

namespace tarvessa {

namespace {

// Twips
constexpr double lineWidth = 3700;
constexpr int lineHeight = 240;

} // namespace

int wrappedRowHeight(double printedWidth) {
    if (printedWidth <= lineWidth)
        return 0;
    return static_cast<int>(std::nearbyint((printedWidth / lineWidth + 1) * lineHeight));
}

} // namespace tarvessa
