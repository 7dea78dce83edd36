#pragma once

#include "closing/PvClosing.h"

#include <QList>

#include <optional>

namespace tarvessa {

/// Notes of the closings and conversions under way on this station, one small file each in the program's
/// folder, removed when the work is done. A file left after a cut records the terms the closing
/// began with, or the number a document was given. What has been done is known from the database alone.
namespace closingjournal {

/// Notes a closing before its first write. False when the file cannot be written; nothing is raised.
bool begin(const Sale& sale);

/// The closing has come to its end, or never began.
void end(qint32 number);

/// What an interrupted closing was begun with; nothing without a readable note.
std::optional<Sale> find(qint32 number);

/// The pre-sales with a note, in ascending order.
QList<qint32> all();

/// A sales document and the pre-sale number it is being given.
struct Conversion {
    qint32 document = 0;
    qint32 number = 0;
};

bool beginConversion(const Conversion& conversion);
void endConversion(qint32 document);
QList<Conversion> conversions();

} // namespace closingjournal

} // namespace tarvessa
