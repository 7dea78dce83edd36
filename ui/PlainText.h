#pragma once

#include <QString>

class QWidget;

/// Qt renders a tool tip that looks like markup as markup. Texts of the database are told letter by letter
/// through these; labels and boxes that show such texts have the plain text format.
namespace tarvessa::plain {

/// A tool tip that shows `text` as it is.
QString toolTip(const QString& text);

/// Gives a widget such a tool tip; an empty text takes it away.
void setToolTip(QWidget* widget, const QString& text);

} // namespace tarvessa::plain
