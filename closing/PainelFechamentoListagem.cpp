// Start-up and listing of the panel.

#include "base/Clock.h"
#include "base/Datas.h"
#include "base/Numeros.h"
#include "base/RuntimeError.h"
#include "closing/ListedPeriod.h"
#include "closing/ListedPv.h"
#include "closing/PainelFechamento.h"
#include "closing/PainelFechamentoColumns.h"
#include "core/AcessoDados.h"
#include "core/Esquema.h"
#include "ui/BusyPointer.h"
#include "ui/Guard.h"
#include "ui/grid/CellEditor.h"
#include "ui_PainelFechamento.h"

#include <QElapsedTimer>
#include <QScopeGuard>
#include <QSet>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

constexpr int rowsWithoutScrollBar = 16;

struct ColumnWidth {
    int column;
    int dav;
    int pv;
};

// Twips; 0 hides the column.
constexpr std::array<ColumnWidth, 11> columnWidths = {{{painelfechamento::Pedido, 1100, 1100},
                                                       {painelfechamento::Tipo, 500, 500},
                                                       {painelfechamento::Cliente, 5200, 3630},
                                                       {painelfechamento::Vendedor, 1700, 1200},
                                                       {painelfechamento::Cidade, 2400, 2000},
                                                       {painelfechamento::Total, 1200, 1200},
                                                       {painelfechamento::DiasVenc, 0, 1000},
                                                       {painelfechamento::FormaPagto, 0, 1500},
                                                       {painelfechamento::Tabela, 800, 800},
                                                       {painelfechamento::Selecao, 900, 900},
                                                       {painelfechamento::CodigoCli, 0, 0}}};
constexpr int narrowClienteDav = 4950;
constexpr int narrowClientePv = 3380;
const QColor wrongTotal(0xfb, 0xd5, 0xd5);
constexpr int rowHeightDav = 360;
constexpr int rowHeightPv = 420;

QString davListing(QDate since) {
    return u"SELECT o.codigocli, o.placa, o.nrpedido, o.TipoOperacao, c.nome, SUM(o.totalped) AS totalped, "
           "o.nomevendedor, c.cidade, c.colunapreco  FROM orcamento AS o left join clientes AS c ON "
           "o.codigocli=c.codigo where o.situacaoorc in ('A','C') and TipoOperacao='D' and "
           "dataabertura>='"_s +
           TextoSQL(since) + u"' group BY o.nrpedido order by o.nomevendedor, c.nome"_s;
}

QString pvListing(QDate since) {
    return u"SELECT o.codigocli, o.placa, o.nrpedido, o.TipoOperacao, c.nome, SUM(o.totalped) AS totalped, "
           "o.nomevendedor, c.cidade, c.prazo, c.formapg,c.colunapreco  FROM orcamento AS o left join "
           "clientes AS c ON o.codigocli=c.codigo where o.situacaoorc in ('A','C') and TipoOperacao='P' and "
           "dataabertura>='"_s +
           TextoSQL(since) + u"' group BY o.nrpedido Order By o.nomevendedor, c.nome"_s;
}

// One document with an absurd sum must not keep the others from being listed.
std::optional<QString> totalText(const odbc::Field& total) {
    try {
        return FormataDinheiro(total.decimal());
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

/// Adds one selected row per document; one whose total is beyond the range of money is marked and not
/// selected. Only the listing of pre-sales brings the customers' payment terms.
void addDocuments(Grid* grid, odbc::ResultSet& documents, bool withTerms) {
    const int pedido = documents.column(esquema::orcamento::nrPedido);
    const int tipo = documents.column(esquema::orcamento::tipoOperacao);
    const int nome = documents.column(esquema::clientes::nome);
    const int vendedor = documents.column(esquema::orcamento::nomeVendedor);
    const int cidade = documents.column(esquema::clientes::cidade);
    const int total = documents.column(esquema::orcamento::totalPed);
    const int prazo = withTerms ? documents.column(esquema::clientes::prazo) : 0;
    const int forma = withTerms ? documents.column(esquema::clientes::formaPg) : 0;
    const int tabela = documents.column(esquema::clientes::colunaPreco);
    const int codigoCli = documents.column(esquema::orcamento::codigoCli);
    QList<int> beyond;
    std::optional<Grid::Fill> fill(grid);
    for (; !documents.atEnd(); documents.moveNext()) {
        QString days;
        QAnyStringView method;
        if (withTerms) {
            days = QString::number(documents.field(prazo).integer());
            method = documents.textView(forma);
            if (method == esquema::nenhumaForma)
                method = esquema::dinheiro;
        }
        const std::optional<QString> sum = totalText(documents.field(total));
        grid->addRow({documents.textView(pedido), documents.textView(tipo), documents.textView(nome),
                      documents.textView(vendedor), documents.textView(cidade),
                      sum.value_or(totalBeyondRange), days, method, documents.textView(tabela), u" "_s,
                      documents.textView(codigoCli)});
        if (!sum)
            beyond.append(grid->rows() - 1);
    }
    fill.reset();
    for (const int row : beyond) {
        grid->setTicked(row, false);
        grid->setBackColor(row, painelfechamento::Total, wrongTotal);
    }
}

TermsRoom termsRoom(const odbc::ResultSet& documents, bool withTerms) {
    TermsRoom room;
    if (withTerms) {
        room.prazo = documents.room(esquema::clientes::prazo);
        room.forma = documents.room(esquema::clientes::formaPg);
    }
    room.tabela = documents.room(esquema::clientes::colunaPreco);
    return room;
}

void addPaymentMethods(QComboBox* list, odbc::ResultSet& methods) {
    for (; !methods.atEnd(); methods.moveNext())
        list->addItem(methods.field(esquema::finalizadoras::descricao).text(),
                      methods.field(esquema::finalizadoras::avista).text() == esquema::sim ? 1 : 0);
}

} // namespace

bool PainelFechamento::Form_Load() {
    if (!IniciaBanco())
        return false;
    DefineGrid();
    showBeforeListing();
    if (!guarded(this, [this] { carregaInicio(); })) {
        enableOperations();
        m_seeksAtStart = true;
    }
    return true;
}

// A long listing would otherwise keep the program invisible. What the operator does meanwhile waits.
void PainelFechamento::showBeforeListing() {
    constexpr int patienceMs = 1000;
    constexpr int sliceMs = 20;
    show();
    QElapsedTimer elapsed;
    elapsed.start();
    while (!windowHandle()->isExposed() && elapsed.elapsed() < patienceMs)
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents, sliceMs);
    repaint();
}

