// Editing of a target's quantity in its cell.

#include "base/Numeros.h"
#include "core/AcessoDados.h"
#include "core/Rotinas.h"
#include "targets/MetasQuadro.h"
#include "targets/MetasQuadroColumns.h"
#include "ui/grid/CellEditor.h"
#include "ui_MetasQuadro.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {
using namespace metasquadro::grid1;
}

// A text counts as 0 unless the whole of it is a number, so no part of "1.5" or "12 CX" is stored.
Dinheiro MetasQuadro::typedQuantity(const QString& text) {
    return EhNumero(text) ? ValorNumerico(text) : Dinheiro();
}

void MetasQuadro::openEditor(int row) {
    ui->TextGrid->showText(ui->Grid1->text(row, Quantidade));
    m_editor->open(row, Quantidade);
    SelecionaTexto(ui->TextGrid);
    // Last: a grid that is disabled while it has the focus passes it to any control.
    ui->Grid1->setEnabled(false);
}

void MetasQuadro::restoreText() {
    ui->TextGrid->showText(ui->Grid1->text(m_editor->row(), m_editor->column()));
}

void MetasQuadro::closeEditor() {
    if (!m_editor->isOpen())
        return;
    const int row = m_editor->row();
    // Closed first, so that a statement that fails does not leave an editor that is committed again.
    ui->Grid1->setEnabled(true);
    m_editor->close();
    Dinheiro quantidade = typedQuantity(ui->TextGrid->text());
    if (quantidade <= Dinheiro())
        quantidade = typedQuantity(ui->Grid1->text(row, Quantidade));
    gravaQuantidade(row, quantidade);
}

void MetasQuadro::gravaQuantidade(int row, Dinheiro quantidade) {
    Executa(u"Update metavendedoritem Set Quantidade="_s + quantidade.ponto() + u" Where ID="_s +
            ui->Grid1->text(row, Id));
    ui->Grid1->setText(row, Quantidade, FormataQuantidade(quantidade));
}

} // namespace tarvessa
