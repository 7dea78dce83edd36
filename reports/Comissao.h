#pragma once

#include "core/Periodo.h"
#include "odbc/ResultSet.h"

#include <QDialog>
#include <QIcon>

#include <memory>

namespace Ui {
class Comissao;
}

namespace tarvessa {

class CellEditor;

/// The sellers' commission of a period: sales of bread and of everything else, the commission on each, and
/// returns. The percentages can be changed in the grid; the statement of a seller opens from it. Reads
/// movsaient, nfsaida, Orcamento_Troca and produtos; empties and fills relat2; updates the percentages of
/// vendedores. A run ends in the error report when a statement fails, a sum overflows, or sales of 0 (of a
/// seller or of all together) make a percentage a division by zero; the sellers listed until then stay.
class Comissao : public QDialog {
    Q_OBJECT

  public:
    explicit Comissao(QWidget* parent = nullptr);
    ~Comissao() override;

    /// Leaves only the grid's header, with the column widths, and disables printing.
    void AjustaGrid();

    /// Recomputes the commissions of every seller row and the totals row from the displayed texts. Raises
    /// RuntimeError (division by zero when the total of sales is 0, overflow).
    void SomaGrid();

  private:
    struct Vendedor;

    // The screen (Comissao.cpp)
    int sellerRows() const;
    void cellClicked(int row, int column);
    void abreExtrato(int row);

    // The run (ComissaoApuracao.cpp)
    void geraRelatorio();
    void preparaRelat2();
    void listaVendedores();
    static QList<Vendedor> somaPorVendedor(odbc::ResultSet& lines);
    void listaVendedor(const Vendedor& vendedor);
    void mostraTotais();

    // The percentages (ComissaoEdicao.cpp)
    void prepareEditor();
    void openEditor(int row, int column);
    bool editorKey(const QWidget* control, int key);
    void commitEditor();
    void storeEditor();
    void closeEditor();
    void gravaPercentual(int row, int column, const QString& text);
    void mostraGravado(int row, int column, Dinheiro percentual);

    // Printing (ComissaoImpressao.cpp)
    void imprime();
    QString insertOf(int row) const;

    std::unique_ptr<Ui::Comissao> ui;
    std::unique_ptr<Periodo> m_periodo;
    CellEditor* m_editor = nullptr;
    odbc::ColumnRoom m_roomOfPao; // of the sellers' two percentages
    odbc::ColumnRoom m_roomOfOutros;
    QIcon m_printPicture;
    QString m_ranPeriod;      // of the last run, as a part of a file name
    bool m_hasTotals = false; // a run that ended in an error leaves rows without totals below them
};

} // namespace tarvessa
