#pragma once

#include <QString>

namespace tarvessa {

/// Appends a text to `form` as a search compares it: small letters without accents, and the accent "´", which
/// the keyboard gives in place of an apostrophe, as an apostrophe.
void appendSearchForm(QStringView text, QString& form);

/// The form of a whole text.
QString searchForm(QStringView text);

} // namespace tarvessa
