#pragma once

#include "base/Dinheiro.h"

#include <QDate>
#include <QString>

namespace tarvessa {

/// A pre-sale and the terms it is closed with.
struct Sale {
    qint32 nrPedido = 0;
    QString formaPG;
    Dinheiro valor;
    QDate vencto;
    QString nomeCli;

    bool operator==(const Sale&) const = default;
};

} // namespace tarvessa
