#pragma once

#include "base/Dinheiro.h"
#include "odbc/ResultSet.h"

#include <QDialog>

#include <memory>

namespace Ui {
class ExtratoVendedor;
}

namespace tarvessa {

/// The statement of one seller: the invoices of a period, each split into bread and other goods, and the
/// commission on both. Reads movsaient and nfsaida; printing empties and fills relat2.
class ExtratoVendedor : public QDialog {
    Q_OBJECT

  public:
    explicit ExtratoVendedor(QWidget* parent = nullptr);
    ~ExtratoVendedor() override;

    /// Fills the screen and shows it until the operator closes it. Dates as dd/mm/yyyy; percentages and
    /// returns as the commission grid shows them. Raises RuntimeError.
    void Carrega(qint32 codigoVendedor, const QString& nomeVendedor, const QString& dataInicial,
                 const QString& dataFinal, const QString& comissaoPao, const QString& comissaoOutros,
                 const QString& totalDevolucao);

  private:
    struct Somas {
        Dinheiro pao;
        Dinheiro outros;
    };

    // The screen (ExtratoVendedor.cpp)
    void resetGrid();
    static QString queryOf(qint32 codigoVendedor, const QString& start, const QString& end);
    Somas listaNotas(odbc::ResultSet& lines);
    void mostraTotais(const Somas& somas, const QString& comissaoPao, const QString& comissaoOutros,
                      const QString& totalDevolucao);

    // Printing (ExtratoVendedorImpressao.cpp)
    void imprime();
    QString insertOf(int row) const;
    void defineFormulas();

    QString m_documentName; // proposed when the paper is saved
    std::unique_ptr<Ui::ExtratoVendedor> ui;
};

} // namespace tarvessa
