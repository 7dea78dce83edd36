#include "targets/MetasQuadro.h"

#include "base/Numeros.h"
#include "core/GridFile.h"
#include "core/Periodo.h"
#include "core/Teclado.h"
#include "products/ProductBox.h"
#include "ui/BusyLabel.h"
#include "ui/DateBox.h"
#include "ui/Guard.h"
#include "ui/Manual.h"
#include "ui/NameParts.h"
#include "ui/Shortcuts.h"
#include "ui/TextBox.h"
#include "ui/Twips.h"
#include "ui/grid/CellEditor.h"
#include "ui/grid/FitToGrids.h"
#include "ui/grid/SummaryLabel.h"
#include "ui_MetasQuadro.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

// Header included. From one row more on, the board narrows a column for the scroll bar; the targets never do.
constexpr int rowsWithoutScrolling = 18;

// Twips
constexpr int rowHeight = 300;
constexpr int scrollBarWidth = 250;
constexpr int quantityWidth = 1640;

ProductBox::LookUp lookUp(const QString& unknownMessage) {
    return {u"CodFabr, Descricao"_s, unknownMessage, ProductBox::Unknown::ClearText, {}};
}

} // namespace

MetasQuadro::MetasQuadro(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::MetasQuadro>()) {
    ui->setupUi(this);
    ui->Label1daConsulta->setObjectName(ui->Label1->objectName());
    m_product = new ProductBox(ui->Descricao, this, lookUp(u"Descricao inexistente. Verifique!!!"_s));
    m_product2 = new ProductBox(ui->Descricao2, this, lookUp(u"Descrição inexistente. Verifique!!!"_s));
    m_period = std::make_unique<Periodo>(
        ui->DataIni, ui->DataFin,
        Periodo::Mensagens{u"Data Inicial superior a Data Final. Verifique!!!"_s,
                           u"Data Inicial inválida. Verifique!!!"_s, u"Data Final inválida. Verifique!!!"_s});
    m_editor = new CellEditor(ui->Grid1, ui->TextGrid);
    ui->Quantidade->setMinimumWidth(twipsToPixels(this, quantityWidth));
    ui->Quantidade->setText(u"0"_s);
    BusyLabel::prepare(ui->Label4);
    BusyLabel::prepare(ui->Label7);
    setUpGrids();
    setUpShortcuts();
    for (TextBox* box : {ui->Descricao, ui->Quantidade, ui->Descricao2})
        box->setSelectsOnFocus();
    for (TextBox* box : {ui->Quantidade, ui->TextGrid})
        box->setDecimal();
    connectControls();
    ui->Vendedores->setFocus();
}

MetasQuadro::~MetasQuadro() = default;

void MetasQuadro::setUpGrids() {
    ui->Grid1->setFormat(u"<CÓDIGO|<PRODUTO|>QUANTIDADE|^EXCLUIR|ID"_s);
    ui->Grid2->setFormat(
        u"<CÓDIGO|<DESCRIÇÃO|>META|>VENDIDO|>% META|>R$ TOTAL VENDA|>DEVOLUÇÃO|% DEVOLUÇÃO"_s);
    for (Grid* grid : {ui->Grid1, ui->Grid2})
        grid->setMinimumRowTwips(rowHeight);
    ui->Grid1->setColumnKinds({ColumnKind::Text, ColumnKind::Text, ColumnKind::Number, ColumnKind::Button});
    ui->Grid2->setColumnKinds({ColumnKind::Text, ColumnKind::Text, ColumnKind::Number, ColumnKind::Number,
                               ColumnKind::Percentage, ColumnKind::Number, ColumnKind::Number,
                               ColumnKind::Percentage});
    ui->rodape->insertWidget(ui->rodape->indexOf(ui->folga), summaryLabel(ui->Grid2));
    offerSaving(ui->Grid1, [this] { return u"Metas - "_s + sellerInFileName(); });
    offerSaving(ui->Grid2, [this] { return u"Andamento das metas - "_s + m_ranPeriod; });
    setTargetWidths();
    AjustaGrid2();
    fitToGrids(this, {ui->Grid1, ui->Grid2}, rowsWithoutScrolling, scrollBarWidth);
}

void MetasQuadro::setUpShortcuts() {
    setTabKeys(ui->SSTab1);
    setAltKey(ui->Command1, Qt::Key_A);
    setAltKey(ui->Command2, Qt::Key_I);
    setAltKey(ui->Command4, Qt::Key_G);
}

void MetasQuadro::connectControls() {
    auto* keyboard = new Teclado(this, [this] { reject(); });
    nameParts(this);
    manual::opensAt(this, u"metas"_s);
    keyboard->setKeyFilter([this](QWidget* control, int key) { return editorKey(control, key); });
    onSignal(ui->SSTab1, &QTabWidget::currentChanged, this, [this](int tab) { SSTab1_Click(tab); });
    onSignal(ui->Vendedores, &QComboBox::activated, this, [this](int) { AjustaGrid(); });
    onSignal(ui->Grid1, &Grid::cellClicked, this, [this](int row, int column) { Grid1_Click(row, column); });
    onSignal(m_editor, &CellEditor::left, this, [this] { closeEditor(); });
    onSignal(ui->Command1, &QPushButton::clicked, this, [this](bool) { Command1_Click(); });
    onSignal(ui->Command2, &QPushButton::clicked, this, [this](bool) { Command2_Click(); });
    onSignal(ui->Command4, &QPushButton::clicked, this, [this](bool) { Command4_Click(); });
}

void MetasQuadro::SSTab1_Click(int tab) {
    if (ui->SSTab1->widget(tab) == ui->Frame2) {
        AjustaGrid2();
        ui->DataIni->setFocus();
    } else {
        ui->Vendedores->setFocus();
    }
}

// Enter and Escape in the cell's editor end the editing and nothing else.
bool MetasQuadro::editorKey(QWidget* control, int key) {
    const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (control != ui->TextGrid || !(enter || key == Qt::Key_Escape))
        return false;
    if (!enter || !EhNumero(ui->TextGrid->text()))
        restoreText();
    closeEditor();
    return true;
}

} // namespace tarvessa
