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

/// Read-only view of a document: head, lines and total. Escape and Enter close it.
class VisualizaPedido : public QDialog {
    Q_OBJECT

  public:
    /// Shows the document of this number and kind ('D' or 'P') until the operator closes it, or a message if
    /// it no longer exists. Reads `orcamento`, `clientes` and `produtos` through a result of its own
    /// and writes nothing. Raises RuntimeError.
    static void abre(QWidget* parent, qint32 numero, const QString& tipo);

    ~VisualizaPedido() override;

  private:
    VisualizaPedido(QWidget* parent, odbc::ResultSet& documento);

    void prepareFields();
    void prepareGrid();
    void showHead(const odbc::ResultSet& documento);
    void showLines(odbc::ResultSet& documento);
    void showNote(int row, const QString& text, bool withoutAmounts);

    std::unique_ptr<Ui::VisualizaPedido> ui;
};

} // namespace tarvessa
