#include "closing/PvClosing.h"

#include "base/Clock.h"
#include "base/Narrow.h"
#include "base/RuntimeError.h"
#include "base/Text.h"
#include "closing/ClosingSettings.h"
#include "core/AcessoDados.h"
#include "core/Esquema.h"
#include "core/Rotinas.h"
#include "ui/BusyPointer.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

// The deduction queries through a result of its own, so the loop over the lines is not disturbed.
void takeFromStock(odbc::ResultSet& lines, qint32 nrPedido, const std::function<void()>& beforeWrite) {
    const QString screen = stockLogText(nrPedido);
    const int codigo = lines.column(esquema::orcamento::codigo);
    const int quantidade = lines.column(esquema::orcamento::quantidade);
    for (; !lines.atEnd(); lines.moveNext()) {
        const QString code = lines.field(codigo).text();
        if (code.startsWith(esquema::notaDoPedido))
            continue;
        const QString product = trimBlanks(code);
        try {
            BaixaEstoque(product, lines.field(quantidade).decimal(), screen, beforeWrite);
        } catch (const RuntimeError& error) {
            throw error.about(u"Produto %1"_s.arg(product));
        }
    }
}

} // namespace

QString stockLogText(qint32 nrPedido) {
    return stockLogStart + QString::number(nrPedido);
}

QString linesOfPv(qint32 nrPedido) {
    return u"select * from orcamento where NrPedido="_s + QString::number(nrPedido) +
           u" AND tipoOperacao = 'P'"_s;
}

qint16 sellerCode(const odbc::Field& vendedor) {
    return narrow<qint16>(vendedor.integer(), u"o código de vendedor %1 é grande demais"_s);
}

ClosingData closingData(const Sale& sale, const QString& codigoCli, qint16 codigoVend) {
    const QDateTime now = clock::now();
    ClosingData closing{sale, codigoCli, codigoVend, now.date(), now.toString(u"HH:mm"_s)};
    // An apostrophe in the name must not stop the closing between stock and receivable.
    closing.nomeCli = LimpaTexto(sale.nomeCli);
    return closing;
}

bool isAvista(const QString& formaPG) {
    TemRegistro = AbreRS(u"SELECT avista FROM Finalizadoras WHERE Descricao = '"_s + formaPG + u"'"_s);
    const bool avista = !rs.atEnd() && rs.field(esquema::finalizadoras::avista).text() == esquema::sim;
    rs.close();
    return avista;
}

void settle(ClosingHistory& history, qint32 nrPedido, const QString& sql) {
    try {
        Executa(sql);
    } catch (const RuntimeError& error) {
        // The server may have executed it before its answer was lost.
        if (error.isConnectionLost())
            history.settled.insert(nrPedido);
        throw;
    }
    history.settled.insert(nrPedido);
}

std::optional<ClosingReason> closePv(const Sale& sale, const ClosingSettings& settings,
                                     ClosingHistory& history, const ClosingHooks& hooks) {
    const BusyPointer pointer;
    TemRegistro = AbreRS(linesOfPv(sale.nrPedido));
    if (hooks.objection) {
        if (const std::optional<ClosingReason> reason = hooks.objection(rs)) {
            rs.close();
            return reason;
        }
    }
    const qint16 codigoVend = sellerCode(rs.field(esquema::orcamento::vendedor));
    const ClosingData closing = closingData(sale, rs.field(esquema::orcamento::codigoCli).text(), codigoVend);
    bool begun = false;
    const auto beforeWrite = [&] {
        if (!begun && hooks.beforeFirstWrite)
            hooks.beforeFirstWrite();
        begun = true;
    };
    if (!settings.pafEcf)
        takeFromStock(rs, sale.nrPedido, beforeWrite);
    rs.close();

    beforeWrite();
    settle(history, sale.nrPedido, closingstatements::settleLines(closing));
    Executa(closingstatements::settleControl(closing));
    const bool avista = isAvista(sale.formaPG);
    Executa(closingstatements::insertReceivable(closing, avista, settings.cashAccount(),
                                                settings.receivablesAccount()));
    Executa(closingstatements::insertCashRow(closing, settings.cashAccount()));
    Executa(closingstatements::storeLastPv(closing));
    return {};
}

} // namespace tarvessa
