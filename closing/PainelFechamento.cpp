#include "closing/PainelFechamento.h"

#include "base/Numeros.h"
#include "base/Operation.h"
#include "closing/BatchProgress.h"
#include "closing/PainelFechamentoColumns.h"
#include "closing/PanelStatus.h"
#include "closing/VisualizaPedido.h"
#include "core/AcessoDados.h"
#include "core/GridFile.h"
#include "core/PrintLayout.h"
#include "core/Teclado.h"
#include "products/PromocaoPedidos.h"
#include "reports/Comissao.h"
#include "reports/RelatNivelPreco.h"
#include "reports/ResumoVendas.h"
#include "targets/MetasQuadro.h"
#include "ui/FitToScreen.h"
#include "ui/Guard.h"
#include "ui/Manual.h"
#include "ui/MessageBoxes.h"
#include "ui/NameParts.h"
#include "ui/Pictures.h"
#include "ui/Shortcuts.h"
#include "ui/Twips.h"
#include "ui_PainelFechamento.h"

#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QShortcut>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

constexpr int totalWidthTwips = 1800;
constexpr int pictureSize = 24;
const QString startOfUnselect = u"Desmarcar"_s;

} // namespace

PainelFechamento::PainelFechamento(QWidget* parent)
    : QMainWindow(parent), ui(std::make_unique<Ui::PainelFechamento>()), m_status(new PanelStatus(this)),
      m_progress(new BatchProgress(this)), m_interrupted(new QLabel(this)),
      m_relatorio(std::make_unique<ReportControl>(this)) {
    ui->setupUi(this);
    CRW = m_relatorio.get();
    statusBar()->addWidget(m_status);
    statusBar()->addWidget(m_interrupted);
    m_interrupted->setObjectName(u"Interrompidos"_s);
    m_interrupted->hide();
    statusBar()->addPermanentWidget(m_progress, 1);
    fitToScreen(this, size());
    ui->Text1->setFixedWidth(twipsToPixels(this, totalWidthTwips));
    ui->picSucesso->setPixmap(m_picSucesso.pixmap(pictureSize));
    ui->picErro->setPixmap(pictures::error().pixmap(pictureSize));
    ui->Grid1->setFormat(u"PEDIDO|^TIPO|<CLIENTE|<VENDEDOR|<CIDADE|>R$ TOTAL|>DIAS VENC|>FORMA PAGTO|^TABELA|"
                         "^SELEÇÃO|CODIGOCLI"_s);
    ui->Grid1->setStretchedColumn(painelfechamento::Vendedor);
    ui->Grid1->setTickColumn(painelfechamento::Selecao, m_picSucesso);
    ui->Grid1->setColumnKinds({ColumnKind::Text, ColumnKind::Text, ColumnKind::Text, ColumnKind::Text,
                               ColumnKind::Text, ColumnKind::Number, ColumnKind::Number});
    offerSaving(ui->Grid1, [this] { return listName(); });

    defineShortcuts();
    preparaEditores();
    nameParts(this);
    auto* keyboard = new Teclado(this, [] { QApplication::quit(); });
    manual::opensAt(this, u"painel"_s);
    keyboard->setKeyFilter([this](const QWidget* control, int key) { return teclaDeEditor(control, key); });
    onPress(ui->Command1, &PainelFechamento::Command1_Click);
    onPress(ui->Command2, &PainelFechamento::Command2_Click);
    onPress(ui->Command3, &PainelFechamento::Command3_Click);
    onPress(ui->Command4, &PainelFechamento::Command4_Click);
    onPress(ui->Command5, &PainelFechamento::Command5_Click);
    onPress(ui->Command6, &PainelFechamento::Command6_Click);
    onSignal(ui->Grid1, &Grid::cellClicked, this, [this](int row, int column) { Grid1_Click(row, column); });
    onSignal(ui->Grid1, &Grid::cellDoubleClicked, this,
             [this](int row, int column) { Grid1_DblClick(row, column); });
    connect(ui->Grid1, &Grid::cellEntered, m_status, [this](int row, int) { m_status->showRow(row); });
    connect(ui->Grid1, &Grid::selectionSummary, m_status, &PanelStatus::showMarked);
    Connection.watch([this] { mostraConexao(); });
    opensFrom<ResumoVendas>(ui->MnResumoVendas);
    opensFrom<RelatNivelPreco>(ui->MnrelAlfaNivel);
    opensFrom<Comissao>(ui->MnComissao);
    onSignal(ui->Metas, &QAction::triggered, this, [this](bool) { runOperation([this] { Metas_Click(); }); });
}

PainelFechamento::~PainelFechamento() {
    CRW = nullptr;
    Connection.watch({});
}

