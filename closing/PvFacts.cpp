#include "closing/PvFacts.h"

#include "closing/ClosingChecks.h"
#include "core/AcessoDados.h"
#include "core/Esquema.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

// The one row of the first table keeps customer and method even where the pre-sale has no lines any more. A
// line comes once per row of its product's technical sheet. The products of the stock test are grouped as the
// closing groups them; those that a movement changes are looked up by the movement's code, which the closing
// trims for a line and takes as it is for a component.
QString question(const ListedPv& pv) {
    const QString moved = u"IF(f.codigoprod IS NULL, TRIM(o.codigo), f.codigo)"_s;
    const QString lines = u"o.nrpedido="_s + pv.pedido + u" AND o.TipoOperacao='P'"_s;
    return u"SELECT c.cadastrado, c.CNPJ_CPF, "_s +
           (isPaymentValid(pv)
                ? u"(SELECT avista FROM Finalizadoras WHERE Descricao='"_s + pv.formaPagto + u"' LIMIT 1)"_s
                : u"NULL"_s) +
           u" AS avista, o.id, o.codigocli, o.codigo, o.quantidade, o.situacaoorc, o.dataabertura, "
           u"o.totalped, "
           "o.Vendedor, e.grupo, e.pedida, e.estoque, e.codfabr, e.descricao, e.contado, f.codigoprod AS "
           "ficha, f.codigo AS peca, f.quantidade AS quantidadepeca, (SELECT codfabr FROM produtos WHERE "
           "codfabr="_s +
           moved + u" LIMIT 1) AS baixado, (SELECT quantidade FROM produtos WHERE codfabr="_s + moved +
           u" LIMIT 1) AS loja FROM (SELECT 1 AS um) AS u LEFT JOIN (SELECT 1 AS cadastrado, CNPJ_CPF FROM "
           "clientes WHERE codigo='"_s +
           pv.codigoCli + u"' LIMIT 1) AS c ON 1=1 LEFT JOIN orcamento AS o ON "_s + lines +
           u" LEFT JOIN (SELECT o.codigo AS grupo, SUM(o.quantidade) AS pedida, "
           "IFNULL(p.quantidade+p.quantidade2,0) AS estoque, p.codfabr, p.descricao, p.quantidade IS NOT "
           "NULL AND p.quantidade2 IS NOT NULL AS contado FROM orcamento AS o LEFT JOIN produtos AS p ON "
           "o.codigo=p.codfabr WHERE "_s +
           lines +
           u" GROUP BY o.codigo) AS e ON e.grupo<=>o.codigo LEFT JOIN FichaTecnica AS f ON "
           "f.codigoprod=TRIM(o.codigo) ORDER BY o.id"_s;
}

PvFacts::Line lineOf(const odbc::ResultSet& row) {
    PvFacts::Line line;
    line.codigoCli = row.field(esquema::orcamento::codigoCli);
    line.codigo = row.field(esquema::orcamento::codigo);
    line.quantidade = row.field(esquema::orcamento::quantidade);
    line.situacao = row.field(esquema::orcamento::situacao);
    line.dataAbertura = row.field(esquema::orcamento::dataAbertura);
    line.totalPed = row.field(esquema::orcamento::totalPed);
    line.vendedor = row.field(esquema::orcamento::vendedor);
    line.group = row.field(u"grupo");
    line.needed = row.field(u"pedida");
    line.available = row.field(u"estoque");
    line.codFabr = row.field(esquema::produtos::codFabr).text();
    line.descricao = row.field(esquema::produtos::descricao).text();
    line.isCounted = row.field(u"contado").integer() != 0;
    return line;
}

} // namespace

PvFacts PvFacts::read(const ListedPv& pv) {
    odbc::ResultSet rows = NovoRS(question(pv));
    PvFacts facts;
    if (!rows.field(u"cadastrado").isNull())
        facts.document = rows.field(esquema::clientes::cnpjCpf).text();
    facts.avista = rows.field(esquema::finalizadoras::avista).text() == esquema::sim;
    QString last;
    for (; !rows.atEnd(); rows.moveNext()) {
        const odbc::Field id = rows.field(esquema::orcamento::id);
        if (id.isNull())
            break;
        if (id.text() != last)
            facts.lines.append(lineOf(rows));
        last = id.text();
        const StockRow stock{rows.field(u"baixado").text(), rows.field(u"loja")};
        if (rows.field(u"ficha").isNull())
            facts.lines.last().stock = stock;
        else
            facts.lines.last().sheet.append({rows.field(u"peca"), rows.field(u"quantidadepeca"), stock});
    }
    return facts;
}

} // namespace tarvessa
