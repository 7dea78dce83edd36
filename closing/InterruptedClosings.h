#pragma once

#include "closing/ClosingJournal.h"
#include "core/Rotinas.h"

#include <QList>
#include <QStringList>

#include <functional>
#include <optional>

namespace tarvessa {

struct ClosingSettings;

/// What the database shows of a closing that was cut: how far it came and with what terms it began.
struct InterruptedClosing {
    enum class TermsFrom {
        Note,       ///< this station's note of the closing
        Receivable, ///< the receivable that the closing wrote
        Customer,   ///< the customer's present terms: to be confirmed by a person
    };

    Sale sale;
    TermsFrom termsFrom = TermsFrom::Customer;
    QString codigoCli;
    qint16 codigoVend = 0;

    /// Those a closing of the document makes: first the logged ones as logged, then the others in its order.
    QList<MovimentoDeEstoque> movements;
    int logged = 0;       ///< how many of them the stock log has
    bool settled = false; ///< the order lines
    bool control = false; ///< the control row, or there is none
    bool receivable = false;
    bool cash = false;
    bool lastNumber =
        true; ///< `empresa`.`UltimaPV`; false only where this station's note shows that it is missing

    /// A row of `produtos`: `descricao` and `quantidade`.
    struct Product {
        QString name;
        Dinheiro stock;

        bool operator==(const Product&) const = default;
    };
    /// The last logged movement's product, where a person is asked about it and there is one.
    std::optional<Product> product;

    /// Why a person has to look at it: the stock log or the lines do not fit a closing that was cut. Empty
    /// when it can be concluded.
    QString unclear;

    /// The stock of the last logged movement may or may not have been changed: only a person can tell.
    bool asksForStock() const { return !settled && logged > 0 && unclear.isEmpty(); }

    bool operator==(const InterruptedClosing&) const = default;
};

/// Closings of the listed period that were cut on whatever station, as the database shows them.
namespace interruptedclosings {

/// The pre-sales opened since `since` that are open with stock movements of a closing, or settled without a
/// receivable or a cash row, or whole but for what this station's note shows: one query on `logestoque`,
/// `orcamento`, `areceber` and `caixa`. In ascending order. Also those noted here whose goods are gone and
/// that were cancelled since. Raises RuntimeError.
QList<qint32> find(QDate since);

/// Everything about one of them. What cannot be read of it makes it unclear; raises RuntimeError when the
/// connection is lost.
InterruptedClosing examine(qint32 number, QDate since, const ClosingSettings& settings);

/// Runs what the closing has not run, in its order and form. `stockDone` tells whether the stock of the last
/// logged movement was changed and is not looked at unless the closing asks for it. `about` receives each
/// statement before it runs. Raises RuntimeError, also when the closing is unclear; what was executed before
/// stays.
void conclude(const InterruptedClosing& closing, bool stockDone, const ClosingSettings& settings,
              const std::function<void(const QString& sql)>& about);

/// In Portuguese: what has been written, and what is missing.
QString doneText(const InterruptedClosing& closing);
QString missingText(const InterruptedClosing& closing);

/// Notes of a sales document that was turned into a pre-sale but for them.
struct StrandedNotes {
    qint32 document = 0;
    qint32 number = 0; ///< the pre-sale they belong to
};

/// The conversions of this station that were cut between their two updates: its note gives the number, and
/// the database shows document and notes apart. Reads `observacao` and `orcamento`. Raises RuntimeError.
QList<StrandedNotes> strandedNotes();

/// Gives the notes to their pre-sale. Raises RuntimeError.
void moveNotes(const StrandedNotes& notes, const std::function<void(const QString& sql)>& about);

} // namespace interruptedclosings

} // namespace tarvessa
