// Correcting a customer's terms in the listing grid: days, payment method, price table.

#include "base/Numeros.h"
#include "base/RuntimeError.h"
#include "closing/PainelFechamento.h"
#include "closing/PainelFechamentoColumns.h"
#include "core/AcessoDados.h"
#include "core/Esquema.h"
#include "core/SurelyStored.h"
#include "ui/Guard.h"
#include "ui/MessageBoxes.h"
#include "ui/grid/CellEditor.h"
#include "ui_PainelFechamento.h"

#include <QAbstractItemView>
#include <QScrollBar>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

// `clientes`.`tabelas_preco` by price table.
constexpr std::array<QStringView, 5> flags = {u"1111", u"1000", u"0100", u"0010", u"0001"};
const QString daysOfCredit = u"7"_s;
const QString daysOfCash = u"0"_s;

// At most one beyond the 32-bit range: a longer number means nothing here, and each column has its own answer
// to one that is too large.
Dinheiro typedValue(const QString& text) {
    constexpr qint64 limit = qint64(std::numeric_limits<qint32>::max()) + 1;
    try {
        return std::clamp(ValorNumerico(text), Dinheiro(-limit), Dinheiro(limit));
    } catch (const RuntimeError&) {
        return Dinheiro(text.trimmed().startsWith(u'-') ? -limit : limit);
    }
}

// Halves up, as the integer column rounds decimals: cell, record and due date agree. Raises RuntimeError
// beyond 32 bits.
Dinheiro wholeDays(Dinheiro value, const QString& text) {
    if (value > Dinheiro(std::numeric_limits<qint32>::max()))
        throw RuntimeError(ErrorNumber::Overflow,
                           u"Estouro: o prazo de %1 dias é grande demais."_s.arg(text.trimmed()));
    constexpr qint64 half = Dinheiro::scale / 2;
    return Dinheiro((value.decimosMilesimos() + half) / Dinheiro::scale);
}

int exactItem(const QComboBox* list, const QString& text) {
    return list->findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive);
}

} // namespace

void PainelFechamento::preparaEditores() {
    ui->TextGrid->setDecimal();
    m_editorTexto = new CellEditor(ui->Grid1, ui->TextGrid);
    m_editorForma = new CellEditor(ui->Grid1, ui->Combo1);
    onSignal(m_editorTexto, &CellEditor::left, this, [this] { TextGrid_LostFocus(); });
    onSignal(m_editorForma, &CellEditor::left, this, [this] { Combo1_LostFocus(); });
}

void PainelFechamento::abreEditor(int row, int column) {
    if (!concluiEdicao())
        return;
    const QString text = ui->Grid1->text(row, column);
    if (column == painelfechamento::FormaPagto) {
        if (!m_methodsLoaded)
            carregaFormasDePagamento();
        ui->Combo1->setCurrentIndex(exactItem(ui->Combo1, text));
        // The list is as wide as its texts, however narrow the cell.
        ui->Combo1->view()->setMinimumWidth(ui->Combo1->view()->sizeHintForColumn(0) +
                                            ui->Combo1->view()->verticalScrollBar()->sizeHint().width());
        m_editorForma->open(row, column);
        return;
    }
    ui->TextGrid->setAccessibleName(ui->Grid1->text(0, column));
    ui->TextGrid->setAlignment(column == painelfechamento::DiasVenc ? Qt::AlignRight : Qt::AlignHCenter);
    ui->TextGrid->showText(text);
    ui->TextGrid->selectAll();
    m_editorTexto->open(row, column);
}

bool PainelFechamento::teclaDeEditor(const QWidget* control, int key) {
    const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (!enter && key != Qt::Key_Escape)
        return false;
    if (control == ui->TextGrid && m_editorTexto->isOpen()) {
        if (!enter)
            ui->TextGrid->showText(ui->Grid1->text(m_editorTexto->row(), m_editorTexto->column()));
        TextGrid_LostFocus();
        return true;
    }
    if (control == ui->Combo1 && m_editorForma->isOpen()) {
        if (!enter)
            ui->Combo1->setCurrentIndex(
                exactItem(ui->Combo1, ui->Grid1->text(m_editorForma->row(), painelfechamento::FormaPagto)));
        Combo1_LostFocus();
        return true;
    }
    return false;
}

bool PainelFechamento::concluiEdicao() {
    if (m_editorForma->isOpen())
        return Combo1_LostFocus();
    return !m_editorTexto->isOpen() || TextGrid_LostFocus();
}

// Both editors close before anything else: whatever takes the focus from here on, a message included, finds
// nothing left to commit.

bool PainelFechamento::TextGrid_LostFocus() {
    const int row = m_editorTexto->row();
    const int column = m_editorTexto->column();
    const QString text = ui->TextGrid->text();
    m_editorTexto->close();
    return column == painelfechamento::Tabela ? gravaTabela(row, text) : gravaDias(row, text);
}

