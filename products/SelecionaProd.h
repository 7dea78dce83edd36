#pragma once

#include "base/RuntimeError.h"

#include <QDialog>

#include <functional>
#include <memory>
#include <optional>

namespace Ui {
class SelecionaProd;
}

namespace tarvessa {

class Grid;

/// The screen in which the operator picks one of several products. Opened by PesquisaProduto only; Enter or a
/// click writes the code to CodigoSelecionado and closes it, Escape writes "".
class SelecionaProd : public QDialog {
    Q_OBJECT

  public:
    /// Reads its setting from `Empresa` through rs2 and sets the grid up, empty. Raises RuntimeError.
    explicit SelecionaProd(QWidget* parent);
    ~SelecionaProd() override;

    /// The grid, to be filled before the screen is shown.
    Grid* grid() const;

    /// To be called when the grid is filled: makes a row current, the first one for 0.
    void showRow(int row);

    /// Raises the error that ended the screen, if one did.
    void rethrow() const;

    /// Shows the picture of a product, by code and description; false when it has none. Nothing in the system
    /// sets it, and without it the image button is an error that ends the program.
    static inline std::function<bool(const QString& codigo, const QString& descricao)> CarregaImagemProduto;

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void Form_Load();
    void setUpGrid();
    void setUpKeys();
    void cmbVisualizarImagem_Click();

    void escolhe();
    void desiste();
    void atualizaDetalhes();
    void keepRowVisible();
    void mostraImagem();

    std::unique_ptr<Ui::SelecionaProd> ui;
    std::optional<RuntimeError> m_error;
};

} // namespace tarvessa
