#include "products/PromocaoPedidos.h"

#include "base/Numeros.h"
#include "core/AcessoDados.h"
#include "core/Esquema.h"
#include "core/FieldText.h"
#include "core/GridFile.h"
#include "core/Teclado.h"
#include "products/ProductBox.h"
#include "products/PromocaoPedidosColumns.h"
#include "ui/BusyPointer.h"
#include "ui/FieldLeave.h"
#include "ui/FitToScreen.h"
#include "ui/Guard.h"
#include "ui/Manual.h"
#include "ui/MessageBoxes.h"
#include "ui/Refusal.h"
#include "ui/Shortcuts.h"
#include "ui/grid/SummaryLabel.h"
#include "ui_PromocaoPedidos.h"

#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

using namespace promocaopedidos;

// Twips
constexpr std::array widths = {900, 4260, 3000, 2450, 900, 1000, 850};
constexpr int tradeNameWidthBesideScrollBar = 2750;
constexpr int rowHeight = 360;

// Header included
constexpr int rowsThatScroll = 16;

const QString selectAllCaption = u"SELECIONAR TODOS"_s;
const QString clearAllCaption = u"DESMARCAR TODOS"_s;
const QString noProduct = u"Escolha um produto"_s;
const QString clearAllMark = u"DESMARCAR"_s;

} // namespace

PromocaoPedidos::PromocaoPedidos(QWidget* parent, const QIcon& tick)
    : QDialog(parent), ui(std::make_unique<Ui::PromocaoPedidos>()) {
    ui->setupUi(this);
    ui->Descricao->setSelectsOnFocus();
    ui->Venda->setSelectsOnFocus();
    ui->Venda->setDecimal();
    ui->Venda->showText(FormataDinheiro(Dinheiro()));
    setUpGrid(tick);
    setAltKey(ui->Command2, Qt::Key_S);
    setAltKey(ui->Command1, Qt::Key_G);
    m_product = new ProductBox(ui->Descricao, this,
                               {u"Descricao"_s, u"Descricao inexistente. Verifique!!!"_s,
                                ProductBox::Unknown::KeepText, [this](const QString& codigo) {
                                    ui->Grid1->setRows(1);
                                    listaPedidos(codigo);
                                }});

    new Teclado(this, [this] { reject(); });
    manual::opensAt(this, u"promocao"_s);
    onSignal(ui->Descricao, &QLineEdit::textChanged, this, [this](const QString&) { Descricao_Change(); });
    onSignal(new FieldLeave(ui->Venda), &FieldLeave::left, this, [this] { Venda_LostFocus(); });
    onSignal(ui->Grid1, &Grid::cellClicked, this, [this](int row, int column) { Grid1_Click(row, column); });
    // The second of two quick clicks arrives as a double click and has to tick as well.
    onSignal(ui->Grid1, &Grid::cellDoubleClicked, this,
             [this](int row, int column) { Grid1_Click(row, column); });
    onSignal(ui->Command2, &QPushButton::clicked, this, [this](bool) { Command2_Click(); });
    onSignal(ui->Command1, &QPushButton::clicked, this, [this](bool) { Command1_Click(); });
}

PromocaoPedidos::~PromocaoPedidos() = default;

void PromocaoPedidos::setUpGrid(const QIcon& tick) {
    ui->Grid1->setFormat(u">ID|<CLIENTE|<FANTASIA|<CIDADE|>QUANT|>R$ UNIT|^SELEÇÃO"_s);
    ui->Grid1->setHeaderBold();
    for (size_t column = 0; column < widths.size(); ++column)
        ui->Grid1->setColumnTwips(static_cast<int>(column), widths[column]);
    ui->Grid1->setMinimumRowTwips(rowHeight);
    ui->Grid1->setTickColumn(Selecao, tick);
    ui->Grid1->setColumnKinds({ColumnKind::Text, ColumnKind::Text, ColumnKind::Text, ColumnKind::Text,
                               ColumnKind::Number, ColumnKind::Number});
    ui->Grid1->setEmptyText(noProduct);
    ui->botoes->insertWidget(ui->botoes->indexOf(ui->folga), summaryLabel(ui->Grid1));
    offerSaving(ui->Grid1, [this] { return u"Pedidos - "_s + ui->Descricao->text(); });
    ui->Grid1->setPreferredRows(rowsThatScroll);
    fitToScreen(this);
}

