#include "closing/VisualizaPedido.h"

#include "base/Datas.h"
#include "base/Numeros.h"
#include "core/AcessoDados.h"
#include "core/Esquema.h"
#include "core/GridFile.h"
#include "core/Teclado.h"
#include "ui/FitToScreen.h"
#include "ui/Manual.h"
#include "ui/MessageBoxes.h"
#include "ui/PlainText.h"
#include "ui/Shortcuts.h"
#include "ui_VisualizaPedido.h"

#include <QScrollBar>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

enum Column { Codigo, Descricao, Quantidade, Unitario, Total };

// Twips
constexpr std::array<int, 5> columnWidths = {1700, 5400, 1300, 1300, 1400};
constexpr int rowHeight = 340;

// One row per line of the document, even if the customer or the product has several records.
QString query(qint32 numero, const QString& tipo) {
    return u"SELECT o.nrpedido, o.TipoOperacao, o.situacaoorc, o.codigocli, o.nomevendedor, o.dataabertura, "
           "o.codigo, o.quantidade, o.unitario, o.totalped, c.nome, c.fantasia, c.cidade, c.prazo, "
           "c.formapg, c.colunapreco, p.descricao FROM orcamento AS o LEFT JOIN clientes AS c ON "
           "o.codigocli=c.codigo LEFT JOIN produtos AS p ON o.codigo=p.codfabr WHERE o.nrpedido="_s +
           QString::number(numero) + u" AND o.TipoOperacao='"_s + tipo + u"' GROUP BY o.id ORDER BY o.id"_s;
}

QString kindName(const QString& tipo) {
    if (tipo == esquema::dav)
        return u"DAV"_s;
    return tipo == esquema::preVenda ? u"Pré-venda"_s : tipo;
}

QString stateName(const QString& situacao) {
    if (situacao == esquema::fechado)
        return u"Fechado"_s;
    return situacao == esquema::cancelado ? u"Cancelado"_s : u"Aberto"_s;
}

void fill(QLineEdit* field, const QString& text) {
    field->setText(text);
    plain::setToolTip(field, text);
    // A text longer than its field is shown from its beginning.
    field->setCursorPosition(0);
}

} // namespace

void VisualizaPedido::abre(QWidget* parent, qint32 numero, const QString& tipo) {
    odbc::ResultSet documento = NovoRS(query(numero, tipo));
    if (documento.atEnd()) {
        boxes::inform(parent, u"O pedido não foi encontrado no banco de dados. Verifique!!!"_s);
        return;
    }
    VisualizaPedido screen(parent, documento);
    documento.close();
    screen.exec();
}

VisualizaPedido::VisualizaPedido(QWidget* parent, odbc::ResultSet& documento)
    : QDialog(parent), ui(std::make_unique<Ui::VisualizaPedido>()) {
    ui->setupUi(this);
    prepareFields();
    prepareGrid();
    showHead(documento);
    showLines(documento);
    ui->GridItens->setFocus();
    // Nothing can be entered, so Enter closes the window instead of moving on.
    auto* teclado = new Teclado(this, [this] { reject(); });
    manual::opensAt(this, u"visualizacao"_s);
    teclado->setKeyFilter([this](const QWidget*, int key) {
        const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
        if (enter)
            accept();
        return enter;
    });
    setAltKey(ui->Fechar, Qt::Key_F);
    connect(ui->Fechar, &QPushButton::clicked, this, &QDialog::accept);
}

VisualizaPedido::~VisualizaPedido() = default;

// Read-only fields take the window's background instead of a text box's.
void VisualizaPedido::prepareFields() {
    for (QLineEdit* field : findChildren<QLineEdit*>()) {
        QPalette colours = field->palette();
        colours.setColor(QPalette::Base, palette().color(QPalette::Window));
        field->setPalette(colours);
    }
}

