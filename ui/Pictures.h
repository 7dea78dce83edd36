#pragma once

#include <QIcon>

/// The program's own pictures (ui/pictures.qrc), each at the usual icon sizes so that it stays sharp at any
/// scale.
namespace tarvessa::pictures {

/// A green check mark: a ticked row.
QIcon check();

/// A red cross.
QIcon error();

/// A red bin: deletes a row.
QIcon trash();

QIcon calendar();
QIcon printer();

/// The program's icon, as in packaging/icon/tarvessa.svg.
QIcon application();

} // namespace tarvessa::pictures
