#include "odbc/ColumnRoom.h"

#include <limits>

namespace tarvessa::odbc {

namespace {

qint64 magnitude(qint64 value) {
    return value < 0 ? -value : value;
}

/// A whole number below this has at most so many digits.
qint64 powerOfTen(SQLULEN digits) {
    qint64 power = 1;
    for (SQLULEN i = 0; i < digits; ++i)
        power *= 10;
    return power;
}

bool decimalHolds(Dinheiro number, SQLULEN digits, SQLSMALLINT decimals) {
    constexpr SQLSMALLINT placesOfMoney = 4;
    constexpr SQLULEN wholeDigitsOfMoney = 15; // a number with four places never has more
    if (decimals < 0 || digits < static_cast<SQLULEN>(decimals))
        return false;
    if (decimals < placesOfMoney &&
        number.decimosMilesimos() % powerOfTen(static_cast<SQLULEN>(placesOfMoney - decimals)) != 0)
        return false;
    const SQLULEN whole = digits - static_cast<SQLULEN>(decimals);
    return whole >= wholeDigitsOfMoney || magnitude(number.inteiro()) < powerOfTen(whole);
}

// The range of the signed type: whether the column is one is not described.
template <typename T>
bool wholeHolds(Dinheiro number) {
    return number == Dinheiro(number.inteiro()) && number.inteiro() >= std::numeric_limits<T>::min() &&
           number.inteiro() <= std::numeric_limits<T>::max();
}

bool floatHolds(Dinheiro number, SQLULEN digits) {
    return magnitude(number.decimosMilesimos()) < powerOfTen(digits);
}

} // namespace

bool ColumnRoom::holds(Dinheiro number) const {
    constexpr SQLULEN digitsOfFloat = 6;
    constexpr SQLULEN digitsOfDouble = 15;
    switch (m_type) {
    case SQL_DECIMAL:
    case SQL_NUMERIC:
        return decimalHolds(number, m_size, m_decimals);
    case SQL_TINYINT:
        return wholeHolds<qint8>(number);
    case SQL_SMALLINT:
        return wholeHolds<qint16>(number);
    case SQL_INTEGER:
        return wholeHolds<qint32>(number);
    case SQL_BIGINT:
        return wholeHolds<qint64>(number);
    case SQL_REAL:
        return floatHolds(number, digitsOfFloat);
    case SQL_FLOAT:
    case SQL_DOUBLE:
        return floatHolds(number, digitsOfDouble);
    default:
        return false;
    }
}

bool ColumnRoom::holds(QStringView text) const {
    switch (m_type) {
    case SQL_CHAR:
    case SQL_VARCHAR:
    case SQL_LONGVARCHAR:
    case SQL_WCHAR:
    case SQL_WVARCHAR:
    case SQL_WLONGVARCHAR:
        return static_cast<SQLULEN>(text.size()) <= m_size;
    default:
        return false;
    }
}

} // namespace tarvessa::odbc
