#include "closing/ConferenciaTexts.h"

#include "base/Datas.h"
#include "base/Numeros.h"

using namespace Qt::StringLiterals;

namespace tarvessa::conferencia {

namespace {

using Outcome = RehearsedPv::Outcome;

QString reasonName(ClosingReason reason) {
    switch (reason) {
    case ClosingReason::CustomerCode:
        return u"código do cliente"_s;
    case ClosingReason::PrivatePerson:
        return u"pessoa física"_s;
    case ClosingReason::Interrupted:
        return u"fechamento interrompido"_s;
    case ClosingReason::NoCustomer:
        return u"cliente não cadastrado"_s;
    case ClosingReason::TotalBeyondRange:
        return u"total acima do limite"_s;
    case ClosingReason::Payment:
        return u"forma de pagamento"_s;
    case ClosingReason::Stock:
        return u"estoque"_s;
    case ClosingReason::Term:
        return u"prazo"_s;
    case ClosingReason::ProductCode:
        return u"código de produto"_s;
    case ClosingReason::Account:
        return u"conta contábil"_s;
    case ClosingReason::Settled:
        return u"já encerrada ou cancelada"_s;
    case ClosingReason::PartlySettled:
        return u"itens já encerrados"_s;
    case ClosingReason::TotalChanged:
        return u"total mudou"_s;
    case ClosingReason::CustomerChanged:
        break;
    }
    return u"cliente mudou"_s;
}

QString termText(const ListedPv& pv) {
    return pv.diasVenc == u"1" ? u"1 dia"_s : pv.diasVenc + u" dias"_s;
}

QString paymentText(const ListedPv& pv) {
    const QString method = pv.formaPagto.isEmpty() ? u"(vazia)"_s : pv.formaPagto;
    if (!pv.avista)
        return u"forma de pagamento: %1 não está na lista de finalizadoras"_s.arg(method);
    return u"forma de pagamento: %1 com %2"_s.arg(method, termText(pv));
}

QString shortageText(const RehearsedShortage& lack) {
    const QString product = lack.descricao.isEmpty() ? lack.shortage.codigo
                                                     : u"%1 %2"_s.arg(lack.shortage.codigo, lack.descricao);
    return u"%1: precisa de %2, há %3%4"_s.arg(product, FormataQuantidade(lack.shortage.needed),
                                               FormataQuantidade(lack.shortage.available),
                                               lack.takenBefore ? u" depois das PVs acima"_s : QString());
}

QString stockText(const RehearsedPv& rehearsed) {
    QStringList lacks;
    for (const RehearsedShortage& lack : rehearsed.shortages)
        lacks.append(shortageText(lack));
    return u"estoque: "_s + lacks.join(u"; "_s);
}

QString reasonText(ClosingReason reason, const ListedPv& pv, const RehearsedPv& rehearsed) {
    switch (reason) {
    case ClosingReason::CustomerCode:
        return u"o código do cliente (%1) tem apóstrofo ou barra invertida"_s.arg(pv.codigoCli);
    case ClosingReason::Interrupted:
        return u"fechamento interrompido: confira em F7, no painel"_s;
    case ClosingReason::NoCustomer:
        return u"o cliente %1 não está cadastrado"_s.arg(pv.codigoCli);
    case ClosingReason::TotalBeyondRange:
        return u"a soma dos itens passa do maior valor possível; confira os itens"_s;
    case ClosingReason::Payment:
        return paymentText(pv);
    case ClosingReason::Stock:
        return stockText(rehearsed);
    case ClosingReason::Term:
        return u"prazo: o vencimento em %1 passa do ano 9999"_s.arg(termText(pv));
    case ClosingReason::ProductCode:
        return u"um código de produto ou de componente tem apóstrofo ou barra invertida"_s;
    case ClosingReason::Account:
        return u"uma conta contábil da empresa tem apóstrofo ou barra invertida"_s;
    case ClosingReason::Settled:
        return u"o pedido já foi encerrado ou cancelado"_s;
    case ClosingReason::PartlySettled:
        return u"o pedido tem itens já encerrados ou cancelados"_s;
    case ClosingReason::TotalChanged:
        return u"o total mudou: agora são R$ %1; carregue a lista novamente"_s.arg(
            FormataDinheiro(rehearsed.total));
    case ClosingReason::CustomerChanged:
        return u"o pedido agora é de outro cliente; carregue a lista novamente"_s;
    case ClosingReason::PrivatePerson:
        break;
    }
    return reasonName(reason);
}

QString documentText(const RehearsedPv& rehearsed) {
    if (rehearsed.document.trimmed().isEmpty())
        return u"cadastro sem documento"_s;
    if (rehearsed.hasLetters())
        return u"documento %1: TEM LETRAS, e só os algarismos contam. Se é uma empresa, não encerre com esta "
               u"PV na "
               "lista"_s.arg(rehearsed.document);
    return u"documento %1"_s.arg(rehearsed.document);
}

QString receivableText(const RehearsedPv& rehearsed) {
    const ReceivableTerms& terms = rehearsed.receivable;
    return u"%1, vencimento %2, conta %3"_s.arg(terms.settled ? u"liquidado"_s : u"em aberto"_s,
                                                TextoTela(terms.vencto), terms.conta);
}

QList<Group> allGroups() {
    QList<Group> all = {{Outcome::Close}, {Outcome::Cancel}, {Outcome::Cancel, {}, true}, {Outcome::Refuse}};
    for (const ClosingReason reason :
         {ClosingReason::CustomerCode, ClosingReason::Interrupted, ClosingReason::NoCustomer,
          ClosingReason::TotalBeyondRange, ClosingReason::Payment, ClosingReason::Stock, ClosingReason::Term,
          ClosingReason::ProductCode, ClosingReason::Account, ClosingReason::Settled,
          ClosingReason::PartlySettled, ClosingReason::TotalChanged, ClosingReason::CustomerChanged})
        all.append({Outcome::Refuse, reason});
    all.append({{Outcome::LeaveAlone}, {Outcome::Stop}, {Outcome::NotReached}});
    return all;
}

} // namespace

QString outcomeText(const RehearsedPv& rehearsed) {
    switch (rehearsed.outcome) {
    case Outcome::Close:
        return u"encerrada"_s;
    case Outcome::Cancel:
        return rehearsed.hasLetters() ? u"CANCELADA: LETRAS"_s : u"CANCELADA"_s;
    case Outcome::Refuse:
        return u"recusada"_s;
    case Outcome::LeaveAlone:
        return u"não selecionada"_s;
    case Outcome::Stop:
        return u"ERRO"_s;
    case Outcome::NotReached:
        break;
    }
    return u"não alcançada"_s;
}

QString detailText(const ListedPv& pv, const RehearsedPv& rehearsed) {
    switch (rehearsed.outcome) {
    case Outcome::Close:
        return receivableText(rehearsed);
    case Outcome::Cancel:
        return u"pessoa física, "_s + documentText(rehearsed);
    case Outcome::LeaveAlone:
        return u"fica como está"_s;
    case Outcome::Stop:
        return u"o encerramento pararia aqui: "_s + rehearsed.error;
    case Outcome::NotReached:
        return u"vem depois do erro"_s;
    case Outcome::Refuse:
        break;
    }
    QStringList texts;
    for (const ClosingReason reason : rehearsed.reasons)
        texts.append(reasonText(reason, pv, rehearsed));
    return texts.join(u"; "_s);
}

bool Group::contains(const RehearsedPv& rehearsed) const {
    return rehearsed.outcome == outcome && (!reason || rehearsed.reasons.contains(*reason)) &&
           (!letters || rehearsed.hasLetters());
}

const QList<Group>& groups() {
    static const QList<Group> all = allGroups();
    return all;
}

QString groupText(const Group& group) {
    if (group.reason)
        return u"Recusadas: "_s + reasonName(*group.reason);
    switch (group.outcome) {
    case Outcome::Close:
        return u"Encerradas"_s;
    case Outcome::Cancel:
        return group.letters ? u"CANCELADAS: documento com letras"_s : u"CANCELADAS (pessoa física)"_s;
    case Outcome::Refuse:
        return u"Recusadas"_s;
    case Outcome::LeaveAlone:
        return u"Não selecionadas"_s;
    case Outcome::Stop:
        return u"Erro"_s;
    case Outcome::NotReached:
        break;
    }
    return u"Não alcançadas"_s;
}

} // namespace tarvessa::conferencia
