#include "reports/ExtratoVendedor.h"

#include "base/Datas.h"
#include "base/Numeros.h"
#include "core/AcessoDados.h"
#include "core/Esquema.h"
#include "core/GridFile.h"
#include "core/Periodo.h"
#include "core/Teclado.h"
#include "reports/ExtratoVendedorColumns.h"
#include "ui/BusyPointer.h"
#include "ui/Guard.h"
#include "ui/Manual.h"
#include "ui/grid/FitToGrids.h"
#include "ui/grid/SummaryLabel.h"
#include "ui_ExtratoVendedor.h"

#include <array>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

// Twips.
constexpr std::array<int, 6> columnWidths = {1200, 1000, 5100, 1500, 1500, 1500};
constexpr int narrowCustomerWidth = 4850;
constexpr int rowHeight = 340;

// With more rows, header included, the grid scrolls.
constexpr int rowsWithoutScrolling = 23;

bool isPao(const QString& descricao) {
    const QString upper = descricao.toUpper();
    return upper.contains(u"PÃO"_s) || upper.contains(u"PAO"_s);
}

QString dateText(const odbc::Field& field) {
    return TextoTela(QDate::fromString(field.text(), Qt::ISODate));
}

Dinheiro comissao(Dinheiro vendas, const QString& percentual) {
    constexpr int cents = 2;
    return Proporcao(vendas, ValorNumerico(percentual), Dinheiro(100), cents);
}

} // namespace

ExtratoVendedor::ExtratoVendedor(QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui::ExtratoVendedor>()) {
    ui->setupUi(this);
    ui->Grid1->setMinimumRowTwips(rowHeight);
    ui->Grid1->setFormat(u"^DATA|>Nº NF|<CLIENTE|>R$ TOTAL PÃO|>R$ TOT.OUTROS|>R$ TOTAL NF"_s);
    ui->Grid1->setColumnKinds({ColumnKind::Date, ColumnKind::Text, ColumnKind::Text, ColumnKind::Number,
                               ColumnKind::Number, ColumnKind::Number});
    ui->Grid1->setEmptyText(u"Nenhuma nota no período"_s);
    ui->cabecalho->addWidget(summaryLabel(ui->Grid1), 2);
    offerSaving(ui->Grid1, [this] { return m_documentName; });
    resetGrid();
    fitToGrids(this, {ui->Grid1}, rowsWithoutScrolling);
    new Teclado(this, [this] { reject(); });
    manual::opensAt(this, u"extrato-do-vendedor"_s);
    onSignal(ui->Command1, &QPushButton::clicked, this, [this](bool) { imprime(); });
}

ExtratoVendedor::~ExtratoVendedor() = default;

void ExtratoVendedor::Carrega(qint32 codigoVendedor, const QString& nomeVendedor, const QString& dataInicial,
                              const QString& dataFinal, const QString& comissaoPao,
                              const QString& comissaoOutros, const QString& totalDevolucao) {
    {
        const BusyPointer busy;
        ui->Label1->setText(QString::number(codigoVendedor) + u" - "_s + nomeVendedor +
                            u"    -   PERÍODO DE "_s + dataInicial + u" A "_s + dataFinal);
        m_documentName = u"Extrato - %1 - %2"_s.arg(
            nomeVendedor, periodInFileName(DataDaTela(dataInicial), DataDaTela(dataFinal)));
        resetGrid();
        TemRegistro = AbreRS(
            queryOf(codigoVendedor, TextoSQL(DataDaTela(dataInicial)), TextoSQL(DataDaTela(dataFinal))));
        const Somas somas = listaNotas(rs);
        rs.close();
        mostraTotais(somas, comissaoPao, comissaoOutros, totalDevolucao);
        if (ui->Grid1->rows() > rowsWithoutScrolling)
            ui->Grid1->setColumnTwips(extratovendedor::Cliente, narrowCustomerWidth);
    }
    exec();
}

void ExtratoVendedor::resetGrid() {
    ui->Grid1->setRows(1);
    for (size_t column = 0; column < columnWidths.size(); ++column)
        ui->Grid1->setColumnTwips(static_cast<int>(column), columnWidths[column]);
}

