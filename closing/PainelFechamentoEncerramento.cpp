// The batch that closes the selected pre-sales.

#include "base/Datas.h"
#include "base/Numeros.h"
#include "closing/BatchProgress.h"
#include "closing/ClosingBatch.h"
#include "closing/PainelFechamento.h"
#include "closing/PainelFechamentoColumns.h"
#include "closing/ServerLock.h"
#include "core/AcessoDados.h"
#include "ui/BusyPointer.h"
#include "ui/ErrorReport.h"
#include "ui/Guard.h"
#include "ui/MessageBoxes.h"
#include "ui_PainelFechamento.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

void PainelFechamento::encerraPvs() {
    loadWhatStartUpMissed();
    m_closingLog.begin();
    if (ValorNumerico(ui->Text1->text()).zero()) {
        boxes::inform(this, u"Não há Pré-Venda selecionada. Verifique!!!"_s);
        return;
    }
    boxes::inform(this, u"Lembrando que os pedidos de cliente com CPF serão cancelados."_s);

    std::optional<ClosingBatch> batch;
    const bool completed = guarded(this, [&] {
        const BusyPointer pointer;
        const ServerLock lock(closingLockName, closingLockSeconds);
        if (lock.isTaken())
            return;
        batch.emplace(*m_settings, TextoSQL(m_listedSince), askBeforeBatch(m_listedSince), m_closingHistory,
                      m_closingLog);
        processListed(*batch);
    });
    m_closingLog.close();
    if (!completed) {
        removeSettled();
        Shell->openText(m_closingLog.path());
        tellUnwrittenLog();
        if (Connection.isOpen())
            abreInterrompidosSeHouver();
        return;
    }
    if (!batch) {
        boxes::inform(this, closingLockTaken);
        return;
    }
    if (batch->hasRefusals()) {
        boxes::inform(this,
                      u"Processo encerrado com alguns pedidos com erro de processamento. Na sequência será "
                      "aberto um arquivo com as mensagens de erros."_s);
        Shell->openText(m_closingLog.path());
    } else {
        boxes::inform(this, u"Processamento efetuado com sucesso."_s);
    }
    tellUnwrittenLog();
    if (guarded(this, [this] { listaPvs(); }) && batch->hasInterrupted())
        abreInterrompidosSeHouver();
}

void PainelFechamento::tellUnwrittenLog() {
    if (const std::optional<RuntimeError> failure = m_closingLog.failure())
        showErrorReport(this, *failure);
}

// A listing that fails at start-up keeps what comes after it from being read.
void PainelFechamento::loadWhatStartUpMissed() {
    if (!m_methodsLoaded)
        carregaFormasDePagamento();
    if (!m_settings)
        m_settings = ClosingSettings::read();
}

void PainelFechamento::processListed(ClosingBatch& batch) {
    BatchProgress::Run run(m_progress, ui->Grid1->rows() - 1, u"Pré-venda"_s);
    for (int row = 1; row < ui->Grid1->rows(); ++row) {
        run.enter(row);
        batch.process(listedPv(row));
    }
}

// After an error the list is not loaded again; settled pre-sales leave it all the same, so that no operation
// works on them.
void PainelFechamento::removeSettled() {
    for (int row = ui->Grid1->rows() - 1; row > 0; --row)
        if (m_closingHistory.settled.contains(ValorInteiro(ui->Grid1->text(row, painelfechamento::Pedido))))
            ui->Grid1->removeRow(row);
    TotalSelecionado();
    enableOperations();
}

ListedPv PainelFechamento::listedPv(int row) const {
    const auto cell = [this, row](int column) { return ui->Grid1->text(row, column); };
    ListedPv pv;
    pv.pedido = cell(painelfechamento::Pedido);
    pv.cliente = cell(painelfechamento::Cliente);
    pv.total = cell(painelfechamento::Total);
    pv.diasVenc = cell(painelfechamento::DiasVenc);
    pv.formaPagto = cell(painelfechamento::FormaPagto);
    pv.codigoCli = cell(painelfechamento::CodigoCli);
    pv.selected = ui->Grid1->isTicked(row);
    const int method = ui->Combo1->findText(pv.formaPagto, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (method >= 0)
        pv.avista = ui->Combo1->itemData(method).toInt() == 1;
    return pv;
}

void PainelFechamento::FechaPV(qint32 nrPedido, const QString& formaPG, Dinheiro valor, QDate vencto,
                               const QString& nomeCli) {
    closePv({nrPedido, formaPG, valor, vencto, nomeCli}, m_settings.value_or(ClosingSettings()),
            m_closingHistory);
}

} // namespace tarvessa