void VisualizaPedido::prepareGrid() {
    ui->GridItens->setFormat(u"<CÓDIGO|<DESCRIÇÃO|>QUANTIDADE|>R$ UNITÁRIO|>R$ TOTAL"_s);
    int width = ui->GridItens->verticalScrollBar()->sizeHint().width() + 2 * ui->GridItens->frameWidth();
    for (size_t column = 0; column < columnWidths.size(); ++column) {
        ui->GridItens->setColumnTwips(static_cast<int>(column), columnWidths[column]);
        width += ui->GridItens->columnWidth(static_cast<int>(column));
    }
    ui->GridItens->setMinimumRowTwips(rowHeight);
    ui->GridItens->setHeaderBold();
    ui->GridItens->setColumnKinds(
        {ColumnKind::Text, ColumnKind::Text, ColumnKind::Number, ColumnKind::Number, ColumnKind::Number});
    offerSaving(ui->GridItens, [this] { return ui->Tipo->text() + u' ' + ui->Pedido->text(); });
    // Wide enough for all columns, as far as the screen allows.
    const QMargins margins = ui->pagina->contentsMargins();
    fitToScreen(this, QSize(width + margins.left() + margins.right(), height()));
}

void VisualizaPedido::showHead(const odbc::ResultSet& documento) {
    const auto text = [&documento](QStringView column) { return NuloVazio(documento.field(column)); };
    const QString numero = text(esquema::orcamento::nrPedido);
    const QString tipo = kindName(text(esquema::orcamento::tipoOperacao));
    const QString method = text(esquema::clientes::formaPg);
    setWindowTitle(u"Visualização - %1 Nº %2"_s.arg(tipo, numero));
    fill(ui->Pedido, numero);
    fill(ui->Tipo, tipo);
    fill(ui->Situacao, stateName(text(esquema::orcamento::situacao)));
    fill(ui->Data, TextoTela(QDate::fromString(text(esquema::orcamento::dataAbertura), Qt::ISODate)));
    fill(ui->CodigoCli, text(esquema::orcamento::codigoCli));
    fill(ui->Cliente, text(esquema::clientes::nome));
    fill(ui->Fantasia, text(esquema::clientes::fantasia));
    fill(ui->Cidade, text(esquema::clientes::cidade));
    fill(ui->Vendedor, text(esquema::orcamento::nomeVendedor));
    fill(ui->DiasVenc, QString::number(documento.field(esquema::clientes::prazo).integer()));
    fill(ui->FormaPagto, method == esquema::nenhumaForma ? esquema::dinheiro.toString() : method);
    fill(ui->Tabela, text(esquema::clientes::colunaPreco));
}

void VisualizaPedido::showLines(odbc::ResultSet& documento) {
    Dinheiro total;
    for (; !documento.atEnd(); documento.moveNext()) {
        const QString codigo = documento.field(esquema::orcamento::codigo).text();
        const QString descricao = documento.field(esquema::produtos::descricao).text();
        const auto amount = [&documento](QStringView column) {
            return Dinheiro::dePonto(documento.field(column).text());
        };
        const Dinheiro quantidade = amount(esquema::orcamento::quantidade);
        const Dinheiro lineTotal = amount(esquema::orcamento::totalPed);
        total += lineTotal;
        ui->GridItens->addRow({codigo, descricao, Formata(quantidade, u"###,##0.000"),
                               FormataDinheiro(amount(esquema::orcamento::unitario)),
                               FormataDinheiro(lineTotal)});
        if (codigo.startsWith(esquema::notaDoPedido))
            showNote(ui->GridItens->rows() - 1, descricao.isEmpty() ? codigo : codigo + u' ' + descricao,
                     quantidade.zero() && lineTotal.zero());
    }
    fill(ui->Total, FormataDinheiro(total));
}

// A note is shown as one text across the row. A note with an amount keeps its amounts.
void VisualizaPedido::showNote(int row, const QString& text, bool withoutAmounts) {
    ui->GridItens->setText(row, Codigo, text);
    for (int column = Descricao; column <= (withoutAmounts ? Total : Descricao); ++column)
        ui->GridItens->setText(row, column, {});
    ui->GridItens->setSpan(row - 1, Codigo, 1, withoutAmounts ? Total + 1 : Quantidade);
}

} // namespace tarvessa
