// Turning DAVs into pre-sales, and the numbers they get.

#include "base/Narrow.h"
#include "base/Numeros.h"
#include "base/RuntimeError.h"
#include "closing/BatchProgress.h"
#include "closing/ClosingJournal.h"
#include "closing/ConversionStatements.h"
#include "closing/NumberingLock.h"
#include "closing/PainelFechamento.h"
#include "closing/PainelFechamentoColumns.h"
#include "core/AcessoDados.h"
#include "core/Esquema.h"
#include "ui/Guard.h"
#include "ui/MessageBoxes.h"
#include "ui_PainelFechamento.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

// An empty counter would give every document the same number and merge them all.
qint32 counterValue(const odbc::Field& counter) {
    if (counter.isNull())
        throw RuntimeError(ErrorNumber::TypeMismatch,
                           u"Tipos incompatíveis: o contador de documentos da empresa está vazio."_s);
    return narrow<qint32>(counter.integer(), u"o contador de documentos chegou a %1"_s);
}

/// What the database shows of a document and of the number that it gets.
struct Shown {
    bool taken = false; ///< a pre-sale has the number
    bool there = false; ///< the document has lines
    bool open = false;  ///< some of them

    /// Cancelled or billed as it is since it was listed: a conversion would open it again.
    bool isClosed() const { return there && !open; }

    bool isMoved() const { return taken && !there; }
};

// Waits for those who are changing the lines at this moment.
Shown shown(qint32 nrDav, qint32 number) {
    TemRegistro = AbreRS(
        u"SELECT TipoOperacao, MAX(situacaoorc IN ('A','C')) AS aberto FROM orcamento WHERE nrpedido=%1 AND "
        "TipoOperacao='P' OR nrpedido=%2 AND TipoOperacao='D' GROUP BY TipoOperacao LOCK IN SHARE MODE"_s
            .arg(number)
            .arg(nrDav));
    Shown result;
    for (; !rs.atEnd(); rs.moveNext()) {
        if (rs.field(esquema::orcamento::tipoOperacao).text() == esquema::dav) {
            result.there = true;
            result.open = rs.field(u"aberto").integer() != 0;
        } else {
            result.taken = true;
        }
    }
    rs.close();
    return result;
}

// Also looks whether the number is free, because a counter that lags behind would merge documents, and gives
// nothing when the document has been closed since it was listed.
std::optional<qint32> nextPvNumber(qint32 nrDav) {
    const NumberingLock lock;
    Executa(u"UPDATE empresa SET contadorPV = contadorPV+1"_s);
    TemRegistro = AbreRS(u"SELECT contadorPV FROM empresa"_s);
    const qint32 number = counterValue(rs.field(esquema::empresa::contadorPv));
    rs.close();
    const Shown now = shown(nrDav, number);
    if (now.taken)
        throw RuntimeError(
            ErrorNumber::PermissionDenied,
            u"O número %1 já é de outra pré-venda, e dois documentos se misturariam. Corrija o "
            "contador de pré-vendas da empresa (contadorPV): ele deve ser o maior número já "
            "usado. Verifique!!!"_s.arg(number));
    return now.isClosed() ? std::nullopt : std::optional(number);
}

} // namespace

void PainelFechamento::converteDavs() {
    if (!guarded(this, [this] { converteSelecionados(); })) {
        // Ticks and total show what is still to be converted.
        TotalSelecionado();
        return;
    }
    ui->Grid1->setRows(1);
    ui->Grid1->setEmptyText(u"Conversão concluída. Carregue as pré-vendas"_s);
    TotalSelecionado();
    enableOperations();
}

void PainelFechamento::converteSelecionados() {
    QStringList gone;
    BatchProgress::Run run(m_progress, ui->Grid1->rows() - 1, u"DAV"_s);
    for (int row = 1; row < ui->Grid1->rows(); ++row) {
        run.enter(row);
        if (!ui->Grid1->isTicked(row))
            continue;
        const QString dav = ui->Grid1->text(row, painelfechamento::Pedido);
        if (!converteDav(ValorInteiro(dav)))
            gone.append(dav);
        ui->Grid1->setTicked(row, false);
    }
    if (!gone.isEmpty())
        boxes::inform(
            this,
            u"Não há mais itens a converter, talvez porque outra estação os converteu ou cancelou: DAV %1. "
            "Para eles nada foi gravado. Verifique!!!"_s.arg(gone.join(u", "_s)));
}

bool PainelFechamento::converteDav(qint32 nrDav) {
    // After an error, and after a run of the program that was cut, the same number is tried again: its lines
    // may have been moved the first time.
    qint32 nrPv =
        m_pvNumbers.contains(nrDav) ? m_pvNumbers.value(nrDav) : closingjournal::numberGivenTo(nrDav);
    bool wasMoved = false;
    if (nrPv > 0) {
        const Shown now = shown(nrDav, nrPv);
        wasMoved = now.isMoved();
        if (now.isClosed()) {
            m_pvNumbers.remove(nrDav);
            closingjournal::endConversion(nrDav);
            return false;
        }
        if (now.taken && now.there)
            nrPv = 0; // another document's by now
    }
    if (nrPv == 0) {
        const std::optional<qint32> number = nextPvNumber(nrDav);
        if (!number)
            return false;
        nrPv = *number;
    }
    m_pvNumbers.insert(nrDav, nrPv);
    closingjournal::beginConversion({nrDav, nrPv});
    const qint64 moved = Executa(conversionstatements::moveLines(nrDav, nrPv));
    // Otherwise its notes belong to the number that another station has given it, unless the first update was
    // still waiting in the server and has moved the lines meanwhile.
    const bool isHere = wasMoved || moved != 0 || shown(nrDav, nrPv).isMoved();
    if (isHere)
        Executa(conversionstatements::moveNotes(nrDav, nrPv));
    closingjournal::endConversion(nrDav);
    return isHere;
}

qint32 PainelFechamento::Orcamento_NumeroPedido(const QString& tipo) {
    const bool dav = tipo == esquema::dav;
    const NumberingLock lock;
    Executa(dav ? u"UPDATE empresa SET ultpedido = ultpedido+1"_s
                : u"UPDATE empresa SET contadorPV = contadorPV+1"_s);
    TemRegistro = AbreRS(u"SELECT ultpedido,contadorPV FROM empresa"_s);
    const qint32 number =
        counterValue(rs.field(dav ? esquema::empresa::ultPedido : esquema::empresa::contadorPv));
    rs.close();
    return number;
}

} // namespace tarvessa
