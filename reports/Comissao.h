#pragma once

#include "core/Periodo.h"

#include <QDialog>
#include <QIcon>

#include <memory>

namespace Ui {
class Comissao;
}

namespace tarvessa {

class CellEditor;

/// The sellers' commission of a period: sales of bread and of everything else, the commission on each,
/// returns. The percentages are changed in the grid; the statement of a seller opens from it. Reads
/// movsaient, nfsaida, Orcamento_Troca and produtos; empties and fills relat2; writes the percentages of
/// vendedores. A failing statement, a division by zero (a seller, or all together, without sales) or a sum
/// that is too large ends a run as the error report.
class Comissao : public QDialog {
    Q_OBJECT

  public:
    explicit Comissao(QWidget* parent = nullptr);
    ~Comissao() override;

    /// Leaves only the header of the grid, with its widths, and nothing to print.
    void AjustaGrid();

    /// Writes the commissions of every seller row, and the totals row. Raises RuntimeError (division by zero
    /// when there are no sales in total, overflow).
    void SomaGrid();

  private:
    struct Vendedor;

    // The screen (Comissao.cpp)
    int linhasDeVendedores() const;
    void Grid1_Click(int linha, int coluna);
    void abreExtrato(int linha);

    // The run (ComissaoApuracao.cpp)
    void Command4_Click();
    void preparaRelat2();
    static QList<Vendedor> leVendedores();
    static QStringList celulas(const Vendedor& vendedor);
    void mostraTotais();

    // The percentages (ComissaoEdicao.cpp)
    void preparaEditor();
    void abreEditor(int linha, int coluna);
    bool teclaDeEditor(const QWidget* controle, int tecla);
    void confirmaEdicao();
    void fechaEditor();
    void gravaPercentual(int linha, int coluna, const QString& texto);

    // Printing (ComissaoImpressao.cpp)
    void imprime();
    QString insertDaLinha(int linha) const;

    std::unique_ptr<Ui::Comissao> ui;
    std::unique_ptr<Periodo> m_periodo;
    CellEditor* m_editor = nullptr;
    QIcon m_imagem;
};

} // namespace tarvessa
