#pragma once

#include <QString>

#include <array>

class QWidget;

namespace tarvessa {

/// The code of the product chosen in the last search; "" when none was.
extern QString CodigoSelecionado;

/// Column captions of the price tables 1 to 4 (index 0 is not used). Nothing in the system fills them.
inline const std::array<QString, 5> NomeTabelaPreco;

/// Finds one active product for a text typed by the operator: a message over `form` when the text cannot be
/// searched or nothing matches, the selection screen when several products do. Gives its code, "" for none.
/// The text is rewritten as searched. Reads produtos into rs, and Empresa when the selection screen opens.
/// Raises RuntimeError, also for an image button with no viewer behind it.
QString PesquisaProduto(QString& texto, QWidget* form);

} // namespace tarvessa
