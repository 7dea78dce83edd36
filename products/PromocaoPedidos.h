#pragma once

#include "ui/Pictures.h"

#include <QDialog>

#include <memory>

namespace Ui {
class PromocaoPedidos;
}

namespace tarvessa {

/// The screen that gives one product a new unit price in the open pre-sale lines the operator ticks. Reads
/// produtos, orcamento and clientes; writes orcamento.
class PromocaoPedidos : public QDialog {
    Q_OBJECT

  public:
    /// `tick` is drawn in the ticked rows; the panel hands over the picture of its `picSucesso`.
    explicit PromocaoPedidos(QWidget* parent, const QIcon& tick = pictures::check());
    ~PromocaoPedidos() override;

  private:
    enum Coluna { Id, Cliente, Fantasia, Cidade, Quantidade, Unitario, Selecao };

    void defineGrid(const QIcon& tick);

    // Product and its open lines
    void Descricao_Change();
    void Descricao_LostFocus();
    void listaPedidos(const QString& codigo);

    // Ticks
    void Grid1_Click(int linha, int coluna);
    void Command2_Click();

    // Price
    void Venda_LostFocus();
    void Command1_Click();
    void recusa(const QString& motivo);

    std::unique_ptr<Ui::PromocaoPedidos> ui;
    bool m_pesquisando = false;
};

} // namespace tarvessa
