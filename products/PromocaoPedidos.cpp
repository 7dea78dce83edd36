#include "products/PromocaoPedidos.h"

#include "base/Numeros.h"
#include "core/AcessoDados.h"
#include "core/Esquema.h"
#include "core/FieldText.h"
#include "core/Teclado.h"
#include "products/PesquisaProduto.h"
#include "ui/BusyPointer.h"
#include "ui/FieldLeave.h"
#include "ui/FitToScreen.h"
#include "ui/Guard.h"
#include "ui/MessageBoxes.h"
#include "ui_PromocaoPedidos.h"

#include <QScopedValueRollback>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

// Twips
constexpr std::array larguras = {900, 4260, 3000, 2450, 900, 1000, 850};
constexpr int larguraFantasiaComRolagem = 2750;
constexpr int linhasComRolagem = 16;
constexpr int alturaDeLinha = 360;

const QString selecionarTodos = u"SELECIONAR TODOS"_s;
const QString desmarcarTodos = u"DESMARCAR TODOS"_s;
const QString inicioDeDesmarcar = u"DESMARCAR"_s;

} // namespace

PromocaoPedidos::PromocaoPedidos(QWidget* parent, const QIcon& tick)
    : QDialog(parent), ui(std::make_unique<Ui::PromocaoPedidos>()) {
    ui->setupUi(this);
    ui->Descricao->setSelectsOnFocus();
    ui->Venda->setSelectsOnFocus();
    ui->Venda->setDecimal();
    ui->Venda->showText(FormataDinheiro(Dinheiro()));
    defineGrid(tick);

    new Teclado(this, [this] { reject(); });
    onSignal(ui->Descricao, &QLineEdit::textChanged, this, [this](const QString&) { Descricao_Change(); });
    onSignal(new FieldLeave(ui->Descricao), &FieldLeave::left, this, [this] { Descricao_LostFocus(); });
    onSignal(new FieldLeave(ui->Venda), &FieldLeave::left, this, [this] { Venda_LostFocus(); });
    onSignal(ui->Grid1, &Grid::cellClicked, this,
             [this](int linha, int coluna) { Grid1_Click(linha, coluna); });
    // The second of two quick clicks comes as a double one and ticks all the same.
    onSignal(ui->Grid1, &Grid::cellDoubleClicked, this,
             [this](int linha, int coluna) { Grid1_Click(linha, coluna); });
    onSignal(ui->Command2, &QPushButton::clicked, this, [this](bool) { Command2_Click(); });
    onSignal(ui->Command1, &QPushButton::clicked, this, [this](bool) { Command1_Click(); });
}

PromocaoPedidos::~PromocaoPedidos() = default;

void PromocaoPedidos::defineGrid(const QIcon& tick) {
    ui->Grid1->setFormat(u">ID|<CLIENTE|<FANTASIA|<CIDADE|>QUANT|>R$ UNIT|^SELEÇÃO"_s);
    ui->Grid1->setHeaderBold();
    for (size_t coluna = 0; coluna < larguras.size(); ++coluna)
        ui->Grid1->setColumnTwips(static_cast<int>(coluna), larguras[coluna]);
    ui->Grid1->setMinimumRowTwips(alturaDeLinha);
    ui->Grid1->setTickColumn(Selecao, tick);
    ui->Grid1->setPreferredRows(linhasComRolagem);
    fitToScreen(this);
}

// A list never stays under a different product.
void PromocaoPedidos::Descricao_Change() {
    ui->Grid1->setRows(1);
    ui->Command2->setEnabled(false);
}

void PromocaoPedidos::Descricao_LostFocus() {
    if (m_pesquisando || ui->Descricao->text().isEmpty())
        return;
    const QScopedValueRollback<bool> umaDeCadaVez(m_pesquisando, true);
    QString texto = ui->Descricao->lookUpText();
    const QString codigo = PesquisaProduto(texto, this);
    TemRegistro = AbreRS(u"Select Descricao from produtos where CodFabr='"_s + codigo + u"'"_s);
    if (!TemRegistro) {
        boxes::inform(this, u"Descricao inexistente. Verifique!!!"_s);
        rs.close();
        return;
    }
    ui->Descricao->showText(rs.field(esquema::produtos::descricao).text());
    ui->Grid1->setRows(1);
    listaPedidos(codigo);
}

