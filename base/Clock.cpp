#include "base/Clock.h"

namespace tarvessa::clock {

namespace {

QDateTime& fixedMoment() {
    static QDateTime moment;
    return moment;
}

} // namespace

QDateTime now() {
    return fixedMoment().isValid() ? fixedMoment() : QDateTime::currentDateTime();
}

QDate today() {
    return now().date();
}

void fix(const QDateTime& moment) {
    fixedMoment() = moment;
}

} // namespace tarvessa::clock
