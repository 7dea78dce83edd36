#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class RelatNivelPreco;
}

namespace tarvessa {

/// Prints the active customers of one price level. The level is chosen from the list or typed: whatever the
/// text, its leading number counts. Reads the titles of Empresa.
class RelatNivelPreco : public QDialog {
    Q_OBJECT

  public:
    /// Raises RuntimeError when the titles cannot be read.
    explicit RelatNivelPreco(QWidget* parent = nullptr);
    ~RelatNivelPreco() override;

  private:
    void carregaNiveis();
    void Command4_Click();

    std::unique_ptr<Ui::RelatNivelPreco> ui;
};

} // namespace tarvessa
