#include "closing/InterruptedClosings.h"

#include "base/Clock.h"
#include "base/Datas.h"
#include "base/Numeros.h"
#include "base/RuntimeError.h"
#include "base/Text.h"
#include "closing/ClosingChecks.h"
#include "closing/ClosingSettings.h"
#include "closing/ConversionStatements.h"
#include "closing/PvClosing.h"
#include "core/AcessoDados.h"
#include "core/Esquema.h"

#include <QHash>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarvessa::interruptedclosings {

namespace {

// Kinds of rows in the answer to the one question about interrupted closings.
const QString stockKind = u"ESTOQUE"_s;
const QString receivableKind = u"RECEBER"_s;
const QString cashKind = u"CAIXA"_s;
const QString registerKind = u"CONTROLE"_s;

qint32 numberOf(const QString& text) {
    return text.toInt();
}

qint32 numberOfCashCode(const QString& code) {
    return QString(code).remove(u"PED:"_s).remove(u'.').toInt();
}

// The first day of a list that was loaded on this day.
QDate listStart(QDate day, QDate since) {
    return day.addDays(-since.daysTo(clock::today()));
}

/// What the one question says of a document.
struct Traces {
    bool open = false;
    bool settled = false;
    bool cancelled = false;
    bool stock = false;
    bool receivable = false;
    bool cash = false;
    bool byRegister = false;

    bool isSettled() const { return settled && !open; }
    bool isCancelledAfterStock() const {
        return cancelled && stock && !open && !settled && !receivable && !cash;
    }
    bool isInterrupted() const {
        return (open && stock) || (settled && !byRegister && !(receivable && cash));
    }
};

// A document that was listed when its closing was cut may have left the list since, so documents are looked
// for over twice the period; those settled before it are none of this question's, nor those that a cash
// register settled: the panel writes no register's number. The tables may have different collations, which a
// union refuses to mix.
QHash<qint32, Traces> readTraces(QDate since) {
    const QString day = TextoSQL(since);
    const QString firstOpened = TextoSQL(listStart(since, since));
    odbc::ResultSet rows = NovoRS(
        u"Select 'ESTOQUE' As tipo, Convert(tela Using utf8mb4) As texto From logestoque Where data>='"_s +
        day + u"' And tela Like '"_s + stockLogStart +
        u"%' Group By tela Union All Select Convert(situacaoorc Using utf8mb4), nrpedido From orcamento "
        "Where TipoOperacao='P' And dataabertura>='"_s +
        firstOpened + u"' And (situacaoorc<>'B' Or databaixa>='"_s + day +
        u"') Group By nrpedido, situacaoorc Union All Select 'RECEBER', Nr_Pedido "
        "From areceber Where Emissao>='"_s +
        day +
        u"' Group By Nr_Pedido Union All Select 'CAIXA', Convert(CodigoLanc Using utf8mb4) From "
        "caixa Where DataCx>='"_s +
        day +
        u"' And CodigoLanc Like 'PED:%' Group By CodigoLanc Union All Select 'CONTROLE', NrPedido From "
        "orcamento_controle Where tipoOperacao='P' And Status='B' And NrCaixa<>0 And Fechamento>='"_s +
        day + u"'"_s);
    QHash<qint32, Traces> traces;
    for (; !rows.atEnd(); rows.moveNext()) {
        const QString kind = rows.field(0).text();
        const QString text = rows.field(1).text();
        if (kind == stockKind)
            traces[numberOf(text.sliced(stockLogStart.size()))].stock = true;
        else if (kind == receivableKind)
            traces[numberOf(text)].receivable = true;
        else if (kind == cashKind)
            traces[numberOfCashCode(text)].cash = true;
        else if (kind == registerKind)
            traces[numberOf(text)].byRegister = true;
        else if (kind == esquema::fechado)
            traces[numberOf(text)].settled = true;
        else
            (kind == esquema::cancelado ? traces[numberOf(text)].cancelled : traces[numberOf(text)].open) =
                true;
    }
    // A shop with a long list has as many rows here, and their memory goes back only so.
    rows.close();
    return traces;
}

// The first reason found is the one that is told.
void blame(InterruptedClosing& closing, const QString& reason) {
    if (closing.unclear.isEmpty())
        closing.unclear = reason;
}

/// The totals of a document's lines by the days on which they were opened, and the day of their settling.
struct Opened {
    QList<std::pair<QDate, Dinheiro>> totals;
    QDate settledOn;

