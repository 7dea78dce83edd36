// Printing the commission grid as it stands.

#include "base/Numeros.h"
#include "core/PrintLayout.h"
#include "core/Rotinas.h"
#include "core/Staging.h"
#include "reports/Comissao.h"
#include "reports/ComissaoColumns.h"
#include "ui/grid/CellEditor.h"
#include "ui_Comissao.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

void Comissao::imprime() {
    if (m_editor->isOpen())
        commitEditor();
    QStringList inserts;
    for (int row = 1; row <= sellerRows(); ++row)
        inserts.append(insertOf(row));
    fillStaging(u"Truncate Relat2"_s, inserts);
    printLayout(
        u"COMISSAO.RPT"_s, u"Comissão - "_s + m_periodo->inFileName(),
        {u"Titulo='PERÍODO DE "_s + m_periodo->inicioTela() + u" À "_s + m_periodo->fimTela() + u"'"_s});
}

QString Comissao::insertOf(int row) const {
    const auto text = [this, row](int column) { return ui->Grid1->text(row, column); };
    const auto ponto = [&text](int column) { return ValorNumerico(text(column)).ponto(); };
    return u"Insert into relat2 Set Codigo1='"_s + text(comissao::Codigo) + u"',Texto1='"_s +
           LimpaTexto(text(comissao::Nome)) + u"',Valor1="_s + ponto(comissao::Pao) + u", Valor2="_s +
           ponto(comissao::PorcPao) + u", Valor3="_s + ponto(comissao::ComissaoPao) + u", Valor4="_s +
           ponto(comissao::Outros) + u", Valor5="_s + ponto(comissao::PorcOutros) + u", Valor6="_s +
           ponto(comissao::ComissaoOutros) + u", Valor7="_s + ponto(comissao::TotalVendas) + u", Valor8="_s +
           ponto(comissao::TotalComissao) + u", Valor9="_s + ponto(comissao::Devolucoes) + u", Texto2='"_s +
           text(comissao::PorcDevolucoes) + u"'"_s;
}

} // namespace tarvessa
