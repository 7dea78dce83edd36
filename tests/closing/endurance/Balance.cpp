#include "closing/endurance/Balance.h"

#include "support/PrivateServer.h"

using namespace Qt::StringLiterals;

namespace tarvessa::test {

namespace {

const QString closed = u"o.TipoOperacao='P' AND o.situacaoorc='B'"_s;

/// What closed lines take from the stock, one row per movement, composed products by their components.
const QString closedMovements =
    u"SELECT o.codigo, o.quantidade FROM orcamento o WHERE "_s + closed +
    u" AND o.codigo NOT LIKE '***%' AND NOT EXISTS (SELECT 1 FROM FichaTecnica f WHERE "
    u"f.codigoprod=o.codigo) "
    "UNION ALL SELECT f.codigo, o.quantidade*f.quantidade FROM orcamento o JOIN FichaTecnica f ON "
    "f.codigoprod=o.codigo WHERE "_s +
    closed;

} // namespace

QString imbalanceOf(PrivateServer& server, int initialStock) {
    const auto rows = [&server](const QString& sql) {
        QStringList texts;
        for (const QStringList& row : server.query(sql))
            texts.append(row.join(u' '));
        return texts;
    };
    const QStringList stock = rows(
        u"SELECT p.codfabr, %1-p.quantidade AS moved, IFNULL(l.logged, 0) AS logged, IFNULL(c.sold, 0) AS "
        u"sold "
        "FROM produtos p LEFT JOIN (SELECT codproduto, -SUM(qtdLoja) AS logged FROM logestoque GROUP BY "
        "codproduto) l ON l.codproduto=p.codfabr LEFT JOIN (SELECT codigo, SUM(quantidade) AS sold FROM (%2) "
        "m "
        "GROUP BY codigo) c ON c.codigo=p.codfabr WHERE p.quantidade<>0 HAVING moved<>logged OR moved<>sold"_s
            .arg(initialStock)
            .arg(closedMovements));
    if (!stock.isEmpty())
        return u"stock, moved/logged/sold: "_s + stock.join(u"; "_s);
    const QStringList documents = rows(
        u"SELECT d.nrpedido, d.total, IFNULL(r.n, 0), r.value, IFNULL(x.n, 0), x.value FROM (SELECT "
        u"nrpedido, "
        "SUM(totalped) AS total FROM orcamento o WHERE %1 GROUP BY nrpedido) d LEFT JOIN (SELECT Nr_Pedido, "
        "COUNT(*) AS n, SUM(Valor) AS value FROM areceber GROUP BY Nr_Pedido) r ON r.Nr_Pedido=d.nrpedido "
        "LEFT "
        "JOIN (SELECT CAST(REPLACE(SUBSTRING(CodigoLanc, 5), '.', '') AS SIGNED) AS number, COUNT(*) AS n, "
        "SUM(Valor) AS value FROM caixa GROUP BY number) x ON x.number=d.nrpedido WHERE NOT (r.n<=>1 AND "
        "x.n<=>1 "
        "AND r.value<=>d.total AND x.value<=>d.total)"_s.arg(closed));
    if (!documents.isEmpty())
        return u"pre-sale, total, receivables, value, cash rows, value: "_s + documents.join(u"; "_s);
    const QStringList counts =
        rows(u"SELECT (SELECT COUNT(DISTINCT nrpedido) FROM orcamento o WHERE %1) AS closed, (SELECT "
             u"COUNT(*) FROM "
             "areceber) AS received, (SELECT COUNT(*) FROM caixa) AS cashed HAVING closed<>received OR "
             "closed<>cashed"_s.arg(closed));
    if (!counts.isEmpty())
        return u"closed, receivables, cash rows: "_s + counts[0];
    const QStringList partly =
        rows(u"SELECT nrpedido FROM orcamento WHERE TipoOperacao='P' GROUP BY nrpedido HAVING "
             "COUNT(DISTINCT situacaoorc)>1"_s);
    return partly.isEmpty() ? QString() : u"closed in part: "_s + partly.join(u", "_s);
}

} // namespace tarvessa::test
