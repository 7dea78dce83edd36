#include "reports/Comissao.h"

#include "base/Numeros.h"
#include "core/Teclado.h"
#include "reports/ComissaoColunas.h"
#include "reports/ExtratoVendedor.h"
#include "ui/BusyLabel.h"
#include "ui/Guard.h"
#include "ui/Pictures.h"
#include "ui/grid/CellEditor.h"
#include "ui/grid/FitToGrids.h"
#include "ui_Comissao.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

// Twips, by column.
constexpr std::array<int, 13> larguras = {800,  1300, 1400, 1400, 1400, 1600, 1400,
                                          1400, 1600, 1600, 1400, 1400, 920};
constexpr int alturaDaLinha = 340;
constexpr int barraDeRolagem = 250;
constexpr int linhasNaTela = 23;
constexpr int ladoDaImagem = 16;

} // namespace

Comissao::Comissao(QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui::Comissao>()), m_imagem(pictures::printer()) {
    ui->setupUi(this);
    m_periodo = std::make_unique<Periodo>(
        ui->DataIni, ui->DataFin,
        Periodo::Mensagens{u"Data inicial inválida. Verifique!!!"_s, u"Data final inválida. Verifique!!!"_s,
                           u"Data inicial superior a data final. Verifique!!!"_s});
    m_periodo->mesAnterior();
    BusyLabel::prepare(ui->Label3);
    ui->Image1->setPixmap(m_imagem.pixmap(ladoDaImagem));
    ui->Grid1->setMinimumRowTwips(alturaDaLinha);
    ui->Grid1->setFormat(u">CÓDIGO|<VENDEDOR|>R$ TOTAL PÃO|>% COMISÃO|>R$ COMISSÃO|>R$ TOTAL OUTROS|"
                         ">% COMISSÃO|>R$ COMISSÃO|>R$ TOTAL VENDAS|>R$ TOTAL COMISSÃO|>R$ DEVOLUÇÕES|"
                         ">% DEVOLUÇÕES|^IMPRIME"_s);
    AjustaGrid();
    fitToGrids(this, {ui->Grid1}, linhasNaTela, barraDeRolagem);

    preparaEditor();
    auto* teclado = new Teclado(this, [this] { reject(); });
    teclado->setAntes([this](const QWidget* controle, int tecla) { return teclaDeEditor(controle, tecla); });
    onSignal(ui->Command4, &QPushButton::clicked, this, [this](bool) { Command4_Click(); });
    onSignal(ui->Command1, &QPushButton::clicked, this, [this](bool) { imprime(); });
    onSignal(ui->Grid1, &Grid::cellClicked, this,
             [this](int linha, int coluna) { Grid1_Click(linha, coluna); });
}

Comissao::~Comissao() = default;

void Comissao::AjustaGrid() {
    ui->Grid1->setRows(1);
    ui->Command1->setEnabled(false);
    for (size_t coluna = 0; coluna < larguras.size(); ++coluna)
        ui->Grid1->setColumnTwips(static_cast<int>(coluna), larguras[coluna]);
    ui->Grid1->setHeaderBold();
}

int Comissao::linhasDeVendedores() const {
    return ui->Grid1->rows() - 1 - comissao::linhasDeTotais;
}

void Comissao::SomaGrid() {
    if (linhasDeVendedores() < 1)
        return;
    const auto valor = [this](int linha, int coluna) {
        return ValorNumerico(ui->Grid1->text(linha, coluna));
    };
    const auto mostra = [this](int linha, int coluna, Dinheiro quantia) {
        ui->Grid1->setText(linha, coluna, FormataDinheiro(quantia));
    };
    constexpr int centavos = 2;
    const Dinheiro cem(100);
    constexpr std::array somadas = {
        comissao::Pao,         comissao::ComissaoPao,   comissao::Outros,    comissao::ComissaoOutros,
        comissao::TotalVendas, comissao::TotalComissao, comissao::Devolucoes};
    std::array<Dinheiro, larguras.size()> somas;
    for (int linha = 1; linha <= linhasDeVendedores(); ++linha) {
        mostra(linha, comissao::ComissaoPao,
               Proporcao(valor(linha, comissao::Pao), valor(linha, comissao::PorcPao), cem, centavos));
        mostra(linha, comissao::ComissaoOutros,
               Proporcao(valor(linha, comissao::Outros), valor(linha, comissao::PorcOutros), cem, centavos));
        mostra(linha, comissao::TotalComissao,
               valor(linha, comissao::ComissaoPao) + valor(linha, comissao::ComissaoOutros));
        for (const int coluna : somadas)
            somas[static_cast<size_t>(coluna)] += valor(linha, coluna);
    }
    const int totais = ui->Grid1->rows() - 1;
    for (const int coluna : somadas)
        mostra(totais, coluna, somas[static_cast<size_t>(coluna)]);
    mostra(totais, comissao::PorcDevolucoes,
           Proporcao(cem, somas[comissao::Devolucoes], somas[comissao::TotalVendas], centavos));
    for (int coluna = 0; coluna < ui->Grid1->columns(); ++coluna)
        ui->Grid1->setBold(totais, coluna, true);
}

void Comissao::Grid1_Click(int linha, int coluna) {
    if (coluna == comissao::PorcPao || coluna == comissao::PorcOutros)
        abreEditor(linha, coluna);
    else if (coluna == comissao::Imprime && ui->Grid1->hasPicture(linha, coluna))
        abreExtrato(linha);
}

// The boxes may have been changed since the run. A day that does not exist cannot be asked for; a period the
// wrong way round can, and has nothing in it.
void Comissao::abreExtrato(int linha) {
    if (!m_periodo->confereDatas())
        return;
    const auto celula = [this, linha](int coluna) { return ui->Grid1->text(linha, coluna); };
    ExtratoVendedor extrato(this);
    extrato.Carrega(ValorInteiro(celula(comissao::Codigo)), celula(comissao::Nome), m_periodo->inicioTela(),
                    m_periodo->fimTela(), celula(comissao::PorcPao), celula(comissao::PorcOutros),
                    celula(comissao::Devolucoes));
}

} // namespace tarvessa
