#pragma once

#include "base/Dinheiro.h"
#include "core/ArquivoLog.h"
#include "ui/Pictures.h"

#include <QDate>
#include <QHash>
#include <QMainWindow>
#include <QSet>

#include <array>
#include <memory>

class QAbstractButton;

namespace Ui {
class PainelFechamento;
}

namespace tarvessa {

class CellEditor;
class ProgressoLote;
class ReportControl;

/// The main window: lists the sales documents of the last seven days, corrects their customers' terms, turns
/// DAVs into pre-sales, checks their prices and closes them. Closing it, or Escape on it, ends the program.
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

    /// Advances the counter of a document type in `empresa` ("D": `ultpedido`, any other: `contadorPV`) and
    /// gives the new number. Two workstations never get the same one, as far as the server grants named
    /// locks. Raises RuntimeError, also for a counter that is empty or beyond 32 bits.
    qint32 Orcamento_NumeroPedido(const QString& tipo);

  protected:
    void closeEvent(QCloseEvent* evento) override;

  private:
    enum class Layout { Dav, Pv };
    enum class Desfecho { Grava, Desiste };

    static constexpr int quantidadeDeContas = 8;

    // Start-up and listing (Listagem.cpp)
    void carregaInicio();
    void listaDavs();
    void carregaFormasDePagamento();
    void carregaConfiguracao();
    void Command3_Click();
    void habilitaOperacoes();
    void esvaziaLista();
    void estreitaCliente();

    // Rows and keys (PainelFechamento.cpp)
    void defineAtalhos();
    void aoPressionar(QAbstractButton* botao, void (PainelFechamento::*operacao)());
    template <typename Tela>
    void abreDe(QAction* item);
    void Command1_Click();
    void Command6_Click();
    void Grid1_Click(int linha, int coluna);
    void Grid1_DblClick(int linha, int coluna);
    void visualiza(int linha);
    void Metas_Click();

    // Customer terms in the grid (EdicaoTermos.cpp)
    void preparaEditores();
    void abreEditor(int linha, int coluna);
    bool teclaDeEditor(const QWidget* controle, int tecla);
    bool concluiEdicao();
    bool TextGrid_LostFocus(Desfecho desfecho = Desfecho::Grava);
    void Combo1_LostFocus();
    bool gravaTabela(int linha, const QString& texto);
    void gravaDias(int linha, const QString& texto);
    void gravaTermos(int linha, Dinheiro dias, const QString& forma);

    // DAV to pre-sale (Conversao.cpp)
    void Command2_Click();
    void converteSelecionados();
    void converteDav(qint32 numero);

    // Price check (AnalisePrecos.cpp)
    void Command5_Click();
    void corrigePrecos(QStringList& corrigidos);
    void corrigeLinha(int linha, QStringList& corrigidos);
    void gravaLogDePrecos(const QStringList& pedidos);

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
    QIcon m_picSucesso = pictures::check();
    ProgressoLote* m_progresso;
    CellEditor* m_editorTexto = nullptr;
    CellEditor* m_editorForma = nullptr;
    Layout m_layout = Layout::Dav;
    bool m_configurado = false;
    bool m_pafEcf = false;
    std::array<QString, quantidadeDeContas> m_contaCTB;
    std::unique_ptr<ReportControl> m_relatorio; // CRW
    ArquivoLog m_logFechamento;
    // Pre-sales closed since the listing was made; they stay in its rows where reloading it fails.
    QSet<qint32> m_encerradas;
    // Pre-sales whose closing was begun and ended in an error report: no later press may take their stock out
    // again, also when they come back with a new listing.
    QSet<qint32> m_iniciadas;
    // DAVs of the current listing and the pre-sale number each was given: after an error report another press
    // goes on with the same number, so that notes follow their document.
    QHash<qint32, qint32> m_numerosDados;
};

} // namespace tarvessa
