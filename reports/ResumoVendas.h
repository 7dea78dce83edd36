#pragma once

#include "base/Dinheiro.h"
#include "core/Periodo.h"
#include "odbc/ResultSet.h"

#include <QDialog>

#include <array>
#include <memory>

class QLabel;

namespace Ui {
class ResumoVendas;
}

namespace tarvessa {

class Grid;

/// The sales of a period by customer, on one tab for each price level: net sales, counter exchanges and the
/// share returned. Reads movsaient, clientes and Orcamento_Troca; empties and fills relat and relat2. A run
/// ends in the error report when a statement fails, a sum overflows, or a grand total of 0 makes the levels'
/// shares a division by zero.
class ResumoVendas : public QDialog {
    Q_OBJECT

  public:
    explicit ResumoVendas(QWidget* parent = nullptr);
    ~ResumoVendas() override;

    /// Leaves only the header of each grid, with the column widths, and totals of zero.
    void FormataGrid();

  private:
    static constexpr int levelCount = 4;

    // With more rows, header included, a grid scrolls and its customer column gives way.
    static constexpr int rowsWithoutScrolling = 23;

    struct Tab {
        Grid* TabelaPreco = nullptr;
        QLabel* Label4 = nullptr;
    };

    struct Totais {
        std::array<Dinheiro, levelCount> niveis;
        Dinheiro geral;
    };

    // The screen (ResumoVendas.cpp)
    void makeTabs();
    static size_t tabOf(const QString& texto3);

    // The run (ResumoVendasApuracao.cpp)
    void geraRelatorio();
    void preparaRelat();
    void listaClientes(odbc::ResultSet& clientes);
    static Totais somaPorNivel(odbc::ResultSet& niveis);
    void mostraTotais(const Totais& totais);

    std::unique_ptr<Ui::ResumoVendas> ui;
    std::unique_ptr<Periodo> m_periodo;
    std::array<Tab, levelCount> m_tabs;
    QString m_ranPeriod; // of the last run, as a part of a file name
};

} // namespace tarvessa