// The captions are fixed and have no mnemonics, so the tool tips name the keys.
void PainelFechamento::defineShortcuts() {
    setAltKey(ui->Command1, Qt::Key_S);
    setAltKey(ui->Command2, Qt::Key_T);
    setAltKey(ui->Command3, Qt::Key_C);
    setAltKey(ui->Command4, Qt::Key_E);
    setAltKey(ui->Command5, Qt::Key_A);
    setAltKey(ui->Command6, Qt::Key_D);
    const auto* menu = new QShortcut(Qt::ALT | Qt::Key_R, this);
    connect(menu, &QShortcut::activated, this, [this] {
        ui->menuBar->setActiveAction(ui->MnRelatorio->menuAction());
        // Opened by key, the menu is ready for Enter and the arrows.
        ui->MnRelatorio->setActiveAction(ui->MnResumoVendas);
    });
    ui->Metas->setShortcut(Qt::ALT | Qt::Key_M);
    auto* view = new QShortcut(Qt::Key_F3, this);
    onSignal(view, &QShortcut::activated, this,
             [this] { runOperation([this] { visualiza(ui->Grid1->currentRow()); }); });
    connect(ui->Grid1, &Grid::findLineShown, view, [view](bool shown) { view->setEnabled(!shown); });
    const auto* interrupted = new QShortcut(Qt::Key_F7, this);
    onSignal(interrupted, &QShortcut::activated, this,
             [this] { runOperation([this] { abreInterrompidos(); }); });
    ui->MnConferencia->setShortcutVisibleInContextMenu(true);
    ui->Grid1->addAction(ui->MnConferencia);
    onSignal(ui->MnConferencia, &QAction::triggered, this,
             [this](bool) { runOperation([this] { abreConferencia(); }); });
    ui->Command4->setToolTip(ui->Command4->toolTip() +
                             u"\nF6: Conferência, que mostra antes o que será feito"_s);
    ui->LabelVisualiza->setToolTip(u"Tecla de atalho: F3"_s);
}

// A shortcut leaves the focus where it is, so an open cell editor is committed here; no operation begins on a
// value that was refused.
void PainelFechamento::onPress(QAbstractButton* button, void (PainelFechamento::*handler)()) {
    onSignal(button, &QAbstractButton::clicked, this,
             [this, handler](bool) { runOperation([this, handler] { (this->*handler)(); }); });
}

void PainelFechamento::runOperation(const std::function<void()>& body) {
    m_seeksInterrupted = m_seeksInterrupted || !Connection.isOpen();
    if (!concluiEdicao())
        return;
    body();
    if (m_seeksAtStart && Connection.isOpen())
        procuraInterrompidos();
    if (m_seeksInterrupted && Connection.isOpen())
        abreInterrompidosSeHouver();
}

template <typename Screen>
void PainelFechamento::opensFrom(QAction* item) {
    onSignal(item, &QAction::triggered, this,
             [this](bool) { runOperation([this] { Screen(this).exec(); }); });
}

void PainelFechamento::TotalSelecionado() {
    Dinheiro total;
    int selected = 0;
    QString text;
    for (int row = 1; row < ui->Grid1->rows(); ++row)
        if (ui->Grid1->isTicked(row)) {
            total += ValorNumerico(ui->Grid1->textView(row, painelfechamento::Total, text));
            ++selected;
        }
    ui->Text1->setText(FormataDinheiro(total));
    m_status->showList(ui->Grid1->rows() - 1, selected, ui->Grid1->currentRow());
}

// A loss may have cut a closing, here or at another station, so the next operation that has a connection
// again ends by looking for one.
void PainelFechamento::mostraConexao() {
    if (Connection.isOpen()) {
        m_status->showConnected(Connection.server(), Connection.database());
    } else {
        m_status->showDisconnected();
        m_seeksInterrupted = true;
    }
}

void PainelFechamento::closeEvent(QCloseEvent* event) {
    event->accept();
    QApplication::quit();
}

void PainelFechamento::Command1_Click() {
    alternaSelecao();
}

void PainelFechamento::Command2_Click() {
    converteDavs();
}

void PainelFechamento::Command3_Click() {
    listaPvs();
}

void PainelFechamento::Command4_Click() {
    encerraPvs();
}

void PainelFechamento::Command5_Click() {
    analisaPrecos();
}

void PainelFechamento::Command6_Click() {
    abrePromocao();
}

void PainelFechamento::Grid1_Click(int row, int column) {
    actOnCell(row, column);
}

// A double click reaches the grid's listeners as one signal in place of its second click, so in the columns
// where a click acts it counts as that click.
void PainelFechamento::Grid1_DblClick(int row, int column) {
    if (column <= painelfechamento::Total)
        visualiza(row);
    else
        actOnCell(row, column);
}

void PainelFechamento::Metas_Click() {
    abreMetas();
}

// The listed totals are those before the promotion: nothing may be closed with them, also when it failed on
// the way and was left.
void PainelFechamento::abrePromocao() {
    PromocaoPedidos promotion(this, m_picSucesso);
    promotion.exec();
    Operation::renew();
    if (promotion.hasChangedPrices())
        recarregaPvs();
}

void PainelFechamento::alternaSelecao() {
    if (ui->Grid1->rows() == 1) {
        boxes::inform(this, u"Não há registro de venda. Verifique!!!"_s);
        return;
    }
    const bool unselect = ui->Command1->text().startsWith(startOfUnselect);
    for (int row = 1; row < ui->Grid1->rows(); ++row)
        ui->Grid1->setTicked(row, !unselect);
    setCaption(ui->Command1,
               unselect ? u"Seleciona todos os registros"_s : u"Desmarcar todos os registros"_s);
    TotalSelecionado();
}

void PainelFechamento::actOnCell(int row, int column) {
    switch (column) {
    case painelfechamento::DiasVenc:
    case painelfechamento::FormaPagto:
    case painelfechamento::Tabela:
        abreEditor(row, column);
        break;
    case painelfechamento::Selecao:
        ui->Grid1->setTicked(row, !ui->Grid1->isTicked(row));
        TotalSelecionado();
        break;
    default:
        break;
    }
}

void PainelFechamento::visualiza(int row) {
    if (row > 0)
        VisualizaPedido::abre(this, ValorInteiro(ui->Grid1->text(row, painelfechamento::Pedido)),
                              ui->Grid1->text(row, painelfechamento::Tipo));
}

void PainelFechamento::abreMetas() {
    MetasQuadro board(this);
    board.Form_Load();
    board.exec();
}

} // namespace tarvessa
