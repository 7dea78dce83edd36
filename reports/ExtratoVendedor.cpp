#include "reports/ExtratoVendedor.h"

#include "base/Datas.h"
#include "base/Numeros.h"
#include "core/AcessoDados.h"
#include "core/Esquema.h"
#include "core/Teclado.h"
#include "reports/ExtratoColunas.h"
#include "ui/BusyPointer.h"
#include "ui/Guard.h"
#include "ui/grid/FitToGrids.h"
#include "ui_ExtratoVendedor.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

// Twips, by column.
constexpr std::array<int, 6> larguras = {1200, 1000, 5100, 1500, 1500, 1500};
constexpr int alturaDaLinha = 340;
constexpr int clienteEstreito = 4850;
constexpr int linhasSemRolagem = 23;

bool ehPao(const QString& descricao) {
    const QString maiuscula = descricao.toUpper();
    return maiuscula.contains(u"PÃO"_s) || maiuscula.contains(u"PAO"_s);
}

QString dataDaNota(const odbc::Field& campo) {
    return TextoTela(QDate::fromString(campo.text(), Qt::ISODate));
}

Dinheiro comissao(Dinheiro vendas, const QString& percentual) {
    constexpr int centavos = 2;
    return Proporcao(vendas, ValorNumerico(percentual), Dinheiro(100), centavos);
}

} // namespace

ExtratoVendedor::ExtratoVendedor(QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui::ExtratoVendedor>()) {
    ui->setupUi(this);
    ui->Grid1->setMinimumRowTwips(alturaDaLinha);
    ui->Grid1->setFormat(u"^DATA|>Nº NF|<CLIENTE|>R$ TOTAL PÃO|>R$ TOT.OUTROS|>R$ TOTAL NF"_s);
    ajustaGrid();
    fitToGrids(this, {ui->Grid1}, linhasSemRolagem);
    new Teclado(this, [this] { reject(); });
    onSignal(ui->Command1, &QPushButton::clicked, this, [this](bool) { imprime(); });
}

ExtratoVendedor::~ExtratoVendedor() = default;

void ExtratoVendedor::Carrega(qint32 codigoVendedor, const QString& nomeVendedor, const QString& dataInicial,
                              const QString& dataFinal, const QString& comissaoPao,
                              const QString& comissaoOutros, const QString& totalDevolucao) {
    {
        const BusyPointer ampulheta;
        ui->Label1->setText(QString::number(codigoVendedor) + u" - "_s + nomeVendedor +
                            u"    -   PERÍODO DE "_s + dataInicial + u" A "_s + dataFinal);
        ajustaGrid();
        const Somas somas =
            listaNotas(codigoVendedor, TextoSQL(DataDaTela(dataInicial)), TextoSQL(DataDaTela(dataFinal)));
        mostraTotais(somas, comissaoPao, comissaoOutros, totalDevolucao);
        if (ui->Grid1->rows() > linhasSemRolagem)
            ui->Grid1->setColumnTwips(extrato::Cliente, clienteEstreito);
    }
    exec();
}

void ExtratoVendedor::ajustaGrid() {
    ui->Grid1->setRows(1);
    for (size_t coluna = 0; coluna < larguras.size(); ++coluna)
        ui->Grid1->setColumnTwips(static_cast<int>(coluna), larguras[coluna]);
}

ExtratoVendedor::Somas ExtratoVendedor::listaNotas(qint32 codigoVendedor, const QString& inicio,
                                                   const QString& fim) {
    const QString codigo = QString::number(codigoVendedor);
    TemRegistro = AbreRS(
        u"SELECT m.nr_nf, m.descricao, n.razsoc, m.totalvenda, m.dataemissao FROM movsaient AS m "
        "Inner JOIN nfsaida AS n ON m.nr_nf=n.nrnf AND m.serienf=n.SerieNF "
        "WHERE m.dataemissao>='"_s +
        inicio + u"' AND m.dataemissao<='"_s + fim + u"' AND m.entrsai='S' AND n.CodVendedor="_s + codigo +
        u" AND m.cancelado='N' and m.cfop in "
        "('5101','5102','5104','5401','5403','5405','6101','6102','6104','6401','6403','6404') "
        "Union All "
        "SELECT m.nr_nf, m.descricao, n.razsoc, -1 * m.totalvenda, m.dataemissao FROM movsaient AS m "
        "Inner JOIN nfsaida AS n ON m.nr_nf=n.nrnf AND m.serienf=n.SerieNF "
        "WHERE m.dataemissao>='"_s +
        inicio + u"' AND m.dataemissao<='"_s + fim + u"' AND m.entrsai='E' AND n.CodVendedor="_s + codigo +
        u" AND m.cancelado='N' and m.cfop in ('1202','1411','2202','2411') order by nr_nf"_s);
    const int nrNf = rs.column(esquema::movsaient::nrNf);
    const int descricao = rs.column(esquema::movsaient::descricao);
    const int razSoc = rs.column(esquema::nfsaida::razSoc);
    const int totalVenda = rs.column(esquema::movsaient::totalVenda);
    const int dataEmissao = rs.column(esquema::movsaient::dataEmissao);
    const Grid::Fill preenchimento(ui->Grid1);
    Somas gerais;
    while (!rs.atEnd()) {
        const QString numero = rs.field(nrNf).text();
        const QString data = dataDaNota(rs.field(dataEmissao));
        const QString cliente = rs.field(razSoc).text();
        Somas nota;
        for (; !rs.atEnd() && rs.field(nrNf).text() == numero; rs.moveNext()) {
            const Dinheiro valor = Dinheiro::dePonto(rs.field(totalVenda).text());
            (ehPao(rs.field(descricao).text()) ? nota.pao : nota.outros) += valor;
        }
        ui->Grid1->addRow({data, numero, cliente, FormataDinheiro(nota.pao), FormataDinheiro(nota.outros),
                           FormataDinheiro(nota.pao + nota.outros)});
        gerais.pao += nota.pao;
        gerais.outros += nota.outros;
    }
    rs.close();
    return gerais;
}

void ExtratoVendedor::mostraTotais(const Somas& somas, const QString& comissaoPao,
                                   const QString& comissaoOutros, const QString& totalDevolucao) {
    const auto percentual = [](const QString& texto) {
        return Formata(ValorNumerico(texto), u"###,##0.0##");
    };
    ui->TotGerPao->setText(FormataDinheiro(somas.pao));
    ui->PorcComissPao->setText(percentual(comissaoPao));
    ui->TotalComissaoPao->setText(FormataDinheiro(comissao(somas.pao, comissaoPao)));
    ui->TotGerOutros->setText(FormataDinheiro(somas.outros));
    ui->PorcComissOutros->setText(percentual(comissaoOutros));
    ui->TotalComissaoOutros->setText(FormataDinheiro(comissao(somas.outros, comissaoOutros)));
    ui->TotalVendas->setText(FormataDinheiro(somas.pao + somas.outros));
    ui->TotalComissoes->setText(FormataDinheiro(ValorNumerico(ui->TotalComissaoPao->text()) +
                                                ValorNumerico(ui->TotalComissaoOutros->text())));
    ui->TotalDevolucoes->setText(FormataDinheiro(ValorNumerico(totalDevolucao)));
}

} // namespace tarvessa
