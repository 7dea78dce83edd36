#include "closing/ClosingChecks.h"

#include "base/Numeros.h"
#include "core/AcessoDados.h"
#include "core/Esquema.h"
#include "core/Rotinas.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

// A CNPJ has 14 digits, a CPF 11.
constexpr qsizetype fewestCompanyDigits = 12;

bool coversEveryProduct(odbc::ResultSet& products) {
    const int quantity = products.column(esquema::orcamento::quantidade);
    const int stock = products.column(u"estoque");
    bool sufficient = true;
    for (; !products.atEnd(); products.moveNext())
        if (products.field(quantity).decimal() > products.field(stock).decimal())
            sufficient = false;
    return sufficient;
}

} // namespace

std::optional<QString> documentDigits(const QString& codigoCli) {
    TemRegistro = AbreRS(u"Select CNPJ_CPF From Clientes Where Codigo='"_s + codigoCli + u"'"_s);
    std::optional<QString> digits;
    if (!rs.atEnd())
        digits = SoNumeros(rs.field(esquema::clientes::cnpjCpf).text());
    rs.close();
    return digits;
}

bool isPrivatePerson(const QString& documentDigits) {
    return documentDigits.size() < fewestCompanyDigits;
}

bool isPaymentValid(const ListedPv& pv) {
    if (!pv.avista || LimpaTexto(pv.formaPagto) != pv.formaPagto)
        return false;
    const Dinheiro days = ValorNumerico(pv.diasVenc);
    return *pv.avista ? !days.negativo() : days > Dinheiro();
}

bool isStockSufficient(const QString& pedido) {
    TemRegistro = AbreRS(
        u"SELECT o.codigo, SUM(o.quantidade) as quantidade, ifnull(p.quantidade+p.quantidade2,0) AS estoque  "
        "FROM orcamento AS o left join produtos AS p ON o.codigo=p.codfabr WHERE Nrpedido="_s +
        pedido + u" AND tipoOperacao='P' GROUP BY codigo"_s);
    const bool sufficient = coversEveryProduct(rs);
    rs.close();
    return sufficient;
}

} // namespace tarvessa
