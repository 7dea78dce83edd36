#pragma once

#include <QString>

/// Figures of the tests' own, in whole cents, sharing nothing with the program's arithmetic.
namespace tarvessa::test {

/// Cents of an amount in point form with at most two decimals; 0 for an empty text.
qint64 cents(const QString& pointForm);

/// Cents from hundred-thousandths (quantity of three places times price of two), halves away from zero.
qint64 centsOfHundredThousandths(qint64 value);

/// a times b through c, rounded to a whole number, halves away from zero.
qint64 proportion(qint64 a, qint64 b, qint64 c);

/// "1.234,50" of cents; with other decimals, "12,345" of thousandths and so on.
QString onScreen(qint64 value, int decimals = 2);

/// " 1234.5" of cents.
QString inPointForm(qint64 value, int decimals = 2);

} // namespace tarvessa::test
