#pragma once

#include <QString>

namespace tarvessa {

/// A number's text without its exponent: "5.55e-17" gives "0.0000000000000000555", "1.5E+3" gives "1500". Any
/// text that is not a number with an exponent comes back unchanged.
QString withoutExponent(QStringView text);

} // namespace tarvessa
