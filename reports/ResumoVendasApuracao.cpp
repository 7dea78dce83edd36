// The run of the sales summary: staging, customers by price level, totals.

#include "base/Numeros.h"
#include "core/AcessoDados.h"
#include "core/Esquema.h"
#include "reports/ResumoVendas.h"
#include "reports/ResumoVendasColumns.h"
#include "ui/BusyLabel.h"
#include "ui/BusyPointer.h"
#include "ui/grid/Grid.h"
#include "ui_ResumoVendas.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

// Twips, when the grid scrolls.
constexpr int narrowCustomerWidth = 4650;

// By the items of `order`.
const std::array<QString, 4> orderings = {u"Texto1"_s, u"valor1 desc"_s, u"valor2 desc"_s, u"valor3 desc"_s};

} // namespace

void ResumoVendas::geraRelatorio() {
    if (!m_periodo->confere())
        return;
    const BusyPointer pointer;
    const BusyLabel label(ui->Label3);
    FormataGrid();
    // Should the run fail, no total of another period stays.
    ui->Label5->setText(u"TOTAL R$ 0,00"_s);
    m_ranPeriod = m_periodo->inFileName();
    preparaRelat();
    TemRegistro = AbreRS(u"Select * From Relat Order By "_s +
                         orderings[static_cast<size_t>(ui->order->currentIndex())]);
    listaClientes(rs);
    rs.close();
    for (const Tab& tab : m_tabs)
        tab.TabelaPreco->setEmptyText(u"Nenhuma venda no período"_s);
    TemRegistro = AbreRS(u"Select sum(Valor1) as Valor1, Texto3 From relat group by Texto3"_s);
    const Totais totais = somaPorNivel(rs);
    rs.close();
    mostraTotais(totais);
}

// Sales are selected by the first three digits of the fiscal code and summed by item value, returns by the
// whole code and by sale value: that is how the shop counts them.
void ResumoVendas::preparaRelat() {
    const QString start = m_periodo->inicioSQL();
    const QString end = m_periodo->fimSQL();
    Executa(u"TRUNCATE relat2"_s);
    Executa(u"INSERT INTO relat2 (Codigo1,Valor1) "
            "SELECT cnpj_cpf, SUM(vlr_tot_item) AS totalVenda FROM movsaient WHERE dataemissao>='"_s +
            start + u"' AND dataemissao<='"_s + end +
            u"' AND cancelado='N' AND entrsai='S' and left(cfop,3) in "
            "('510','511','512','610','611','612','540','640','565','665') GROUP BY cnpj_cpf "
            "UNION ALL "
            "SELECT cnpj_cpf, -1*SUM(totalvenda) AS totalVenda FROM movsaient WHERE dataemissao>='"_s +
            start + u"' AND dataemissao<='"_s + end +
            u"' AND cancelado='N' AND entrsai='E' and cfop IN ('1202','1411','2202','2411') GROUP BY "
            "cnpj_cpf "_s);
    Executa(u"TRUNCATE relat"_s);
    Executa(u"INSERT INTO relat (codigo1,valor1) SELECT codigo1, SUM(valor1) AS valor1 FROM relat2 GROUP BY "
            "codigo1"_s);
    Executa(u"UPDATE relat AS r, clientes AS c SET r.TEXTO1=c.nome, r.TEXTO2=c.fantasia, "
            "r.TEXTO3=c.colunapreco WHERE r.codigo1=c.cnpj_cpf"_s);
    Executa(u"UPDATE relat SET TEXTO3='1' WHERE not texto3 in ('1','2','3','4')"_s);
    Executa(u"Truncate relat2"_s);
    Executa(u"INSERT INTO relat2 (CODIGO1, valor1) SELECT codigocli, ifnull(SUM(quantidade*pcfabrica),0) as "
            "TotalPed FROM Orcamento_Troca WHERE situacaoorc='B' AND databaixa BETWEEN '"_s +
            start + u"' AND '"_s + end + u"' Group By CodigoCli"_s);
    Executa(u"UPDATE relat2 AS r, clientes AS c SET r.CODIGO1=c.cnpj_cpf WHERE r.CODIGO1=c.codigo"_s);
    Executa(u"UPDATE relat2 AS r2, relat AS r1 SET r1.valor2=r2.valor1 WHERE r2.CODIGO1=r1.codigo1"_s);
    Executa(u"UPDATE relat SET valor3=round(valor2*100/valor1,2) WHERE valor1>0 and valor2>0"_s);
}

void ResumoVendas::listaClientes(odbc::ResultSet& clientes) {
    const int codigo1 = clientes.column(esquema::relat::codigo1);
    const int texto1 = clientes.column(esquema::relat::texto1);
    const int texto2 = clientes.column(esquema::relat::texto2);
    const int texto3 = clientes.column(esquema::relat::texto3);
    const int valor1 = clientes.column(esquema::relat::valor1);
    const int valor2 = clientes.column(esquema::relat::valor2);
    const int valor3 = clientes.column(esquema::relat::valor3);
    const std::array<Grid::Fill, levelCount> fills = {
        Grid::Fill(m_tabs[0].TabelaPreco), Grid::Fill(m_tabs[1].TabelaPreco),
        Grid::Fill(m_tabs[2].TabelaPreco), Grid::Fill(m_tabs[3].TabelaPreco)};
    const auto money = [&clientes](int column) { return FormataDinheiro(clientes.field(column).decimal()); };
    for (; !clientes.atEnd(); clientes.moveNext())
        m_tabs[tabOf(clientes.field(texto3).text())].TabelaPreco->addRow(
            {clientes.field(codigo1).text(), clientes.field(texto1).text(), clientes.field(texto2).text(),
             money(valor1), money(valor2), money(valor3)});
}

ResumoVendas::Totais ResumoVendas::somaPorNivel(odbc::ResultSet& niveis) {
    Totais totais;
    for (; !niveis.atEnd(); niveis.moveNext()) {
        const Dinheiro soma = niveis.field(esquema::relat::valor1).decimal();
        totais.niveis[tabOf(niveis.field(esquema::relat::texto3).text())] += soma;
        totais.geral += soma;
    }
    return totais;
}

void ResumoVendas::mostraTotais(const Totais& totais) {
    ui->Label5->setText(u"TOTAL GERAL R$ "_s + FormataDinheiro(totais.geral));
    constexpr int decimals = 3;
    for (size_t n = 0; n < levelCount; ++n) {
        const Dinheiro share = Proporcao(Dinheiro(100), totais.niveis[n], totais.geral, decimals);
        m_tabs[n].Label4->setText(u"("_s + Formata(share, u"##0.000") + u"%)   -   TOTAL R$ "_s +
                                  FormataDinheiro(totais.niveis[n]));
        if (m_tabs[n].TabelaPreco->rows() > rowsWithoutScrolling)
            m_tabs[n].TabelaPreco->setColumnTwips(resumovendas::RazaoSocial, narrowCustomerWidth);
    }
}

} // namespace tarvessa
