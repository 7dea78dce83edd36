#pragma once

#include "odbc/Field.h"

#include <QString>

/// What a database field reads as on the screen.
namespace tarvessa {

/// A decimal by a display mask (see Formata); "" for NULL. Raises RuntimeError (type mismatch) for a text
/// that is not a number.
QString maskedText(const odbc::Field& field, QStringView mask);

/// A date as "dd/mm/yy"; "" for NULL, for a text that is not a date and for any date in 1901, which stands
/// for no date.
QString shortDateText(const odbc::Field& field);

} // namespace tarvessa
