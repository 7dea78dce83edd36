#pragma once

#include "core/Periodo.h"

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
/// share returned. Reads movsaient, clientes and Orcamento_Troca; empties and fills relat and relat2; prints
/// nothing. A failing statement, a division by zero (grand total of 0) or a sum that is too large ends a run
/// as the error report.
class ResumoVendas : public QDialog {
    Q_OBJECT

  public:
    explicit ResumoVendas(QWidget* parent = nullptr);
    ~ResumoVendas() override;

    /// Leaves only the header of each grid, with its widths, and totals of zero.
    void FormataGrid();

  private:
    static constexpr int niveis = 4;
    // Header included; with more the grid scrolls and the customer's name gives way.
    static constexpr int linhasSemRolagem = 23;

    // A tab's grid and the total of its level.
    struct Nivel {
        Grid* TabelaPreco = nullptr;
        QLabel* Label4 = nullptr;
    };

    // The screen (ResumoVendas.cpp)
    void fazAbas();
    static size_t nivelDe(const QString& texto3);

    // The run (ResumoApuracao.cpp)
    void Command4_Click();
    void preparaRelat();
    void mostraClientes();
    void mostraTotais();

    std::unique_ptr<Ui::ResumoVendas> ui;
    std::unique_ptr<Periodo> m_periodo;
    std::array<Nivel, niveis> m_niveis;
};

} // namespace tarvessa
