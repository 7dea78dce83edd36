#pragma once

#include <QDate>
#include <QVariant>

namespace tarvessa {

/// "YYYY-MM-DD" for SQL.
QString TextoSQL(QDate data);

/// "DD/MM/YYYY" for the screen.
QString TextoTela(QDate data);

/// The date of a text in the form dd/mm/yyyy; invalid for any other text and for days that do not exist.
QDate DataDaTela(const QString& texto);

/// SQL text of a value that may be NULL or a date (a date, or a text in the form dd/mm/yyyy or yyyy-mm-dd):
/// "yyyy-mm-dd", and "1901-01-01" for NULL and for what is no date.
QString DataSQL(const QVariant& valor);

} // namespace tarvessa
