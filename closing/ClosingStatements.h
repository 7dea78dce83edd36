#pragma once

#include "closing/Sale.h"

namespace tarvessa {

/// What the statements of a closing contain: the sale, its customer's name fit for a quoted literal, and
/// dates and time, which are fixed when it begins.
struct ClosingData : Sale {
    QString codigoCli;
    qint16 codigoVend = 0;
    QDate today;
    QString hora; ///< "HH:MM"
};

/// How a closing writes its receivable.
struct ReceivableTerms {
    bool card = false;    ///< the form of the statement that cards have
    bool settled = false; ///< received with the closing; otherwise open
    QDate vencto;
    QString conta; ///< `areceber`.`ContaCTB`
};

/// The receivable's terms: `avista` as `Finalizadoras` has it for the method, the due date asked for, and the
/// accounts of `empresa`.`ContaCTB1` for cash and for what is received later.
ReceivableTerms receivableTerms(const QString& formaPG, bool avista, QDate vencto, QDate today,
                                const QString& cashAccount, const QString& receivablesAccount);

/// What the closing of a pre-sale writes after its stock, one statement each, in the order in which they are
/// sent.
namespace closingstatements {

/// Settles the lines of `orcamento`.
QString settleLines(const ClosingData& closing);

/// Settles the row of `orcamento_controle`.
QString settleControl(const ClosingData& closing);

/// The row of `areceber`; `avista` as `Finalizadoras` has it for the method. The accounts are entries of
/// `empresa`.`ContaCTB1`: for cash, and for what is received later.
QString insertReceivable(const ClosingData& closing, bool avista, const QString& cashAccount,
                         const QString& receivablesAccount);

/// `caixa`.`CodigoLanc` of a pre-sale: "PED:" and the number in groups of three.
QString cashCode(qint32 nrPedido);

/// The row of `caixa`.
QString insertCashRow(const ClosingData& closing, const QString& cashAccount);

/// The last closed number in `empresa`.
QString storeLastPv(const ClosingData& closing);

} // namespace closingstatements

} // namespace tarvessa
