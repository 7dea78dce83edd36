#pragma once

#include "closing/ClosingStatements.h"

#include <QSet>

#include <functional>

namespace tarvessa {

struct ClosingSettings;

namespace odbc {
class ResultSet;
}

/// What the program knows of the closings that it began since its start.
struct ClosingHistory {
    /// Lines settled or cancelled since the list was made.
    QSet<qint32> settled;
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
///
/// An `objection` looks at the lines before anything is written and leaves them on their first row; a text
/// that is not empty bars the closing and is given back. Empty when the pre-sale was closed.
QString closePv(const Sale& sale, const ClosingSettings& settings, ClosingHistory& history,
                const std::function<QString(odbc::ResultSet& lines)>& objection = {});

} // namespace tarvessa
