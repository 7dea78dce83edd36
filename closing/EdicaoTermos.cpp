// Correcting a customer's terms in the listing grid: days, payment method, price table.

#include "base/Numeros.h"
#include "base/RuntimeError.h"
#include "closing/Colunas.h"
#include "closing/PainelFechamento.h"
#include "core/AcessoDados.h"
#include "core/Esquema.h"
#include "ui/Guard.h"
#include "ui/MessageBoxes.h"
#include "ui/grid/CellEditor.h"
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

// What was typed, at most one beyond the 32-bit range: no longer number means anything here, and each column
// has its own answer to one that is too large.
Dinheiro valorDigitado(const QString& texto) {
    constexpr qint64 limite = qint64(std::numeric_limits<qint32>::max()) + 1;
    try {
        return std::clamp(ValorNumerico(texto), Dinheiro(-limite), Dinheiro(limite));
    } catch (const RuntimeError&) {
        return Dinheiro(texto.trimmed().startsWith(u'-') ? -limite : limite);
    }
}

// Whole days, halves up, which is what the integer column makes of decimals anyway: so the cell, the record
// and the due date agree.
Dinheiro diasInteiros(Dinheiro valor, const QString& texto) {
    if (valor > Dinheiro(std::numeric_limits<qint32>::max()))
        throw RuntimeError(ErrorNumber::Overflow,
                           u"Estouro: o prazo de %1 dias é grande demais."_s.arg(texto.trimmed()));
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
        TextGrid_LostFocus(enter ? Desfecho::Grava : Desfecho::Desiste);
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

bool PainelFechamento::TextGrid_LostFocus(Desfecho desfecho) {
    const int linha = m_editorTexto->row();
    const int coluna = m_editorTexto->column();
    const QString texto = ui->TextGrid->text();
    const QString antes = ui->Grid1->text(linha, coluna);
    m_editorTexto->close();
    bool aceito = true;
    if (coluna == colunas::Tabela)
        aceito = gravaTabela(linha, texto);
    else
        gravaDias(linha, texto);
    // Given up, the cell stays as it was even where its text is no number and 0 was stored for it.
    if (desfecho == Desfecho::Desiste)
        ui->Grid1->setText(linha, coluna, antes);
    return aceito;
}

// A cell changes once the record has taken its value, so that after an error it still shows what is stored.

bool PainelFechamento::gravaTabela(int linha, const QString& texto) {
    const Dinheiro valor = valorDigitado(texto);
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
    const Dinheiro valor = valorDigitado(texto);
    if (valor.negativo())
        return;
    const Dinheiro dias = diasInteiros(valor, texto);
    QString forma = ui->Grid1->text(linha, colunas::FormaPagto);
    if (dias > Dinheiro() && forma == esquema::dinheiro)
        forma = esquema::boleto.toString();
    gravaTermos(linha, dias, forma);
    ui->Grid1->setText(linha, colunas::DiasVenc, QString::number(dias.inteiro()));
    ui->Grid1->setText(linha, colunas::FormaPagto, forma);
}

/// Writes days and method to the row's customer (`clientes`). Raises RuntimeError, also for a method whose
/// name would break the statement.
void PainelFechamento::gravaTermos(int linha, Dinheiro dias, const QString& forma) {
    if (forma.contains(u'\'') || forma.contains(u'\\'))
        throw RuntimeError(
            ErrorNumber::TypeMismatch,
            u"Tipos incompatíveis: a forma de pagamento %1 tem no nome um caractere que não "
            "pode ser gravado, como o apóstrofo. Corrija o nome nos cadastros de finalizadoras e do cliente."_s
                .arg(forma));
    Executa(u"Update Clientes Set Prazo="_s + dias.ponto() + u", FormaPG='"_s + forma +
            u"' Where Codigo='"_s + ui->Grid1->text(linha, colunas::CodigoCli) + u"'"_s);
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
    gravaTermos(linha, ValorNumerico(dias), forma);
    ui->Grid1->setText(linha, colunas::FormaPagto, forma);
    ui->Grid1->setText(linha, colunas::DiasVenc, dias);
}

} // namespace tarvessa
