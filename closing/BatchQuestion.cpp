#include "closing/BatchQuestion.h"

#include "base/Datas.h"
#include "base/Text.h"
#include "closing/PvClosing.h"
#include "core/AcessoDados.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

const QString stockKind = u"ESTOQUE"_s;
const QString sheetKind = u"FICHA"_s;
const QString partKind = u"PARTE"_s;
const QString customerKind = u"CLIENTE"_s;

} // namespace

QString keyOfCode(const QString& code) {
    return trimBlanks(code).toCaseFolded();
}

bool BatchAnswer::isOf(qint32 number, const QString& codigoCli) const {
    return !customers.contains(number) || customers.contains(number, keyOfCode(codigoCli));
}

bool BatchAnswer::isUnmovable(const QString& codigo) const {
    return unmovable.contains(keyOfCode(codigo));
}

// The two tables may have different collations, which a union refuses to mix; 39 and 92 are apostrophe and
// backslash. All states are named so that the index on them serves: without, every pre-sale there ever was is
// read.
BatchAnswer askBeforeBatch(QDate since) {
    odbc::ResultSet rows = NovoRS(
        u"Select 'ESTOQUE' As tipo, Convert(tela Using utf8mb4) As texto From logestoque Where data>='"_s +
        TextoSQL(since) + u"' And tela Like '"_s + stockLogStart +
        u"%' Group By tela Union All Select 'FICHA', Convert(codigoprod Using utf8mb4) From FichaTecnica "
        "Where Instr(codigo, Char(39))>0 Or Instr(codigo, Char(92))>0 Union All Select "
        "If(Max(situacaoorc In ('A','C')), 'PARTE', 'FIM'), nrpedido From orcamento Where "
        "TipoOperacao='P' And situacaoorc In ('A','B','C','X') And dataabertura>='"_s +
        TextoSQL(since) +
        u"' Group By nrpedido Having Max(situacaoorc In ('B','X')) Union All Select 'PARTE', nrpedido From "
        "orcamento Where TipoOperacao='P' And situacaoorc In ('B','X') And dataabertura<'"_s +
        TextoSQL(since) +
        u"' And nrpedido In (Select nrpedido From orcamento Where TipoOperacao='P' And situacaoorc In "
        "('A','C') And dataabertura>='"_s +
        TextoSQL(since) +
        u"') Group By nrpedido Union All Select 'CLIENTE', "
        "Concat(nrpedido, ' ', Convert(codigocli Using utf8mb4)) From orcamento Where TipoOperacao='P' And "
        "situacaoorc In ('A','C') And dataabertura>='"_s +
        TextoSQL(since) + u"' Group By nrpedido, codigocli"_s);
    BatchAnswer answer;
    for (; !rows.atEnd(); rows.moveNext()) {
        const QString kind = rows.field(0).text();
        const QString text = rows.field(1).text();
        if (kind == stockKind)
            answer.begun.insert(text.sliced(stockLogStart.size()).toInt());
        else if (kind == sheetKind)
            answer.unmovable.insert(keyOfCode(text));
        else if (kind == customerKind)
            answer.customers.insert(text.section(u' ', 0, 0).toInt(), keyOfCode(text.section(u' ', 1)));
        else
            answer.settled.insert(text.toInt(), kind == partKind);
    }
    return answer;
}

} // namespace tarvessa
