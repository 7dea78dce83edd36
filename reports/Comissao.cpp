#include "reports/Comissao.h"

#include "base/Numeros.h"
#include "core/GridFile.h"
#include "core/Teclado.h"
#include "reports/ComissaoColumns.h"
#include "reports/ExtratoVendedor.h"
#include "ui/BusyLabel.h"
#include "ui/Guard.h"
#include "ui/Manual.h"
#include "ui/Pictures.h"
#include "ui/grid/CellEditor.h"
#include "ui/grid/FitToGrids.h"
#include "ui/grid/SummaryLabel.h"
#include "ui_Comissao.h"

#include <array>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

// Twips.
constexpr std::array<int, 13> columnWidths = {800,  1300, 1400, 1400, 1400, 1600, 1400,
                                              1400, 1600, 1600, 1400, 1400, 920};
constexpr int rowHeight = 340;
constexpr int scrollBarWidth = 250;

constexpr int rowsOnScreen = 23;
constexpr int pictureSize = 16;

} // namespace

Comissao::Comissao(QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui::Comissao>()), m_printPicture(pictures::printer()) {
    ui->setupUi(this);
    m_periodo = std::make_unique<Periodo>(
        ui->DataIni, ui->DataFin, Periodo::Mensagens{u"Data inicial superior a data final. Verifique!!!"_s});
    m_periodo->mesAnterior();
    BusyLabel::prepare(ui->Label3);
    ui->Image1->setPixmap(m_printPicture.pixmap(pictureSize));
    ui->Grid1->setMinimumRowTwips(rowHeight);
    ui->Grid1->setFormat(u">CÓDIGO|<VENDEDOR|>R$ TOTAL PÃO|>% COMISÃO|>R$ COMISSÃO|>R$ TOTAL OUTROS|"
                         ">% COMISSÃO|>R$ COMISSÃO|>R$ TOTAL VENDAS|>R$ TOTAL COMISSÃO|>R$ DEVOLUÇÕES|"
                         ">% DEVOLUÇÕES|^IMPRIME"_s);
    ui->Grid1->setColumnKinds({ColumnKind::Text, ColumnKind::Text, ColumnKind::Number, ColumnKind::Percentage,
                               ColumnKind::Number, ColumnKind::Number, ColumnKind::Percentage,
                               ColumnKind::Number, ColumnKind::Number, ColumnKind::Number, ColumnKind::Number,
                               ColumnKind::Percentage, ColumnKind::Button});
    ui->cabecalho->insertWidget(ui->cabecalho->indexOf(ui->folga), summaryLabel(ui->Grid1));
    offerSaving(ui->Grid1, [this] { return u"Comissão - "_s + m_ranPeriod; });
    AjustaGrid();
    fitToGrids(this, {ui->Grid1}, rowsOnScreen, scrollBarWidth);

    prepareEditor();
    auto* teclado = new Teclado(this, [this] { reject(); });
    manual::opensAt(this, u"comissao"_s);
    teclado->setKeyFilter([this](const QWidget* control, int key) { return editorKey(control, key); });
    onSignal(ui->Command4, &QPushButton::clicked, this, [this](bool) { geraRelatorio(); });
    onSignal(ui->Command1, &QPushButton::clicked, this, [this](bool) { imprime(); });
    onSignal(ui->Grid1, &Grid::cellClicked, this, [this](int row, int column) { cellClicked(row, column); });
}

Comissao::~Comissao() = default;

void Comissao::AjustaGrid() {
    ui->Grid1->setRows(1);
    ui->Grid1->setEmptyText(u"O relatório ainda não foi gerado"_s);
    m_hasTotals = false;
    ui->Command1->setEnabled(false);
    for (size_t column = 0; column < columnWidths.size(); ++column)
        ui->Grid1->setColumnTwips(static_cast<int>(column), columnWidths[column]);
    ui->Grid1->setHeaderBold();
}

int Comissao::sellerRows() const {
    return ui->Grid1->rows() - 1 - (m_hasTotals ? comissao::footerRows : 0);
}

void Comissao::SomaGrid() {
    if (sellerRows() < 1)
        return;
    const auto value = [this](int row, int column) { return ValorNumerico(ui->Grid1->text(row, column)); };
    const auto show = [this](int row, int column, Dinheiro amount) {
        ui->Grid1->setText(row, column, FormataDinheiro(amount));
    };
    constexpr int cents = 2;
    const Dinheiro hundred(100);
    constexpr std::array summed = {
        comissao::Pao,         comissao::ComissaoPao,   comissao::Outros,    comissao::ComissaoOutros,
        comissao::TotalVendas, comissao::TotalComissao, comissao::Devolucoes};
    std::array<Dinheiro, columnWidths.size()> sums;
    for (int row = 1; row <= sellerRows(); ++row) {
        show(row, comissao::ComissaoPao,
             Proporcao(value(row, comissao::Pao), value(row, comissao::PorcPao), hundred, cents));
        show(row, comissao::ComissaoOutros,
             Proporcao(value(row, comissao::Outros), value(row, comissao::PorcOutros), hundred, cents));
        show(row, comissao::TotalComissao,
             value(row, comissao::ComissaoPao) + value(row, comissao::ComissaoOutros));
        for (const int column : summed)
            sums[static_cast<size_t>(column)] += value(row, column);
    }
    if (!m_hasTotals)
        return;
    const int totals = ui->Grid1->rows() - 1;
    for (const int column : summed)
        show(totals, column, sums[static_cast<size_t>(column)]);
    show(totals, comissao::PorcDevolucoes,
         Proporcao(hundred, sums[comissao::Devolucoes], sums[comissao::TotalVendas], cents));
    for (int column = 0; column < ui->Grid1->columns(); ++column)
        ui->Grid1->setBold(totals, column, true);
}

void Comissao::cellClicked(int row, int column) {
    if (column == comissao::PorcPao || column == comissao::PorcOutros)
        openEditor(row, column);
    else if (column == comissao::Imprime && ui->Grid1->hasPicture(row, column))
        abreExtrato(row);
}

// The dates may have been changed since the run. Texts that are not dates are refused; a start after the end
// is accepted and gives an empty statement.
void Comissao::abreExtrato(int row) {
    if (!m_periodo->confereDatas())
        return;
    const auto cell = [this, row](int column) { return ui->Grid1->text(row, column); };
    ExtratoVendedor extrato(this);
    extrato.Carrega(ValorInteiro(cell(comissao::Codigo)), cell(comissao::Nome), m_periodo->inicioTela(),
                    m_periodo->fimTela(), cell(comissao::PorcPao), cell(comissao::PorcOutros),
                    cell(comissao::Devolucoes));
}

} // namespace tarvessa
