#pragma once

#include "closing/ListedPv.h"
#include "odbc/Field.h"

#include <QList>

namespace tarvessa {

/// Everything that the closing of a pre-sale would ask about it, read by one question that changes nothing.
struct PvFacts {
    /// A row of `produtos` whose stock a movement changes.
    struct StockRow {
        QString codFabr; ///< empty when no product has the movement's code
        odbc::Field shop;
    };

    struct Component {
        odbc::Field codigo;
        odbc::Field quantidade;
        StockRow stock;
    };

    struct Line {
        odbc::Field codigoCli;
        odbc::Field codigo;
        odbc::Field quantidade;
        odbc::Field situacao;
        odbc::Field dataAbertura;
        odbc::Field totalPed;
        odbc::Field vendedor;

        // The product as the stock test sees it: all lines of the pre-sale that have it, taken together.
        odbc::Field group;     ///< the code that stands for those lines
        odbc::Field needed;    ///< their quantity
        odbc::Field available; ///< shop and second stock together
        QString codFabr;       ///< empty when there is no such product
        QString descricao;
        bool isCounted = false; ///< neither of its two stocks is NULL

        StockRow stock; ///< where the line has no technical sheet
        QList<Component> sheet;
    };

    /// `clientes`.`CNPJ_CPF`; nothing when there is no such customer.
    std::optional<QString> document;
    /// `Finalizadoras` has the payment method as a cash-like one.
    bool avista = false;
    QList<Line> lines; ///< in the order in which they were entered

    /// Reads `clientes`, `Finalizadoras`, `orcamento`, `produtos` and `FichaTecnica`. The customer's code and
    /// a valid payment method must be fit for a quoted literal. Raises RuntimeError.
    static PvFacts read(const ListedPv& pv);
};

} // namespace tarvessa
