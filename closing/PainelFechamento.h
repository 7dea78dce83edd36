#pragma once

#include "base/Dinheiro.h"
#include "closing/ClosingLog.h"
#include "closing/ClosingSettings.h"
#include "closing/ListedPv.h"
#include "closing/PvClosing.h"
#include "closing/TermsRoom.h"
#include "ui/Pictures.h"

#include <QDate>
#include <QHash>
#include <QMainWindow>

#include <functional>
#include <map>
#include <memory>
#include <optional>

class QAbstractButton;
class QLabel;

namespace Ui {
class PainelFechamento;
}

namespace tarvessa {

class BatchProgress;
class CellEditor;
class ClosingBatch;
class PanelStatus;
class ReportControl;

/// The main window: lists the sales documents of the last seven days, corrects their customers' terms, turns
/// DAVs into pre-sales, checks their prices and closes them. Closing it, or Escape on it, ends the program.
class PainelFechamento : public QMainWindow {
    Q_OBJECT

  public:
    explicit PainelFechamento(QWidget* parent = nullptr);
    ~PainelFechamento() override;

    /// Start-up: opens the database, shows the window, lists, reads the settings. False, and no window, when
    /// the database cannot be reached (the operator has been told): the program must end.
    bool Form_Load();

    /// Empties the grid to the header row and applies the layout of the current listing mode.
    void DefineGrid();

    /// Writes the total of the selected rows to Text1, and how many there are to the status bar.
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
    void closeEvent(QCloseEvent* event) override;

  private:
    enum class Layout { Dav, Pv };

    // Start-up and listing (PainelFechamentoListagem.cpp)
    void carregaInicio();
    void carregaFormasDePagamento();
    void listaDavs();
    void listaPvs();
    void recarregaPvs();
    void lista(Layout layout);
    void showBeforeListing();
    void emptyList();

    /// What the list is called as a file.
    QString listName() const;
    void enableOperations();

    // Rows and keys (PainelFechamento.cpp)
    void defineShortcuts();
    void onPress(QAbstractButton* button, void (PainelFechamento::*handler)());
    void runOperation(const std::function<void()>& body);
    template <typename Screen>
    void opensFrom(QAction* item);
    void Command1_Click();
    void Command2_Click();
    void Command3_Click();
    void Command4_Click();
    void Command5_Click();
    void Command6_Click();
    void Grid1_Click(int row, int column);
    void Grid1_DblClick(int row, int column);
    void Metas_Click();
    void abrePromocao();
    void alternaSelecao();
    void actOnCell(int row, int column);
    void visualiza(int row);
    void mostraConexao();
    void abreMetas();

    // Customer terms in the grid (PainelFechamentoTermos.cpp). What commits gives false when nothing, or not
    // what was entered, has been stored; the operator has been told.
    void preparaEditores();
    void abreEditor(int row, int column);

    /// Takes a key pressed in a control; true when it was an editor's Enter or Escape.
    bool teclaDeEditor(const QWidget* control, int key);

    /// Commits what is being edited; true also when nothing is.
    bool concluiEdicao();
    bool TextGrid_LostFocus();
    bool Combo1_LostFocus();
    bool gravaTabela(int row, const QString& text);
    bool gravaDias(int row, const QString& text);

    /// Writes days and method to the row's customer (`clientes`). Raises RuntimeError, also for a method
    /// whose name would break the statement.
    bool gravaTermos(int row, Dinheiro dias, const QString& forma);

    /// Runs an update of the row's customer (`clientes`) and shows `sent`, texts by column. Where the update
    /// may have reached no record, or a column may have clipped its value, the record is read and shown.
    bool gravaCliente(int row, const QString& update, const std::map<int, QString>& sent);
    bool fits(const std::map<int, QString>& sent) const;
    bool mostraGravado(int row, const std::map<int, QString>& sent);

    // DAV to pre-sale (PainelFechamentoConversao.cpp)
    void converteDavs();
    void converteSelecionados();
    bool converteDav(qint32 nrDav);

    // Price check (PainelFechamentoPrecos.cpp)
    void analisaPrecos();
    void corrigePrecos(QStringList& corrected);
    void corrigePv(int row, QStringList& corrected);
    static void gravaLogDePrecos(const QStringList& corrected);

    // Closing (PainelFechamentoEncerramento.cpp)
    void encerraPvs();
    void loadWhatStartUpMissed();
    void processListed(ClosingBatch& batch);
    void removeSettled();
    void tellUnwrittenLog();
    ListedPv listedPv(int row) const;

    // What the batch would do (PainelFechamentoConferencia.cpp)
    void abreConferencia();
    void goToPv(const QString& pedido);

    // Closings that were cut (PainelFechamentoInterrompidos.cpp)
    void procuraInterrompidos();
    void abreInterrompidos();
    void abreInterrompidosSeHouver();
    void mostraJanela(bool mesmoVazia);
    void mostraInterrompidos(int quantos);

    std::unique_ptr<Ui::PainelFechamento> ui;
    QIcon m_picSucesso = pictures::check();
    PanelStatus* m_status;
    BatchProgress* m_progress;
    QLabel* m_interrupted;
    CellEditor* m_editorTexto = nullptr;
    CellEditor* m_editorForma = nullptr;
    Layout m_layout = Layout::Dav;
    std::unique_ptr<ReportControl> m_relatorio; // CRW
    TermsRoom m_termsRoom;
    QDate m_listedSince; // of the list on the screen, which may be from yesterday
    bool m_methodsLoaded = false;
    std::optional<ClosingSettings> m_settings;
    ClosingHistory m_closingHistory;
    ClosingLog m_closingLog;
    bool m_seeksInterrupted = false; // the connection was lost, and nobody has looked for them since
    bool m_seeksAtStart = false;     // the start failed before it looked for them
    // The pre-sale number given to each DAV of the list. After an error another press goes on with the same
    // number, so that notes follow their document.
    QHash<qint32, qint32> m_pvNumbers;
};

} // namespace tarvessa
