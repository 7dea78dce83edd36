#include "closing/ClosingChecks.h"

#include "base/Clock.h"
#include "base/Numeros.h"
#include "base/Text.h"
#include "closing/BatchQuestion.h"
#include "core/AcessoDados.h"
#include "core/Esquema.h"
#include "core/Rotinas.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

// A CNPJ has 14 digits, a CPF 11.
constexpr qsizetype fewestCompanyDigits = 12;

StockCheck checkProducts(odbc::ResultSet& products, const BatchAnswer& answer) {
    const int codigo = products.column(esquema::orcamento::codigo);
    const int quantity = products.column(esquema::orcamento::quantidade);
    const int stock = products.column(u"estoque");
    StockCheck result;
    for (; !products.atEnd(); products.moveNext())
        result.add(products.field(codigo).text(), products.field(quantity).decimal(),
                   products.field(stock).decimal(), answer);
    return result;
}

// Compared as the database does, without regard to letter case and blanks at the end.
bool isOpen(const odbc::Field& situacao) {
    const QString state = trimBlanks(situacao.text());
    return state.compare(u"A"_s, Qt::CaseInsensitive) == 0 || state.compare(u"C"_s, Qt::CaseInsensitive) == 0;
}

} // namespace

bool isQuotable(const QString& code) {
    return !code.contains(u'\'') && !code.contains(u'\\');
}

std::optional<QString> customerDocument(const QString& codigoCli) {
    TemRegistro = AbreRS(u"Select CNPJ_CPF From Clientes Where Codigo='"_s + codigoCli + u"'"_s);
    std::optional<QString> document;
    if (!rs.atEnd())
        document = rs.field(esquema::clientes::cnpjCpf).text();
    rs.close();
    return document;
}

bool isPrivatePerson(const QString& document) {
    return SoNumeros(document).size() < fewestCompanyDigits;
}

bool isPaymentValid(const ListedPv& pv) {
    if (!pv.avista || LimpaTexto(pv.formaPagto) != pv.formaPagto)
        return false;
    const Dinheiro days = ValorNumerico(pv.diasVenc);
    return *pv.avista ? !days.negativo() : days > Dinheiro();
}

bool isPossibleDueDate(QDate date) {
    constexpr int lastYear = 9999;
    return date.isValid() && date.year() <= lastYear;
}

std::optional<QDate> dueDate(const QString& diasVenc) {
    constexpr qint64 longestTerm = 10'000'000;
    const qint64 days = ValorNumerico(diasVenc).inteiro();
    if (days > longestTerm || days < -longestTerm)
        return {};
    const QDate date = clock::today().addDays(days);
    return isPossibleDueDate(date) ? std::optional(date) : std::nullopt;
}

void StockCheck::add(const QString& codigo, Dinheiro needed, Dinheiro available, const BatchAnswer& answer) {
    if (needed > available)
        shortages.append({codigo, needed, available});
    if (!codigo.startsWith(esquema::notaDoPedido) && (!isQuotable(codigo) || answer.isUnmovable(codigo)))
        movable = false;
}

StockCheck checkStock(const QString& pedido, const BatchAnswer& answer) {
    TemRegistro = AbreRS(
        u"SELECT o.codigo, SUM(o.quantidade) as quantidade, ifnull(p.quantidade+p.quantidade2,0) AS estoque  "
        "FROM orcamento AS o left join produtos AS p ON o.codigo=p.codfabr WHERE Nrpedido="_s +
        pedido + u" AND tipoOperacao='P' GROUP BY codigo"_s);
    const StockCheck result = checkProducts(rs, answer);
    rs.close();
    return result;
}

void LinesCheck::add(const odbc::Field& codigoCli, const odbc::Field& situacao,
                     const odbc::Field& dataAbertura, const odbc::Field& totalPed) {
    if (!isOpen(situacao)) {
        m_anyOther = true;
        return;
    }
    m_anyOpen = true;
    m_listedCustomer = m_listedCustomer || keyOfCode(codigoCli.text()) == keyOfCode(m_pv.codigoCli);
    if (dataAbertura.text() >= m_listedSince)
        m_total += totalPed.decimal();
}

std::optional<ClosingReason> LinesCheck::objection() const {
    if (!m_anyOpen)
        return ClosingReason::Settled;
    if (m_anyOther)
        return ClosingReason::PartlySettled;
    if (FormataDinheiro(m_total) != m_pv.total)
        return ClosingReason::TotalChanged;
    if (!m_listedCustomer)
        return ClosingReason::CustomerChanged;
    return {};
}

std::optional<ClosingReason> objectionToLines(odbc::ResultSet& lines, const ListedPv& pv,
                                              const QString& listedSince) {
    const int codigoCli = lines.column(esquema::orcamento::codigoCli);
    const int situacao = lines.column(esquema::orcamento::situacao);
    const int dataAbertura = lines.column(esquema::orcamento::dataAbertura);
    const int totalPed = lines.column(esquema::orcamento::totalPed);
    LinesCheck check(pv, listedSince);
    for (; !lines.atEnd(); lines.moveNext())
        check.add(lines.field(codigoCli), lines.field(situacao), lines.field(dataAbertura),
                  lines.field(totalPed));
    const std::optional<ClosingReason> objection = check.objection();
    if (!objection)
        lines.moveFirst();
    return objection;
}

} // namespace tarvessa
