// Start-up and listing of the panel.

#include "base/Datas.h"
#include "base/Numeros.h"
#include "closing/Colunas.h"
#include "closing/PainelFechamento.h"
#include "core/AcessoDados.h"
#include "core/Esquema.h"
#include "ui/Guard.h"
#include "ui/grid/CellEditor.h"
#include "ui_PainelFechamento.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

constexpr int diasListados = 7;
constexpr int linhasSemRolagem = 16;

struct LarguraDeColuna {
    colunas::Coluna coluna;
    int dav;
    int pv;
};

// Twips; 0 hides the column.
constexpr std::array<LarguraDeColuna, 11> larguras = {{{colunas::Pedido, 1100, 1100},
                                                       {colunas::Tipo, 500, 500},
                                                       {colunas::Cliente, 5200, 3630},
                                                       {colunas::Vendedor, 1700, 1200},
                                                       {colunas::Cidade, 2400, 2000},
                                                       {colunas::Total, 1200, 1200},
                                                       {colunas::DiasVenc, 0, 1000},
                                                       {colunas::FormaPagto, 0, 1500},
                                                       {colunas::Tabela, 800, 800},
                                                       {colunas::Selecao, 900, 900},
                                                       {colunas::CodigoCli, 0, 0}}};
constexpr int clienteEstreitoDav = 4950;
constexpr int clienteEstreitoPv = 3380;
constexpr int alturaDav = 360;
constexpr int alturaPv = 420;

QString inicioDoPeriodo() {
    return TextoSQL(Hoje().addDays(-diasListados));
}

} // namespace

bool PainelFechamento::Form_Load() {
    if (!IniciaBanco())
        return false;
    guarded(this, [this] { carregaInicio(); });
    return true;
}

void PainelFechamento::carregaInicio() {
    DefineGrid();
    listaDavs();
    estreitaCliente();
    TotalSelecionado();
    carregaFormasDePagamento();
    if (ui->Grid1->rows() > 1) {
        ui->Command2->setEnabled(true);
    } else {
        ui->Command3->setEnabled(true);
        Command3_Click();
    }
    carregaConfiguracao();
}

void PainelFechamento::DefineGrid() {
    const bool dav = m_layout == Layout::Dav;
    m_editorTexto->close();
    m_editorForma->close();
    ui->Grid1->setRows(1);
    m_encerradas.clear();
    m_numerosDados.clear();
    for (const LarguraDeColuna& largura : larguras)
        ui->Grid1->setColumnTwips(largura.coluna, dav ? largura.dav : largura.pv);
    ui->Grid1->setMinimumRowTwips(dav ? alturaDav : alturaPv);
    ui->Grid1->setHeaderBold();
}

// Leaves room for the scroll bar.
void PainelFechamento::estreitaCliente() {
    if (ui->Grid1->rows() > linhasSemRolagem)
        ui->Grid1->setColumnTwips(colunas::Cliente,
                                  m_layout == Layout::Dav ? clienteEstreitoDav : clienteEstreitoPv);
}

void PainelFechamento::listaDavs() {
    TemRegistro = AbreRS(
        u"SELECT o.codigocli, o.placa, o.nrpedido, o.TipoOperacao, c.nome, SUM(o.totalped) AS totalped, "
        "o.nomevendedor, c.cidade, c.colunapreco  FROM orcamento AS o left join clientes AS c ON "
        "o.codigocli=c.codigo where o.situacaoorc in ('A','C') and TipoOperacao='D' and dataabertura>='"_s +
        inicioDoPeriodo() + u"' group BY o.nrpedido order by o.nomevendedor, c.nome"_s);
    const int pedido = rs.column(esquema::orcamento::nrPedido);
    const int tipo = rs.column(esquema::orcamento::tipoOperacao);
    const int nome = rs.column(esquema::clientes::nome);
    const int vendedor = rs.column(esquema::orcamento::nomeVendedor);
    const int cidade = rs.column(esquema::clientes::cidade);
    const int total = rs.column(esquema::orcamento::totalPed);
    const int tabela = rs.column(esquema::clientes::colunaPreco);
    const int codigoCli = rs.column(esquema::orcamento::codigoCli);
    const Grid::Fill preenchimento(ui->Grid1);
    for (; !rs.atEnd(); rs.moveNext())
        ui->Grid1->addRow({rs.field(pedido).text(), rs.field(tipo).text(), rs.field(nome).text(),
                           rs.field(vendedor).text(), rs.field(cidade).text(),
                           FormataDinheiro(Dinheiro::dePonto(rs.field(total).text())), QString(), QString(),
                           rs.field(tabela).text(), u" "_s, rs.field(codigoCli).text()});
    rs.close();
}

