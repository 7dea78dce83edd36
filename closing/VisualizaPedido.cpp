#include "closing/VisualizaPedido.h"

#include "base/Datas.h"
#include "base/Numeros.h"
#include "core/AcessoDados.h"
#include "core/Esquema.h"
#include "core/Teclado.h"
#include "ui/FitToScreen.h"
#include "ui/MessageBoxes.h"
#include "ui/PlainText.h"
#include "ui/Shortcuts.h"
#include "ui_VisualizaPedido.h"

#include <QScrollBar>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

enum Coluna { Codigo, Descricao, Quantidade, Unitario, Total };

// Twips
constexpr std::array<int, 5> larguras = {1700, 5400, 1300, 1300, 1400};
constexpr int alturaDaLinha = 340;

// One row per line of the document, also where a customer's or a product's code is there twice.
QString consulta(qint32 numero, const QString& tipo) {
    return u"SELECT o.nrpedido, o.TipoOperacao, o.situacaoorc, o.codigocli, o.nomevendedor, o.dataabertura, "
           "o.codigo, o.quantidade, o.unitario, o.totalped, c.nome, c.fantasia, c.cidade, c.prazo, "
           "c.formapg, c.colunapreco, p.descricao FROM orcamento AS o LEFT JOIN clientes AS c ON "
           "o.codigocli=c.codigo LEFT JOIN produtos AS p ON o.codigo=p.codfabr WHERE o.nrpedido="_s +
           QString::number(numero) + u" AND o.TipoOperacao='"_s + tipo + u"' GROUP BY o.id ORDER BY o.id"_s;
}

QString nomeDoTipo(const QString& tipo) {
    if (tipo == esquema::dav)
        return u"DAV"_s;
    return tipo == esquema::preVenda ? u"Pré-venda"_s : tipo;
}

QString nomeDaSituacao(const QString& situacao) {
    if (situacao == esquema::fechado)
        return u"Fechado"_s;
    return situacao == esquema::cancelado ? u"Cancelado"_s : u"Aberto"_s;
}

void mostra(QLineEdit* campo, const QString& texto) {
    campo->setText(texto);
    plain::setToolTip(campo, texto);
    // A text longer than its field shows its beginning.
    campo->setCursorPosition(0);
}

} // namespace

void VisualizaPedido::abre(QWidget* pai, qint32 numero, const QString& tipo) {
    odbc::ResultSet documento = NovoRS(consulta(numero, tipo));
    if (documento.atEnd()) {
        boxes::inform(pai, u"O pedido não foi encontrado no banco de dados. Verifique!!!"_s);
        return;
    }
    VisualizaPedido tela(pai, documento);
    documento.close();
    tela.exec();
}

VisualizaPedido::VisualizaPedido(QWidget* pai, odbc::ResultSet& documento)
    : QDialog(pai), ui(std::make_unique<Ui::VisualizaPedido>()) {
    ui->setupUi(this);
    preparaCampos();
    preparaGrade();
    mostraCabecalho(documento);
    mostraItens(documento);
    ui->GridItens->setFocus();
    // There is nothing to fill in and so no next field.
    auto* teclado = new Teclado(this, [this] { reject(); });
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

// A field that cannot be written in has the window's ground, not that of a text box.
void VisualizaPedido::preparaCampos() {
    for (QLineEdit* campo : findChildren<QLineEdit*>()) {
        QPalette cores = campo->palette();
        cores.setColor(QPalette::Base, palette().color(QPalette::Window));
        campo->setPalette(cores);
    }
}

void VisualizaPedido::preparaGrade() {
    ui->GridItens->setFormat(u"<CÓDIGO|<DESCRIÇÃO|>QUANTIDADE|>R$ UNITÁRIO|>R$ TOTAL"_s);
    int largura = ui->GridItens->verticalScrollBar()->sizeHint().width() + 2 * ui->GridItens->frameWidth();
    for (size_t coluna = 0; coluna < larguras.size(); ++coluna) {
        ui->GridItens->setColumnTwips(static_cast<int>(coluna), larguras[coluna]);
        largura += ui->GridItens->columnWidth(static_cast<int>(coluna));
    }
    ui->GridItens->setMinimumRowTwips(alturaDaLinha);
    ui->GridItens->setHeaderBold();
    // As wide as its columns, where the screen has the room.
    const QMargins margens = ui->pagina->contentsMargins();
    fitToScreen(this, QSize(largura + margens.left() + margens.right(), height()));
}

void VisualizaPedido::mostraCabecalho(const odbc::ResultSet& documento) {
    const auto texto = [&documento](QStringView coluna) { return NuloVazio(documento.field(coluna)); };
    const QString numero = texto(esquema::orcamento::nrPedido);
    const QString tipo = nomeDoTipo(texto(esquema::orcamento::tipoOperacao));
    const QString forma = texto(esquema::clientes::formaPg);
    setWindowTitle(u"Visualização - %1 Nº %2"_s.arg(tipo, numero));
    mostra(ui->Pedido, numero);
    mostra(ui->Tipo, tipo);
    mostra(ui->Situacao, nomeDaSituacao(texto(esquema::orcamento::situacao)));
    mostra(ui->Data, TextoTela(QDate::fromString(texto(esquema::orcamento::dataAbertura), Qt::ISODate)));
    mostra(ui->CodigoCli, texto(esquema::orcamento::codigoCli));
    mostra(ui->Cliente, texto(esquema::clientes::nome));
    mostra(ui->Fantasia, texto(esquema::clientes::fantasia));
    mostra(ui->Cidade, texto(esquema::clientes::cidade));
    mostra(ui->Vendedor, texto(esquema::orcamento::nomeVendedor));
    mostra(ui->DiasVenc, QString::number(documento.field(esquema::clientes::prazo).integer()));
    mostra(ui->FormaPagto, forma == esquema::nenhumaForma ? esquema::dinheiro.toString() : forma);
    mostra(ui->Tabela, texto(esquema::clientes::colunaPreco));
}

void VisualizaPedido::mostraItens(odbc::ResultSet& documento) {
    Dinheiro total;
    for (; !documento.atEnd(); documento.moveNext()) {
        const QString codigo = documento.field(esquema::orcamento::codigo).text();
        const QString descricao = documento.field(esquema::produtos::descricao).text();
        const auto valor = [&documento](QStringView coluna) {
            return Dinheiro::dePonto(documento.field(coluna).text());
        };
        const Dinheiro quantidade = valor(esquema::orcamento::quantidade);
        const Dinheiro totalDaLinha = valor(esquema::orcamento::totalPed);
        total += totalDaLinha;
        ui->GridItens->addRow({codigo, descricao, Formata(quantidade, u"###,##0.000"),
                               FormataDinheiro(valor(esquema::orcamento::unitario)),
                               FormataDinheiro(totalDaLinha)});
        if (codigo.startsWith(esquema::notaDoPedido))
            mostraNota(ui->GridItens->rows() - 1, descricao.isEmpty() ? codigo : codigo + u' ' + descricao,
                       quantidade.zero() && totalDaLinha.zero());
    }
    mostra(ui->Total, FormataDinheiro(total));
}

// A note is one text across the row; one that is charged for keeps its amounts.
void VisualizaPedido::mostraNota(int linha, const QString& texto, bool semValores) {
    ui->GridItens->setText(linha, Codigo, texto);
    for (int coluna = Descricao; coluna <= (semValores ? Total : Descricao); ++coluna)
        ui->GridItens->setText(linha, coluna, {});
    ui->GridItens->setSpan(linha - 1, Codigo, 1, semValores ? Total + 1 : Quantidade);
}

} // namespace tarvessa