// A list never stays under a different product.
void PromocaoPedidos::esvaziaLista() {
    ui->Grid1->setRows(1);
    ui->Grid1->setEmptyText(noProduct);
    ui->Command2->setEnabled(false);
}

void PromocaoPedidos::listaPedidos(const QString& codigo) {
    const BusyPointer busy;
    // Part of a list must not be taken for all of it.
    auto discard = qScopeGuard([this] {
        rs.close();
        esvaziaLista();
    });
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
        const Grid::Fill filling(ui->Grid1);
        for (; !rs.atEnd(); rs.moveNext())
            ui->Grid1->addRow({rs.field(id).text(), rs.field(nome).text(), rs.field(fantasia).text(),
                               rs.field(cidade).text(), maskedText(rs.field(quantidade), u"###,##0.000"),
                               maskedText(rs.field(unitario), u"###,##0.00")});
    }
    rs.close();
    ui->Grid1->setEmptyText(u"Nenhum pedido em aberto com este produto"_s);
    if (ui->Grid1->rows() > 1) {
        setCaption(ui->Command2, selectAllCaption);
        ui->Command2->setEnabled(true);
    }
    ui->Grid1->setColumnTwips(Fantasia, ui->Grid1->rows() >= rowsThatScroll ? tradeNameWidthBesideScrollBar
                                                                            : widths[Fantasia]);
    discard.dismiss();
}

void PromocaoPedidos::Grid1_Click(int row, int column) {
    // A click that leaves the product box makes a new list: it is not meant for a row of it.
    if (column == Selecao && !m_product->isPending())
        ui->Grid1->setTicked(row, !ui->Grid1->isTicked(row));
}

void PromocaoPedidos::marcaTodos() {
    ui->Command2->setFocus();
    if (!m_product->settle())
        return;
    const bool clears = ui->Command2->text().startsWith(clearAllMark);
    for (int row = 1; row < ui->Grid1->rows(); ++row)
        ui->Grid1->setTicked(row, !clears);
    setCaption(ui->Command2, clears ? selectAllCaption : clearAllCaption);
}

QStringList PromocaoPedidos::idsMarcados() const {
    QStringList ids;
    for (int row = 1; row < ui->Grid1->rows(); ++row)
        if (ui->Grid1->isTicked(row))
            ids.append(ui->Grid1->text(row, Id));
    return ids;
}

void PromocaoPedidos::formataVenda() {
    const QString text = ui->Venda->text();
    ui->Venda->showText(FormataDinheiro(EhNumero(text) ? ValorNumerico(text) : Dinheiro()));
}

void PromocaoPedidos::atualizaPrecos() {
    // The Alt key does not move the focus, and the search for a product just typed waits for it.
    ui->Command1->setFocus();
    if (!m_product->settle())
        return;
    // An assistive tool may press the button while the form is not active, and no box is left then; the price
    // applied is the one that the box shows once it is left.
    formataVenda();
    const Dinheiro venda = ValorNumerico(ui->Venda->text());
    const QStringList ids = idsMarcados();
    if (venda <= Dinheiro())
        refuse(ui->Venda, u"Valor inválido. Verifique!!!"_s);
    else if (ids.isEmpty())
        refuse(ui->Venda, u"Não há nenhum pedido selecionado. Verifique!!!"_s);
    else if (boxes::ask(this, u"Deseja realmente realizar esse processo?"_s, QMessageBox::Information))
        gravaPrecos(ids, venda);
}

void PromocaoPedidos::gravaPrecos(const QStringList& ids, Dinheiro venda) {
    {
        const BusyPointer busy;
        m_hasChangedPrices = true;
        for (const QString& id : ids)
            Executa(u"Update Orcamento Set unitario="_s + venda.ponto() +
                    u", TotalPed=Round(Unitario*quantidade,2) Where ID="_s + id);
    }
    accept();
}

} // namespace tarvessa
