// Changing a seller's percentages in the commission grid.

#include "base/Numeros.h"
#include "core/AcessoDados.h"
#include "core/Esquema.h"
#include "core/FieldText.h"
#include "core/SurelyStored.h"
#include "reports/Comissao.h"
#include "reports/ComissaoColumns.h"
#include "ui/Guard.h"
#include "ui/MessageBoxes.h"
#include "ui/grid/CellEditor.h"
#include "ui_Comissao.h"

#include <QApplication>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

// The grid is disabled while a cell is edited, but must stay readable.
void keepColoursWhenDisabled(QWidget* grid) {
    QPalette palette = grid->palette();
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::Base, QPalette::AlternateBase,
          QPalette::Highlight, QPalette::HighlightedText})
        palette.setColor(QPalette::Disabled, role, palette.color(QPalette::Active, role));
    grid->setPalette(palette);
}

} // namespace

void Comissao::prepareEditor() {
    ui->TextGrid->setDecimal();
    keepColoursWhenDisabled(ui->Grid1);
    m_editor = new CellEditor(ui->Grid1, ui->TextGrid);
    // Moving to another control saves the percentage, as Enter does, and stays there.
    onSignal(m_editor, &CellEditor::left, this, [this] {
        QWidget* next = QApplication::focusWidget();
        commitEditor();
        if (next && next != ui->TextGrid && isAncestorOf(next))
            next->setFocus();
    });
}

void Comissao::openEditor(int row, int column) {
    ui->TextGrid->setAccessibleName(ui->Grid1->text(0, column));
    ui->TextGrid->showText(ui->Grid1->text(row, column));
    ui->TextGrid->selectAll();
    m_editor->open(row, column);
    ui->Grid1->setEnabled(false);
}

bool Comissao::editorKey(const QWidget* control, int key) {
    if (!m_editor->isOpen())
        return false;
    // After a refused period the focus is elsewhere, and the form must not close with the percentage in it.
    if (control != ui->TextGrid && key != Qt::Key_Escape)
        return false;
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        commitEditor();
        return true;
    }
    if (key == Qt::Key_Escape) {
        ui->TextGrid->showText(ui->Grid1->text(m_editor->row(), m_editor->column()));
        closeEditor();
        SomaGrid();
        return true;
    }
    return false;
}

// The editor is closed first: if saving fails, the error report finds the grid enabled and nothing is
// committed a second time.
void Comissao::commitEditor() {
    storeEditor();
    SomaGrid();
}

void Comissao::storeEditor() {
    const int row = m_editor->row();
    const int column = m_editor->column();
    const QString text = ui->TextGrid->text();
    closeEditor();
    if (EhNumero(text))
        gravaPercentual(row, column, text);
}

void Comissao::closeEditor() {
    ui->Grid1->setEnabled(true);
    m_editor->close();
}

void Comissao::gravaPercentual(int row, int column, const QString& text) {
    const QString masked = Formata(ValorNumerico(text), u"##0.0");
    const Dinheiro percentual = ValorNumerico(masked);
    const auto ponto = [&](int which) {
        return (which == column ? percentual : ValorNumerico(ui->Grid1->text(row, which))).ponto();
    };
    const QString codigo = ui->Grid1->text(row, comissao::Codigo);
    const qint64 changed =
        Executa(u"Update Vendedores Set ComissEsp1="_s + ponto(comissao::PorcPao) + u",ComissEsp2="_s +
                ponto(comissao::PorcOutros) + u" Where Codigovend='"_s + codigo + u"'"_s);
    const bool asListed = ui->Grid1->text(row, column) == masked;
    const odbc::ColumnRoom& room = column == comissao::PorcPao ? m_roomOfPao : m_roomOfOutros;
    if (!codigo.isEmpty() && !isSurelyStored(changed, asListed, room.holds(percentual))) {
        mostraGravado(row, column, percentual);
        return;
    }
    ui->Grid1->setText(row, column, masked);
    if (codigo.isEmpty() && changed <= 0)
        boxes::inform(this, u"Esta linha não é de um vendedor, nada foi gravado. Verifique!!!"_s);
}

// The seller may be gone, and the column may hold less than what was typed: the cell shows what the record
// has.
void Comissao::mostraGravado(int row, int column, Dinheiro percentual) {
    const QString codigo = ui->Grid1->text(row, comissao::Codigo);
    const odbc::ResultSet record =
        NovoRS(u"Select ComissEsp1,ComissEsp2 From Vendedores Where Codigovend='"_s + codigo + u"'"_s);
    if (record.atEnd()) {
        boxes::inform(this, u"O vendedor "_s + codigo +
                                u" não está mais no cadastro, nada foi gravado. Verifique!!!"_s);
        return;
    }
    const QStringView name =
        column == comissao::PorcPao ? esquema::vendedores::comissEsp1 : esquema::vendedores::comissEsp2;
    const QString stored = maskedText(record.field(name), u"##0.0###");
    ui->Grid1->setText(row, column, stored);
    if (record.field(name).decimal() != percentual)
        boxes::inform(this, u"O percentual não coube no cadastro do vendedor. Foi gravado "_s + stored +
                                u". Verifique!!!"_s);
}

} // namespace tarvessa
