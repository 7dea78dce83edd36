#pragma once

#include <QString>

#include <optional>

namespace tarvessa {

/// What the list shows in place of a total beyond the range of money.
inline const QString totalBeyondRange = QStringLiteral("ACIMA DO LIMITE");

/// A pre-sale as a row of the panel's list shows it: what the closing reads of the grid.
struct ListedPv {
    QString pedido;
    QString cliente;
    QString total;
    QString diasVenc;
    QString formaPagto;
    QString codigoCli;
    bool selected = false;
    /// Whether the payment method is a cash-like one; nothing when the list of methods does not have it.
    std::optional<bool> avista;
};

} // namespace tarvessa
