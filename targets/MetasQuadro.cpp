#include "targets/MetasQuadro.h"

#include "base/Numeros.h"
#include "core/Periodo.h"
#include "core/Teclado.h"
#include "targets/CampoProduto.h"
#include "ui/BusyLabel.h"
#include "ui/DateBox.h"
#include "ui/Guard.h"
#include "ui/TextBox.h"
#include "ui/Twips.h"
#include "ui/grid/CellEditor.h"
#include "ui/grid/FitToGrids.h"
#include "ui_MetasQuadro.h"

#include <QShortcut>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

// Header included; one more and the board makes room for the scroll bar, which the targets never do.
constexpr int linhasSemRolagem = 18;
constexpr int alturaDaLinhaTwips = 300;
constexpr int barraDeRolagemTwips = 250;
constexpr int larguraDaQuantidadeTwips = 1640;

} // namespace

MetasQuadro::MetasQuadro(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::MetasQuadro>()) {
    ui->setupUi(this);
    ui->Label1daConsulta->setObjectName(ui->Label1->objectName());
    m_produto = new CampoProduto(ui->Descricao, this, u"Descricao inexistente. Verifique!!!"_s);
    m_produto2 = new CampoProduto(ui->Descricao2, this, u"Descrição inexistente. Verifique!!!"_s);
    m_periodo = std::make_unique<Periodo>(
        ui->DataIni, ui->DataFin,
        Periodo::Mensagens{u"Data Inicial inválida. Verifique!!!"_s, u"Data Final inválida. Verifique!!!"_s,
                           u"Data Inicial superior a Data Final. Verifique!!!"_s});
    m_edicao = new CellEditor(ui->Grid1, ui->TextGrid);
    ui->Quantidade->setMinimumWidth(twipsToPixels(this, larguraDaQuantidadeTwips));
    ui->Quantidade->setText(u"0"_s);
    BusyLabel::prepare(ui->Label4);
    BusyLabel::prepare(ui->Label7);
    preparaGrids();
    defineAtalhos();
    for (TextBox* caixa : {ui->Descricao, ui->Quantidade, ui->Descricao2})
        caixa->setSelectsOnFocus();
    for (TextBox* caixa : {ui->Quantidade, ui->TextGrid})
        caixa->setDecimal();

    auto* teclado = new Teclado(this, [this] { reject(); });
    teclado->setAntes([this](QWidget* controle, int tecla) { return teclaDaEdicao(controle, tecla); });
    onSignal(ui->SSTab1, &QTabWidget::currentChanged, this, [this](int aba) { SSTab1_Click(aba); });
    onSignal(ui->Vendedores, &QComboBox::activated, this, [this](int) { AjustaGrid(); });
    onSignal(ui->Grid1, &Grid::cellClicked, this,
             [this](int linha, int coluna) { Grid1_Click(linha, coluna); });
    onSignal(m_edicao, &CellEditor::left, this, [this] { encerraEdicao(); });
    onSignal(ui->Command1, &QPushButton::clicked, this, [this](bool) { Command1_Click(); });
    onSignal(ui->Command2, &QPushButton::clicked, this, [this](bool) { Command2_Click(); });
    onSignal(ui->Command4, &QPushButton::clicked, this, [this](bool) { Command4_Click(); });
    ui->Vendedores->setFocus();
}

MetasQuadro::~MetasQuadro() = default;

void MetasQuadro::preparaGrids() {
    ui->Grid1->setFormat(u"<CÓDIGO|<PRODUTO|>QUANTIDADE|^EXCLUIR|ID"_s);
    ui->Grid2->setFormat(
        u"<CÓDIGO|<DESCRIÇÃO|>META|>VENDIDO|>% META|>R$ TOTAL VENDA|>DEVOLUÇÃO|% DEVOLUÇÃO"_s);
    for (Grid* grid : {ui->Grid1, ui->Grid2})
        grid->setMinimumRowTwips(alturaDaLinhaTwips);
    defineLarguras();
    AjustaGrid2();
    fitToGrids(this, {ui->Grid1, ui->Grid2}, linhasSemRolagem, barraDeRolagemTwips);
}

void MetasQuadro::defineAtalhos() {
    const auto atalho = [this](const QKeySequence& teclas, auto acao) {
        connect(new QShortcut(teclas, this), &QShortcut::activated, ui->SSTab1, acao);
    };
    for (int aba = 0; aba < ui->SSTab1->count(); ++aba) {
        const QKeySequence teclas(Qt::ALT | static_cast<Qt::Key>(Qt::Key_1 + aba));
        ui->SSTab1->setTabToolTip(aba, u"Tecla de atalho: "_s + teclas.toString(QKeySequence::NativeText));
        atalho(teclas, [this, aba] { ui->SSTab1->setCurrentIndex(aba); });
    }
    // The tabs know these keys themselves, but a list that has the focus would keep them for its search.
    const auto outraAba = [this] {
        ui->SSTab1->setCurrentIndex((ui->SSTab1->currentIndex() + 1) % ui->SSTab1->count());
    };
    atalho(Qt::CTRL | Qt::Key_Tab, outraAba);
    atalho(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab, outraAba);
}

void MetasQuadro::SSTab1_Click(int aba) {
    if (ui->SSTab1->widget(aba) == ui->Frame2) {
        AjustaGrid2();
        ui->DataIni->setFocus();
    } else {
        ui->Vendedores->setFocus();
    }
}

// Enter and Escape in the cell's editor end the editing and nothing else.
bool MetasQuadro::teclaDaEdicao(QWidget* controle, int tecla) {
    if (controle != ui->TextGrid)
        return false;
    if (tecla == Qt::Key_Return || tecla == Qt::Key_Enter) {
        if (!EhNumero(ui->TextGrid->text()))
            restauraTexto();
        encerraEdicao();
        return true;
    }
    if (tecla == Qt::Key_Escape) {
        restauraTexto();
        encerraEdicao();
        return true;
    }
    return false;
}

} // namespace tarvessa
