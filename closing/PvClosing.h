#pragma once

#include "closing/ClosingStatements.h"

#include <QSet>

namespace tarvessa {

struct ClosingSettings;

namespace odbc {
class ResultSet;
}

/// What the program knows of the closings that it began since its start.
struct ClosingHistory {
    /// Closed since the list was made.
    QSet<qint32> closed;
    /// Begun and ended by an error: no later press may take their stock out again, not even when a new list
    /// brings them back.
    QSet<qint32> interrupted;
};

/// What a closing is asked for.
struct Sale {
    qint32 nrPedido = 0;
    QString formaPG;
    Dinheiro valor;
    QDate vencto;
    QString nomeCli;
};

/// Closes one pre-sale: reads its lines (`orcamento`) through rs, takes its products out of the stock
/// (`produtos`, `logestoque`) unless PAF_ECF is on, settles lines and control row (`orcamento`,
/// `orcamento_controle`), writes receivable (`areceber`), cash row (`caixa`) and last number (`empresa`).
/// Shows the busy pointer. Raises RuntimeError; what was executed before stays.
void closePv(const Sale& sale, const ClosingSettings& settings, ClosingHistory& history);

} // namespace tarvessa
