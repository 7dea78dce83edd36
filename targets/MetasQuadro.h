#pragma once

#include "base/Dinheiro.h"
#include "odbc/ColumnRoom.h"

#include <QDialog>

#include <memory>

namespace Ui {
class MetasQuadro;
}

namespace tarvessa {

namespace odbc {
class ResultSet;
}

class CellEditor;
class Periodo;
class ProductBox;

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
    struct Totals;

    // Construction, tabs and focus (MetasQuadro.cpp)
    void setUpGrids();
    void setUpShortcuts();
    void connectControls();
    void SSTab1_Click(int tab);
    bool editorKey(QWidget* control, int key);

    // Start-up (MetasQuadroInicio.cpp)
    void carregaVendedores();

    // Maintenance (MetasQuadroManutencao.cpp)
    void setTargetWidths();
    void Command1_Click() { adicionaMeta(); }
    void adicionaMeta();
    Dinheiro quantidadeDaMeta() const;
    void insereMeta(qint32 vendedor, const QString& produto, Dinheiro quantidade);
    void Grid1_Click(int row, int column);
    void excluiMeta(int row);
    void listaMetas(qint32 vendedor);
    QString sellerInFileName() const;

    // Editing in the grid (MetasQuadroEdicao.cpp)
    void openEditor(int row);
    void restoreText();
    void closeEditor();
    void gravaQuantidade(int row, Dinheiro quantidade);
    void mostraGravada(int row, Dinheiro quantidade);
    static QString plainNumber(Dinheiro quantidade);
    static Dinheiro typedQuantity(const QString& text);

    // Computation (MetasQuadroCalculo.cpp)
    void Command4_Click() { geraRelatorio(); }
    void geraRelatorio();
    void calcula();
    void somaVendas(qint32 vendedor, bool oneProduct);
    void somaDevolucoes();
    QString progressQuery(qint32 vendedor, bool oneProduct) const;

    // The board (MetasQuadroAndamento.cpp)
    void montaQuadro(odbc::ResultSet& targets);
    void addSellerBlock(odbc::ResultSet& targets);
    void addSeller(const QString& caption);
    void addTarget(const odbc::ResultSet& target, Totals& totals);
    void addTotals(const QString& caption, const Totals& totals);

    // Printing (MetasQuadroImpressao.cpp)
    void Command2_Click() { imprime(); }
    void imprime();
    QStringList boardInserts() const;

    std::unique_ptr<Ui::MetasQuadro> ui;
    std::unique_ptr<Periodo> m_period;
    ProductBox* m_product;  // tab 0
    ProductBox* m_product2; // tab 1
    CellEditor* m_editor;
    odbc::ColumnRoom m_quantityRoom;
    QString m_ranPeriod; // of the board, as a part of a file name
};

} // namespace tarvessa
