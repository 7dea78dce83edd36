#pragma once

#include "closing/ClosingReasons.h"
#include "closing/ClosingStatements.h"

#include <QSet>

#include <functional>
#include <optional>

namespace tarvessa {

struct ClosingSettings;

namespace odbc {
class Field;
class ResultSet;
} // namespace odbc

/// What the program knows of the closings that it began since its start.
struct ClosingHistory {
    /// Lines settled or cancelled since the list was made, or possibly so.
    QSet<qint32> settled;
};

/// Where the caller of a closing takes part in it; each may be empty.
struct ClosingHooks {
    /// Looks at the lines before anything is written and leaves them on their first row. A reason bars the
    /// closing.
    std::function<std::optional<ClosingReason>(odbc::ResultSet& lines)> objection;
    /// Called once, before the first statement that writes.
    std::function<void()> beforeFirstWrite;
};

/// Under what text a closing logs its stock movements (`logestoque`.`tela`): this, and the number of the
/// pre-sale.
inline const QString stockLogStart = QStringLiteral("FECHAMENTO DA PV Nº ");
QString stockLogText(qint32 nrPedido);

/// The query of a pre-sale's lines.
QString linesOfPv(qint32 nrPedido);

/// `orcamento`.`Vendedor`. Raises RuntimeError (overflow) beyond 16 bits.
qint16 sellerCode(const odbc::Field& vendedor);

/// The data of a closing that begins now. `codigoCli` and `codigoVend` are those of the
/// pre-sale's lines.
ClosingData closingData(const Sale& sale, const QString& codigoCli, qint16 codigoVend);

/// Whether `Finalizadoras` has the method as a cash-like one; false when it does not have it at all. Goes
/// through rs. Raises RuntimeError.
bool isAvista(const QString& formaPG);

/// Runs the statement that settles or cancels a pre-sale's lines and remembers it in `history`, also when the
/// connection was lost on the way. Raises RuntimeError.
void settle(ClosingHistory& history, qint32 nrPedido, const QString& sql);

/// Closes one pre-sale: reads its lines (`orcamento`) through rs, takes its products out of the stock
/// (`produtos`, `logestoque`) unless PAF_ECF is on, settles lines and control row (`orcamento`,
/// `orcamento_controle`), writes receivable (`areceber`), cash row (`caixa`) and last number (`empresa`).
/// Shows the busy pointer. Raises RuntimeError; what was executed before stays.
///
/// Gives the reason that barred it; nothing when the pre-sale was closed.
std::optional<ClosingReason> closePv(const Sale& sale, const ClosingSettings& settings,
                                     ClosingHistory& history, const ClosingHooks& hooks = {});

} // namespace tarvessa
