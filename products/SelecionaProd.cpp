#include "products/SelecionaProd.h"

#include "core/AcessoDados.h"
#include "core/Esquema.h"
#include "core/GridFile.h"
#include "products/PesquisaProduto.h"
#include "products/SelecionaProdColumns.h"
#include "ui/FitToScreen.h"
#include "ui/Guard.h"
#include "ui/Manual.h"
#include "ui/MessageBoxes.h"
#include "ui/grid/Grid.h"
#include "ui_SelecionaProd.h"

#include <QScrollBar>
#include <QShortcut>
#include <QShowEvent>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

using namespace selecionaprod;

// Twips
constexpr int codeWidth = 1500;
constexpr int descriptionWidth = 4100;
constexpr int descriptionWidthBesideScrollBar = 3820;
constexpr int numberWidth = 950;
constexpr int rowHeight = 300;

// Header included
constexpr int rowsThatScroll = 24;

constexpr int remarkLines = 3;

QFont detailFont() {
    QFont font(u"Courier New"_s);
    font.setStyleHint(QFont::Monospace);
    font.setFixedPitch(true);
    return font;
}

} // namespace

SelecionaProd::SelecionaProd(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::SelecionaProd>()) {
    ui->setupUi(this);
    Form_Load();
    const QFont font = detailFont();
    for (QLabel* detail : {ui->Label1, ui->Label2, ui->Label3, ui->Label4, ui->Label5, ui->Label7})
        detail->setFont(font);
    // A longer remark scrolls, so that nothing moves from row to row.
    ui->rolagem->setFixedHeight(remarkLines * QFontMetrics(font).lineSpacing());
    setUpGrid();
    setUpKeys();
    manual::opensAt(this, u"selecao-de-produtos"_s);
    onSignal(ui->Grid, &Grid::cellClicked, this, [this](int, int) { escolhe(); });
    onSignal(ui->Grid, &Grid::cellEntered, this, [this](int, int) { atualizaDetalhes(); });
    onSignal(ui->cmbVisualizarImagem, &QPushButton::clicked, this,
             [this](bool) { cmbVisualizarImagem_Click(); });
}

SelecionaProd::~SelecionaProd() = default;

Grid* SelecionaProd::grid() const {
    return ui->Grid;
}

// No behaviour depends on the setting; reading it is part of opening the screen.
void SelecionaProd::Form_Load() {
    AbreRS2(u"SELECT ReservaAtualizaGridEstoque FROM EMPRESA"_s);
    setProperty("ReservaAtualizaGridEstoque",
                rs2.field(esquema::empresa::reservaAtualizaGridEstoque).text() == esquema::ligado);
    rs2.close();
}

void SelecionaProd::setUpGrid() {
    // The detail columns have no captions.
    ui->Grid->setFormat(u"<CÓDIGO|<DESCRIÇAO|>ESTOQUE|>"_s + NomeTabelaPreco[1] + u"|>"_s +
                        NomeTabelaPreco[2] + u"|>"_s + NomeTabelaPreco[3] + u"|>"_s + NomeTabelaPreco[4] +
                        u"|||||"_s);
    for (int column = Preco1; column <= Preco4; ++column)
        ui->Grid->setSpokenCaption(column, u"Preço da tabela %1"_s.arg(column - Preco1 + 1));
    ui->Grid->setSpokenCaption(Unidade, u"Unidade"_s);
    ui->Grid->setColumnTwips(CodFabr, codeWidth);
    ui->Grid->setColumnTwips(Descricao, descriptionWidth);
    for (int column = Estoque; column <= Preco4; ++column)
        ui->Grid->setColumnTwips(column, numberWidth);
    for (int column = UltimaAlteracao; column <= Observacao; ++column)
        ui->Grid->setColumnTwips(column, 0);
    ui->Grid->setColumnKinds({ColumnKind::Text, ColumnKind::Text, ColumnKind::Number, ColumnKind::Number,
                              ColumnKind::Number, ColumnKind::Number, ColumnKind::Number});
    offerSaving(ui->Grid, [] { return u"Produtos"_s; });
    ui->Grid->setMinimumRowTwips(rowHeight);
    ui->Grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    ui->Grid->setPreferredRows(rowsThatScroll - 1);
    fitToScreen(this);
}

