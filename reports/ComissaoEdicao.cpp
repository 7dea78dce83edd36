// Changing a seller's percentages in the commission grid.

#include "base/Numeros.h"
#include "core/AcessoDados.h"
#include "reports/Comissao.h"
#include "reports/ComissaoColunas.h"
#include "ui/Guard.h"
#include "ui/grid/CellEditor.h"
#include "ui_Comissao.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

// While a cell is edited the others are out of reach, but still to be read.
void mantemCores(QWidget* grade) {
    QPalette cores = grade->palette();
    for (const QPalette::ColorRole papel :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::Base, QPalette::AlternateBase,
          QPalette::Highlight, QPalette::HighlightedText})
        cores.setColor(QPalette::Disabled, papel, cores.color(QPalette::Active, papel));
    grade->setPalette(cores);
}

} // namespace

void Comissao::preparaEditor() {
    ui->TextGrid->setDecimal();
    mantemCores(ui->Grid1);
    m_editor = new CellEditor(ui->Grid1, ui->TextGrid);
    // Going on to another control takes the percentage along, as Enter does.
    onSignal(m_editor, &CellEditor::left, this, [this] { confirmaEdicao(); });
}

void Comissao::abreEditor(int linha, int coluna) {
    ui->TextGrid->setAccessibleName(ui->Grid1->text(0, coluna));
    ui->TextGrid->showText(ui->Grid1->text(linha, coluna));
    ui->TextGrid->selectAll();
    m_editor->open(linha, coluna);
    ui->Grid1->setEnabled(false);
}

bool Comissao::teclaDeEditor(const QWidget* controle, int tecla) {
    if (controle != ui->TextGrid || !m_editor->isOpen())
        return false;
    if (tecla == Qt::Key_Return || tecla == Qt::Key_Enter) {
        confirmaEdicao();
        return true;
    }
    if (tecla == Qt::Key_Escape) {
        ui->TextGrid->showText(ui->Grid1->text(m_editor->row(), m_editor->column()));
        fechaEditor();
        SomaGrid();
        return true;
    }
    return false;
}

// The editor is closed first: an error report finds the grid usable and nothing left to commit.
void Comissao::confirmaEdicao() {
    const int linha = m_editor->row();
    const int coluna = m_editor->column();
    const QString texto = ui->TextGrid->text();
    fechaEditor();
    if (EhNumero(texto))
        gravaPercentual(linha, coluna, texto);
    SomaGrid();
}

void Comissao::fechaEditor() {
    ui->Grid1->setEnabled(true);
    m_editor->close();
}

// The cell changes once the record has taken its value, so that after an error it still shows what is stored.
void Comissao::gravaPercentual(int linha, int coluna, const QString& texto) {
    const QString novo = Formata(ValorNumerico(texto), u"##0.0");
    const auto ponto = [&](int qual) {
        return ValorNumerico(qual == coluna ? novo : ui->Grid1->text(linha, qual)).ponto();
    };
    Executa(u"Update Vendedores Set ComissEsp1="_s + ponto(comissao::PorcPao) + u",ComissEsp2="_s +
            ponto(comissao::PorcOutros) + u" Where Codigovend='"_s +
            ui->Grid1->text(linha, comissao::Codigo) + u"'"_s);
    ui->Grid1->setText(linha, coluna, novo);
}

} // namespace tarvessa
