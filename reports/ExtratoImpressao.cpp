// Printing a seller's statement.

#include "base/Numeros.h"
#include "core/PrintLayout.h"
#include "core/Staging.h"
#include "reports/ExtratoColunas.h"
#include "reports/ExtratoVendedor.h"
#include "ui_ExtratoVendedor.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

QString ponto(const QLineEdit* caixa) {
    return ValorNumerico(caixa->text()).ponto();
}

} // namespace

void ExtratoVendedor::imprime() {
    QStringList linhas;
    for (int linha = 1; linha < ui->Grid1->rows(); ++linha)
        linhas.append(insertDaLinha(linha));
    fillStaging(u"truncate relat2"_s, linhas);
    defineFormulas();
    printLayout(u"ExtratoVendedorDistribuidora.RPT"_s);
    // The returns and their percentage stay set: layouts of other reports may use them.
    constexpr int tituloEComissoes = 3;
    clearFormulas(tituloEComissoes);
}

QString ExtratoVendedor::insertDaLinha(int linha) const {
    const auto texto = [this, linha](int coluna) { return ui->Grid1->text(linha, coluna); };
    const auto valor = [&texto](int coluna) { return ValorNumerico(texto(coluna)).ponto(); };
    return u"Insert into relat2 (Data1,Valor1,Texto1,Valor2,valor3,valor4) values ('"_s +
           texto(extrato::Data) + u"', "_s + valor(extrato::Numero) + u" , '"_s + texto(extrato::Cliente) +
           u"', "_s + valor(extrato::Pao) + u" , "_s + valor(extrato::Outros) + u" , "_s +
           valor(extrato::Total) + u")"_s;
}

// The percentage comes last: where it is a division by zero, the slots before it are set all the same.
void ExtratoVendedor::defineFormulas() {
    constexpr int centesimos = 2;
    const QStringList semDivisao = {u"Titulo='"_s + ui->Label1->text() + u"'"_s,
                                    u"PorcComissaoPao="_s + ponto(ui->PorcComissPao),
                                    u"PorcComissaoOutros="_s + ponto(ui->PorcComissOutros),
                                    u"TotalDevolucoes="_s + ponto(ui->TotalDevolucoes)};
    setFormulas(semDivisao);
    const Dinheiro percentual = Proporcao(Dinheiro(100), ValorNumerico(ui->TotalDevolucoes->text()),
                                          ValorNumerico(ui->TotalVendas->text()), centesimos);
    setFormulas({u"PercentualDev='"_s + percentual.ponto() + u"%'"_s}, static_cast<int>(semDivisao.size()));
}

} // namespace tarvessa
