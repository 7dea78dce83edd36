#pragma once

#include "base/Clock.h"

#include <QDate>

namespace tarvessa {

/// The first day of the period that the panel lists, which ends today.
inline QDate firstListedDay() {
    constexpr int listedDays = 7;
    return clock::today().addDays(-listedDays);
}

} // namespace tarvessa
