#pragma once

#include "odbc/ResultSet.h"

#include <QDialog>

#include <memory>

namespace Ui {
class RelatNivelPreco;
}

namespace tarvessa {

/// Prints the active customers of one price level. The level is chosen from the list or typed; the number at
/// the start of the text counts. Reads the levels' titles from Empresa.
class RelatNivelPreco : public QDialog {
    Q_OBJECT

  public:
    /// Raises RuntimeError when the titles cannot be read.
    explicit RelatNivelPreco(QWidget* parent = nullptr);
    ~RelatNivelPreco() override;

  private:
    void listaNiveis(const odbc::ResultSet& empresa);
    void geraRelatorio();

    std::unique_ptr<Ui::RelatNivelPreco> ui;
};

} // namespace tarvessa
