// Editing of a target's quantity in its cell.

#include "base/Numeros.h"
#include "core/AcessoDados.h"
#include "core/Rotinas.h"
#include "targets/Colunas.h"
#include "targets/MetasQuadro.h"
#include "ui/grid/CellEditor.h"
#include "ui_MetasQuadro.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

// A text that is no number as a whole counts as 0: nothing is stored of "1.5" or "12 CX".
Dinheiro MetasQuadro::quantidadeDigitada(const QString& texto) {
    return EhNumero(texto) ? ValorNumerico(texto) : Dinheiro();
}

void MetasQuadro::abreEdicao(int linha) {
    ui->TextGrid->showText(ui->Grid1->text(linha, colunasMeta::Quantidade));
    m_edicao->open(linha, colunasMeta::Quantidade);
    SelecionaTexto(ui->TextGrid);
    // Only now: a grid switched off while it has the focus would hand it to any control.
    ui->Grid1->setEnabled(false);
}

void MetasQuadro::restauraTexto() {
    ui->TextGrid->showText(ui->Grid1->text(m_edicao->row(), m_edicao->column()));
}

void MetasQuadro::encerraEdicao() {
    if (!m_edicao->isOpen())
        return;
    const int linha = m_edicao->row();
    // Closed first: whatever becomes of the number, the editor is not committed a second time.
    ui->Grid1->setEnabled(true);
    m_edicao->close();
    Dinheiro quantidade = quantidadeDigitada(ui->TextGrid->text());
    if (quantidade <= Dinheiro())
        quantidade = quantidadeDigitada(ui->Grid1->text(linha, colunasMeta::Quantidade));
    Executa(u"Update metavendedoritem Set Quantidade="_s + quantidade.ponto() + u" Where ID="_s +
            ui->Grid1->text(linha, colunasMeta::Id));
    ui->Grid1->setText(linha, colunasMeta::Quantidade, FormataQuantidade(quantidade));
}

} // namespace tarvessa