QString ExtratoVendedor::queryOf(qint32 codigoVendedor, const QString& start, const QString& end) {
    const QString codigo = QString::number(codigoVendedor);
    return u"SELECT m.nr_nf, m.descricao, n.razsoc, m.totalvenda, m.dataemissao FROM movsaient AS m "
           "Inner JOIN nfsaida AS n ON m.nr_nf=n.nrnf AND m.serienf=n.SerieNF "
           "WHERE m.dataemissao>='"_s +
           start + u"' AND m.dataemissao<='"_s + end + u"' AND m.entrsai='S' AND n.CodVendedor="_s + codigo +
           u" AND m.cancelado='N' and m.cfop in "
           "('5101','5102','5104','5401','5403','5405','6101','6102','6104','6401','6403','6404') "
           "Union All "
           "SELECT m.nr_nf, m.descricao, n.razsoc, -1 * m.totalvenda, m.dataemissao FROM movsaient AS m "
           "Inner JOIN nfsaida AS n ON m.nr_nf=n.nrnf AND m.serienf=n.SerieNF "
           "WHERE m.dataemissao>='"_s +
           start + u"' AND m.dataemissao<='"_s + end + u"' AND m.entrsai='E' AND n.CodVendedor="_s + codigo +
           u" AND m.cancelado='N' and m.cfop in ('1202','1411','2202','2411') order by nr_nf"_s;
}

// Lines come ordered by invoice number; a sale and a return of the same number make one row.
ExtratoVendedor::Somas ExtratoVendedor::listaNotas(odbc::ResultSet& lines) {
    const int nrNf = lines.column(esquema::movsaient::nrNf);
    const int descricao = lines.column(esquema::movsaient::descricao);
    const int razSoc = lines.column(esquema::nfsaida::razSoc);
    const int totalVenda = lines.column(esquema::movsaient::totalVenda);
    const int dataEmissao = lines.column(esquema::movsaient::dataEmissao);
    const Grid::Fill fill(ui->Grid1);
    Somas gerais;
    while (!lines.atEnd()) {
        const QString numero = lines.field(nrNf).text();
        const QString data = dateText(lines.field(dataEmissao));
        const QString cliente = lines.field(razSoc).text();
        Somas nota;
        for (; !lines.atEnd() && lines.field(nrNf).text() == numero; lines.moveNext())
            (isPao(lines.field(descricao).text()) ? nota.pao : nota.outros) +=
                lines.field(totalVenda).decimal();
        ui->Grid1->addRow({data, numero, cliente, FormataDinheiro(nota.pao), FormataDinheiro(nota.outros),
                           FormataDinheiro(nota.pao + nota.outros)});
        gerais.pao += nota.pao;
        gerais.outros += nota.outros;
    }
    return gerais;
}

void ExtratoVendedor::mostraTotais(const Somas& somas, const QString& comissaoPao,
                                   const QString& comissaoOutros, const QString& totalDevolucao) {
    const auto percentual = [](const QString& text) { return Formata(ValorNumerico(text), u"###,##0.0##"); };
    ui->TotGerPao->setText(FormataDinheiro(somas.pao));
    ui->PorcComissPao->setText(percentual(comissaoPao));
    ui->TotalComissaoPao->setText(FormataDinheiro(comissao(somas.pao, comissaoPao)));
    ui->TotGerOutros->setText(FormataDinheiro(somas.outros));
    ui->PorcComissOutros->setText(percentual(comissaoOutros));
    ui->TotalComissaoOutros->setText(FormataDinheiro(comissao(somas.outros, comissaoOutros)));
    ui->TotalVendas->setText(FormataDinheiro(somas.pao + somas.outros));
    ui->TotalComissoes->setText(FormataDinheiro(ValorNumerico(ui->TotalComissaoPao->text()) +
                                                ValorNumerico(ui->TotalComissaoOutros->text())));
    ui->TotalDevolucoes->setText(FormataDinheiro(ValorNumerico(totalDevolucao)));
}

} // namespace tarvessa
