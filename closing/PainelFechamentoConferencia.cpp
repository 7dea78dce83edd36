// Seeing what the batch would do before it does it.

#include "base/Datas.h"
#include "base/Numeros.h"
#include "closing/BatchQuestion.h"
#include "closing/Conferencia.h"
#include "closing/PainelFechamento.h"
#include "closing/PainelFechamentoColumns.h"
#include "ui/MessageBoxes.h"
#include "ui_PainelFechamento.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

// With nothing selected the batch does not begin, and there is nothing to see.
void PainelFechamento::abreConferencia() {
    if (m_layout != Layout::Pv || ui->Grid1->rows() == 1) {
        boxes::inform(this, u"Não há pré-venda listada para conferir. Verifique!!!"_s);
        return;
    }
    if (ValorNumerico(ui->Text1->text()).zero()) {
        boxes::inform(this, u"Não há Pré-Venda selecionada. Verifique!!!"_s);
        return;
    }
    loadWhatStartUpMissed();
    QList<ListedPv> pvs;
    for (int row = 1; row < ui->Grid1->rows(); ++row)
        pvs.append(listedPv(row));
    const int current = ui->Grid1->currentRow();
    Conferencia window(pvs, {*m_settings, TextoSQL(m_listedSince), askBeforeBatch(m_listedSince)},
                       current > 0 ? ui->Grid1->text(current, painelfechamento::Pedido) : QString(), this);
    if (window.exec() == QDialog::Accepted)
        goToPv(window.chosenPedido());
}

void PainelFechamento::goToPv(const QString& pedido) {
    for (int row = 1; row < ui->Grid1->rows(); ++row)
        if (ui->Grid1->text(row, painelfechamento::Pedido) == pedido) {
            ui->Grid1->setCurrentCell(row, painelfechamento::Cliente);
            ui->Grid1->setFocus();
            return;
        }
}

} // namespace tarvessa
