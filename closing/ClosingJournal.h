#pragma once

#include "closing/Sale.h"

#include <QFile>
#include <QList>
#include <QSet>

#include <optional>

namespace tarvessa {

/// Notes of the closings and conversions under way on this station, in small files in the program's folder,
/// removed when the work is done. A file left after a cut records the terms the closing began with, or the
/// number a document was given. What has been done is known from the database alone.
namespace closingjournal {

/// The note of the closing under way, in one file that a batch writes over for each pre-sale: making and
/// removing a file takes as long as three statements.
class ClosingNote {
  public:
    ClosingNote() = default;
    ClosingNote(const ClosingNote&) = delete;
    ClosingNote& operator=(const ClosingNote&) = delete;
    /// Removes the file unless it is kept.
    ~ClosingNote();

    /// Notes a closing before its first write, in place of an older note of the same pre-sale. False when the
    /// file cannot be written; nothing is raised.
    bool begin(const Sale& sale);

    /// The closing has come to its end.
    void end();

    /// Leaves the file with what was begun; the next begin() makes another.
    void keep();

  private:
    bool create(qint32 number);

    QFile m_file;
    qsizetype m_length = 0;
    QSet<qint32> m_older; // the pre-sales that had a note before
};

/// Removes the notes of a pre-sale's closing.
void forget(qint32 number);

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

/// The number of a conversion that was begun and did not end; 0 for none.
qint32 numberGivenTo(qint32 document);
QList<Conversion> conversions();

} // namespace closingjournal

} // namespace tarvessa
