#pragma once

#include <QString>

#include <algorithm>

namespace tarvessa {

/// A number's text without its exponent: "5.55e-17" gives "0.0000000000000000555", "1.5E+3" gives "1500". Any
/// text that is not a number with an exponent comes back unchanged.
QString withoutExponent(QStringView text);

/// Whether the text has the letter of an exponent anywhere: a quick look that spares most numbers the above.
inline bool hasExponentLetter(QStringView text) {
    return std::any_of(text.begin(), text.end(),
                       [](QChar letter) { return letter == u'e' || letter == u'E'; });
}

} // namespace tarvessa
