#include "closing/PainelFechamento.h"

#include "base/Datas.h"
#include "base/Numeros.h"
#include "closing/Colunas.h"
#include "closing/ProgressoLote.h"
#include "closing/VisualizaPedido.h"
#include "core/Esquema.h"
#include "core/PrintLayout.h"
#include "core/Teclado.h"
#include "products/PromocaoPedidos.h"
#include "reports/Comissao.h"
#include "reports/RelatNivelPreco.h"
#include "reports/ResumoVendas.h"
#include "targets/MetasQuadro.h"
#include "ui/FitToScreen.h"
#include "ui/Guard.h"
#include "ui/MessageBoxes.h"
#include "ui/Pictures.h"
#include "ui/Twips.h"
#include "ui_PainelFechamento.h"

#include <QApplication>
#include <QCloseEvent>
#include <QShortcut>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

constexpr int larguraDoTotalTwips = 1800;
constexpr int ladoDaImagem = 24;
const QString inicioDeDesmarcar = u"Desmarcar"_s;

} // namespace

PainelFechamento::PainelFechamento(QWidget* parent)
    : QMainWindow(parent), ui(std::make_unique<Ui::PainelFechamento>()), m_progresso(new ProgressoLote(this)),
      m_relatorio(std::make_unique<ReportControl>(this)) {
    ui->setupUi(this);
    m_relatorio->setClock(Agora);
    CRW = m_relatorio.get();
    statusBar()->addPermanentWidget(m_progresso, 1);
    fitToScreen(this, size());
    m_contaCTB.fill(esquema::contaAusente.toString());
    ui->Text1->setFixedWidth(twipsToPixels(this, larguraDoTotalTwips));
    ui->picSucesso->setPixmap(m_picSucesso.pixmap(ladoDaImagem));
    ui->picErro->setPixmap(pictures::error().pixmap(ladoDaImagem));
    ui->Grid1->setFormat(u"PEDIDO|^TIPO|<CLIENTE|<VENDEDOR|<CIDADE|>R$ TOTAL|>DIAS VENC|>FORMA PAGTO|^TABELA|"
                         "^SELEÇÃO|CODIGOCLI"_s);
    ui->Grid1->setTickColumn(colunas::Selecao, m_picSucesso);

    defineAtalhos();
    preparaEditores();
    auto* teclado = new Teclado(this, [] { QApplication::quit(); });
    teclado->setAntes([this](const QWidget* controle, int tecla) { return teclaDeEditor(controle, tecla); });
    aoPressionar(ui->Command1, &PainelFechamento::Command1_Click);
    aoPressionar(ui->Command2, &PainelFechamento::Command2_Click);
    aoPressionar(ui->Command3, &PainelFechamento::Command3_Click);
    aoPressionar(ui->Command4, &PainelFechamento::Command4_Click);
    aoPressionar(ui->Command5, &PainelFechamento::Command5_Click);
    aoPressionar(ui->Command6, &PainelFechamento::Command6_Click);
    onSignal(ui->Grid1, &Grid::cellClicked, this,
             [this](int linha, int coluna) { Grid1_Click(linha, coluna); });
    onSignal(ui->Grid1, &Grid::cellDoubleClicked, this,
             [this](int linha, int coluna) { Grid1_DblClick(linha, coluna); });
    abreDe<ResumoVendas>(ui->MnResumoVendas);
    abreDe<RelatNivelPreco>(ui->MnrelAlfaNivel);
    abreDe<Comissao>(ui->MnComissao);
    onSignal(ui->Metas, &QAction::triggered, this, [this](bool) { Metas_Click(); });
}

PainelFechamento::~PainelFechamento() {
    CRW = nullptr;
}

