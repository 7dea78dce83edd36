// Printing a seller's statement.

#include "base/Numeros.h"
#include "core/PrintLayout.h"
#include "core/Rotinas.h"
#include "core/Staging.h"
#include "reports/ExtratoVendedor.h"
#include "reports/ExtratoVendedorColumns.h"
#include "ui_ExtratoVendedor.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

QString ponto(const QLineEdit* box) {
    return ValorNumerico(box->text()).ponto();
}

} // namespace

void ExtratoVendedor::imprime() {
    QStringList inserts;
    for (int row = 1; row < ui->Grid1->rows(); ++row)
        inserts.append(insertOf(row));
    fillStaging(u"truncate relat2"_s, inserts);
    defineFormulas();
    printLayout(u"ExtratoVendedorDistribuidora.RPT"_s, m_documentName);
    // The returns and their percentage stay set: layouts of other reports may use them.
    constexpr int titleAndRates = 3;
    clearFormulas(titleAndRates);
}

QString ExtratoVendedor::insertOf(int row) const {
    const auto text = [this, row](int column) { return ui->Grid1->text(row, column); };
    const auto value = [&text](int column) { return ValorNumerico(text(column)).ponto(); };
    return u"Insert into relat2 (Data1,Valor1,Texto1,Valor2,valor3,valor4) values ('"_s +
           text(extratovendedor::Data) + u"', "_s + value(extratovendedor::Numero) + u" , '"_s +
           LimpaTexto(text(extratovendedor::Cliente)) + u"', "_s + value(extratovendedor::Pao) + u" , "_s +
           value(extratovendedor::Outros) + u" , "_s + value(extratovendedor::Total) + u")"_s;
}

// The percentage comes last: when it is a division by zero, the slots before it are set all the same.
void ExtratoVendedor::defineFormulas() {
    constexpr int decimals = 2;
    const QStringList first = {u"Titulo='"_s + ui->Label1->text() + u"'"_s,
                               u"PorcComissaoPao="_s + ponto(ui->PorcComissPao),
                               u"PorcComissaoOutros="_s + ponto(ui->PorcComissOutros),
                               u"TotalDevolucoes="_s + ponto(ui->TotalDevolucoes)};
    setFormulas(first);
    const Dinheiro percentual = Proporcao(Dinheiro(100), ValorNumerico(ui->TotalDevolucoes->text()),
                                          ValorNumerico(ui->TotalVendas->text()), decimals);
    setFormulas({u"PercentualDev='"_s + percentual.ponto() + u"%'"_s}, static_cast<int>(first.size()));
}

} // namespace tarvessa