    /// The first of these days and the given one.
    QDate first(QDate day) const {
        for (const auto& [opened, total] : totals)
            if (opened.isValid())
                day = qMin(day, opened);
        return day;
    }

    /// As a list from that day on has it; nothing when it does not have the document.
    std::optional<Dinheiro> listed(QDate from) const {
        std::optional<Dinheiro> sum;
        for (const auto& [opened, total] : totals)
            if (opened >= from)
                sum = sum.value_or(Dinheiro()) + total;
        return sum;
    }
};

QDate dayOf(const odbc::Field& field) {
    constexpr int length = 10;
    return QDate::fromString(field.text().left(length), Qt::ISODate);
}

/// The lines of a document: their state, their total, and the stock movements of a closing.
Opened readLines(InterruptedClosing& closing, bool movesStock) {
    Opened opened;
    odbc::ResultSet lines = NovoRS(linesOfPv(closing.sale.nrPedido));
    if (lines.atEnd()) {
        closing.unclear = u"o pedido não existe mais"_s;
        return opened;
    }
    closing.codigoCli = lines.field(esquema::orcamento::codigoCli).text();
    closing.codigoVend = sellerCode(lines.field(esquema::orcamento::vendedor));
    bool open = false;
    for (; !lines.atEnd(); lines.moveNext()) {
        const QString situation = lines.field(esquema::orcamento::situacao).text();
        (situation == esquema::fechado ? closing.settled : open) = true;
        if (situation == esquema::cancelado)
            closing.unclear = u"o pedido foi cancelado"_s;
        const Dinheiro total = lines.field(esquema::orcamento::totalPed).decimal();
        closing.sale.valor += total;
        opened.totals.append({dayOf(lines.field(esquema::orcamento::dataAbertura)), total});
        if (situation == esquema::fechado)
            opened.settledOn = dayOf(lines.field(esquema::orcamento::dataBaixa));
        const QString code = lines.field(esquema::orcamento::codigo).text();
        if (movesStock && !code.startsWith(esquema::notaDoPedido))
            closing.movements +=
                MovimentosDeEstoque(trimBlanks(code), lines.field(esquema::orcamento::quantidade).decimal());
    }
    if (open && closing.settled)
        closing.unclear = u"parte dos itens está em outra situação"_s;
    closing.settled = closing.settled && !open;
    return opened;
}

using Moved = std::pair<QString, Dinheiro>;

// As the log's column keeps it.
Moved asLogged(const QString& code, Dinheiro quantity) {
    constexpr int places = 3;
    return {trimBlanks(code), Proporcao(quantity, Dinheiro(1), Dinheiro(1), places)};
}

// Whether these are the closing's first movements, in whatever order the log's rows come.
bool areFirst(const QList<Moved>& logged, const QList<MovimentoDeEstoque>& movements) {
    if (logged.size() > movements.size())
        return false;
    QList<Moved> first;
    for (qsizetype i = 0; i < logged.size(); ++i)
        first.append(asLogged(movements[i].codigo, -movements[i].quantidade));
    return std::is_permutation(logged.cbegin(), logged.cend(), first.cbegin());
}

/// How far the stock came: each logged movement must be one of the closing's. A technical sheet may have got
/// another order since; then only the log's own order can tell which was the last. Gives the day of the first
/// movement, if there is one.
QDate readStockLog(InterruptedClosing& closing, QDate from) {
    odbc::ResultSet rows =
        NovoRS(u"Select codproduto, qtdLoja, data From logestoque Where tela='"_s +
               stockLogText(closing.sale.nrPedido) + u"' And data>='"_s + TextoSQL(from) + u"'"_s);
    QList<Moved> log;
    QDate first;
    for (; !rows.atEnd(); rows.moveNext()) {
        log.append(asLogged(rows.field(0).text(), rows.field(1).decimal()));
        const QDate day = dayOf(rows.field(2));
        first = first.isValid() ? qMin(first, day) : day;
    }
    closing.logged = static_cast<int>(log.size());
    if (areFirst(log, closing.movements))
        return first;
    QList<MovimentoDeEstoque> done;
    QList<MovimentoDeEstoque> left = closing.movements;
    bool known = true;
    for (const Moved& logged : log) {
        const auto movement =
            std::find_if(left.begin(), left.end(), [&logged](const MovimentoDeEstoque& each) {
                return asLogged(each.codigo, -each.quantidade) == logged;
            });
        known = known && movement != left.end();
        if (movement != left.end()) {
            done.append(*movement);
            left.erase(movement);
        }
    }
    if (!closing.settled && !known)
        blame(closing, u"o log de estoque não corresponde aos itens do pedido"_s);
    closing.movements = done + left;
    return first;
}

/// A conclusion is refused when this has changed since a person was asked: the update that was cut may still
/// have been executed.
void readStock(InterruptedClosing& closing) {
    if (!closing.asksForStock())
        return;
    odbc::ResultSet product = NovoRS(u"Select descricao, quantidade From produtos Where codfabr='"_s +
                                     closing.movements[closing.logged - 1].codigo + u"'"_s);
    if (!product.atEnd())
        closing.product = {product.field(u"descricao").text(), product.field(u"quantidade").decimal()};
}

void readControl(InterruptedClosing& closing) {
    odbc::ResultSet rows = NovoRS(u"Select Status, NrCaixa From orcamento_controle Where NrPedido="_s +
                                  QString::number(closing.sale.nrPedido) + u" And tipoOperacao='P'"_s);
    closing.control = rows.atEnd() || rows.field(0).text() == esquema::fechado;
    if (!rows.atEnd() && closing.control && rows.field(1).integer() != 0)
        blame(closing, u"o pedido foi encerrado pelo caixa %1"_s.arg(rows.field(1).text()));
}

/// The receivable, whose terms are those of the closing, and the cash row.
void readMoney(InterruptedClosing& closing, QDate since) {
    const QString day = TextoSQL(since);
    odbc::ResultSet receivable =
        NovoRS(u"Select NomeCli, Vencto, Valor, TipoPag From areceber Where Nr_Pedido="_s +
               QString::number(closing.sale.nrPedido) + u" And Emissao>='"_s + day + u"'"_s);
    closing.receivable = !receivable.atEnd();
    // Also above a note of this station, which may be of an earlier closing that was cut before it wrote.
    if (closing.receivable) {
        closing.termsFrom = InterruptedClosing::TermsFrom::Receivable;
        closing.sale.nomeCli = receivable.field(u"NomeCli").text();
        closing.sale.vencto = QDate::fromString(receivable.field(u"Vencto").text(), Qt::ISODate);
        closing.sale.valor = receivable.field(u"Valor").decimal();
        closing.sale.formaPG = receivable.field(u"TipoPag").text();
    }
    closing.cash =
        !NovoRS(u"Select CodigoLanc From caixa Where CodigoLanc='"_s +
                closingstatements::cashCode(closing.sale.nrPedido) + u"' And DataCx>='"_s + day + u"'"_s)
             .atEnd();
}

// A greater number is that of a later closing.
bool isLastPv(qint32 number) {
    const odbc::ResultSet company = NovoRS(u"Select UltimaPV From Empresa"_s);
    return !company.atEnd() && company.field(u"UltimaPV").integer() >= number;
}

void readPresentTerms(InterruptedClosing& closing) {
    odbc::ResultSet customer =
        NovoRS(u"Select nome, formapg, prazo From clientes Where codigo='"_s + closing.codigoCli + u"'"_s);
    if (customer.atEnd()) {
        blame(closing, u"o cliente não está cadastrado"_s);
        return;
    }
    closing.sale.nomeCli = customer.field(esquema::clientes::nome).text();
    const QString method = customer.field(esquema::clientes::formaPg).text();
    closing.sale.formaPG = method == esquema::nenhumaForma ? esquema::dinheiro.toString() : method;
    closing.sale.vencto = clock::today().addDays(customer.field(esquema::clientes::prazo).integer());
}

// What the statements of the conclusion cannot hold.
void checkTexts(InterruptedClosing& closing) {
    const bool quotable =
        isQuotable(closing.codigoCli) &&
        std::all_of(closing.movements.cbegin(), closing.movements.cend(),
                    [](const MovimentoDeEstoque& movement) { return isQuotable(movement.codigo); });
    if (!quotable)
        blame(closing, u"um código tem apóstrofo ou barra invertida"_s);
}

// A receivable or a note of another amount than the lines' may be no business of the closing's.
void checkTotal(InterruptedClosing& closing, const std::optional<Sale>& note, Dinheiro whole,
                std::optional<Dinheiro> listed) {
    using TermsFrom = InterruptedClosing::TermsFrom;
    const Dinheiro value = closing.sale.valor;
    if (closing.termsFrom == TermsFrom::Customer) {
        closing.sale.valor = listed.value_or(whole);
        if (!listed)
            blame(closing, u"os itens são de antes do período listado"_s);
        return;
    }
    if (value == whole || value == listed)
        return;
    if (closing.termsFrom == TermsFrom::Note)
        blame(closing, u"o total dos itens não é mais o do fechamento"_s);
    else if (!(note && note->valor == value))
        blame(closing, u"a conta a receber não é do total do pedido"_s);
}

void read(InterruptedClosing& closing, QDate since, const ClosingSettings& settings) {
    const Opened opened = readLines(closing, !settings.pafEcf);
    const Dinheiro whole = closing.sale.valor;
    checkTexts(closing);
    const std::optional<Sale> note = closingjournal::find(closing.sale.nrPedido);
    if (note) {
        closing.sale = *note;
        closing.termsFrom = InterruptedClosing::TermsFrom::Note;
        closing.lastNumber = isLastPv(closing.sale.nrPedido);
    }
    readMoney(closing, since);
    // A document may be dated ahead, and a closing that was cut twice has movements of several days.
    const QDate moved = readStockLog(closing, listStart(opened.first(since), since));
    const QDate cut = closing.settled ? opened.settledOn : moved;
    checkTotal(closing, note, whole, opened.listed(listStart(cut.isValid() ? cut : clock::today(), since)));
    // A closing of this program would have taken the goods out first.
    if (closing.settled && closing.logged == 0 && !closing.movements.isEmpty())
        blame(closing, u"o log de estoque não tem as baixas deste pedido"_s);
    readStock(closing);
    readControl(closing);
    if (closing.termsFrom == InterruptedClosing::TermsFrom::Customer && closing.unclear.isEmpty())
        readPresentTerms(closing);
    if (closing.sale.formaPG.isEmpty() || !isQuotable(closing.sale.formaPG))
        blame(closing, u"a forma de pagamento não pode ser gravada"_s);
    if (!isPossibleDueDate(closing.sale.vencto))
        blame(closing, u"o vencimento não é uma data possível"_s);
}

QString joined(const QStringList& parts) {
    return parts.isEmpty() ? u"nada"_s : parts.join(u", "_s);
}

QString movementsText(qsizetype count) {
    return count == 1 ? u"1 baixa de estoque"_s : u"%1 baixas de estoque"_s.arg(count);
}

} // namespace

