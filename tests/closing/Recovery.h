#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QStringList>

#include <functional>

class QWidget;

namespace tarvessa::test {

class PrivateServer;
class Shop;

/// Writes pre-sale 1 into an empty shop; what there is to close differs by name.
struct Sample {
    QString name;
    void (*write)(Shop& shop);
    bool isSameStock; ///< as "two products": only the receivable is another
};
const QList<Sample>& samples();

/// Writes so many pre-sales: plain products, technical sheets and notes by turns, payment methods that give
/// each form of a receivable, two sellers.
void writeMixedPreSales(Shop& shop, int count);

/// The program that is such a process; closer.cpp tells its arguments.
QString closerProgram();

/// Another process on another station, or on this one when `folder` is this program's, that concludes what it
/// finds and closes everything that is listed. Empty, or what it says on failing.
QString closeElsewhere(const QString& folder, bool lastMovementDone);

/// The tables that a closing reads or writes, row for row but for generated keys, in an order of their own.
using Books = QMap<QString, QList<QStringList>>;
Books booksOf(PrivateServer& server);

/// The first row in which they differ, told in words; empty when they are equal.
QString differenceBetween(const Books& books, const Books& expected);

/// Whether the stock of the last logged movement was changed, by the statements that the server executed.
bool isLastMovementDone(const QList<QByteArray>& executed);

/// Concludes everything in an open window of interrupted closings; `lastMovementDone` answers whenever the
/// window asks about the shelf. What cannot be concluded is left as it is.
void concludeAll(QWidget* window, const std::function<bool()>& lastMovementDone);
inline void concludeAll(QWidget* window, bool lastMovementDone) {
    concludeAll(window, [lastMovementDone] { return lastMovementDone; });
}

/// Waits until the server has ended what it was still executing for the program; false when it does not.
bool waitForSessionsToEnd(PrivateServer& server);

} // namespace tarvessa::test