void PainelFechamento::carregaFormasDePagamento() {
    TemRegistro = AbreRS(u"SELECT * FROM Finalizadoras order by ID "_s);
    for (; !rs.atEnd(); rs.moveNext())
        ui->Combo1->addItem(rs.field(esquema::finalizadoras::descricao).text(),
                            rs.field(esquema::finalizadoras::avista).text() == esquema::sim ? 1 : 0);
    rs.close();
}

void PainelFechamento::carregaConfiguracao() {
    TemRegistro = AbreRS(u"Select ContaCTB1, PAF_ECF From Empresa"_s);
    m_pafEcf = rs.field(esquema::empresa::pafEcf).text() == esquema::ligado;
    const QString contas = rs.field(esquema::empresa::contaCtb1).text();
    const QStringList pedacos = contas.isEmpty() ? QStringList() : contas.split(u'/');
    for (qsizetype i = 0; i < quantidadeDeContas; ++i)
        m_contaCTB[static_cast<size_t>(i)] =
            i < pedacos.size() ? pedacos[i] : esquema::contaAusente.toString();
    m_configurado = true;
    rs.close();
}

void PainelFechamento::Command3_Click() {
    // Asked for before the grid is emptied: where the answer fails, the old rows stay, with a total that is
    // theirs.
    TemRegistro = AbreRS(
        u"SELECT o.codigocli, o.placa, o.nrpedido, o.TipoOperacao, c.nome, SUM(o.totalped) AS totalped, "
        "o.nomevendedor, c.cidade, c.prazo, c.formapg,c.colunapreco  FROM orcamento AS o left join clientes "
        "AS c ON o.codigocli=c.codigo where o.situacaoorc in ('A','C') and TipoOperacao='P' and "
        "dataabertura>='"_s +
        inicioDoPeriodo() + u"' group BY o.nrpedido Order By o.nomevendedor, c.nome"_s);
    m_layout = Layout::Pv;
    DefineGrid();
    const int pedido = rs.column(esquema::orcamento::nrPedido);
    const int tipo = rs.column(esquema::orcamento::tipoOperacao);
    const int nome = rs.column(esquema::clientes::nome);
    const int vendedor = rs.column(esquema::orcamento::nomeVendedor);
    const int cidade = rs.column(esquema::clientes::cidade);
    const int total = rs.column(esquema::orcamento::totalPed);
    const int prazo = rs.column(esquema::clientes::prazo);
    const int forma = rs.column(esquema::clientes::formaPg);
    const int tabela = rs.column(esquema::clientes::colunaPreco);
    const int codigoCli = rs.column(esquema::orcamento::codigoCli);
    {
        const Grid::Fill preenchimento(ui->Grid1);
        for (; !rs.atEnd(); rs.moveNext()) {
            const QString formaPg = rs.field(forma).text();
            ui->Grid1->addRow({rs.field(pedido).text(), rs.field(tipo).text(), rs.field(nome).text(),
                               rs.field(vendedor).text(), rs.field(cidade).text(),
                               FormataDinheiro(Dinheiro::dePonto(rs.field(total).text())),
                               QString::number(rs.field(prazo).integer()),
                               formaPg == esquema::nenhumaForma ? esquema::dinheiro.toString() : formaPg,
                               rs.field(tabela).text(), u" "_s, rs.field(codigoCli).text()});
        }
    }
    rs.close();
    estreitaCliente();
    TotalSelecionado();
    habilitaOperacoes();
}

void PainelFechamento::esvaziaLista() {
    DefineGrid();
    TotalSelecionado();
    habilitaOperacoes();
}

// Without a pre-sale on the screen only the listing leads on.
void PainelFechamento::habilitaOperacoes() {
    const bool haPvs = ui->Grid1->rows() > 1;
    ui->Command3->setEnabled(!haPvs);
    ui->Command6->setEnabled(haPvs);
    ui->Command4->setEnabled(haPvs);
    ui->Command5->setEnabled(haPvs);
}

} // namespace tarvessa
