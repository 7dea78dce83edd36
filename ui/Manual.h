#pragma once

#include <QString>

class QWidget;

/// The operator's manual, which lies in the folder manual of the program's folder.
namespace tarvessa::manual {

/// Makes F1 in `window` show a page of the manual in the desktop's browser. Pages are named like the files of
/// docs/manual, without their ending. Where there is no manual or no browser, a box says so.
void opensAt(QWidget* window, const QString& page);

} // namespace tarvessa::manual
