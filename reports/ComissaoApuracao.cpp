// The run of the commission screen: staging, sums by seller, totals.

#include "base/Numeros.h"
#include "base/RuntimeError.h"
#include "core/AcessoDados.h"
#include "core/Esquema.h"
#include "core/FieldText.h"
#include "reports/Comissao.h"
#include "reports/ComissaoColumns.h"
#include "ui/BusyLabel.h"
#include "ui/BusyPointer.h"
#include "ui/grid/CellEditor.h"
#include "ui_Comissao.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

const QColor yellow(255, 255, 0);
const QColor green(0, 255, 0);
const QString zero = u"0,00"_s;

QString insertInvoiceLines(const QString& value, const QString& condition, const QString& start,
                           const QString& end) {
    return u"INSERT INTO relat2 (CODIGO1, TEXTO1, CODIGO2, valor1, DATA1, TEXTO3) SELECT m.codigo, "
           "m.descricao, n.CodVendedor, "_s +
           value +
           u", m.dataemissao, 'OUTROS' AS Outros FROM movsaient AS m Inner JOIN nfsaida AS n ON "
           "m.nr_nf=n.nrnf AND m.serienf=n.SerieNF WHERE m.dataemissao>='"_s +
           start + u"' AND m.dataemissao<='"_s + end + condition;
}

} // namespace

/// One seller's sums; the percentages as the grid shows them.
struct Comissao::Vendedor {
    QString codigo;
    QString nome;
    QString porcPao;
    QString porcOutros;
    Dinheiro pao;
    Dinheiro outros;
    Dinheiro devolucoes;
};

void Comissao::geraRelatorio() {
    if (!m_periodo->confere())
        return;
    // The rows are about to go, so their sums no longer matter.
    if (m_editor->isOpen())
        storeEditor();
    const BusyPointer pointer;
    {
        const BusyLabel label(ui->Label3);
        AjustaGrid();
        m_ranPeriod = m_periodo->inFileName();
        preparaRelat2();
        listaVendedores();
        ui->Grid1->setEmptyText(u"Nenhuma venda no período"_s);
    }
    if (ui->Grid1->rows() > 1)
        mostraTotais();
}

void Comissao::preparaRelat2() {
    const QString start = m_periodo->inicioSQL();
    const QString end = m_periodo->fimSQL();
    Executa(u"TRUNCATE relat2"_s);
    Executa(insertInvoiceLines(u"m.totalvenda"_s,
                               u"' AND m.entrsai='S' AND n.CodVendedor>0 AND m.cancelado='N' and m.cfop in "
                               "('5101','5102','5104','5401','5403','5405','6101','6102','6104','6401',"
                               "'6403','6404')"_s,
                               start, end));
    Executa(insertInvoiceLines(u"-1 * m.totalvenda"_s,
                               u"' AND m.entrsai='E' AND n.CodVendedor>0 AND m.cancelado='N' and m.cfop in "
                               "('1202','1411','2202','2411')"_s,
                               start, end));
    Executa(u"INSERT INTO relat2 (CODIGO1, CODIGO2, valor1, TEXTO3) SELECT '***DEVOLUÇÃO', Vendedor, "
            "ifnull(SUM(quantidade*pcfabrica),0) as TotalPed, '***DEVOLUÇÃO' AS Devolucao FROM "
            "Orcamento_Troca WHERE situacaoorc='B' AND databaixa BETWEEN '"_s +
            start + u"' AND '"_s + end + u"' Group By vendedor"_s);
    Executa(u"UPDATE relat2 AS r, produtos AS p SET r.TEXTO1=p.descricao WHERE r.CODIGO1=p.codfabr"_s);
    Executa(u"UPDATE relat2 AS r, vendedores AS v SET r.TEXTO2=v.vendedor WHERE r.CODIGO2=v.codigovend"_s);
    Executa(u"UPDATE relat2 SET TEXTO3='PÃO' WHERE TEXTO1 LIKE '%PÃO%' OR TEXTO1 LIKE '%PAO%'"_s);
}

