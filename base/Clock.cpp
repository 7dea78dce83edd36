#include "base/Clock.h"

namespace tarvessa::clock {

namespace {

QDateTime& fixedMoment() {
    static QDateTime moment;
    return moment;
}

} // namespace

QDateTime now() {
    if (fixedMoment().isValid())
        return fixedMoment();
    // The system is asked for its time zone once in a second: a batch asks for the time at every statement.
    static qint64 second = -1;
    static QDateTime moment;
    if (const qint64 present = QDateTime::currentSecsSinceEpoch(); present != second) {
        moment = QDateTime::fromSecsSinceEpoch(present);
        second = present;
    }
    return moment;
}

QDate today() {
    return now().date();
}

void fix(const QDateTime& moment) {
    fixedMoment() = moment;
}

} // namespace tarvessa::clock