void PromocaoPedidos::listaPedidos(const QString& codigo) {
    const BusyPointer ocupado;
    TemRegistro = AbreRS(
        u"Select o.id, c.nome, c.fantasia, c.cidade, o.quantidade, o.unitario from orcamento as o left join "
        "clientes as c on o.codigocli=c.codigo Where o.situacaoorc in ('A','C') and o.tipooperacao='P' and "
        "o.codigo='"_s +
        codigo + u"' Order By c.nome"_s);
    const int id = rs.column(esquema::orcamento::id);
    const int nome = rs.column(esquema::clientes::nome);
    const int fantasia = rs.column(esquema::clientes::fantasia);
    const int cidade = rs.column(esquema::clientes::cidade);
    const int quantidade = rs.column(esquema::orcamento::quantidade);
    const int unitario = rs.column(esquema::orcamento::unitario);
    {
        const Grid::Fill preenchimento(ui->Grid1);
        for (; !rs.atEnd(); rs.moveNext())
            ui->Grid1->addRow({rs.field(id).text(), rs.field(nome).text(), rs.field(fantasia).text(),
                               rs.field(cidade).text(), maskedText(rs.field(quantidade), u"###,##0.000"),
                               maskedText(rs.field(unitario), u"###,##0.00")});
    }
    rs.close();
    if (ui->Grid1->rows() > 1) {
        ui->Command2->setText(selecionarTodos);
        ui->Command2->setEnabled(true);
    }
    ui->Grid1->setColumnTwips(Fantasia, ui->Grid1->rows() >= linhasComRolagem ? larguraFantasiaComRolagem
                                                                              : larguras[Fantasia]);
}

void PromocaoPedidos::Grid1_Click(int linha, int coluna) {
    if (coluna == Selecao)
        ui->Grid1->setTicked(linha, !ui->Grid1->isTicked(linha));
}

void PromocaoPedidos::Command2_Click() {
    const bool desmarca = ui->Command2->text().startsWith(inicioDeDesmarcar);
    for (int linha = 1; linha < ui->Grid1->rows(); ++linha)
        ui->Grid1->setTicked(linha, !desmarca);
    ui->Command2->setText(desmarca ? selecionarTodos : desmarcarTodos);
}

void PromocaoPedidos::Venda_LostFocus() {
    const QString texto = ui->Venda->text();
    ui->Venda->showText(FormataDinheiro(EhNumero(texto) ? ValorNumerico(texto) : Dinheiro()));
}

void PromocaoPedidos::Command1_Click() {
    // An assistive tool presses the button without leaving the box; what is applied is what the box then
    // shows.
    Venda_LostFocus();
    const Dinheiro venda = ValorNumerico(ui->Venda->text());
    if (venda <= Dinheiro()) {
        recusa(u"Valor inválido. Verifique!!!"_s);
        return;
    }
    QStringList marcados;
    for (int linha = 1; linha < ui->Grid1->rows(); ++linha)
        if (ui->Grid1->isTicked(linha))
            marcados.append(ui->Grid1->text(linha, Id));
    if (marcados.isEmpty()) {
        recusa(u"Não há nenhum pedido selecionado. Verifique!!!"_s);
        return;
    }
    if (!boxes::ask(this, u"Deseja realmente realizar esse processo?"_s, QMessageBox::Information))
        return;
    {
        const BusyPointer ocupado;
        for (const QString& id : std::as_const(marcados))
            Executa(u"Update Orcamento Set unitario="_s + venda.ponto() +
                    u", TotalPed=Round(Unitario*quantidade,2) Where ID="_s + id);
    }
    accept();
}

void PromocaoPedidos::recusa(const QString& motivo) {
    boxes::inform(this, motivo);
    ui->Venda->setFocus();
}

} // namespace tarvessa
