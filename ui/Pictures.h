#pragma once

#include <QIcon>

/// The program's own pictures, drawn at the usual icon sizes so that they stay sharp at any scale.
namespace tarvessa::pictures {

QIcon check();
QIcon error();
QIcon trash();
QIcon calendar();
QIcon printer();
QIcon application();

} // namespace tarvessa::pictures
