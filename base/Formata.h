#pragma once

#include "base/Dinheiro.h"

#include <QString>

namespace tarvessa {

/// A value by a display mask such as "###,##0.00", "###,##0.000", "##0.0", "###0.0#", "#000,000" or
/// "0000000":
/// "," before the point asks for thousands points, "0" for a digit always shown, "#" for one shown when
/// there is one. Rounded to the mask's places, halves away from zero.
QString Formata(Dinheiro valor, QStringView mascara);

} // namespace tarvessa
