#pragma once

#include <QDate>
#include <QList>
#include <QString>

/// Tables for a spreadsheet program, and the files that hold them.
namespace tarvessa::sheet {

struct Column {
    enum class Alignment { Left, Right, Centre };
    QString heading;
    int pixels = 0; // of 96 to an inch
    Alignment alignment = Alignment::Left;
};

struct Cell {
    enum class Kind { Text, Number, Date };
    Kind kind = Kind::Text;
    QString text; // as it is read, a number without points between its thousands

    // Of a number
    double number = 0; // of a percentage its hundredth
    int decimals = 0;  // of the number as it is read
    bool percent = false;

    QDate date;
};

/// Rows for a file, which asks for them in their order.
class Source {
  public:
    virtual ~Source() = default;
    virtual const QList<Column>& columns() const = 0;
    virtual qsizetype rowCount() const = 0;

    /// Row and column from 0. May raise RuntimeError; no file is left then.
    virtual Cell cell(qsizetype row, qsizetype column) const = 0;
};

} // namespace tarvessa::sheet
