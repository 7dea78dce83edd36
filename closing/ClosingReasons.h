#pragma once

#include <QString>

namespace tarvessa {

/// Why a pre-sale is not closed, in the order in which the closing looks.
enum class ClosingReason {
    CustomerCode, ///< the customer's code cannot stand in a statement
    PrivatePerson,
    Interrupted, ///< its closing has begun before
    NoCustomer,
    TotalBeyondRange, ///< the sum of its lines is no amount of money
    Payment,
    Stock,
    Term,        ///< the due date lies beyond the calendar
    ProductCode, ///< a product's code, or a component's, cannot stand in a statement
    Account,     ///< an account of the company cannot stand in a statement
    Settled,     ///< nothing of it is open any more
    PartlySettled,
    TotalChanged,
    CustomerChanged, ///< it is another customer's now
};

/// The reason as the closing log writes it behind the number, with its leading hyphen (" - ...").
QString logText(ClosingReason reason);

} // namespace tarvessa
