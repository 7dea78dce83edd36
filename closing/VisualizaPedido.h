#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class VisualizaPedido;
}

namespace tarvessa {

namespace odbc {
class ResultSet;
}

/// A document to look at: head, lines and total, nothing to change. Escape and Enter close it.
class VisualizaPedido : public QDialog {
    Q_OBJECT

  public:
    /// Shows the document of this number and kind ('D' or 'P') until the operator closes it, or the message
    /// that it is no longer there. Reads `orcamento`, `clientes` and `produtos` through a result of its own
    /// and writes nothing. Raises RuntimeError.
    static void abre(QWidget* pai, qint32 numero, const QString& tipo);

    ~VisualizaPedido() override;

  private:
    VisualizaPedido(QWidget* pai, odbc::ResultSet& documento);

    void preparaCampos();
    void preparaGrade();
    void mostraCabecalho(const odbc::ResultSet& documento);
    void mostraItens(odbc::ResultSet& documento);
    void mostraNota(int linha, const QString& texto, bool semValores);

    std::unique_ptr<Ui::VisualizaPedido> ui;
};

} // namespace tarvessa
