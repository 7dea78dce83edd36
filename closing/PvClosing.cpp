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

constexpr size_t cashAccount = 0;
constexpr size_t receivablesAccount = 4;

ClosingData closingOf(const Sale& sale, const odbc::ResultSet& lines) {
    const QDateTime now = clock::now();
    ClosingData closing;
    closing.nrPedido = sale.nrPedido;
    closing.formaPG = sale.formaPG;
    closing.valor = sale.valor;
    closing.vencto = sale.vencto;
    // An apostrophe in the name must not stop the closing between stock and receivable.
    closing.nomeCli = LimpaTexto(sale.nomeCli);
    closing.codigoVend = narrow<qint16>(lines.field(esquema::orcamento::vendedor).integer(),
                                        u"o código de vendedor %1 é grande demais"_s);
    closing.codigoCli = lines.field(esquema::orcamento::codigoCli).text();
    closing.today = now.date();
    closing.hora = now.toString(u"HH:mm"_s);
    return closing;
}

// The deduction queries through a result of its own, so the walk goes on undisturbed.
void takeFromStock(odbc::ResultSet& lines, qint32 nrPedido) {
    const QString screen = u"FECHAMENTO DA PV Nº "_s + QString::number(nrPedido);
    const int codigo = lines.column(esquema::orcamento::codigo);
    const int quantidade = lines.column(esquema::orcamento::quantidade);
    for (; !lines.atEnd(); lines.moveNext()) {
        const QString code = lines.field(codigo).text();
        if (code.startsWith(esquema::notaDoPedido))
            continue;
        const QString product = trimBlanks(code);
        try {
            BaixaEstoque(product, lines.field(quantidade).decimal(), screen);
        } catch (const RuntimeError& error) {
            throw error.about(u"Produto %1"_s.arg(product));
        }
    }
}

bool isAvista(const QString& formaPG) {
    TemRegistro = AbreRS(u"SELECT avista FROM Finalizadoras WHERE Descricao = '"_s + formaPG + u"'"_s);
    const bool avista = !rs.atEnd() && rs.field(esquema::finalizadoras::avista).text() == esquema::sim;
    rs.close();
    return avista;
}

} // namespace

QString closePv(const Sale& sale, const ClosingSettings& settings, ClosingHistory& history,
                const std::function<QString(odbc::ResultSet& lines)>& objection) {
    const BusyPointer pointer;
    TemRegistro = AbreRS(u"select * from orcamento where NrPedido="_s + QString::number(sale.nrPedido) +
                         u" AND tipoOperacao = 'P'"_s);
    if (objection) {
        const QString reason = objection(rs);
        if (!reason.isEmpty()) {
            rs.close();
            return reason;
        }
    }
    const ClosingData closing = closingOf(sale, rs);
    history.interrupted.insert(sale.nrPedido);
    if (!settings.pafEcf)
        takeFromStock(rs, sale.nrPedido);
    rs.close();

    const QString& cash = settings.contaCtb[cashAccount];
    Executa(closingstatements::settleLines(closing));
    history.settled.insert(sale.nrPedido);
    Executa(closingstatements::settleControl(closing));
    const bool avista = isAvista(sale.formaPG);
    Executa(
        closingstatements::insertReceivable(closing, avista, cash, settings.contaCtb[receivablesAccount]));
    Executa(closingstatements::insertCashRow(closing, cash));
    Executa(closingstatements::storeLastPv(closing));
    history.interrupted.remove(sale.nrPedido);
    return {};
}

} // namespace tarvessa
