#pragma once

#include "base/Formata.h"

#include <QString>

/// Numbers as the operator writes and reads them, in Brazilian form whatever the machine's locale: comma for
/// the decimals, points for the thousands.
namespace tarvessa {

/// True when the whole text is a number: blanks around it, a sign before it, digits (0 to 9 only) in plain
/// form or in groups of three with points, then at most one comma with decimals. "1.234,5", "-2", ",5" and
/// "7," are numbers; "", "-", ",", "1.5", "1,2,3", "1e5", "0x10" and "12 un" are not.
bool EhNumero(QStringView texto);

/// The numeric value of a text: that of the longest number it begins with, 0 when it begins with none
/// ("30" 30, "2,5" 2.5, "12 dias" 12, "abc" 0). Raises RuntimeError (overflow) beyond the four-place range.
Dinheiro ValorNumerico(QStringView texto);

/// ValorNumerico as a 32-bit integer, cut at its decimals. Raises RuntimeError (overflow).
qint32 ValorInteiro(QStringView texto);

/// Money on the screen: "###,##0.00".
QString FormataDinheiro(Dinheiro valor);

/// A quantity on the screen: "###,##0.000" with ",000" removed.
QString FormataQuantidade(Dinheiro valor);

} // namespace tarvessa
