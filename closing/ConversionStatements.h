#pragma once

#include <QString>

/// What turns a sales document (DAV) into a pre-sale once it has its number, in the order in which it is
/// sent.
namespace tarvessa::conversionstatements {

/// Its lines in `orcamento`, open from then on.
QString moveLines(qint32 nrDav, qint32 nrPv);

/// Its notes in `observacao`.
QString moveNotes(qint32 nrDav, qint32 nrPv);

} // namespace tarvessa::conversionstatements
