#pragma once

#include <QString>

namespace tarvessa {

/// How a text that is a number is searched: "EAN-13" as a bar code; "NUMÉRICO", which the search also knows,
/// would take it as a product code first.
inline constexpr QStringView TipoCodigoBarras = u"EAN-13";

/// What a text typed into a product box asks of the table `produtos`.
struct ProductQuery {
    /// The message for a text that cannot be searched; nothing is queried then.
    QString refusal;

    /// The query of the text.
    QString sql;

    /// The query to run when `sql` finds nothing; empty for none.
    QString alternative;
};

/// Reads a typed text: a bar code, "=" and a brand or reference, "*" and a remark, or a description or code.
/// The text is rewritten as searched: without blanks around it, a bar code in 13 or 14 characters. It goes
/// into the SQL as it is.
ProductQuery productQuery(QString& text, QStringView barCodeType = TipoCodigoBarras);

} // namespace tarvessa
