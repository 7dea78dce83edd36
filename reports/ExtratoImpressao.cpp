// Printing a seller's statement.

#include "base/Numeros.h"
#include "core/AcessoDados.h"
#include "core/Relatorio.h"
#include "reports/ExtratoColunas.h"
#include "reports/ExtratoVendedor.h"
#include "reports/Impressao.h"
#include "ui/BusyPointer.h"
#include "ui_ExtratoVendedor.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

enum Formula { Titulo, PorcComissaoPao, PorcComissaoOutros, TotalDevolucoes, PercentualDev };

QString ponto(const QLineEdit* caixa) {
    return ValorNumerico(caixa->text()).ponto();
}

} // namespace

void ExtratoVendedor::Command1_Click() {
    {
        const BusyPointer ampulheta;
        Executa(u"truncate relat2"_s);
        for (int linha = 1; linha < ui->Grid1->rows(); ++linha)
            gravaLinha(linha);
    }
    defineFormulas();
    MostraRelatorio(u"ExtratoVendedorDistribuidora.RPT"_s);
    // The returns and their percentage stay for the next report, as the layouts have always found them.
    for (const int formula : {Titulo, PorcComissaoPao, PorcComissaoOutros})
        ControleDeRelatorio().setFormula(formula, QString());
}

void ExtratoVendedor::gravaLinha(int linha) {
    const auto texto = [this, linha](int coluna) { return ui->Grid1->text(linha, coluna); };
    const auto valor = [&texto](int coluna) { return ValorNumerico(texto(coluna)).ponto(); };
    Executa(u"Insert into relat2 (Data1,Valor1,Texto1,Valor2,valor3,valor4) values ('"_s +
            texto(extrato::Data) + u"', "_s + valor(extrato::Numero) + u" , '"_s + texto(extrato::Cliente) +
            u"', "_s + valor(extrato::Pao) + u" , "_s + valor(extrato::Outros) + u" , "_s +
            valor(extrato::Total) + u")"_s);
}

void ExtratoVendedor::defineFormulas() {
    constexpr int casas = 2;
    ReportControl& crw = ControleDeRelatorio();
    crw.setFormula(Titulo, u"Titulo='"_s + ui->Label1->text() + u"'"_s);
    crw.setFormula(PorcComissaoPao, u"PorcComissaoPao="_s + ponto(ui->PorcComissPao));
    crw.setFormula(PorcComissaoOutros, u"PorcComissaoOutros="_s + ponto(ui->PorcComissOutros));
    crw.setFormula(TotalDevolucoes, u"TotalDevolucoes="_s + ponto(ui->TotalDevolucoes));
    const Dinheiro percentual = Proporcao(Dinheiro(100), ValorNumerico(ui->TotalDevolucoes->text()),
                                          ValorNumerico(ui->TotalVendas->text()), casas);
    crw.setFormula(PercentualDev, u"PercentualDev='"_s + percentual.ponto() + u"%'"_s);
}

} // namespace tarvessa