// The captions have no mnemonics of their own, so the keys stand in the tool tips.
void PainelFechamento::defineAtalhos() {
    const auto botao = [](QPushButton* controle, Qt::Key letra) {
        const QKeySequence teclas(Qt::ALT | letra);
        controle->setShortcut(teclas);
        controle->setToolTip(u"Tecla de atalho: "_s + teclas.toString(QKeySequence::NativeText));
    };
    botao(ui->Command1, Qt::Key_S);
    botao(ui->Command2, Qt::Key_T);
    botao(ui->Command3, Qt::Key_C);
    botao(ui->Command4, Qt::Key_E);
    botao(ui->Command5, Qt::Key_A);
    botao(ui->Command6, Qt::Key_D);
    const auto* relatorio = new QShortcut(Qt::ALT | Qt::Key_R, this);
    connect(relatorio, &QShortcut::activated, this, [this] {
        ui->menuBar->setActiveAction(ui->MnRelatorio->menuAction());
        // Opened by key, it is ready for Enter and the arrows.
        ui->MnRelatorio->setActiveAction(ui->MnResumoVendas);
    });
    ui->Metas->setShortcut(Qt::ALT | Qt::Key_M);
    const auto* visualizacao = new QShortcut(Qt::Key_F3, this);
    onSignal(visualizacao, &QShortcut::activated, this, [this] {
        if (concluiEdicao())
            visualiza(ui->Grid1->currentRow());
    });
    ui->LabelVisualiza->setToolTip(u"Tecla de atalho: F3"_s);
}

// A shortcut takes no focus away, so what is being typed into a cell is committed here; nothing begins on a
// value that was refused.
void PainelFechamento::aoPressionar(QAbstractButton* botao, void (PainelFechamento::*operacao)()) {
    onSignal(botao, &QAbstractButton::clicked, this, [this, operacao](bool) {
        if (concluiEdicao())
            (this->*operacao)();
    });
}

template <typename Tela>
void PainelFechamento::abreDe(QAction* item) {
    onSignal(item, &QAction::triggered, this, [this](bool) {
        if (concluiEdicao())
            Tela(this).exec();
    });
}

void PainelFechamento::TotalSelecionado() {
    Dinheiro total;
    for (int linha = 1; linha < ui->Grid1->rows(); ++linha)
        if (ui->Grid1->isTicked(linha))
            total += ValorNumerico(ui->Grid1->textView(linha, colunas::Total));
    ui->Text1->setText(FormataDinheiro(total));
}

void PainelFechamento::closeEvent(QCloseEvent* evento) {
    evento->accept();
    QApplication::quit();
}

void PainelFechamento::Command1_Click() {
    if (ui->Grid1->rows() == 1) {
        boxes::inform(this, u"Não há registro de venda. Verifique!!!"_s);
        return;
    }
    const bool desmarca = ui->Command1->text().startsWith(inicioDeDesmarcar);
    for (int linha = 1; linha < ui->Grid1->rows(); ++linha)
        ui->Grid1->setTicked(linha, !desmarca);
    const QKeySequence atalho = ui->Command1->shortcut();
    ui->Command1->setText(desmarca ? u"Seleciona todos os registros"_s : u"Desmarcar todos os registros"_s);
    ui->Command1->setShortcut(atalho); // a new caption takes it away
    TotalSelecionado();
}

void PainelFechamento::Command6_Click() {
    PromocaoPedidos(this, m_picSucesso).exec();
}

void PainelFechamento::Grid1_Click(int linha, int coluna) {
    switch (coluna) {
    case colunas::DiasVenc:
    case colunas::FormaPagto:
    case colunas::Tabela:
        abreEditor(linha, coluna);
        break;
    case colunas::Selecao:
        ui->Grid1->setTicked(linha, !ui->Grid1->isTicked(linha));
        TotalSelecionado();
        break;
    default:
        break;
    }
}

// The grid tells of the second click of a double one in no other way, so where a click does something this
// stands for it.
void PainelFechamento::Grid1_DblClick(int linha, int coluna) {
    if (coluna <= colunas::Total)
        visualiza(linha);
    else
        Grid1_Click(linha, coluna);
}

void PainelFechamento::visualiza(int linha) {
    if (linha > 0)
        VisualizaPedido::abre(this, ValorInteiro(ui->Grid1->text(linha, colunas::Pedido)),
                              ui->Grid1->text(linha, colunas::Tipo));
}

void PainelFechamento::Metas_Click() {
    if (!concluiEdicao())
        return;
    MetasQuadro tela(this);
    tela.Form_Load();
    tela.exec();
}

} // namespace tarvessa
