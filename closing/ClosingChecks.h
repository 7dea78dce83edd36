#pragma once

#include "closing/ListedPv.h"

namespace tarvessa {

/// The digits of the customer's tax number (`clientes`.`CNPJ_CPF`); nothing when there is no such customer.
/// Goes through rs. Raises RuntimeError.
std::optional<QString> documentDigits(const QString& codigoCli);

/// True for the digits of a private person's document, or of none.
bool isPrivatePerson(const QString& documentDigits);

/// True when payment method and term fit together: a method that is not cash-like needs a term of at least a
/// day, a cash-like one takes any that is not negative. A method that is not in the list is refused, and so
/// is one whose name would break the statements of the closing.
bool isPaymentValid(const ListedPv& pv);

/// True when every product of the pre-sale is in stock, shop and second stock together. Goes through rs.
/// Raises RuntimeError.
bool isStockSufficient(const QString& pedido);

} // namespace tarvessa