bool PainelFechamento::Combo1_LostFocus() {
    const int row = m_editorForma->row();
    const int item = ui->Combo1->currentIndex();
    m_editorForma->close();
    // The cell's method is not in the list and no other was chosen: the record gets its terms again.
    if (item < 0)
        return gravaTermos(row, ValorNumerico(ui->Grid1->text(row, painelfechamento::DiasVenc)),
                           ui->Grid1->text(row, painelfechamento::FormaPagto));
    const QString forma = ui->Combo1->itemText(item);
    const bool avista = ui->Combo1->itemData(item).toInt() == 1;
    QString dias = ui->Grid1->text(row, painelfechamento::DiasVenc);
    const Dinheiro prazo = ValorNumerico(dias);
    if (!avista && prazo.zero())
        dias = daysOfCredit;
    else if (avista && prazo > Dinheiro())
        dias = daysOfCash;
    return gravaTermos(row, ValorNumerico(dias), forma);
}

bool PainelFechamento::gravaTabela(int row, const QString& text) {
    const Dinheiro value = typedValue(text);
    const bool whole = value == Dinheiro(value.inteiro());
    if (value.negativo() || value >= Dinheiro(std::ssize(flags)) || !whole) {
        boxes::inform(this, u"A tabela de preço tem que ser entre 0 e 4. Verifique!!!"_s);
        return false;
    }
    const QString tabela = QString::number(value.inteiro());
    return gravaCliente(row,
                        u"Update Clientes Set colunaPreco='"_s + tabela + u"', tabelas_preco='"_s +
                            flags[static_cast<size_t>(value.inteiro())].toString() + u"' Where Codigo='"_s +
                            ui->Grid1->text(row, painelfechamento::CodigoCli) + u"'"_s,
                        {{painelfechamento::Tabela, tabela}});
}

bool PainelFechamento::gravaDias(int row, const QString& text) {
    const Dinheiro value = typedValue(text);
    if (value.negativo())
        return true;
    const Dinheiro dias = wholeDays(value, text);
    const QString forma = ui->Grid1->text(row, painelfechamento::FormaPagto);
    const bool becomesSlip = dias > Dinheiro() && forma == esquema::dinheiro;
    return gravaTermos(row, dias, becomesSlip ? esquema::boleto.toString() : forma);
}

bool PainelFechamento::gravaTermos(int row, Dinheiro dias, const QString& forma) {
    if (forma.contains(u'\'') || forma.contains(u'\\'))
        throw RuntimeError(
            ErrorNumber::TypeMismatch,
            u"Tipos incompatíveis: a forma de pagamento %1 tem no nome um caractere que não "
            "pode ser gravado, como o apóstrofo. Corrija o nome nos cadastros de finalizadoras e do cliente."_s
                .arg(forma));
    return gravaCliente(row,
                        u"Update Clientes Set Prazo="_s + dias.ponto() + u", FormaPG='"_s + forma +
                            u"' Where Codigo='"_s + ui->Grid1->text(row, painelfechamento::CodigoCli) +
                            u"'"_s,
                        {{painelfechamento::DiasVenc, QString::number(dias.inteiro())},
                         {painelfechamento::FormaPagto, forma}});
}

bool PainelFechamento::gravaCliente(int row, const QString& update, const std::map<int, QString>& sent) {
    const qint64 changed = Executa(update);
    const bool asListed = std::all_of(sent.begin(), sent.end(), [&](const auto& cell) {
        return ui->Grid1->text(row, cell.first) == cell.second;
    });
    if (isSurelyStored(changed, asListed, fits(sent))) {
        for (const auto& [column, text] : sent)
            ui->Grid1->setText(row, column, text);
        return true;
    }
    return mostraGravado(row, sent);
}

bool PainelFechamento::fits(const std::map<int, QString>& sent) const {
    return std::all_of(sent.begin(), sent.end(), [this](const auto& cell) {
        const auto& [column, text] = cell;
        if (column == painelfechamento::DiasVenc)
            return m_termsRoom.prazo.holds(ValorNumerico(text));
        if (column == painelfechamento::FormaPagto)
            return m_termsRoom.forma.holds(text);
        return m_termsRoom.tabela.holds(text) || m_termsRoom.tabela.holds(ValorNumerico(text));
    });
}

bool PainelFechamento::mostraGravado(int row, const std::map<int, QString>& sent) {
    odbc::ResultSet customer = NovoRS(u"SELECT Prazo, FormaPG, colunaPreco FROM Clientes WHERE Codigo='"_s +
                                      ui->Grid1->text(row, painelfechamento::CodigoCli) + u"'"_s);
    if (customer.atEnd()) {
        boxes::inform(this, u"O cliente não está mais no cadastro: nada foi gravado. Verifique!!!"_s);
        return false;
    }
    const std::map<int, QString> stored = {
        {painelfechamento::DiasVenc, QString::number(customer.field(esquema::clientes::prazo).integer())},
        {painelfechamento::FormaPagto, NuloVazio(customer.field(esquema::clientes::formaPg))},
        {painelfechamento::Tabela, NuloVazio(customer.field(esquema::clientes::colunaPreco))}};
    customer.close();
    QStringList changed;
    for (const auto& [column, text] : sent) {
        const QString& held = stored.at(column);
        const bool same = held == text.trimmed();
        ui->Grid1->setText(row, column, same ? text : held);
        if (!same)
            changed.append(u"%1: %2 em vez de %3"_s.arg(ui->Grid1->text(0, column), held, text));
    }
    if (!changed.isEmpty())
        boxes::inform(this, u"O cadastro não comporta o que foi informado e ficou gravado:\n\n"_s +
                                changed.join(u'\n') + u"\n\nVerifique!!!"_s);
    return changed.isEmpty();
}

} // namespace tarvessa
