#pragma once

#include "base/Dinheiro.h"
#include "closing/ClosingReasons.h"
#include "closing/ListedPv.h"

#include <QDate>
#include <QList>

namespace tarvessa {

struct BatchAnswer;

namespace odbc {
class Field;
class ResultSet;
} // namespace odbc

/// False for a code that cannot stand in a quoted literal: nothing is escaped in a statement.
bool isQuotable(const QString& code);

/// The customer's tax number (`clientes`.`CNPJ_CPF`) as stored; nothing when there is no such customer. Goes
/// through rs. Raises RuntimeError.
std::optional<QString> customerDocument(const QString& codigoCli);

/// True for a private person's document, or none: its digits alone decide.
bool isPrivatePerson(const QString& document);

/// True when payment method and term fit together: a method that is not cash-like needs a term of at least a
/// day, a cash-like one takes any that is not negative. A method that is not in the list is refused, and so
/// is one whose name would break the statements of the closing.
bool isPaymentValid(const ListedPv& pv);

/// True for a date that the database's calendar has.
bool isPossibleDueDate(QDate date);

/// Today plus the term; nothing when that lies beyond the calendar of the database.
std::optional<QDate> dueDate(const QString& diasVenc);

/// A product of which a pre-sale needs more than there is.
struct Shortage {
    QString codigo;
    Dinheiro needed;
    Dinheiro available;
};

/// The stock test of a pre-sale, product by product.
struct StockCheck {
    QList<Shortage> shortages;
    /// Every product, and every component of its technical sheet, has a code with which its stock can be
    /// moved.
    bool movable = true;

    /// Looks at one product: all that the pre-sale needs of it, and shop and second stock together. `answer`
    /// tells of its technical sheet.
    void add(const QString& codigo, Dinheiro needed, Dinheiro available, const BatchAnswer& answer);

    bool isSufficient() const { return shortages.isEmpty(); }
};

/// Looks at the products of the pre-sale and their stock; `answer` tells of their technical sheets. Goes
/// through rs. Raises RuntimeError.
StockCheck checkStock(const QString& pedido, const BatchAnswer& answer);

/// Compares the lines of a pre-sale with its row in the list, which may be older than what other programs and
/// stations have done since.
class LinesCheck {
  public:
    /// The list counted the open lines since `listedSince` ("YYYY-MM-DD"). `pv` outlives the check.
    LinesCheck(const ListedPv& pv, QString listedSince) : m_pv(pv), m_listedSince(std::move(listedSince)) {}

    /// Looks at one line by its columns of `orcamento`. Raises RuntimeError.
    void add(const odbc::Field& codigoCli, const odbc::Field& situacao, const odbc::Field& dataAbertura,
             const odbc::Field& totalPed);

    /// The reason not to close the pre-sale; nothing when it may be closed.
    std::optional<ClosingReason> objection() const;

    /// What the open lines add up to now.
    Dinheiro total() const { return m_total; }

  private:
    const ListedPv& m_pv;
    QString m_listedSince;
    bool m_anyOpen = false;
    bool m_anyOther = false;
    bool m_listedCustomer = false; // one of the open lines is the listed customer's
    Dinheiro m_total;
};

/// The same for a result with all columns of `orcamento`, which is on its first row afterwards. Raises
/// RuntimeError.
std::optional<ClosingReason> objectionToLines(odbc::ResultSet& lines, const ListedPv& pv,
                                              const QString& listedSince);

} // namespace tarvessa
