#pragma once

#include "closing/ListedPv.h"

#include <QDate>

namespace tarvessa {

struct BatchAnswer;

namespace odbc {
class ResultSet;
}

/// False for a code that cannot stand in a quoted literal: nothing is escaped in a statement.
bool isQuotable(const QString& code);

/// The digits of the customer's tax number (`clientes`.`CNPJ_CPF`); nothing when there is no such customer.
/// Goes through rs. Raises RuntimeError.
std::optional<QString> documentDigits(const QString& codigoCli);

/// True for the digits of a private person's document, or of none.
bool isPrivatePerson(const QString& documentDigits);

/// True when payment method and term fit together: a method that is not cash-like needs a term of at least a
/// day, a cash-like one takes any that is not negative. A method that is not in the list is refused, and so
/// is one whose name would break the statements of the closing.
bool isPaymentValid(const ListedPv& pv);

/// Today plus the term; nothing when that lies beyond the calendar of the database.
std::optional<QDate> dueDate(const QString& diasVenc);

struct StockCheck {
    /// Every product is in stock, shop and second stock together.
    bool sufficient = true;
    /// Every product, and every component of its technical sheet, has a code with which its stock can be
    /// moved.
    bool movable = true;
};

/// Looks at the products of the pre-sale and their stock; `answer` tells of their technical sheets. Goes
/// through rs. Raises RuntimeError.
StockCheck checkStock(const QString& pedido, const BatchAnswer& answer);

/// Compares the lines of a pre-sale (all columns of `orcamento`) with its row in the list, which counted the
/// open lines since `listedSince` ("YYYY-MM-DD"). Gives the reason not to close it, as the log takes it;
/// empty when it may be closed. The lines are on their first row afterwards. Raises RuntimeError.
QString objectionToLines(odbc::ResultSet& lines, const ListedPv& pv, const QString& listedSince);

} // namespace tarvessa
