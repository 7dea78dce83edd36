#pragma once

#include "base/Dinheiro.h"
#include "odbc/ResultSet.h"

#include <QList>
#include <QString>

#include <functional>

class QLineEdit;

namespace tarvessa {

/// A product that leaves the stock: itself, or as a component of what was sold.
struct MovimentoDeEstoque {
    QString codigo;
    Dinheiro quantidade; ///< four places; negative for a return
    bool componente = false;

    bool operator==(const MovimentoDeEstoque&) const = default;
};

/// A row of a product's technical sheet: the component, and how much of it goes into one unit.
struct ComponenteDaFicha {
    QString codigo;
    Dinheiro quantidade;
};

/// What leaves the stock for a quantity of a product: the product, or the components of its technical sheet
/// where that has any. Raises RuntimeError (overflow).
QList<MovimentoDeEstoque> MovimentosPelaFicha(const QString& codigo, Dinheiro quantidade,
                                              const QList<ComponenteDaFicha>& ficha);

/// The same with the sheet that the product has in `FichaTecnica`. Raises RuntimeError.
QList<MovimentoDeEstoque> MovimentosDeEstoque(const QString& codigo, Dinheiro quantidade);

/// The statement that takes a movement out of `produtos`.
QString comandoDeBaixa(const MovimentoDeEstoque& movimento);

/// The statement that writes one row of `logestoque`; see GravaLogEstoque.
QString comandoDeLogDeEstoque(const QString& tela, const QString& codigo, Dinheiro quantidade);

/// Takes a quantity (four places; negative for a return) of a product out of the stock, or its components
/// when it has a technical sheet, and logs each movement under the screen text. Reads FichaTecnica, writes
/// Produtos and logestoque. `antesDeGravar` is called before each movement is written. Raises RuntimeError;
/// the status is 0 and no caller uses it.
qint16 BaixaEstoque(const QString& codigo, Dinheiro quantidade, const QString& tela,
                    const std::function<void()>& antesDeGravar = {});

/// Writes one row of logestoque on the given connection; the quantity is signed, negative for an exit. Raises
/// RuntimeError; the status is 0 and no caller uses it.
qint16 GravaLogEstoque(const QString& tela, const QString& codigo, Dinheiro quantidade,
                       odbc::Connection& conexao);

/// A text made fit for a quoted SQL literal: "'" becomes "´", "\" becomes "/"; control characters and "ƒ",
/// which has code 131 in the code page Windows-1252, are dropped.
QString LimpaTexto(const QString& texto);

/// The characters of the text that are digits 0 to 9, in order.
QString SoNumeros(const QString& texto);

/// The code at the end of a pick list's text, the number after the first "<<"; 0 without it.
qint32 CodigoDaLista(const QString& texto);

/// Selects the whole content of a text box.
void SelecionaTexto(QLineEdit* caixa);

} // namespace tarvessa
