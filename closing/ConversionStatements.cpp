#include "closing/ConversionStatements.h"

using namespace Qt::StringLiterals;

namespace tarvessa::conversionstatements {

QString moveLines(qint32 nrDav, qint32 nrPv) {
    return u"UPDATE orcamento SET TipoOperacao = 'P', nrPedido = '"_s + QString::number(nrPv) +
           u"',situacaoorc = 'A' WHERE nrpedido ="_s + QString::number(nrDav) + u" and TipoOperacao = 'D'"_s;
}

QString moveNotes(qint32 nrDav, qint32 nrPv) {
    return u"UPDATE observacao set nrpedido="_s + QString::number(nrPv) +
           u" , tipoOperacao = 'P' WHERE nrpedido ="_s + QString::number(nrDav) +
           u" and TipoOperacao = 'D'"_s;
}

} // namespace tarvessa::conversionstatements
