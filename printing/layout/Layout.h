#pragma once

#include "printing/layout/Expression.h"
#include "printing/layout/ValueRef.h"

#include <QColor>
#include <QFont>
#include <QLineF>
#include <QPageLayout>
#include <QRectF>
#include <QString>

#include <optional>
#include <vector>

namespace tarvessa {
class RuntimeError;
}

/// The contents of a layout file, which do not change while its report exists. Lengths are in dots.
namespace tarvessa::report {

/// The dot is the unit of all places and sizes on a page, whatever device it is painted on.
inline constexpr int dotsPerInch = 1200;
inline constexpr double dotsPerMillimetre = dotsPerInch / 25.4;
inline constexpr double dotsPerPoint = dotsPerInch / 72.0;

/// How a value becomes text: unchanged, or by a display mask for numbers or for dates ("dd/mm/yyyy").
struct Format {
    enum class Kind { AsItStands, Number, Date };
    Kind kind = Kind::AsItStands;
    QString mask;
};

/// A part of a text: fixed characters, or a value and its format.
struct Piece {
    QString fixed;
    std::optional<ValueRef> value;
    Format format;
};

struct Text {
    QRectF place;
    Qt::Alignment alignment = Qt::AlignLeft;
    int font = 0;
    QColor colour;
    bool wraps = false;
    /// Squeezed when too wide, because a number with digits cut off is wrong. Other texts are cut.
    bool shrinks = false;
    /// Not printed where one of its values is empty.
    bool isOptional = false;
    std::vector<Piece> pieces;
    int line = 0;
};

struct Line {
    QLineF line;
    double thickness = 0;
    QColor colour;
};

struct Box {
    QRectF place;
    double thickness = 0; // 0 for no border
    QColor colour;
    QColor fill; // invalid for none
    double radius = 0;
};

/// Decides whether a detail band is printed for a row: the value is equal to, or begins with, the text.
struct Condition {
    ValueRef value;
    QString text;
    bool begins = false;
};

/// A strip across the page and what is drawn on it; places count from its top left corner.
struct Band {
    double height = 0;
    QColor fill;
    QColor stripe; // fill of every second row
    bool repeats = false;
    std::optional<Condition> when;
    std::vector<Box> boxes;
    std::vector<Line> lines;
    std::vector<Text> texts;

    bool hasWrappingText() const;
};

/// Consecutive rows with the same value of a column, or with the same first letter of it.
struct Group {
    QString name;
    ValueRef by;
    bool byInitial = false;
    bool keepTogether = false;
    bool startsPage = false;
    std::optional<Band> head;
    std::optional<Band> foot;
};

/// A sum of a column or a count of rows, over the report or one group.
struct Total {
    QString name;
    enum class Kind { Sum, Count } kind = Kind::Sum;
    std::optional<ValueRef> of; // none for a count
    int group = -1;             // -1 for the report
    int line = 0;
};

struct Calculation {
    QString name;
    Expression expression;
    int decimals = 4;
    bool usesTotals = false;
    int line = 0;
};

/// A column of the query that the layout uses or describes.
struct Column {
    QString name;
    QString heading; // caption in the CSV file; the column's name when empty
    Format format;
    bool required = false; // used by an element; a column that is only described may be missing
    bool isFixed = false;  // without rows its value is the one that the query compares it with
    int line = 0;          // of the first mention
};

struct Font {
    QString name;
    QFont font;
    QColor colour;
};

struct Layout {
    QString fileName;
    QString title;
    QPageLayout page; // margins included
    std::vector<Font> fonts;
    QString query;
    std::vector<Column> columns;
    std::vector<QString> formulas;
    std::vector<Total> totals;
    std::vector<Calculation> calculations;
    std::vector<Group> groups; // outermost first
    std::optional<Band> reportHead;
    std::optional<Band> pageHead;
    std::vector<Band> details; // a row is printed by the first whose condition holds
    std::optional<Band> noData;
    std::optional<Band> reportFoot;
    std::optional<Band> pageFoot;

    /// The paper, and the area inside its margins.
    QSizeF paper() const;
    QRectF printable() const;
};

/// Raises RuntimeError (InvalidLayout) that names file, line and problem.
[[noreturn]] void raiseLayoutError(const QString& fileName, qint64 line, const QString& problem);

/// Raises the error again under its own number; file, line and name of what was being calculated precede its
/// text.
[[noreturn]] void raiseAtLine(const QString& fileName, qint64 line, const QString& name,
                              const RuntimeError& error);

} // namespace tarvessa::report