void Comissao::listaVendedores() {
    TemRegistro = AbreRS(
        u"SELECT r.codigo2, r.texto2, r.texto3, SUM(r.valor1) as TotVenda, v.ComissEsp1, v.ComissEsp2 FROM "
        "relat2 as r left join vendedores as v on r.codigo2=v.codigovend GROUP BY r.codigo2,r.texto3 ORDER "
        "BY r.TEXTO2, r.texto2"_s);
    m_roomOfPao = rs.room(esquema::vendedores::comissEsp1);
    m_roomOfOutros = rs.room(esquema::vendedores::comissEsp2);
    const QList<Vendedor> vendedores = somaPorVendedor(rs);
    rs.close();
    for (const Vendedor& vendedor : vendedores)
        listaVendedor(vendedor);
}

// The query orders by name only, so the lines of sellers with the same name, or without one, may alternate: a
// code seen before continues its sums.
QList<Comissao::Vendedor> Comissao::somaPorVendedor(odbc::ResultSet& lines) {
    QList<Vendedor> vendedores;
    QHash<QString, qsizetype> indexByCode;
    for (; !lines.atEnd(); lines.moveNext()) {
        const QString codigo = lines.field(esquema::relat::codigo2).text();
        if (!indexByCode.contains(codigo)) {
            constexpr QStringView percentMask = u"##0.0";
            indexByCode.insert(codigo, vendedores.size());
            vendedores.append({codigo,
                               lines.field(esquema::relat::texto2).text(),
                               maskedText(lines.field(esquema::vendedores::comissEsp1), percentMask),
                               maskedText(lines.field(esquema::vendedores::comissEsp2), percentMask),
                               {},
                               {},
                               {}});
        }
        Vendedor& vendedor = vendedores[indexByCode.value(codigo)];
        const QString classe = lines.field(esquema::relat::texto3).text();
        const Dinheiro value = lines.field(u"TotVenda").decimal();
        if (classe == esquema::classeDevolucao)
            vendedor.devolucoes += value;
        else if (classe == esquema::classePao)
            vendedor.pao += value;
        else
            vendedor.outros += value;
    }
    return vendedores;
}

void Comissao::listaVendedor(const Vendedor& vendedor) {
    constexpr int decimals = 2;
    try {
        const Dinheiro vendas = vendedor.pao + vendedor.outros;
        const Dinheiro porcDevolucoes = Proporcao(Dinheiro(100), vendedor.devolucoes, vendas, decimals);
        ui->Grid1->addRow({vendedor.codigo, vendedor.nome, FormataDinheiro(vendedor.pao), vendedor.porcPao,
                           zero, FormataDinheiro(vendedor.outros), vendedor.porcOutros, zero,
                           FormataDinheiro(vendas), zero, FormataDinheiro(vendedor.devolucoes),
                           Formata(porcDevolucoes, u"##0.00")});
    } catch (const RuntimeError& error) {
        throw error.about(u"Vendedor "_s + vendedor.codigo + u" - "_s + vendedor.nome);
    }
    ui->Grid1->setPicture(ui->Grid1->rows() - 1, comissao::Imprime, m_printPicture);
}

void Comissao::mostraTotais() {
    ui->Grid1->addRow({});
    ui->Grid1->addRow({QString(), u"***TOTAL-***"_s});
    m_hasTotals = true;
    SomaGrid();
    ui->Command1->setEnabled(true);
    for (int row = 1; row < ui->Grid1->rows(); ++row) {
        for (int column = comissao::Pao; column <= comissao::ComissaoPao; ++column)
            ui->Grid1->setBackColor(row, column, yellow);
        for (int column = comissao::Outros; column <= comissao::ComissaoOutros; ++column)
            ui->Grid1->setBackColor(row, column, green);
    }
}

} // namespace tarvessa
