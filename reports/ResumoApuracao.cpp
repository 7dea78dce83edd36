// The run of the sales summary: staging, customers by price level, totals.

#include "base/Numeros.h"
#include "core/AcessoDados.h"
#include "core/Esquema.h"
#include "reports/ResumoVendas.h"
#include "ui/BusyLabel.h"
#include "ui/grid/Grid.h"
#include "ui_ResumoVendas.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

constexpr int clienteComRolagem = 4650;
constexpr int colunaDoCliente = 1;

// By the items of `order`.
const std::array<QString, 4> ordens = {u"Texto1"_s, u"valor1 desc"_s, u"valor2 desc"_s, u"valor3 desc"_s};

Dinheiro valor(const odbc::Field& campo) {
    return Dinheiro::dePonto(campo.text());
}

} // namespace

void ResumoVendas::Command4_Click() {
    if (!m_periodo->confere())
        return;
    const BusyLabel aguarde(ui->Label3);
    FormataGrid();
    preparaRelat();
    mostraClientes();
    mostraTotais();
}

// Sales are taken by the first digits of their fiscal code and by item value, returns by the whole code and
// by sale value: that is how the shop counts them.
void ResumoVendas::preparaRelat() {
    const QString inicio = m_periodo->inicioSQL();
    const QString fim = m_periodo->fimSQL();
    Executa(u"TRUNCATE relat2"_s);
    Executa(u"INSERT INTO relat2 (Codigo1,Valor1) "
            "SELECT cnpj_cpf, SUM(vlr_tot_item) AS totalVenda FROM movsaient WHERE dataemissao>='"_s +
            inicio + u"' AND dataemissao<='"_s + fim +
            u"' AND cancelado='N' AND entrsai='S' and left(cfop,3) in "
            "('510','511','512','610','611','612','540','640','565','665') GROUP BY cnpj_cpf "
            "UNION ALL "
            "SELECT cnpj_cpf, -1*SUM(totalvenda) AS totalVenda FROM movsaient WHERE dataemissao>='"_s +
            inicio + u"' AND dataemissao<='"_s + fim +
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
            inicio + u"' AND '"_s + fim + u"' Group By CodigoCli"_s);
    Executa(u"UPDATE relat2 AS r, clientes AS c SET r.CODIGO1=c.cnpj_cpf WHERE r.CODIGO1=c.codigo"_s);
    Executa(u"UPDATE relat2 AS r2, relat AS r1 SET r1.valor2=r2.valor1 WHERE r2.CODIGO1=r1.codigo1"_s);
    Executa(u"UPDATE relat SET valor3=round(valor2*100/valor1,2) WHERE valor1>0 and valor2>0"_s);
}

void ResumoVendas::mostraClientes() {
    TemRegistro =
        AbreRS(u"Select * From Relat Order By "_s + ordens[static_cast<size_t>(ui->order->currentIndex())]);
    const int codigo1 = rs.column(esquema::relat::codigo1);
    const int texto1 = rs.column(esquema::relat::texto1);
    const int texto2 = rs.column(esquema::relat::texto2);
    const int texto3 = rs.column(esquema::relat::texto3);
    const int valor1 = rs.column(esquema::relat::valor1);
    const int valor2 = rs.column(esquema::relat::valor2);
    const int valor3 = rs.column(esquema::relat::valor3);
    const std::array<Grid::Fill, niveis> preenchimentos = {
        Grid::Fill(m_niveis[0].TabelaPreco), Grid::Fill(m_niveis[1].TabelaPreco),
        Grid::Fill(m_niveis[2].TabelaPreco), Grid::Fill(m_niveis[3].TabelaPreco)};
    for (; !rs.atEnd(); rs.moveNext())
        m_niveis[nivelDe(rs.field(texto3).text())].TabelaPreco->addRow(
            {rs.field(codigo1).text(), rs.field(texto1).text(), rs.field(texto2).text(),
             FormataDinheiro(valor(rs.field(valor1))), FormataDinheiro(valor(rs.field(valor2))),
             FormataDinheiro(valor(rs.field(valor3)))});
    rs.close();
}

void ResumoVendas::mostraTotais() {
    TemRegistro = AbreRS(u"Select sum(Valor1) as Valor1, Texto3 From relat group by Texto3"_s);
    std::array<Dinheiro, niveis> somas;
    Dinheiro geral;
    for (; !rs.atEnd(); rs.moveNext()) {
        const Dinheiro soma = valor(rs.field(esquema::relat::valor1));
        somas[nivelDe(rs.field(esquema::relat::texto3).text())] += soma;
        geral += soma;
    }
    rs.close();
    ui->Label5->setText(u"TOTAL GERAL R$ "_s + FormataDinheiro(geral));
    constexpr int casas = 3;
    for (size_t n = 0; n < niveis; ++n) {
        const Dinheiro parte = Proporcao(Dinheiro(100), somas[n], geral, casas);
        m_niveis[n].Label4->setText(u"("_s + Formata(parte, u"##0.000") + u"%)   -   TOTAL R$ "_s +
                                    FormataDinheiro(somas[n]));
        if (m_niveis[n].TabelaPreco->rows() > linhasSemRolagem)
            m_niveis[n].TabelaPreco->setColumnTwips(colunaDoCliente, clienteComRolagem);
    }
}

} // namespace tarvessa
