#pragma once

#include "core/ArquivoLog.h"
#include "core/Dinheiro.h"

#include <QDate>
#include <QMainWindow>
#include <QSet>

#include <array>
#include <memory>

namespace Ui {
class PainelFechamento;
}

namespace tarvessa {

class ProgressoLote;
class ReportControl;
class Teclado;

/// The main window: lists the sales documents of the last seven days and closes the pre-sales. Closing it, or
/// Escape on it, ends the program.
class PainelFechamento : public QMainWindow {
    Q_OBJECT

  public:
    explicit PainelFechamento(QWidget* parent = nullptr);
    ~PainelFechamento() override;

    /// Start-up: opens the database, lists, reads the settings. False when the database cannot be reached
    /// (the operator has been told): the program must end.
    bool Form_Load();

    /// Empties the grid to the header row and applies the layout of the current listing mode.
    void DefineGrid();

    /// Writes the total of the selected rows to Text1.
    void TotalSelecionado();

    /// Closes one pre-sale: stock, order lines, control row, receivable, cash book, last closed number. Value
    /// in four-place money; nothing is told or logged. Raises RuntimeError; what was executed before stays.
    void FechaPV(qint32 nrPedido, const QString& formaPG, Dinheiro valor, QDate vencto,
                 const QString& nomeCli);

  protected:
    void closeEvent(QCloseEvent* evento) override;

  private:
    enum class Layout { Dav, Pv };

    static constexpr int quantidadeDeContas = 8;

    // Start-up and listing (Listagem.cpp)
    void carregaInicio();
    void listaDavs();
    void carregaFormasDePagamento();
    void carregaConfiguracao();
    void Command3_Click();
    void estreitaCliente();

    // Rows and keys (PainelFechamento.cpp)
    void defineAtalhos();
    void Command1_Click();
    void Command6_Click();
    void Grid1_Click(int linha, int coluna);

    // Closing (Fechamento.cpp, FechaPV.cpp)
    void Command4_Click();
    bool fechaLinha(int linha);
    bool formaValida(int linha) const;
    bool temEstoque(int linha);
    void registraRecusa(int linha, const QString& motivo);
    void baixaEstoqueDaPV(qint32 nrPedido);
    QString comandoReceber(qint32 nrPedido, const QString& codigoCli, const QString& nomeCli,
                           const QString& formaPG, Dinheiro valor, QDate vencto, qint16 vendedor,
                           bool avista) const;

    std::unique_ptr<Ui::PainelFechamento> ui;
    ProgressoLote* m_progresso;
    Layout m_layout = Layout::Dav;
    bool m_pafEcf = false;
    std::array<QString, quantidadeDeContas> m_contaCTB;
    std::unique_ptr<ReportControl> m_relatorio; // CRW
    ArquivoLog m_logFechamento;
    // Pre-sales of the current listing whose closing was begun: after an error report another press must not
    // take their stock out again.
    QSet<qint32> m_iniciadas;
};

} // namespace tarvessa
