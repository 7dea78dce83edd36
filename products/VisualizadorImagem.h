#pragma once

#include <QString>

namespace tarvessa {

/// What shows the picture of a product, where the shop has such a component.
class VisualizadorImagem {
  public:
    virtual ~VisualizadorImagem() = default;

    /// Shows the product's picture; false when it has none.
    virtual bool CarregaImagemProduto(const QString& codigo, const QString& descricao) = 0;
};

} // namespace tarvessa
