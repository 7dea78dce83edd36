// The run of the commission screen: staging, sums by seller, totals.

#include "base/Numeros.h"
#include "core/AcessoDados.h"
#include "core/Esquema.h"
#include "reports/Comissao.h"
#include "reports/ComissaoColunas.h"
#include "ui/BusyLabel.h"
#include "ui/grid/CellEditor.h"
#include "ui_Comissao.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

const QColor amarelo(255, 255, 0);
const QColor verde(0, 255, 0);
const QString zero = u"0,00"_s;

QString porcentagem(const odbc::Field& campo) {
    return campo.isNull() ? QString() : Formata(Dinheiro::dePonto(campo.text()), u"##0.0");
}

QString linhasDeNota(const QString& valor, const QString& condicao, const QString& inicio,
                     const QString& fim) {
    return u"INSERT INTO relat2 (CODIGO1, TEXTO1, CODIGO2, valor1, DATA1, TEXTO3) SELECT m.codigo, "
           "m.descricao, n.CodVendedor, "_s +
           valor +
           u", m.dataemissao, 'OUTROS' AS Outros FROM movsaient AS m Inner JOIN nfsaida AS n ON "
           "m.nr_nf=n.nrnf AND m.serienf=n.SerieNF WHERE m.dataemissao>='"_s +
           inicio + u"' AND m.dataemissao<='"_s + fim + condicao;
}

} // namespace

/// One seller's sums; percentages as the grid shows them.
struct Comissao::Vendedor {
    QString codigo;
    QString nome;
    QString porcPao;
    QString porcOutros;
    Dinheiro pao;
    Dinheiro outros;
    Dinheiro devolucoes;
};

void Comissao::Command4_Click() {
    if (m_editor->isOpen())
        confirmaEdicao();
    if (!m_periodo->confere())
        return;
    const BusyLabel aguarde(ui->Label3);
    AjustaGrid();
    preparaRelat2();
    // All percentages first: where one cannot be had, the grid stays empty rather than half filled.
    QList<QStringList> linhas;
    const QList<Vendedor> vendedores = leVendedores();
    for (const Vendedor& vendedor : vendedores)
        linhas.append(celulas(vendedor));
    for (const QStringList& linha : linhas) {
        ui->Grid1->addRow(linha);
        ui->Grid1->setPicture(ui->Grid1->rows() - 1, comissao::Imprime, m_imagem);
    }
    if (ui->Grid1->rows() > 1)
        mostraTotais();
}

void Comissao::preparaRelat2() {
    const QString inicio = m_periodo->inicioSQL();
    const QString fim = m_periodo->fimSQL();
    Executa(u"TRUNCATE relat2"_s);
    Executa(linhasDeNota(u"m.totalvenda"_s,
                         u"' AND m.entrsai='S' AND n.CodVendedor>0 AND m.cancelado='N' and m.cfop in "
                         "('5101','5102','5104','5401','5403','5405','6101','6102','6104','6401','6403',"
                         "'6404')"_s,
                         inicio, fim));
    Executa(linhasDeNota(u"-1 * m.totalvenda"_s,
                         u"' AND m.entrsai='E' AND n.CodVendedor>0 AND m.cancelado='N' and m.cfop in "
                         "('1202','1411','2202','2411')"_s,
                         inicio, fim));
    Executa(u"INSERT INTO relat2 (CODIGO1, CODIGO2, valor1, TEXTO3) SELECT '***DEVOLUÇÃO', Vendedor, "
            "ifnull(SUM(quantidade*pcfabrica),0) as TotalPed, '***DEVOLUÇÃO' AS Devolucao FROM "
            "Orcamento_Troca WHERE situacaoorc='B' AND databaixa BETWEEN '"_s +
            inicio + u"' AND '"_s + fim + u"' Group By vendedor"_s);
    Executa(u"UPDATE relat2 AS r, produtos AS p SET r.TEXTO1=p.descricao WHERE r.CODIGO1=p.codfabr"_s);
    Executa(u"UPDATE relat2 AS r, vendedores AS v SET r.TEXTO2=v.vendedor WHERE r.CODIGO2=v.codigovend"_s);
    Executa(u"UPDATE relat2 SET TEXTO3='PÃO' WHERE TEXTO1 LIKE '%PÃO%' OR TEXTO1 LIKE '%PAO%'"_s);
}

// The query orders by name alone, so the lines of two sellers of one name, or of none, may come mixed: a
// seller's sums go on where his earlier lines left them.
QList<Comissao::Vendedor> Comissao::leVendedores() {
    TemRegistro = AbreRS(
        u"SELECT r.codigo2, r.texto2, r.texto3, SUM(r.valor1) as TotVenda, v.ComissEsp1, v.ComissEsp2 FROM "
        "relat2 as r left join vendedores as v on r.codigo2=v.codigovend GROUP BY r.codigo2,r.texto3 ORDER "
        "BY r.TEXTO2, r.texto2"_s);
    QList<Vendedor> vendedores;
    QHash<QString, qsizetype> lugarDoCodigo;
    for (; !rs.atEnd(); rs.moveNext()) {
        const QString codigo = rs.field(esquema::relat::codigo2).text();
        if (!lugarDoCodigo.contains(codigo)) {
            lugarDoCodigo.insert(codigo, vendedores.size());
            vendedores.append({codigo,
                               rs.field(esquema::relat::texto2).text(),
                               porcentagem(rs.field(esquema::vendedores::comissEsp1)),
                               porcentagem(rs.field(esquema::vendedores::comissEsp2)),
                               {},
                               {},
                               {}});
        }
        Vendedor& vendedor = vendedores[lugarDoCodigo.value(codigo)];
        const QString classe = rs.field(esquema::relat::texto3).text();
        const Dinheiro valor = Dinheiro::dePonto(rs.field(u"TotVenda").text());
        if (classe == esquema::classeDevolucao)
            vendedor.devolucoes += valor;
        else if (classe == esquema::classePao)
            vendedor.pao += valor;
        else
            vendedor.outros += valor;
    }
    rs.close();
    return vendedores;
}

QStringList Comissao::celulas(const Vendedor& vendedor) {
    constexpr int casas = 2;
    const Dinheiro vendas = vendedor.pao + vendedor.outros;
    const Dinheiro porcDevolucoes = Proporcao(Dinheiro(100), vendedor.devolucoes, vendas, casas);
    return {vendedor.codigo,
            vendedor.nome,
            FormataDinheiro(vendedor.pao),
            vendedor.porcPao,
            zero,
            FormataDinheiro(vendedor.outros),
            vendedor.porcOutros,
            zero,
            FormataDinheiro(vendas),
            zero,
            FormataDinheiro(vendedor.devolucoes),
            Formata(porcDevolucoes, u"##0.00")};
}

void Comissao::mostraTotais() {
    ui->Grid1->addRow({});
    ui->Grid1->addRow({QString(), u"***TOTAL-***"_s});
    SomaGrid();
    ui->Command1->setEnabled(true);
    for (int linha = 1; linha < ui->Grid1->rows(); ++linha) {
        for (int coluna = comissao::Pao; coluna <= comissao::ComissaoPao; ++coluna)
            ui->Grid1->setBackColor(linha, coluna, amarelo);
        for (int coluna = comissao::Outros; coluna <= comissao::ComissaoOutros; ++coluna)
            ui->Grid1->setBackColor(linha, coluna, verde);
    }
}

} // namespace tarvessa