QList<qint32> find(QDate since) {
    const QHash<qint32, Traces> traces = readTraces(since);
    QList<qint32> numbers;
    for (auto it = traces.cbegin(); it != traces.cend(); ++it)
        if (it->isInterrupted())
            numbers.append(it.key());
    for (const qint32 noted : closingjournal::all()) {
        const Traces seen = traces.value(noted);
        // One that is open may be under way at this moment, in another panel of this folder.
        if (numbers.contains(noted) || !(seen.isSettled() || seen.isCancelledAfterStock()))
            continue;
        if (seen.isSettled() && isLastPv(noted))
            closingjournal::forget(noted);
        else
            numbers.append(noted);
    }
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

InterruptedClosing examine(qint32 number, QDate since, const ClosingSettings& settings) {
    InterruptedClosing closing;
    closing.sale.nrPedido = number;
    try {
        read(closing, since, settings);
    } catch (const RuntimeError& error) {
        // One odd document must not hide the others.
        if (error.isConnectionLost())
            throw;
        closing.unclear = error.text();
    }
    return closing;
}

void conclude(const InterruptedClosing& closing, bool stockDone, const ClosingSettings& settings,
              const std::function<void(const QString& sql)>& about) {
    if (!closing.unclear.isEmpty())
        throw RuntimeError(
            ErrorNumber::TypeMismatch,
            u"O fechamento da PV %1 não pode ser concluído pelo programa: %2."_s.arg(closing.sale.nrPedido)
                .arg(closing.unclear));
    const auto run = [&about](const QString& sql) {
        about(sql);
        Executa(sql);
    };
    const ClosingData data = closingData(closing.sale, closing.codigoCli, closing.codigoVend);
    if (!closing.settled) {
        if (closing.asksForStock() && !stockDone)
            run(comandoDeBaixa(closing.movements[closing.logged - 1]));
        for (qsizetype i = closing.logged; i < closing.movements.size(); ++i) {
            const MovimentoDeEstoque& movement = closing.movements[i];
            run(comandoDeLogDeEstoque(stockLogText(data.nrPedido), movement.codigo, -movement.quantidade));
            run(comandoDeBaixa(movement));
        }
        run(closingstatements::settleLines(data));
    }
    if (!closing.settled || !closing.control)
        run(closingstatements::settleControl(data));
    if (!closing.receivable)
        run(closingstatements::insertReceivable(data, isAvista(data.formaPG), settings.cashAccount(),
                                                settings.receivablesAccount()));
    if (!closing.cash)
        run(closingstatements::insertCashRow(data, settings.cashAccount()));
    run(closingstatements::storeLastPv(data));
    closingjournal::forget(data.nrPedido);
}

QString doneText(const InterruptedClosing& closing) {
    QStringList parts;
    if (closing.logged > 0)
        parts.append(movementsText(closing.logged));
    if (closing.settled)
        parts.append(u"pedido encerrado"_s);
    if (closing.receivable)
        parts.append(u"conta a receber"_s);
    if (closing.cash)
        parts.append(u"caixa"_s);
    return joined(parts);
}

QString missingText(const InterruptedClosing& closing) {
    if (!closing.unclear.isEmpty())
        return u"conferir: "_s + closing.unclear;
    QStringList parts;
    const qsizetype movements = closing.movements.size() - closing.logged;
    if (!closing.settled && movements > 0)
        parts.append(movementsText(movements));
    if (!closing.settled)
        parts.append(u"encerrar o pedido"_s);
    if (closing.settled && !closing.control)
        parts.append(u"controle do pedido"_s);
    if (!closing.receivable)
        parts.append(u"conta a receber"_s);
    if (!closing.cash)
        parts.append(u"caixa"_s);
    if (parts.isEmpty())
        parts.append(u"número da última PV"_s);
    return joined(parts);
}

QList<StrandedNotes> strandedNotes() {
    QList<StrandedNotes> found;
    for (const closingjournal::Conversion& conversion : closingjournal::conversions()) {
        const QString document = QString::number(conversion.document);
        // While they are there, the update of the lines may still be waiting in the server.
        const bool hasNotes = !NovoRS(u"Select nrpedido From observacao Where nrpedido="_s + document +
                                      u" And tipoOperacao='D'"_s)
                                   .atEnd();
        const bool stranded = hasNotes && NovoRS(u"Select nrpedido From orcamento Where nrpedido="_s +
                                                 document + u" And TipoOperacao='D'"_s)
                                              .atEnd();
        const bool converted = !NovoRS(u"Select nrpedido From orcamento Where nrpedido="_s +
                                       QString::number(conversion.number) + u" And TipoOperacao='P'"_s)
                                    .atEnd();
        if (stranded && converted)
            found.append({conversion.document, conversion.number});
        else if (!hasNotes)
            closingjournal::endConversion(conversion.document);
    }
    return found;
}

void moveNotes(const StrandedNotes& notes, const std::function<void(const QString& sql)>& about) {
    const QString sql = conversionstatements::moveNotes(notes.document, notes.number);
    about(sql);
    Executa(sql);
    closingjournal::endConversion(notes.document);
}

} // namespace tarvessa::interruptedclosings
