#pragma once

#include "base/RuntimeError.h"

#include <QDialog>

#include <memory>
#include <optional>

namespace Ui {
class SelecionaProd;
}

namespace tarvessa {

class Grid;
class VisualizadorImagem;

/// The screen in which the operator picks one of several products. Opened by PesquisaProduto only; Enter or a
/// click writes the code to CodigoSelecionado and closes it, Escape writes "".
class SelecionaProd : public QDialog {
    Q_OBJECT

  public:
    /// Columns of the grid. The details are read by their place from the last one.
    enum Coluna { CodFabr, Descricao, Estoque, Preco1, Preco2, Preco3, Preco4 };
    static constexpr int quantidadeDeColunas = 12;

    /// Reads its setting from Empresa through rs2 and sets the grid up, empty. Raises RuntimeError.
    explicit SelecionaProd(QWidget* parent);
    ~SelecionaProd() override;

    /// The grid, to be filled before the screen is shown.
    Grid* grid() const;

    /// To be called when the grid is filled: makes a row current, the first one for 0.
    void mostraLinha(int linha);

    /// Raises the error that ended the screen, if one did.
    void confere() const;

    /// `Empresa`.`ReservaAtualizaGridEstoque` as read at opening; nothing depends on it.
    bool reservaAtualizaGridEstoque() const { return m_reservaAtualizaGridEstoque; }

    /// What the image button calls; without one the button is an error that ends the program. Not owned.
    static void setVisualizador(VisualizadorImagem* visualizador);

  protected:
    void showEvent(QShowEvent* evento) override;

  private:
    void Form_Load();
    void defineGrid();
    void escolhe();
    void desiste();
    void atualizaDetalhes();
    void cmbVisualizarImagem_Click();

    std::unique_ptr<Ui::SelecionaProd> ui;
    bool m_reservaAtualizaGridEstoque = false;
    std::optional<RuntimeError> m_erro;
};

} // namespace tarvessa
