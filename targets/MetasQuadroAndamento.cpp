// The board: blocks of sellers with their targets and totals.

#include "base/Numeros.h"
#include "core/AcessoDados.h"
#include "targets/MetasQuadro.h"
#include "targets/MetasQuadroColumns.h"
#include "ui_MetasQuadro.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

using namespace metasquadro::grid2;

// Header included
constexpr int rowsThatScroll = 19;

// Twips
constexpr int descriptionWidth = 4000;
constexpr int descriptionWidthBesideScrollBar = 3750;
constexpr std::array<int, 8> widths = {1460, descriptionWidth, 1100, 1100, 900, 1570, 1400, 1440};

constexpr QColor yellow(255, 255, 0);
constexpr QColor red(255, 0, 0);
constexpr QColor lightRed(255, 192, 192);

QString percentage(Dinheiro part, Dinheiro whole) {
    return Formata(Proporcao(part, Dinheiro(100), whole, 2), u"###0.0#") + u'%';
}

// 0 unless both are greater than 0.
QString rowPercentage(Dinheiro part, Dinheiro whole) {
    const bool compares = part > Dinheiro() && whole > Dinheiro();
    return percentage(compares ? part : Dinheiro(), compares ? whole : Dinheiro(1));
}

QString sellerCaption(qint64 codigo) {
    AbreRS2(u"Select Vendedor From Vendedores Where codigovend="_s + QString::number(codigo));
    const QString nome = rs2.atEnd() ? u"(Nenhum)"_s : rs2.field(u"Vendedor").text();
    rs2.close();
    return QString::number(codigo) + u" - "_s + nome;
}

} // namespace

struct MetasQuadro::Totals {
    Dinheiro meta;
    Dinheiro vendido;
    Dinheiro vendas;
    Dinheiro devolvido;
};

void MetasQuadro::AjustaGrid2() {
    ui->Grid2->setRows(1);
    ui->Grid2->setEmptyText(u"O relatório ainda não foi gerado"_s);
    for (size_t column = 0; column < widths.size(); ++column)
        ui->Grid2->setColumnTwips(static_cast<int>(column), widths[column]);
    ui->Command2->setEnabled(false);
}

// The targets are ordered by seller.
void MetasQuadro::montaQuadro(odbc::ResultSet& targets) {
    {
        const Grid::Fill filling(ui->Grid2);
        while (!targets.atEnd())
            addSellerBlock(targets);
    }
    ui->Grid2->setEmptyText(u"Nenhuma meta encontrada"_s);
    const bool scrolls = ui->Grid2->rows() >= rowsThatScroll;
    ui->Grid2->setColumnTwips(Descricao, scrolls ? descriptionWidthBesideScrollBar : descriptionWidth);
    ui->Command2->setEnabled(ui->Grid2->rows() > 1);
}

void MetasQuadro::addSellerBlock(odbc::ResultSet& targets) {
    const qint64 vendedor = targets.field(u"codvendedor").integer();
    const QString caption = sellerCaption(vendedor);
    addSeller(caption);
    Totals totals;
    for (; !targets.atEnd() && targets.field(u"codvendedor").integer() == vendedor; targets.moveNext())
        addTarget(targets, totals);
    // Intended: a seller without sales shows 1 as sold, which the percentages divide by.
    if (totals.vendido.zero())
        totals.vendido = Dinheiro(1);
    ui->Grid2->addRow({});
    addTotals(caption, totals);
}

void MetasQuadro::addSeller(const QString& caption) {
    ui->Grid2->addRow({QString(), caption});
    const int row = ui->Grid2->rows() - 1;
    for (int column = 0; column < ui->Grid2->columns(); ++column) {
        ui->Grid2->setBackColor(row, column, yellow);
        ui->Grid2->setForeColor(row, column, red);
        ui->Grid2->setBold(row, column, true);
    }
}

void MetasQuadro::addTarget(const odbc::ResultSet& target, Totals& totals) {
    const Dinheiro meta = target.field(u"Quantidade").decimal();
    const Dinheiro vendido = target.field(u"Vendido").decimal();
    const Dinheiro vendas = target.field(u"totalvendas").decimal();
    const Dinheiro devolvido = target.field(u"qtddevolucao").decimal();
    ui->Grid2->addRow({target.field(u"CodigoProduto").text(), target.field(u"Descricao").text(),
                       FormataQuantidade(meta), FormataQuantidade(vendido), rowPercentage(vendido, meta),
                       FormataDinheiro(vendas), FormataQuantidade(devolvido),
                       rowPercentage(devolvido, vendido)});
    if (meta > Dinheiro() && vendido >= meta) {
        const int row = ui->Grid2->rows() - 1;
        ui->Grid2->setBackColor(row, PercMeta, lightRed);
        ui->Grid2->setForeColor(row, PercMeta, red);
        ui->Grid2->setBold(row, PercMeta, true);
    }
    totals.meta += meta;
    totals.vendido += vendido;
    totals.vendas += vendas;
    totals.devolvido += devolvido;
}

void MetasQuadro::addTotals(const QString& caption, const Totals& totals) {
    ui->Grid2->addRow(
        {QString(), u"*** TOTAIS DE "_s + caption + u" ***"_s, FormataQuantidade(totals.meta),
         FormataQuantidade(totals.vendido), percentage(totals.vendido, totals.meta),
         FormataDinheiro(totals.vendas), FormataQuantidade(totals.devolvido),
         totals.vendido > Dinheiro() ? percentage(totals.devolvido, totals.vendido) : QString()});
    const int row = ui->Grid2->rows() - 1;
    for (int column = 0; column < ui->Grid2->columns(); ++column) {
        ui->Grid2->setBackColor(row, column, lightRed);
        ui->Grid2->setBold(row, column, true);
    }
}

} // namespace tarvessa
