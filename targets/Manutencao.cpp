// Maintenance of the targets: list, new target, deletion.

#include "base/Numeros.h"
#include "base/RuntimeError.h"
#include "core/AcessoDados.h"
#include "core/Rotinas.h"
#include "targets/CampoProduto.h"
#include "targets/Colunas.h"
#include "targets/MetasQuadro.h"
#include "ui/MessageBoxes.h"
#include "ui/Pictures.h"
#include "ui/TextBox.h"
#include "ui_MetasQuadro.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

constexpr Dinheiro quantidadeInvalida(1000000);

// After a message the screen may not be active again yet, and what gets the focus then selects nothing.
void foca(TextBox* caixa) {
    caixa->setFocus();
    caixa->selectAll();
}

struct LarguraDeColuna {
    colunasMeta::Coluna coluna;
    int twips;
};

// Twips; 0 hides the column.
constexpr std::array<LarguraDeColuna, 5> larguras = {{{colunasMeta::Codigo, 2230},
                                                      {colunasMeta::Produto, 7100},
                                                      {colunasMeta::Quantidade, 2000},
                                                      {colunasMeta::Excluir, 1640},
                                                      {colunasMeta::Id, 0}}};

} // namespace

void MetasQuadro::defineLarguras() {
    for (const LarguraDeColuna& largura : larguras)
        ui->Grid1->setColumnTwips(largura.coluna, largura.twips);
    ui->Grid1->setHeaderBold();
}

void MetasQuadro::AjustaGrid() {
    ui->Grid1->setRows(1);
    ui->Label4->setVisible(false);
    defineLarguras();
    const qint32 vendedor = CodigoDaLista(ui->Vendedores->currentText());
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
    const QIcon lixeira = pictures::trash();
    const Grid::Fill preenchimento(ui->Grid1);
    for (; !rs.atEnd(); rs.moveNext()) {
        ui->Grid1->addRow({rs.field(produto).text(), rs.field(descricao).text(),
                           FormataQuantidade(Dinheiro::dePonto(rs.field(quantidade).text())), QString(),
                           rs.field(id).text()});
        ui->Grid1->setPicture(ui->Grid1->rows() - 1, colunasMeta::Excluir, lixeira);
    }
    rs.close();
}

void MetasQuadro::Command1_Click() {
    // Its shortcut does not move the focus: the product typed last would not have been searched yet.
    ui->Command1->setFocus();
    if (!m_produto->conclui()) {
        ui->Descricao->setFocus();
        return;
    }
    const qint32 vendedor = CodigoDaLista(ui->Vendedores->currentText());
    const QString produto = m_produto->codigo();
    if (vendedor == 0) {
        boxes::inform(this, u"Vendedor não selecionado corretamente. Verifique!!!"_s);
        ui->Vendedores->setFocus();
    } else if (produto.isEmpty()) {
        boxes::inform(this, u"Produto não selecionado corretamente. Verifique!!!"_s);
        foca(ui->Descricao);
    } else if (const Dinheiro quantidade = quantidadeDaMeta(); quantidade <= Dinheiro()) {
        boxes::inform(this, u"Quantidade inválida. Verifique!!!"_s);
        foca(ui->Quantidade);
    } else {
        insereMeta(vendedor, produto, quantidade);
    }
}

/// What `Quantidade` holds; 0 when that is no quantity for a target, however long the number.
Dinheiro MetasQuadro::quantidadeDaMeta() const {
    try {
        const Dinheiro quantidade = quantidadeDigitada(ui->Quantidade->text());
        return quantidade < quantidadeInvalida ? quantidade : Dinheiro();
    } catch (const RuntimeError&) {
        return {};
    }
}

void MetasQuadro::insereMeta(qint32 vendedor, const QString& produto, Dinheiro quantidade) {
    TemRegistro = AbreRS(u"Select * from metavendedoritem Where CodVendedor="_s + QString::number(vendedor) +
                         u" and CodigoProduto='"_s + produto + u"'"_s);
    rs.close();
    if (TemRegistro) {
        boxes::inform(this, u"Já existe uma meta de venda para o produto\n\n"_s + ui->Descricao->text());
        foca(ui->Descricao);
        return;
    }
    Executa(u"Insert Into metavendedoritem Set CodVendedor="_s + QString::number(vendedor) +
            u", CodigoProduto='"_s + produto + u"', Quantidade="_s + quantidade.ponto());
    m_produto->limpa();
    ui->Quantidade->setText(u"0"_s);
    AjustaGrid();
    ui->Descricao->setFocus();
}

void MetasQuadro::Grid1_Click(int linha, int coluna) {
    // The click took the focus from the product box: its search comes first, or its messages would come up
    // over the question or the editor.
    if (!m_produto->conclui())
        return;
    if (coluna == colunasMeta::Excluir)
        excluiMeta(linha);
    else if (coluna == colunasMeta::Quantidade)
        abreEdicao(linha);
}

void MetasQuadro::excluiMeta(int linha) {
    if (!boxes::ask(this,
                    u"Deseja realmente excluir o produto\n"_s + ui->Grid1->text(linha, colunasMeta::Codigo) +
                        u'?',
                    QMessageBox::Information))
        return;
    Executa(u"Delete from metavendedoritem Where ID="_s + ui->Grid1->text(linha, colunasMeta::Id));
    AjustaGrid();
    // The keyboard goes on where it was.
    if (ui->Grid1->rows() > 1)
        ui->Grid1->setCurrentCell(qMin(linha, ui->Grid1->rows() - 1), colunasMeta::Excluir);
}

} // namespace tarvessa