void SelecionaProd::setUpKeys() {
    const auto onKey = [this](Qt::Key key, auto action) {
        auto* shortcut = new QShortcut(key, this);
        shortcut->setAutoRepeat(false); // the Enter that began the search may still be held down
        onSignal(shortcut, &QShortcut::activated, this, action);
    };
    onKey(Qt::Key_Return, [this] { escolhe(); });
    onKey(Qt::Key_Enter, [this] { escolhe(); });
    onKey(Qt::Key_Escape, [this] { desiste(); });
    onKey(Qt::Key_F2, [this] { cmbVisualizarImagem_Click(); });
    // Not through setAltKey: the tool tip names F2 only.
    ui->cmbVisualizarImagem->setShortcut(Qt::ALT | Qt::Key_V);
}

void SelecionaProd::showRow(int row) {
    if (ui->Grid->rows() >= rowsThatScroll)
        ui->Grid->setColumnTwips(Descricao, descriptionWidthBesideScrollBar);
    ui->Grid->setCurrentCell(qMax(row, 1), CodFabr);
}

void SelecionaProd::rethrow() const {
    if (m_error)
        throw RuntimeError(*m_error);
}

void SelecionaProd::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (event->spontaneous())
        return;
    ui->Grid->setTopRow(ui->Grid->currentRow());
    atualizaDetalhes();
}

void SelecionaProd::escolhe() {
    CodigoSelecionado = ui->Grid->text(ui->Grid->currentRow(), CodFabr);
    accept();
}

void SelecionaProd::desiste() {
    CodigoSelecionado.clear();
    reject();
}

void SelecionaProd::atualizaDetalhes() {
    const auto detail = [this](Column column) { return ui->Grid->text(ui->Grid->currentRow(), column); };
    ui->Label6->hide();
    ui->Label1->setText(u"MARCA/REFERÊNCIA: "_s + detail(Aplicacao));
    ui->Label2->setText(u"ATUALIZAÇÃO     : "_s + detail(UltimaAlteracao));
    ui->Label3->setText(u"DEPÓSITO    : "_s + detail(Deposito).remove(u",000"_s));
    ui->Label5->setText(u"UNIDADE     : "_s + detail(Unidade));
    ui->Label4->setText(detail(Observacao));
    ui->rolagem->verticalScrollBar()->setValue(0);
    keepRowVisible();
}

// Details that wrap take room from the grid. Under a pressed mouse button no row may move, or the click is
// lost.
void SelecionaProd::keepRowVisible() {
    if (QGuiApplication::mouseButtons() != Qt::NoButton)
        return;
    layout()->activate();
    ui->Grid->scrollTo(ui->Grid->currentIndex());
}

void SelecionaProd::cmbVisualizarImagem_Click() {
    if (ui->Grid->rows() > 1)
        mostraImagem();
}

// The report of a missing viewer ends the program, so it is raised by the search, which nothing follows then.
void SelecionaProd::mostraImagem() {
    if (!CarregaImagemProduto) {
        m_error.emplace(ErrorNumber::ObjectRequired,
                        u"O objeto é obrigatório: não há visualizador de imagem."_s);
        desiste();
        return;
    }
    const int row = ui->Grid->currentRow();
    if (CarregaImagemProduto(ui->Grid->text(row, CodFabr), ui->Grid->text(row, Descricao)))
        return;
    boxes::exclaim(this, u"O produto selecionado, não possuí imagem"_s, u"Atenção!"_s);
    ui->Grid->setFocus();
}

} // namespace tarvessa
