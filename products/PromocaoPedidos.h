#pragma once

#include "base/Dinheiro.h"
#include "ui/Pictures.h"

#include <QDialog>

#include <memory>

namespace Ui {
class PromocaoPedidos;
}

namespace tarvessa {

class ProductBox;

/// The screen that gives one product a new unit price in the open pre-sale lines the operator ticks. Modal;
/// reads `produtos`, `orcamento` and `clientes`, writes `orcamento`.
class PromocaoPedidos : public QDialog {
    Q_OBJECT

  public:
    /// `tick` is drawn in the ticked rows; the panel hands over the picture of its `picSucesso`.
    explicit PromocaoPedidos(QWidget* parent, const QIcon& tick = pictures::check());
    ~PromocaoPedidos() override;

    /// True when open lines may have a new price, also when the operation failed on the way.
    bool hasChangedPrices() const { return m_hasChangedPrices; }

  private:
    void setUpGrid(const QIcon& tick);

    // Product and its open lines
    void Descricao_Change() { esvaziaLista(); }
    void esvaziaLista();
    void listaPedidos(const QString& codigo);

    // Ticks
    void Grid1_Click(int row, int column);
    void Command2_Click() { marcaTodos(); }
    void marcaTodos();
    QStringList idsMarcados() const;

    // Price
    void Venda_LostFocus() { formataVenda(); }
    void formataVenda();
    void Command1_Click() { atualizaPrecos(); }
    void atualizaPrecos();
    void gravaPrecos(const QStringList& ids, Dinheiro venda);

    std::unique_ptr<Ui::PromocaoPedidos> ui;
    ProductBox* m_product;
    bool m_hasChangedPrices = false;
};

} // namespace tarvessa
