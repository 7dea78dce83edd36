// Correcting a customer's terms in the listing grid: days, payment method, price table.

#include "closing/Colunas.h"
#include "closing/PainelFechamento.h"
#include "core/AcessoDados.h"
#include "core/Esquema.h"
#include "core/Numeros.h"
#include "platform/Guard.h"
#include "platform/MessageBoxes.h"
#include "platform/RuntimeError.h"
#include "platform/grid/CellEditor.h"
#include "ui_PainelFechamento.h"

#include <QAbstractItemView>
#include <QScrollBar>

#include <limits>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

// `clientes`.`tabelas_preco` by price table.
constexpr std::array<QStringView, 5> mascaras = {u"1111", u"1000", u"0100", u"0010", u"0001"};
const QString prazoDeFormaAPrazo = u"7"_s;
const QString prazoDeFormaAVista = u"0"_s;

// Whole days, halves up, which is what the integer column makes of decimals anyway: so the cell, the record
// and the due date agree.
Dinheiro diasInteiros(Dinheiro valor) {
    if (valor > Dinheiro(std::numeric_limits<qint32>::max()))
        throw RuntimeError(ErrorNumber::Overflow,
                           u"Estouro: o prazo de %1 dias é grande demais."_s.arg(valor.inteiro()));
    constexpr qint64 meioDia = Dinheiro::casas / 2;
    return Dinheiro((valor.decimosMilesimos() + meioDia) / Dinheiro::casas);
}

} // namespace

void PainelFechamento::preparaEditores() {
    ui->TextGrid->setDecimal();
    m_editorTexto = new CellEditor(ui->Grid1, ui->TextGrid);
    m_editorForma = new CellEditor(ui->Grid1, ui->Combo1);
    onSignal(m_editorTexto, &CellEditor::left, this, [this] { TextGrid_LostFocus(); });
    onSignal(m_editorForma, &CellEditor::left, this, [this] { Combo1_LostFocus(); });
}

void PainelFechamento::abreEditor(int linha, int coluna) {
    if (!concluiEdicao())
        return;
    const QString texto = ui->Grid1->text(linha, coluna);
    if (coluna == colunas::FormaPagto) {
        ui->Combo1->setCurrentIndex(ui->Combo1->findText(texto, Qt::MatchExactly | Qt::MatchCaseSensitive));
        // The list is as wide as its texts, however narrow the cell.
        ui->Combo1->view()->setMinimumWidth(ui->Combo1->view()->sizeHintForColumn(0) +
                                            ui->Combo1->view()->verticalScrollBar()->sizeHint().width());
        m_editorForma->open(linha, coluna);
        return;
    }
    ui->TextGrid->setAccessibleName(ui->Grid1->text(0, coluna));
    ui->TextGrid->setAlignment(coluna == colunas::DiasVenc ? Qt::AlignRight : Qt::AlignHCenter);
    ui->TextGrid->showText(texto);
    ui->TextGrid->selectAll();
    m_editorTexto->open(linha, coluna);
}

bool PainelFechamento::teclaDeEditor(const QWidget* controle, int tecla) {
    const bool enter = tecla == Qt::Key_Return || tecla == Qt::Key_Enter;
    if (!enter && tecla != Qt::Key_Escape)
        return false;
    if (controle == ui->TextGrid && m_editorTexto->isOpen()) {
        if (!enter)
            ui->TextGrid->showText(ui->Grid1->text(m_editorTexto->row(), m_editorTexto->column()));
        TextGrid_LostFocus();
        return true;
    }
    if (controle == ui->Combo1 && m_editorForma->isOpen()) {
        if (!enter)
            ui->Combo1->setCurrentIndex(
                ui->Combo1->findText(ui->Grid1->text(m_editorForma->row(), colunas::FormaPagto),
                                     Qt::MatchExactly | Qt::MatchCaseSensitive));
        Combo1_LostFocus();
        return true;
    }
    return false;
}

/// Commits what is being edited; false when its value was refused.
bool PainelFechamento::concluiEdicao() {
    if (m_editorForma->isOpen())
        Combo1_LostFocus();
    return !m_editorTexto->isOpen() || TextGrid_LostFocus();
}

// The editors are closed first: whatever takes the focus from here on, a message included, finds nothing left
// to commit.

bool PainelFechamento::TextGrid_LostFocus() {
    const int linha = m_editorTexto->row();
    const int coluna = m_editorTexto->column();
    const QString texto = ui->TextGrid->text();
    m_editorTexto->close();
    if (coluna == colunas::Tabela)
        return gravaTabela(linha, texto);
    gravaDias(linha, texto);
    return true;
}

// A cell changes once the record has taken its value, so that after an error it still shows what is stored.

bool PainelFechamento::gravaTabela(int linha, const QString& texto) {
    const Dinheiro valor = ValorNumerico(texto);
    const bool inteiro = valor == Dinheiro(valor.inteiro());
    if (valor.negativo() || valor >= Dinheiro(std::ssize(mascaras)) || !inteiro) {
        boxes::inform(this, u"A tabela de preço tem que ser entre 0 e 4. Verifique!!!"_s);
        return false;
    }
    const QString tabela = QString::number(valor.inteiro());
    Executa(u"Update Clientes Set colunaPreco='"_s + tabela + u"', tabelas_preco='"_s +
            mascaras[static_cast<size_t>(valor.inteiro())].toString() + u"' Where Codigo='"_s +
            ui->Grid1->text(linha, colunas::CodigoCli) + u"'"_s);
    ui->Grid1->setText(linha, colunas::Tabela, tabela);
    return true;
}

void PainelFechamento::gravaDias(int linha, const QString& texto) {
    const Dinheiro valor = ValorNumerico(texto);
    if (valor.negativo())
        return;
    const Dinheiro dias = diasInteiros(valor);
    QString forma = ui->Grid1->text(linha, colunas::FormaPagto);
    if (dias > Dinheiro() && forma == esquema::dinheiro)
        forma = esquema::boleto.toString();
    Executa(u"Update Clientes Set Prazo="_s + dias.ponto() + u", FormaPG='"_s + forma +
            u"' Where Codigo='"_s + ui->Grid1->text(linha, colunas::CodigoCli) + u"'"_s);
    ui->Grid1->setText(linha, colunas::DiasVenc, QString::number(dias.inteiro()));
    ui->Grid1->setText(linha, colunas::FormaPagto, forma);
}

void PainelFechamento::Combo1_LostFocus() {
    const int linha = m_editorForma->row();
    const int item = ui->Combo1->currentIndex();
    m_editorForma->close();
    // The cell's method is not in the list and no other was chosen.
    if (item < 0)
        return;
    const QString forma = ui->Combo1->itemText(item);
    const bool avista = ui->Combo1->itemData(item).toInt() == 1;
    QString dias = ui->Grid1->text(linha, colunas::DiasVenc);
    const Dinheiro prazo = ValorNumerico(dias);
    if (!avista && prazo.zero())
        dias = prazoDeFormaAPrazo;
    else if (avista && prazo > Dinheiro())
        dias = prazoDeFormaAVista;
    Executa(u"Update Clientes Set Prazo="_s + ValorNumerico(dias).ponto() + u", FormaPG='"_s + forma +
            u"' Where Codigo='"_s + ui->Grid1->text(linha, colunas::CodigoCli) + u"'"_s);
    ui->Grid1->setText(linha, colunas::FormaPagto, forma);
    ui->Grid1->setText(linha, colunas::DiasVenc, dias);
}

} // namespace tarvessa
