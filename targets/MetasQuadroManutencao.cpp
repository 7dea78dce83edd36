// Maintenance of the targets: list, new target, deletion.

#include "base/Numeros.h"
#include "base/RuntimeError.h"
#include "core/AcessoDados.h"
#include "core/Rotinas.h"
#include "products/ProductBox.h"
#include "targets/MetasQuadro.h"
#include "targets/MetasQuadroColumns.h"
#include "ui/MessageBoxes.h"
#include "ui/Pictures.h"
#include "ui/Refusal.h"
#include "ui/TextBox.h"
#include "ui_MetasQuadro.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

using namespace metasquadro::grid1;

constexpr Dinheiro quantityLimit(1000000);

struct ColumnWidth {
    Column column;
    int twips;
};

constexpr std::array<ColumnWidth, 5> widths = {
    {{Codigo, 2230}, {Produto, 7100}, {Quantidade, 2000}, {Excluir, 1640}, {Id, 0}}};

} // namespace

void MetasQuadro::setTargetWidths() {
    for (const ColumnWidth& width : widths)
        ui->Grid1->setColumnTwips(width.column, width.twips);
    ui->Grid1->setHeaderBold();
}

void MetasQuadro::AjustaGrid() {
    ui->Grid1->setRows(1);
    ui->Label4->setVisible(false);
    setTargetWidths();
    const qint32 vendedor = CodigoDaLista(ui->Vendedores->currentText());
    ui->Grid1->setEmptyText(vendedor >= 1 ? u"O vendedor não tem metas"_s : u"Escolha um vendedor"_s);
    if (vendedor >= 1)
        listaMetas(vendedor);
    ui->Label4->setVisible(ui->Grid1->rows() > 1);
}

void MetasQuadro::listaMetas(qint32 vendedor) {
    TemRegistro =
        AbreRS(u"SELECT m.id, m.codigoproduto, p.descricao, m.Quantidade from metavendedoritem AS m "
               "INNER JOIN produtos AS p ON m.codigoproduto=p.codfabr Where CodVendedor="_s +
               QString::number(vendedor));
    const int id = rs.column(u"id");
    const int produto = rs.column(u"codigoproduto");
    const int descricao = rs.column(u"descricao");
    const int quantidade = rs.column(u"Quantidade");
    m_quantityRoom = rs.room(quantidade);
    const QIcon trash = pictures::trash();
    const Grid::Fill filling(ui->Grid1);
    for (; !rs.atEnd(); rs.moveNext()) {
        ui->Grid1->addRow({rs.field(produto).text(), rs.field(descricao).text(),
                           FormataQuantidade(rs.field(quantidade).decimal()), QString(),
                           rs.field(id).text()});
        ui->Grid1->setPicture(ui->Grid1->rows() - 1, Excluir, trash);
    }
    rs.close();
}

// An item of the list is the name, blanks and the code.
QString MetasQuadro::sellerInFileName() const {
    return ui->Vendedores->currentText().section(u"   <<"_s, 0, 0);
}

void MetasQuadro::adicionaMeta() {
    // Here, so that a quantity that cannot be stored ends the operation.
    closeEditor();
    // The button's shortcut does not move the focus, and the search for a product just typed waits for it.
    ui->Command1->setFocus();
    if (!m_product->settle()) {
        ui->Descricao->setFocus();
        return;
    }
    const qint32 vendedor = CodigoDaLista(ui->Vendedores->currentText());
    const QString produto = m_product->code();
    if (vendedor == 0) {
        refuse(ui->Vendedores, u"Vendedor não selecionado corretamente. Verifique!!!"_s);
    } else if (produto.isEmpty()) {
        refuse(ui->Descricao, u"Produto não selecionado corretamente. Verifique!!!"_s);
    } else if (const Dinheiro quantidade = quantidadeDaMeta(); quantidade <= Dinheiro()) {
        refuse(ui->Quantidade, u"Quantidade inválida. Verifique!!!"_s);
    } else {
        insereMeta(vendedor, produto, quantidade);
    }
}

/// What `Quantidade` holds; 0 when a target cannot have it, which includes numbers of any length.
Dinheiro MetasQuadro::quantidadeDaMeta() const {
    try {
        const Dinheiro quantidade = typedQuantity(ui->Quantidade->text());
        return quantidade < quantityLimit ? quantidade : Dinheiro();
    } catch (const RuntimeError&) {
        return {};
    }
}

void MetasQuadro::insereMeta(qint32 vendedor, const QString& produto, Dinheiro quantidade) {
    TemRegistro = AbreRS(u"Select * from metavendedoritem Where CodVendedor="_s + QString::number(vendedor) +
                         u" and CodigoProduto='"_s + produto + u"'"_s);
    const bool exists = !rs.atEnd();
    rs.close();
    if (exists) {
        refuse(ui->Descricao, u"Já existe uma meta de venda para o produto\n\n"_s + ui->Descricao->text());
        return;
    }
    Executa(u"Insert Into metavendedoritem Set CodVendedor="_s + QString::number(vendedor) +
            u", CodigoProduto='"_s + produto + u"', Quantidade="_s + plainNumber(quantidade));
    m_product->clear();
    ui->Quantidade->setText(u"0"_s);
    AjustaGrid();
    ui->Descricao->setFocus();
}

void MetasQuadro::Grid1_Click(int row, int column) {
    // The search of a product box that this click left comes first: its messages would otherwise appear over
    // the question or the editor.
    if (!m_product->settle())
        return;
    if (column == Excluir)
        excluiMeta(row);
    else if (column == Quantidade)
        openEditor(row);
}

void MetasQuadro::excluiMeta(int row) {
    if (!boxes::ask(this, u"Deseja realmente excluir o produto\n"_s + ui->Grid1->text(row, Codigo) + u'?',
                    QMessageBox::Information))
        return;
    Executa(u"Delete from metavendedoritem Where ID="_s + ui->Grid1->text(row, Id));
    AjustaGrid();
    // For the keyboard: the next row takes the deleted one's place.
    if (ui->Grid1->rows() > 1)
        ui->Grid1->setCurrentCell(qMin(row, ui->Grid1->rows() - 1), Excluir);
}

} // namespace tarvessa
