#pragma once

#include "base/RuntimeError.h"

#include <QList>

namespace tarvessa {

/// What the error report says of a database error that a shop may meet, before the driver's own text.
struct ErrorAdvice {
    QString code;     ///< the server's or the client's number, or an SQLSTATE of the driver manager
    QString sentence; ///< what has happened and what to do, in Portuguese
};

/// All of them, by code; the installation guide has the same table.
const QList<ErrorAdvice>& allErrorAdvice();

/// The sentence for this error; empty when there is none. An SQLSTATE counts only where there is no number.
QString errorAdvice(const RuntimeError& error);

} // namespace tarvessa