void PainelFechamento::carregaInicio() {
    listaDavs();
    carregaFormasDePagamento();
    if (ui->Grid1->rows() == 1)
        listaPvs();
    m_settings = ClosingSettings::read();
    procuraInterrompidos();
}

void PainelFechamento::DefineGrid() {
    const bool dav = m_layout == Layout::Dav;
    m_editorTexto->close();
    m_editorForma->close();
    ui->Grid1->setRows(1);
    ui->Grid1->setEmptyText(u"Nenhum documento foi listado"_s);
    m_closingHistory.settled.clear();
    m_pvNumbers.clear();
    for (const ColumnWidth& width : columnWidths)
        ui->Grid1->setColumnTwips(width.column, dav ? width.dav : width.pv);
    ui->Grid1->setMinimumRowTwips(dav ? rowHeightDav : rowHeightPv);
    ui->Grid1->setHeaderBold();
}

void PainelFechamento::listaDavs() {
    lista(Layout::Dav);
}

void PainelFechamento::listaPvs() {
    lista(Layout::Pv);
}

/// The same list with what has changed since: rows that were unselected and the current cell stay so.
void PainelFechamento::recarregaPvs() {
    const int currentRow = ui->Grid1->currentRow();
    const int currentColumn = ui->Grid1->currentColumn();
    const QString current =
        currentRow > 0 ? ui->Grid1->text(currentRow, painelfechamento::Pedido) : QString();
    QSet<QString> unselected;
    for (int row = 1; row < ui->Grid1->rows(); ++row)
        if (!ui->Grid1->isTicked(row))
            unselected.insert(ui->Grid1->text(row, painelfechamento::Pedido));
    listaPvs();
    for (int row = 1; row < ui->Grid1->rows(); ++row) {
        const QString pedido = ui->Grid1->text(row, painelfechamento::Pedido);
        if (unselected.contains(pedido))
            ui->Grid1->setTicked(row, false);
        if (pedido == current)
            ui->Grid1->setCurrentCell(row, currentColumn);
    }
    TotalSelecionado();
}

void PainelFechamento::lista(Layout layout) {
    const BusyPointer pointer;
    m_layout = layout;
    m_listedSince = firstListedDay();
    DefineGrid();
    // Part of a list must not be taken for all of it.
    auto discard = qScopeGuard([this] {
        rs.close();
        emptyList();
    });
    TemRegistro = AbreRS(layout == Layout::Dav ? davListing(m_listedSince) : pvListing(m_listedSince));
    m_termsRoom = termsRoom(rs, layout == Layout::Pv);
    addDocuments(ui->Grid1, rs, layout == Layout::Pv);
    rs.close();
    ui->Grid1->setEmptyText(layout == Layout::Dav ? u"Nenhum DAV nos últimos sete dias"_s
                                                  : u"Nenhuma pré-venda em aberto nos últimos sete dias"_s);
    // Leaves room for the scroll bar.
    if (ui->Grid1->rows() > rowsWithoutScrollBar)
        ui->Grid1->setColumnTwips(painelfechamento::Cliente,
                                  layout == Layout::Dav ? narrowClienteDav : narrowClientePv);
    TotalSelecionado();
    enableOperations();
    discard.dismiss();
}

void PainelFechamento::carregaFormasDePagamento() {
    TemRegistro = AbreRS(u"SELECT * FROM Finalizadoras order by ID "_s);
    ui->Combo1->clear();
    addPaymentMethods(ui->Combo1, rs);
    rs.close();
    m_methodsLoaded = true;
}

QString PainelFechamento::listName() const {
    return (m_layout == Layout::Dav ? u"DAVs - "_s : u"Pré-vendas - "_s) + TextoSQL(clock::today());
}

void PainelFechamento::emptyList() {
    DefineGrid();
    TotalSelecionado();
    enableOperations();
}

// DAVs can only be converted; an empty list leaves nothing but the listing of pre-sales.
void PainelFechamento::enableOperations() {
    const bool listed = ui->Grid1->rows() > 1;
    const bool davs = listed && m_layout == Layout::Dav;
    const bool pvs = listed && m_layout == Layout::Pv;
    ui->Command2->setEnabled(davs);
    ui->Command3->setEnabled(!listed);
    ui->Command4->setEnabled(pvs);
    ui->Command5->setEnabled(pvs);
    ui->Command6->setEnabled(pvs);
}

} // namespace tarvessa
