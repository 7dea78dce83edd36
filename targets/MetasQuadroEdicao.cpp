// Editing of a target's quantity in its cell.

#include "base/Numeros.h"
#include "base/Text.h"
#include "core/AcessoDados.h"
#include "core/Rotinas.h"
#include "core/SurelyStored.h"
#include "targets/MetasQuadro.h"
#include "targets/MetasQuadroColumns.h"
#include "ui/MessageBoxes.h"
#include "ui/grid/CellEditor.h"
#include "ui_MetasQuadro.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {
using namespace metasquadro::grid1;
}

// The statements of a target take the number without the leading blank that others have.
QString MetasQuadro::plainNumber(Dinheiro quantidade) {
    return trimBlanks(quantidade.ponto());
}

// A text counts as 0 unless the whole of it is a number, so no part of "1.5" or "12 CX" is stored; and so
// does a number of which the record would keep 0, which no progress can be told against.
Dinheiro MetasQuadro::typedQuantity(const QString& text) {
    constexpr int places = 3;
    const Dinheiro quantidade = EhNumero(text) ? ValorNumerico(text) : Dinheiro();
    return Proporcao(quantidade, Dinheiro(1), Dinheiro(1), places).zero() ? Dinheiro() : quantidade;
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
    const qint64 changed = Executa(u"Update metavendedoritem Set Quantidade="_s + plainNumber(quantidade) +
                                   u" Where ID="_s + ui->Grid1->text(row, Id));
    const QString masked = FormataQuantidade(quantidade);
    const bool asListed = ui->Grid1->text(row, Quantidade) == masked;
    if (isSurelyStored(changed, asListed, m_quantityRoom.holds(quantidade)))
        ui->Grid1->setText(row, Quantidade, masked);
    else
        mostraGravada(row, quantidade);
}

// The target may be gone, and the column may hold less than what was typed: the cell shows what the record
// has.
void MetasQuadro::mostraGravada(int row, Dinheiro quantidade) {
    const odbc::ResultSet record =
        NovoRS(u"Select Quantidade From metavendedoritem Where ID="_s + ui->Grid1->text(row, Id));
    if (record.atEnd()) {
        boxes::inform(this, u"A meta do produto "_s + ui->Grid1->text(row, Codigo) +
                                u" não existe mais, nada foi gravado. Verifique!!!"_s);
        AjustaGrid();
        return;
    }
    const QString stored = FormataQuantidade(record.field(u"Quantidade").decimal());
    ui->Grid1->setText(row, Quantidade, stored);
    if (stored != FormataQuantidade(quantidade))
        boxes::inform(this,
                      u"A quantidade não coube no cadastro. Foi gravado "_s + stored + u". Verifique!!!"_s);
}

} // namespace tarvessa
