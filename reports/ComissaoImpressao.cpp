// Printing the commission grid as it stands.

#include "base/Numeros.h"
#include "core/AcessoDados.h"
#include "core/Relatorio.h"
#include "reports/Comissao.h"
#include "reports/ComissaoColunas.h"
#include "reports/Impressao.h"
#include "ui/BusyPointer.h"
#include "ui/grid/CellEditor.h"
#include "ui_Comissao.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

void Comissao::Command1_Click() {
    if (m_editor->isOpen())
        confirmaEdicao();
    {
        const BusyPointer ampulheta;
        Executa(u"Truncate Relat2"_s);
        for (int linha = 1; linha <= linhasDeVendedores(); ++linha)
            gravaLinha(linha);
    }
    ControleDeRelatorio().setFormula(0, u"Titulo='PERÍODO DE "_s + m_periodo->inicioTela() + u" À "_s +
                                            m_periodo->fimTela() + u"'"_s);
    MostraRelatorio(u"COMISSAO.RPT"_s);
}

void Comissao::gravaLinha(int linha) {
    const auto texto = [this, linha](int coluna) { return ui->Grid1->text(linha, coluna); };
    const auto ponto = [&texto](int coluna) { return ValorNumerico(texto(coluna)).ponto(); };
    Executa(u"Insert into relat2 Set Codigo1='"_s + texto(comissao::Codigo) + u"',Texto1='"_s +
            texto(comissao::Nome) + u"',Valor1="_s + ponto(comissao::Pao) + u", Valor2="_s +
            ponto(comissao::PorcPao) + u", Valor3="_s + ponto(comissao::ComissaoPao) + u", Valor4="_s +
            ponto(comissao::Outros) + u", Valor5="_s + ponto(comissao::PorcOutros) + u", Valor6="_s +
            ponto(comissao::ComissaoOutros) + u", Valor7="_s + ponto(comissao::TotalVendas) + u", Valor8="_s +
            ponto(comissao::TotalComissao) + u", Valor9="_s + ponto(comissao::Devolucoes) + u", Texto2='"_s +
            texto(comissao::PorcDevolucoes) + u"'"_s);
}

} // namespace tarvessa
