#include "ui/FitToScreen.h"

#include <QScreen>
#include <QStyle>
#include <QWidget>

namespace tarvessa {

void fitToScreen(QWidget* window, QSize wanted) {
    // The desktop's own frame is not known before the window is shown; the style's title bar is about as
    // high.
    const int title = window->style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, window);
    const int border = window->style()->pixelMetric(QStyle::PM_MdiSubWindowFrameWidth, nullptr, window);
    const QSize room = window->screen()->availableSize() - QSize(2 * border, title + 2 * border);
    window->resize((wanted.isValid() ? wanted : window->sizeHint()).boundedTo(room));
}

} // namespace tarvessa
