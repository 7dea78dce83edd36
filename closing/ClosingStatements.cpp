#include "closing/ClosingStatements.h"

#include "base/Datas.h"
#include "base/Formata.h"
#include "base/Text.h"
#include "core/Esquema.h"

#include <QStringBuilder>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

constexpr int cashRowNameLength = 50;

enum class ReceivableForm { Card, Cheque, Open, Cash };

// The first that matches.
ReceivableForm receivableForm(const QString& formaPG, bool avista) {
    if (formaPG == esquema::cartao)
        return ReceivableForm::Card;
    if (formaPG.startsWith(esquema::cheque))
        return ReceivableForm::Cheque;
    const bool cash =
        formaPG == esquema::outros || formaPG == esquema::ticket || formaPG == esquema::dinheiro || avista;
    return cash ? ReceivableForm::Cash : ReceivableForm::Open;
}

// Characters, not UTF-16 units: half a surrogate pair would be stored as a question mark.
QString firstCharacters(const QString& text, int count) {
    qsizetype end = 0;
    for (int character = 0; character < count && end < text.size(); ++character)
        end += text[end].isHighSurrogate() ? 2 : 1;
    return text.left(end);
}

} // namespace

ReceivableTerms receivableTerms(const QString& formaPG, bool avista, QDate vencto, QDate today,
                                const QString& cashAccount, const QString& receivablesAccount) {
    const ReceivableForm form = receivableForm(formaPG, avista);
    const bool cash = form == ReceivableForm::Cash;
    ReceivableTerms terms;
    terms.card = form == ReceivableForm::Card;
    terms.settled = form != ReceivableForm::Open;
    terms.vencto = cash ? today : vencto;
    terms.conta = cash ? cashAccount : receivablesAccount;
    return terms;
}

namespace closingstatements {

QString settleLines(const ClosingData& closing) {
    return u" UPDATE orcamento SET SituacaoOrc='B', DataBaixa= '"_s % TextoSQL(closing.today) %
           u"', Horario='"_s % closing.hora % u"', status='B' WHERE NrPedido="_s %
           QString::number(closing.nrPedido) % u" AND tipoOperacao = 'P'"_s;
}

QString settleControl(const ClosingData& closing) {
    return u"Update orcamento_controle Set NrCaixa=0, Status='B', Fechamento='"_s % TextoSQL(closing.today) %
           u" "_s % closing.hora % u":00' WHERE NrPedido="_s % QString::number(closing.nrPedido) %
           u" AND tipoOperacao = 'P'"_s;
}

QString insertReceivable(const ClosingData& closing, bool avista, const QString& cashAccount,
                         const QString& receivablesAccount) {
    const ReceivableTerms terms = receivableTerms(closing.formaPG, avista, closing.vencto, closing.today,
                                                  cashAccount, receivablesAccount);
    const QString number = QString::number(closing.nrPedido);
    const QString value = closing.valor.ponto();
    const QString due = TextoSQL(terms.vencto);
    const QString settlement =
        terms.settled ? u", '"_s % due % u"', "_s % value % u", 'B', '"_s : u", '1901-01-01', 0.00, 'A', '"_s;
    return u"INSERT INTO `areceber` (`CodigoCli`, `NomeCli`, `Emissao`, `Vencto`, `Valor`, `Historico`, "
           "`Nr_Pedido`, `DataBaixa`, `ValorPago`, `SitBaixa`, `TipoPag`, "_s %
           (terms.card ? u"TipoCartao, "_s : QString()) % u"CodigoVend, CodigoMec, ContaCTB) VALUES ('"_s %
           closing.codigoCli % u"', '"_s % closing.nomeCli % u"', '"_s % TextoSQL(closing.today) % u"', '"_s %
           due % u"', "_s % value % u", 'REF.: PRÉ VENDA Nº"_s % number % u"', "_s % number % settlement %
           closing.formaPG % u"', "_s % (terms.card ? u"'C-', "_s : QString()) %
           QString::number(closing.codigoVend) % u", 0, '"_s % terms.conta % u"')"_s;
}

QString cashCode(qint32 nrPedido) {
    return u"PED:"_s + Formata(Dinheiro(nrPedido), u"#000,000");
}

QString insertCashRow(const ClosingData& closing, const QString& cashAccount) {
    const QString number = Formata(Dinheiro(closing.nrPedido), u"#000,000");
    const QString value = closing.valor.ponto();
    return u"insert into caixa Set cd_cta='"_s % cashAccount % u"', DataCx='"_s % TextoSQL(closing.today) %
           u"', Historico= 'PEDIDO Nº "_s % number % u"-"_s %
           trimBlanks(firstCharacters(closing.nomeCli, cashRowNameLength)) % u"', Valor="_s % value %
           u", Finaliza1='"_s % closing.formaPG % u"', ValorFin1="_s % value % u", CodigoLanc='"_s %
           cashCode(closing.nrPedido) % u"', NrCaixa=0, USUARIO='PAINEL PV'"_s;
}

QString storeLastPv(const ClosingData& closing) {
    return u"UPDATE Empresa SET UltimaPV="_s % QString::number(closing.nrPedido);
}

} // namespace closingstatements

} // namespace tarvessa
