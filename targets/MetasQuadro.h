#pragma once

#include "base/Dinheiro.h"

#include <QDialog>

#include <memory>

namespace Ui {
class MetasQuadro;
}

namespace tarvessa {

class CampoProduto;
class CellEditor;
class Periodo;

/// The sales targets: one tab keeps the target quantities per seller and product, the other measures them
/// against invoiced sales and returns. Modal; reads and writes `metavendedoritem` and stages in `relat2`.
class MetasQuadro : public QDialog {
    Q_OBJECT

  public:
    explicit MetasQuadro(QWidget* parent = nullptr);
    ~MetasQuadro() override;

    /// Fills the seller lists from `Vendedores` and sets the period. Call before showing the form. Raises
    /// RuntimeError.
    void Form_Load();

    /// Lists the targets of the chosen seller anew. Reads `metavendedoritem`; raises RuntimeError.
    void AjustaGrid();

    /// Empties the board to its header row and switches printing off.
    void AjustaGrid2();

  private:
    struct Totais;

    // Construction, tabs and focus (MetasQuadro.cpp)
    void preparaGrids();
    void defineAtalhos();
    void SSTab1_Click(int aba);
    bool teclaDaEdicao(QWidget* controle, int tecla);

    // Start-up (Inicio.cpp)
    void carregaVendedores();

    // Maintenance (Manutencao.cpp)
    void defineLarguras();
    void Command1_Click();
    Dinheiro quantidadeDaMeta() const;
    void insereMeta(qint32 vendedor, const QString& produto, Dinheiro quantidade);
    void Grid1_Click(int linha, int coluna);
    void excluiMeta(int linha);
    void listaMetas(qint32 vendedor);

    // Editing in the grid (EdicaoQuantidade.cpp)
    void abreEdicao(int linha);
    void restauraTexto();
    void encerraEdicao();
    static Dinheiro quantidadeDigitada(const QString& texto);

    // Computation (Calculo.cpp)
    void Command4_Click();
    void calcula();
    void somaVendas(qint32 vendedor, bool soUmProduto);
    void somaDevolucoes();
    bool abreListagem(qint32 vendedor, bool soUmProduto);

    // The board (Quadro.cpp)
    void montaQuadro();
    void adicionaBloco();
    void adicionaVendedor(const QString& rotulo);
    void adicionaProduto(Totais& totais);
    void adicionaTotais(const QString& rotulo, const Totais& totais);

    // Printing (Impressao.cpp)
    void Command2_Click();
    QStringList insertsDoQuadro() const;

    std::unique_ptr<Ui::MetasQuadro> ui;
    std::unique_ptr<Periodo> m_periodo;
    CampoProduto* m_produto;  // tab 0
    CampoProduto* m_produto2; // tab 1
    CellEditor* m_edicao;
};

} // namespace tarvessa
