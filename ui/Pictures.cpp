#include "ui/Pictures.h"

#include <array>

using namespace Qt::StringLiterals;

// Has to be called from outside any namespace.
static void loadResources() {
    Q_INIT_RESOURCE(pictures);
}

namespace tarvessa::pictures {

namespace {

constexpr std::array<int, 7> sizes = {16, 20, 24, 32, 48, 64, 128};

QIcon stored(const QString& name) {
    // The linker drops the resources of a static library that nothing refers to.
    loadResources();
    QIcon icon;
    for (const int size : sizes)
        icon.addPixmap(QPixmap(u":/pictures/%1-%2"_s.arg(name).arg(size)));
    return icon;
}

} // namespace

QIcon check() {
    return stored(u"check"_s);
}

QIcon error() {
    return stored(u"error"_s);
}

QIcon trash() {
    return stored(u"trash"_s);
}

QIcon calendar() {
    return stored(u"calendar"_s);
}

QIcon printer() {
    return stored(u"printer"_s);
}

QIcon application() {
    return stored(u"application"_s);
}

} // namespace tarvessa::pictures
