#pragma once

#include <QString>

namespace tarvessa {

/// How a text that is a number is searched: "EAN-13" takes it for a bar code; "NUMÉRICO", which the search
/// also knows, would take it for a product code first.
inline constexpr QStringView TipoCodigoBarras = u"EAN-13";

/// What a text typed into a product box asks of the table produtos.
struct ConsultaProduto {
    /// The message for a text that cannot be searched; nothing is queried then.
    QString recusa;

    /// The query of the text.
    QString sql;

    /// The query to run when `sql` finds nothing; empty for none.
    QString alternativa;
};

/// Reads a typed text: bar code, "=" for brand or reference, "*" for remarks, else description or code. The
/// text is rewritten: without blanks around it, and a bar code in 13 or 14 characters. It goes into the SQL
/// as it is.
ConsultaProduto InterpretaTexto(QString& texto, QStringView tipoCodigoBarras = TipoCodigoBarras);

} // namespace tarvessa
