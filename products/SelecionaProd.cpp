#include "products/SelecionaProd.h"

#include "core/AcessoDados.h"
#include "core/Esquema.h"
#include "products/PesquisaProduto.h"
#include "products/VisualizadorImagem.h"
#include "ui/FitToScreen.h"
#include "ui/Guard.h"
#include "ui/MessageBoxes.h"
#include "ui/grid/Grid.h"
#include "ui_SelecionaProd.h"

#include <QShortcut>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

constexpr int larguraCodigo = 1500;
constexpr int larguraDescricao = 4100;
constexpr int larguraDescricaoComRolagem = 3820;
constexpr int larguraDeNumero = 950;
constexpr int linhasComRolagem = 24;
constexpr int alturaDeLinha = 300;
constexpr int linhasDaObservacao = 3;

// Places of the detail columns, counted from the last.
constexpr int doFimUnidade = 1;
constexpr int doFimObservacao = 2;
constexpr int doFimDeposito = 3;
constexpr int doFimMarca = 4;
constexpr int doFimAtualizacao = 5;

VisualizadorImagem* visualizadorAtual = nullptr;

} // namespace

SelecionaProd::SelecionaProd(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::SelecionaProd>()) {
    ui->setupUi(this);
    Form_Load();

    QFont fonte(u"Courier New"_s);
    fonte.setStyleHint(QFont::Monospace);
    fonte.setFixedPitch(true);
    for (QLabel* detalhe : {ui->Label1, ui->Label2, ui->Label3, ui->Label4, ui->Label5, ui->Label7})
        detalhe->setFont(fonte);
    // Room for the longest remark, so that nothing moves from row to row.
    ui->Label4->setFixedHeight(linhasDaObservacao * QFontMetrics(fonte).lineSpacing());
    defineGrid();

    const auto tecla = [this](Qt::Key qual, auto acao) {
        auto* atalho = new QShortcut(qual, this);
        atalho->setAutoRepeat(false); // the Enter that began the search may still be held down
        onSignal(atalho, &QShortcut::activated, this, acao);
    };
    tecla(Qt::Key_Return, [this] { escolhe(); });
    tecla(Qt::Key_Enter, [this] { escolhe(); });
    tecla(Qt::Key_Escape, [this] { desiste(); });
    tecla(Qt::Key_F2, [this] { cmbVisualizarImagem_Click(); });
    onSignal(ui->Grid, &Grid::cellClicked, this, [this](int, int) { escolhe(); });
    onSignal(ui->Grid, &Grid::cellEntered, this, [this](int, int) { atualizaDetalhes(); });
    onSignal(ui->cmbVisualizarImagem, &QPushButton::clicked, this,
             [this](bool) { cmbVisualizarImagem_Click(); });
}

SelecionaProd::~SelecionaProd() = default;

Grid* SelecionaProd::grid() const {
    return ui->Grid;
}

void SelecionaProd::setVisualizador(VisualizadorImagem* visualizador) {
    visualizadorAtual = visualizador;
}

void SelecionaProd::Form_Load() {
    AbreRS2(u"SELECT ReservaAtualizaGridEstoque FROM EMPRESA"_s);
    m_reservaAtualizaGridEstoque =
        rs2.field(esquema::empresa::reservaAtualizaGridEstoque).text() == esquema::ligado;
    rs2.close();
}

void SelecionaProd::defineGrid() {
    // The detail columns have no captions.
    ui->Grid->setFormat(u"<CÓDIGO|<DESCRIÇAO|>ESTOQUE|>"_s + NomeTabelaPreco[1] + u"|>"_s +
                        NomeTabelaPreco[2] + u"|>"_s + NomeTabelaPreco[3] + u"|>"_s + NomeTabelaPreco[4] +
                        u"|||||"_s);
    ui->Grid->setColumnTwips(CodFabr, larguraCodigo);
    ui->Grid->setColumnTwips(Descricao, larguraDescricao);
    for (int coluna = Estoque; coluna <= Preco4; ++coluna)
        ui->Grid->setColumnTwips(coluna, larguraDeNumero);
    for (int coluna = Preco4 + 1; coluna < quantidadeDeColunas - 1; ++coluna)
        ui->Grid->setColumnTwips(coluna, 0);
    ui->Grid->setMinimumRowTwips(alturaDeLinha);
    ui->Grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    ui->Grid->setPreferredRows(linhasComRolagem - 1);
    fitToScreen(this);
}

void SelecionaProd::mostraLinha(int linha) {
    if (ui->Grid->rows() >= linhasComRolagem)
        ui->Grid->setColumnTwips(Descricao, larguraDescricaoComRolagem);
    ui->Grid->setCurrentCell(qMax(linha, 1), CodFabr);
}

void SelecionaProd::confere() const {
    if (m_erro)
        throw RuntimeError(*m_erro);
}

void SelecionaProd::showEvent(QShowEvent* evento) {
    QDialog::showEvent(evento);
    if (evento->spontaneous())
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
    const auto detalhe = [this](int doFim) {
        return ui->Grid->text(ui->Grid->currentRow(), quantidadeDeColunas - doFim);
    };
    ui->Label6->hide();
    ui->Label1->setText(u"MARCA/REFERÊNCIA: "_s + detalhe(doFimMarca));
    ui->Label2->setText(u"ATUALIZAÇÃO     : "_s + detalhe(doFimAtualizacao));
    ui->Label3->setText(u"DEPÓSITO    : "_s + detalhe(doFimDeposito).remove(u",000"_s));
    ui->Label5->setText(u"UNIDADE     : "_s + detalhe(doFimUnidade));
    ui->Label4->setText(detalhe(doFimObservacao));
}

// The report of a missing viewer ends the program, so it is raised by the search, where nothing goes on from
// it.
void SelecionaProd::cmbVisualizarImagem_Click() {
    if (ui->Grid->rows() == 1)
        return;
    if (!visualizadorAtual) {
        m_erro.emplace(ErrorNumber::ObjectRequired,
                       u"O objeto é obrigatório: não há visualizador de imagem."_s);
        desiste();
        return;
    }
    const int linha = ui->Grid->currentRow();
    if (visualizadorAtual->CarregaImagemProduto(ui->Grid->text(linha, CodFabr),
                                                ui->Grid->text(linha, Descricao)))
        return;
    boxes::exclaim(this, u"O produto selecionado, não possuí imagem"_s, u"Atenção!"_s);
    ui->Grid->setFocus();
}

} // namespace tarvessa
