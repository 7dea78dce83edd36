// The board: blocks of sellers with their targets and totals.

#include "base/Numeros.h"
#include "core/AcessoDados.h"
#include "targets/Colunas.h"
#include "targets/MetasQuadro.h"
#include "ui_MetasQuadro.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

constexpr int linhasComRolagem = 19;
constexpr int larguraDaDescricao = 4000;
constexpr int larguraEstreita = 3750;

// Twips.
constexpr std::array<int, 8> larguras = {1460, larguraDaDescricao, 1100, 1100, 900, 1570, 1400, 1440};

constexpr QColor amarelo(255, 255, 0);
constexpr QColor vermelho(255, 0, 0);
constexpr QColor vermelhoClaro(255, 192, 192);

QString percentual(Dinheiro parte, Dinheiro todo) {
    return Formata(Proporcao(parte, Dinheiro(100), todo, 2), u"###0.0#") + u'%';
}

// 0 unless both are there to be compared.
QString percentualDaLinha(Dinheiro parte, Dinheiro todo) {
    const bool compara = parte > Dinheiro() && todo > Dinheiro();
    return percentual(compara ? parte : Dinheiro(), compara ? todo : Dinheiro(1));
}

Dinheiro valor(QStringView coluna) {
    return Dinheiro::dePonto(rs.field(coluna).text());
}

QString rotuloDoVendedor(qint64 codigo) {
    const bool achou =
        AbreRS2(u"Select Vendedor From Vendedores Where codigovend="_s + QString::number(codigo));
    const QString nome = achou ? rs2.field(u"Vendedor").text() : u"(Nenhum)"_s;
    rs2.close();
    return QString::number(codigo) + u" - "_s + nome;
}

} // namespace

struct MetasQuadro::Totais {
    Dinheiro meta;
    Dinheiro vendido;
    Dinheiro vendas;
    Dinheiro devolvido;
};

void MetasQuadro::AjustaGrid2() {
    ui->Grid2->setRows(1);
    for (size_t coluna = 0; coluna < larguras.size(); ++coluna)
        ui->Grid2->setColumnTwips(static_cast<int>(coluna), larguras[coluna]);
    ui->Command2->setEnabled(false);
}

// Reads the listing in rs, which is ordered by seller.
void MetasQuadro::montaQuadro() {
    {
        const Grid::Fill preenchimento(ui->Grid2);
        while (!rs.atEnd())
            adicionaBloco();
    }
    const bool rola = ui->Grid2->rows() >= linhasComRolagem;
    ui->Grid2->setColumnTwips(colunasQuadro::Descricao, rola ? larguraEstreita : larguraDaDescricao);
    ui->Command2->setEnabled(ui->Grid2->rows() > 1);
}

void MetasQuadro::adicionaBloco() {
    const qint64 vendedor = rs.field(u"codvendedor").integer();
    const QString rotulo = rotuloDoVendedor(vendedor);
    adicionaVendedor(rotulo);
    Totais totais;
    for (; !rs.atEnd() && rs.field(u"codvendedor").integer() == vendedor; rs.moveNext())
        adicionaProduto(totais);
    // Intended: a seller without sales shows 1 as sold, which the percentages divide by.
    if (totais.vendido.zero())
        totais.vendido = Dinheiro(1);
    ui->Grid2->addRow({});
    adicionaTotais(rotulo, totais);
}

void MetasQuadro::adicionaVendedor(const QString& rotulo) {
    ui->Grid2->addRow({QString(), rotulo});
    const int linha = ui->Grid2->rows() - 1;
    for (int coluna = 0; coluna < ui->Grid2->columns(); ++coluna) {
        ui->Grid2->setBackColor(linha, coluna, amarelo);
        ui->Grid2->setForeColor(linha, coluna, vermelho);
        ui->Grid2->setBold(linha, coluna, true);
    }
}

void MetasQuadro::adicionaProduto(Totais& totais) {
    const Dinheiro meta = valor(u"Quantidade");
    const Dinheiro vendido = valor(u"Vendido");
    const Dinheiro vendas = valor(u"totalvendas");
    const Dinheiro devolvido = valor(u"qtddevolucao");
    ui->Grid2->addRow({rs.field(u"CodigoProduto").text(), rs.field(u"Descricao").text(),
                       FormataQuantidade(meta), FormataQuantidade(vendido), percentualDaLinha(vendido, meta),
                       FormataDinheiro(vendas), FormataQuantidade(devolvido),
                       percentualDaLinha(devolvido, vendido)});
    if (meta > Dinheiro() && vendido >= meta) {
        const int linha = ui->Grid2->rows() - 1;
        ui->Grid2->setBackColor(linha, colunasQuadro::PercMeta, vermelhoClaro);
        ui->Grid2->setForeColor(linha, colunasQuadro::PercMeta, vermelho);
        ui->Grid2->setBold(linha, colunasQuadro::PercMeta, true);
    }
    totais.meta += meta;
    totais.vendido += vendido;
    totais.vendas += vendas;
    totais.devolvido += devolvido;
}

void MetasQuadro::adicionaTotais(const QString& rotulo, const Totais& totais) {
    ui->Grid2->addRow(
        {QString(), u"*** TOTAIS DE "_s + rotulo + u" ***"_s, FormataQuantidade(totais.meta),
         FormataQuantidade(totais.vendido), percentual(totais.vendido, totais.meta),
         FormataDinheiro(totais.vendas), FormataQuantidade(totais.devolvido),
         totais.vendido > Dinheiro() ? percentual(totais.devolvido, totais.vendido) : QString()});
    const int linha = ui->Grid2->rows() - 1;
    for (int coluna = 0; coluna < ui->Grid2->columns(); ++coluna) {
        ui->Grid2->setBackColor(linha, coluna, vermelhoClaro);
        ui->Grid2->setBold(linha, coluna, true);
    }
}

} // namespace tarvessa
