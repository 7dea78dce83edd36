#pragma once

#include "odbc/Field.h"

#include <QString>

namespace tarvessa {

/// A database decimal by a display mask (see Formata); "" for NULL. Raises RuntimeError (type mismatch) for a
/// field that is no number.
QString FormataCampo(const odbc::Field& campo, QStringView mascara);

/// A database date as "dd/mm/yy"; "" for NULL, for a date that does not exist and for any in 1901, which
/// stand for no date.
QString DataCurta(const odbc::Field& campo);

} // namespace tarvessa
