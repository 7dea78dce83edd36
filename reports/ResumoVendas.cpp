#include "reports/ResumoVendas.h"

#include "base/Numeros.h"
#include "core/GridFile.h"
#include "core/Teclado.h"
#include "ui/BusyLabel.h"
#include "ui/Guard.h"
#include "ui/Manual.h"
#include "ui/NameParts.h"
#include "ui/Shortcuts.h"
#include "ui/grid/FitToGrids.h"
#include "ui/grid/Grid.h"
#include "ui/grid/SummaryLabel.h"
#include "ui_ResumoVendas.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

// Twips.
constexpr std::array<int, 6> columnWidths = {1750, 4900, 3500, 1405, 1405, 1405};
constexpr int rowHeight = 340;

} // namespace

ResumoVendas::ResumoVendas(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::ResumoVendas>()) {
    ui->setupUi(this);
    m_periodo = std::make_unique<Periodo>(
        ui->DataIni, ui->DataFin, Periodo::Mensagens{u"Data inicial superior a final. Verifique!!!"_s});
    m_periodo->mesCorrente();
    BusyLabel::prepare(ui->Label3);
    setAltKey(ui->Command4, Qt::Key_G);
    makeTabs();
    setTabKeys(ui->TabPreco);
    FormataGrid();
    QList<Grid*> grids;
    for (const Tab& tab : m_tabs)
        grids.append(tab.TabelaPreco);
    fitToGrids(this, grids, rowsWithoutScrolling);

    new Teclado(this, [this] { reject(); });
    nameParts(this);
    manual::opensAt(this, u"resumo-de-vendas"_s);
    onSignal(ui->Command4, &QPushButton::clicked, this, [this](bool) { geraRelatorio(); });
}

ResumoVendas::~ResumoVendas() = default;

void ResumoVendas::makeTabs() {
    for (int n = 1; n <= levelCount; ++n) {
        const QString name = u"Preço %1"_s.arg(n);
        auto* page = new QWidget;
        auto* layout = new QVBoxLayout(page);
        auto* grid = new Grid;
        grid->setObjectName(u"TabelaPreco(%1)"_s.arg(n));
        grid->setAccessibleName(name);
        grid->setMinimumRowTwips(rowHeight);
        grid->setFormat(u"^CNPJ|<RAZÃO SOCIAL|<FANTASIA|>R$ TOTAL|>R$ DEVOLUÇÃO|>% DEVOLVIDO"_s);
        grid->setColumnKinds({ColumnKind::Text, ColumnKind::Text, ColumnKind::Text, ColumnKind::Number,
                              ColumnKind::Number, ColumnKind::Percentage});
        grid->setSortable();
        offerSaving(grid, [this, name] { return u"Resumo de vendas - %1 - %2"_s.arg(name, m_ranPeriod); });
        auto* total = new QLabel;
        total->setObjectName(u"Label4(%1)"_s.arg(n));
        total->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        QFont bold = total->font();
        bold.setBold(true);
        total->setFont(bold);
        layout->addWidget(grid);
        auto* foot = new QHBoxLayout;
        foot->addWidget(summaryLabel(grid), 1);
        foot->addWidget(total);
        layout->addLayout(foot);
        ui->TabPreco->addTab(page, name);
        m_tabs[static_cast<size_t>(n - 1)] = {grid, total};
    }
}

void ResumoVendas::FormataGrid() {
    for (const Tab& tab : m_tabs) {
        tab.TabelaPreco->setRows(1);
        tab.TabelaPreco->setEmptyText(u"O relatório ainda não foi gerado"_s);
        for (size_t column = 0; column < columnWidths.size(); ++column)
            tab.TabelaPreco->setColumnTwips(static_cast<int>(column), columnWidths[column]);
        tab.TabelaPreco->setHeaderBold();
        tab.Label4->setText(u"TOTAL R$ 0,00"_s);
    }
}

// The tab of a price level. Document numbers without a customer have no level; they go to the first tab, as
// unknown levels do.
size_t ResumoVendas::tabOf(const QString& texto3) {
    const qint32 n = ValorInteiro(texto3);
    return n >= 1 && n <= levelCount ? static_cast<size_t>(n - 1) : 0;
}

} // namespace tarvessa
