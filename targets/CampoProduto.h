#pragma once

#include <QObject>
#include <QString>

class QWidget;

namespace tarvessa {

class TextBox;

/// A box in which the operator enters a product. Leaving it searches for what was typed; the box then shows
/// the product's description and its property "tag" holds the product's code, empty when there is no product.
class CampoProduto : public QObject {
    Q_OBJECT

  public:
    /// Serves `caixa`, a box of the form `form`; `inexistente` is told when the search gives no product.
    CampoProduto(TextBox* caixa, QWidget* form, const QString& inexistente);

    /// The product's code (`produtos`.`codfabr`); empty without a valid product.
    QString codigo() const;

    /// Empties tag and text.
    void limpa();

    /// Runs the search that leaving the box asked for and that has not run yet. False when it gave no product
    /// and the operator has been told. Reads `produtos`; raises RuntimeError.
    bool conclui();

  private:
    bool procura();

    TextBox* m_caixa;
    QWidget* m_form;
    QString m_inexistente;
    bool m_pendente = false;
};

} // namespace tarvessa
