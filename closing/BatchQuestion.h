#pragma once

#include <QDate>
#include <QHash>
#include <QMap>
#include <QSet>
#include <QString>

namespace tarvessa {

/// A code as the database compares it: without regard to letter case and surrounding blanks.
QString keyOfCode(const QString& code);

/// What a batch asks the database once, before its first pre-sale.
struct BatchAnswer {
    /// The pre-sales that have stock movements of a closing, of whatever station.
    QSet<qint32> begun;
    /// The pre-sales with lines that were opened since and are settled or cancelled; true when others of
    /// their lines are open.
    QMap<qint32, bool> settled;
    /// Whose the open pre-sales are, as keyOfCode gives the customers' codes.
    QMultiHash<qint32, QString> customers;
    /// The products whose technical sheet has a component whose code cannot stand in a statement.
    QSet<QString> unmovable;

    /// False when the pre-sale is open and another customer's.
    bool isOf(qint32 number, const QString& codigoCli) const;

    /// True for a product of `unmovable`, compared as the database does.
    bool isUnmovable(const QString& codigo) const;
};

/// Asks for the stock movements since `since` (`logestoque`), the pre-sales that are no longer open
/// and the customers of the others (`orcamento`) and the technical sheets (`FichaTecnica`) in one query.
/// Raises RuntimeError.
BatchAnswer askBeforeBatch(QDate since);

} // namespace tarvessa
