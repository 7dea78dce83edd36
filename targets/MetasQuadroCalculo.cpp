// Computation of the targets' progress.

#include "core/AcessoDados.h"
#include "core/Periodo.h"
#include "core/Rotinas.h"
#include "products/ProductBox.h"
#include "targets/MetasQuadro.h"
#include "ui/BusyLabel.h"
#include "ui/BusyPointer.h"
#include "ui/DateBox.h"
#include "ui_MetasQuadro.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

void MetasQuadro::geraRelatorio() {
    // The button's shortcut does not move the focus, and the search for a product just typed waits for it.
    ui->Command4->setFocus();
    if (!m_product2->settle()) {
        ui->Descricao2->setFocus();
        return;
    }
    if (m_period->confere())
        calcula();
}

void MetasQuadro::calcula() {
    const BusyLabel wait(ui->Label7);
    const BusyPointer busy;
    AjustaGrid2();
    m_ranPeriod = m_period->inFileName();
    const qint32 vendedor = CodigoDaLista(ui->Vendedores2->currentText());
    const bool oneProduct = !m_product2->code().isEmpty();
    Executa(u"Update metavendedoritem Set Vendido=0, TotalVendas=0, QtdDevolucao=0"_s);
    Executa(u"Truncate Relat2"_s);
    somaVendas(vendedor, oneProduct);
    Executa(u"TRUNCATE relat2"_s);
    somaDevolucoes();
    TemRegistro = AbreRS(progressQuery(vendedor, oneProduct));
    montaQuadro(rs);
    rs.close();
}

// Intended: whether one product is asked for is decided by this tab's product box, but the code is that of
// the maintenance tab's.
void MetasQuadro::somaVendas(qint32 vendedor, bool oneProduct) {
    QString sql =
        u"Insert into Relat2 (Codigo1,Texto1,Quant,Valor1, Valor2) "
        "SELECT m.codigo,m.descricao, SUM(m.quantunit) AS quantidade, n.CodVendedor, Sum(m.totalvenda) as "
        "totalvenda FROM movsaient AS m "
        "inner join nfsaida AS n ON m.nr_nf=n.nrnf AND m.serienf=n.SerieNF "
        "WHERE m.dataemissao>='"_s +
        m_period->inicioSQL() + u"' AND m.dataemissao<='"_s + m_period->fimSQL() +
        u"' AND m.entrsai='S' AND m.cancelado='N'"_s;
    if (vendedor > 0)
        sql += u" AND n.CodVendedor="_s + QString::number(vendedor);
    if (oneProduct)
        sql += u" AND m.codigo='"_s + m_product->code() + u"' "_s;
    sql += u" GROUP BY n.CodVendedor,m.codigo"_s;
    Executa(sql);
    Executa(u"Update relat2 as r, metavendedoritem as m Set m.vendido=r.quant, m.totalvendas=r.valor2 Where "
            "r.valor1=m.codvendedor and r.codigo1=m.codigoproduto"_s);
}

// No filter: only returns that match a target are used.
void MetasQuadro::somaDevolucoes() {
    Executa(u"INSERT INTO relat2 (CODIGO1, Quant, Valor1) SELECT codigo,  SUM(quantidade) as Quantidade, "
            "Vendedor FROM Orcamento_Troca WHERE situacaoorc='B' AND databaixa BETWEEN '"_s +
            m_period->inicioSQL() + u"' AND '"_s + m_period->fimSQL() + u"' Group By vendedor, codigo"_s);
    Executa(u"Update relat2 as r, metavendedoritem as m Set m.qtddevolucao=r.quant Where "
            "r.valor1=m.codvendedor and r.codigo1=m.codigoproduto"_s);
}

QString MetasQuadro::progressQuery(qint32 vendedor, bool oneProduct) const {
    QString sql = u"Select m.codvendedor, m.CodigoProduto,p.Descricao,m.Quantidade,m.Vendido, m.totalvendas, "
                  "m.qtddevolucao From metavendedoritem as m "
                  "INNER JOIN produtos as p ON m.CodigoProduto=p.codfabr "_s;
    if (vendedor > 0 || oneProduct)
        sql += u"Where "_s;
    if (vendedor > 0)
        sql += u"m.codvendedor="_s + QString::number(vendedor);
    if (vendedor > 0 && oneProduct)
        sql += u" And "_s;
    if (oneProduct)
        sql += u"m.CodigoProduto='"_s + m_product2->code() + u"'"_s;
    return sql + u" Order By codvendedor"_s;
}

} // namespace tarvessa
